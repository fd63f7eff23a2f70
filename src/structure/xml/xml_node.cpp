#include "structure/xml/xml_document.h"
#include "structure/xml/xml_tree.h"

namespace tessel {

using namespace xml_tree;

XmlNodeType XmlNode::Type() const {
  const pugi::xml_node node = Follow(node_);
  switch (node.type()) {
    case pugi::node_element:
      return IsDocument(node) ? XmlNodeType::kDocument : XmlNodeType::kElement;
    case pugi::node_cdata:
      return XmlNodeType::kCData;
    case pugi::node_pi:
      return XmlNodeType::kProcessingInstruction;
    default:
      return XmlNodeType::kText;
  }
}

std::string XmlNode::Name() const {
  switch (Type()) {
    case XmlNodeType::kText:
      return "#text";
    case XmlNodeType::kCData:
      return "#cdata-section";
    case XmlNodeType::kDocument:
      return "#document";
    default:
      return Follow(node_).name();
  }
}

std::string XmlNode::Text() const {
  const pugi::xml_node top = Follow(node_);
  if (top.type() != pugi::node_element) return top.value();
  std::string text;
  for (pugi::xml_node node = NextBelow(top, top); node; node = NextBelow(node, top)) {
    if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) text += node.value();
  }
  return text;
}

XmlNode XmlNode::Parent() const {
  const pugi::xml_node node = Follow(node_);
  const pugi::xml_node parent = node.parent();
  if (IsTopNode(node) || IsDetachedHolder(parent)) return {};
  return XmlNode(RecordOf(parent));
}

XmlNode XmlNode::FirstChild() const {
  return XmlNode(RecordOf(Follow(node_).first_child()));
}

XmlNode XmlNode::NextSibling() const {
  const pugi::xml_node node = Follow(node_);
  if (IsTopNode(node) || IsDetachedHolder(node.parent())) return {};
  return XmlNode(RecordOf(node.next_sibling()));
}

bool XmlNode::HasAttribute(std::string_view name) const {
  return static_cast<bool>(FindAttribute(Follow(node_), name));
}

std::string XmlNode::Attribute(std::string_view name) const {
  return FindAttribute(Follow(node_), name).value();
}

std::vector<std::pair<std::string, std::string>> XmlNode::Attributes() const {
  std::vector<std::pair<std::string, std::string>> attributes;
  for (const pugi::xml_attribute& attribute : Follow(node_).attributes()) {
    attributes.emplace_back(attribute.name(), attribute.value());
  }
  return attributes;
}

}  // namespace tessel
