// DX_XML: elements whose value is a CDATA section and whose identity is "Identifier" and "Instance".
#pragma once

#include <cstdint>
#include <string>

#include "structure/xml/xml_document.h"

namespace tessel::DX_XML {

// Creates the element, repairing a name that XML does not accept, and appends it to the parent when one is
// given. Never raises; after another failure the element is as far as it was built.
XmlNode CreateDXNodeElement(XmlDocument& document, const std::string& name, const std::string& value,
                            XmlNode parent, const std::string& identifier);
void SetDXNodeValue(XmlDocument& document, XmlNode element, const std::string& value);
// The element or nothing.
[[nodiscard]] XmlNode FindSpecificDXNode(const std::string& identifier, const XmlDocument& document,
                                         std::int16_t instance, const std::string& name);

}  // namespace tessel::DX_XML
