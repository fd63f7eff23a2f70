#include "structure/xml/repaired_element.h"

#include <string_view>

#include "host/ascii.h"
#include "structure/xml/xml_names.h"

namespace tessel {

XmlNode CreateRepairedElement(XmlDocument& document, std::string name, const std::string& nameWhenEmpty,
                              XmlNode parent) {
  if (name.empty()) name = nameWhenEmpty;
  for (;;) {
    const std::string offence(FindNameOffence(name));
    if (offence.empty()) break;
    ReplaceAll(name, offence, "_");
  }
  return parent ? document.AppendElement(parent, name) : document.NewElement(name);
}

}  // namespace tessel
