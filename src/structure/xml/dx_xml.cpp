#include "structure/xml/dx_xml.h"

#include "messages/guard.h"
#include "structure/xml/repaired_element.h"

namespace tessel::DX_XML {

XmlNode CreateDXNodeElement(XmlDocument& document, const std::string& name, const std::string& value,
                            XmlNode parent, const std::string& identifier) {
  XmlNode element;
  IgnoringErrors([&] { element = CreateRepairedElement(document, name, "_NoName_", parent); });
  // A parent that takes no element leaves it detached.
  if (!element) IgnoringErrors([&] { element = CreateRepairedElement(document, name, "_NoName_", {}); });
  if (!element) return element;
  IgnoringErrors([&] { SetDXNodeValue(document, element, value); });
  // Earlier instances are counted under the caller's own name, so a repaired name always gets number 0.
  if (!identifier.empty()) IgnoringErrors([&] { document.SetIdentity(element, name, identifier); });
  return element;
}

void SetDXNodeValue(XmlDocument& document, XmlNode element, const std::string& value) {
  document.AppendCData(element, value);
}

XmlNode FindSpecificDXNode(const std::string& identifier, const XmlDocument& document, std::int16_t instance,
                           const std::string& name) {
  return document.FindIdentified(name, identifier, instance);
}

}  // namespace tessel::DX_XML
