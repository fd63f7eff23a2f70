// How the document lies in its tree: the first top node stands for the document, the second holds what is
// detached, and neither is ever written. For the sources of the document alone.
#pragma once

#include <pugixml.hpp>
#include <string_view>

#include "host/error.h"

namespace tessel {
struct XmlNodeRecord;
}

namespace tessel::xml_tree {

inline bool IsTopNode(const pugi::xml_node& node) {
  return node.parent().type() == pugi::node_document;
}
inline bool IsDocument(const pugi::xml_node& node) {
  return IsTopNode(node) && !node.previous_sibling();
}
inline bool IsDetachedHolder(const pugi::xml_node& node) {
  return IsTopNode(node) && node.previous_sibling();
}

// The library's own record of a node stands behind the handle.
inline pugi::xml_node Follow(XmlNodeRecord* node) {
  return pugi::xml_node(reinterpret_cast<pugi::xml_node_struct*>(Required(node, "XML node")));
}
inline XmlNodeRecord* RecordOf(const pugi::xml_node& node) {
  return reinterpret_cast<XmlNodeRecord*>(node.internal_object());
}

inline pugi::xml_attribute FindAttribute(const pugi::xml_node& node, std::string_view name) {
  pugi::xml_attribute attribute = node.first_attribute();
  while (attribute && name != attribute.name())
    attribute = attribute.next_attribute();
  return attribute;
}

// The node after this one in document order below a top node; empty at the end.
inline pugi::xml_node NextBelow(pugi::xml_node node, const pugi::xml_node& top) {
  if (const pugi::xml_node child = node.first_child()) return child;
  while (node != top && !node.next_sibling())
    node = node.parent();
  return node == top ? pugi::xml_node() : node.next_sibling();
}

}  // namespace tessel::xml_tree
