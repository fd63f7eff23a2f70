#include "structure/xml/xml.h"

#include <algorithm>

#include "messages/guard.h"
#include "structure/xml/repaired_element.h"

namespace tessel::XML {
namespace {

constexpr std::uint16_t kAllOccurrences = 65535;

// The node after this one in document order, its own children left out; empty past the end of `top`.
XmlNode NextAfter(XmlNode node, XmlNode top) {
  while (node != top) {
    if (const XmlNode sibling = node.NextSibling()) return sibling;
    node = node.Parent();
  }
  return {};
}

// Calls `test` with each node and what stands below it, depth first, until it returns true: the node it hit.
template <class Test>
XmlNode FindFirst(const XmlNodeList& nodes, Test&& test) {
  for (const XmlNode& top : nodes) {
    XmlNode node = top;
    while (node) {
      if (test(node)) return node;
      const XmlNode child = node.FirstChild();
      node = child ? child : NextAfter(node, top);
    }
  }
  return {};
}

// A test for the wanted one of the nodes that match.
template <class Match>
auto Occurrence(std::uint16_t wanted, std::uint16_t& counter, Match match) {
  return [wanted, &counter, match](const XmlNode& node) {
    if (!match(node)) return false;
    if (counter == wanted) return true;
    ++counter;
    return false;
  };
}

void RemoveAll(XmlDocument& document, std::string_view name, const XmlNodeList& nodes) {
  for (const XmlNode& top : nodes) {
    XmlNode node = top;
    while (node) {
      const bool hit = node.Name() == name;
      const XmlNode child = hit ? XmlNode() : node.FirstChild();
      const XmlNode next = child ? child : NextAfter(node, top);
      if (hit) document.Remove(node);
      node = next;
    }
  }
}

}  // namespace

XmlDocumentPtr InitXMLDoc() {
  return std::make_shared<XmlDocument>();
}

void InstructGerman(XmlDocument& document, const std::string& rootName, const std::string& encoding) {
  document.InsertProcessingInstruction("xml", "version=\"1.0\" encoding=\"" + encoding + "\"");
  if (!rootName.empty()) CreateRootElement(document, rootName, "");
}

XmlNode CreateRootElement(XmlDocument& document, const std::string& name, const std::string& text) {
  return CreateElement(document, name, text, document.Root());
}

XmlNode CreateElement(XmlDocument& document, const std::string& name, const std::string& text,
                      XmlNode parent) {
  const XmlNode element = parent ? document.AppendElement(parent, name) : document.NewElement(name);
  if (!text.empty()) document.SetText(element, text);
  return element;
}

std::string_view CreateAttribute(XmlDocument& document, std::string_view name, XmlNode element,
                                 std::string_view value) {
  if (name.find(' ') == std::string_view::npos) {
    document.SetAttribute(element, name, value);
  } else {
    std::string joined(name);
    std::replace(joined.begin(), joined.end(), ' ', '_');
    document.SetAttribute(element, joined, value);
  }
  return value;
}

void SaveXMLFile(const XmlDocument& document, FileSystem& files, const TextEncodings& encodings, Trace& trace,
                 const std::string& path) {
  int replaced = 0;
  document.Save(files, encodings, path, replaced);
  if (replaced == 0) return;
  trace.Write("Characters replaced that XML or the encoding does not allow (SaveXMLFile/XML): " +
              std::to_string(replaced) + " in " + path);
}

void TerminateXMLDoc(XmlDocumentPtr& document) {
  document.reset();
}

XmlNode CreateSaveModeElement(XmlDocument& document, const std::string& name, const std::string& text,
                              XmlNode parent, const std::string& identifier) {
  const std::string counted = name.empty() ? "NoName" : name;
  XmlNode element;
  IgnoringErrors([&] { element = CreateRepairedElement(document, counted, "NoName", parent); });
  if (!element) IgnoringErrors([&] { element = CreateRepairedElement(document, counted, "NoName", {}); });
  if (!element) return element;
  if (!text.empty()) IgnoringErrors([&] { document.SetText(element, text); });
  if (!identifier.empty()) IgnoringErrors([&] { document.SetIdentity(element, counted, identifier); });
  return element;
}

std::string ReadNodeValue(const XmlNodeList& nodes, std::string_view name) {
  const XmlNode hit = FindFirst(nodes, [name](const XmlNode& node) {
    return node.Type() == XmlNodeType::kElement && node.Name() == name;
  });
  return hit ? hit.Text() : std::string();
}

XmlNode FindSpecificNode(std::string_view name, const XmlNodeList& nodes, std::uint16_t wanted,
                         std::uint16_t& counter) {
  return FindFirst(nodes,
                   Occurrence(wanted, counter, [name](const XmlNode& node) { return node.Name() == name; }));
}

XmlNode FindSpecificNode_byTypedValue(std::string_view value, const XmlNodeList& nodes, std::uint16_t wanted,
                                      std::uint16_t& counter) {
  return FindFirst(
      nodes, Occurrence(wanted, counter, [value](const XmlNode& node) { return node.Text() == value; }));
}

void DeleteSpecificNode(XmlDocument& document, std::string_view name, const XmlNodeList& nodes,
                        std::uint16_t wanted, std::uint16_t& counter) {
  if (wanted == kAllOccurrences) {
    RemoveAll(document, name, nodes);
  } else if (const XmlNode hit = FindSpecificNode(name, nodes, wanted, counter)) {
    document.Remove(hit);
  }
}

std::string ReadAttributeValue(std::string_view nodeName, const XmlNodeList& nodes,
                               std::string_view attribute, std::uint16_t wanted, std::uint16_t& counter) {
  const XmlNode hit = FindSpecificNode(nodeName, nodes, wanted, counter);
  return hit ? hit.Attribute(attribute) : std::string();
}

int getAttributeItemByName(const std::vector<std::pair<std::string, std::string>>& attributes,
                           std::string_view name) {
  const auto found = std::find_if(attributes.begin(), attributes.end(),
                                  [name](const auto& attribute) { return attribute.first == name; });
  return found == attributes.end() ? -1 : static_cast<int>(found - attributes.begin());
}

}  // namespace tessel::XML
