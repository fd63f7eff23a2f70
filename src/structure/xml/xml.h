// XML: document creation, declaration, plain elements, attributes, save, and generic searches.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "messages/trace.h"
#include "platform/file_system.h"
#include "platform/text_encoding.h"
#include "structure/xml/xml_document.h"

namespace tessel::XML {

[[nodiscard]] XmlDocumentPtr InitXMLDoc();
// Declares version 1.0 and an encoding; creates the root element when its name is not empty.
void InstructGerman(XmlDocument& document, const std::string& rootName, const std::string& encoding);
XmlNode CreateRootElement(XmlDocument& document, const std::string& name, const std::string& text);
// Without parent the element stays detached.
XmlNode CreateElement(XmlDocument& document, const std::string& name, const std::string& text,
                      XmlNode parent);
// Blanks of the name become "_". Returns the value that was given.
std::string_view CreateAttribute(XmlDocument& document, std::string_view name, XmlNode element,
                                 std::string_view value);
// Errors of the file system and of the encoding go to the caller. Characters that XML does not allow are
// replaced and traced.
void SaveXMLFile(const XmlDocument& document, FileSystem& files, const TextEncodings& encodings, Trace& trace,
                 const std::string& path);
// Ends the use of the document: the caller holds nothing then.
void TerminateXMLDoc(XmlDocumentPtr& document);
// An element with identity whose value is plain text. Never raises; after another failure than that of its
// name the element is as far as it was built.
XmlNode CreateSaveModeElement(XmlDocument& document, const std::string& name, const std::string& text,
                              XmlNode parent, const std::string& identifier);

// Searches walk depth first in document order and stop at the first hit. `wanted` is an occurrence number,
// `counter` the running one.
using XmlNodeList = std::vector<XmlNode>;
[[nodiscard]] std::string ReadNodeValue(const XmlNodeList& nodes, std::string_view name);
[[nodiscard]] XmlNode FindSpecificNode(std::string_view name, const XmlNodeList& nodes, std::uint16_t wanted,
                                       std::uint16_t& counter);
[[nodiscard]] XmlNode FindSpecificNode_byTypedValue(std::string_view value, const XmlNodeList& nodes,
                                                    std::uint16_t wanted, std::uint16_t& counter);
// A wanted occurrence of 65535 removes every node of the name.
void DeleteSpecificNode(XmlDocument& document, std::string_view name, const XmlNodeList& nodes,
                        std::uint16_t wanted, std::uint16_t& counter);
[[nodiscard]] std::string ReadAttributeValue(std::string_view nodeName, const XmlNodeList& nodes,
                                             std::string_view attribute, std::uint16_t wanted,
                                             std::uint16_t& counter);
// Position of the first attribute of the name in an attribute map, -1 when there is none.
[[nodiscard]] int getAttributeItemByName(const std::vector<std::pair<std::string, std::string>>& attributes,
                                         std::string_view name);

}  // namespace tessel::XML
