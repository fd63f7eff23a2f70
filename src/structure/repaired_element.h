// What the elements with an identity share: a name made acceptable and the numbering of instances.
#pragma once

#include <string>

#include "structure/xml_document.h"

namespace tessel {

// Creates an element below the parent (detached without one). Each character of the name that XML does not
// accept becomes "_"; an empty name becomes `nameWhenEmpty`. Errors other than those of the name go to the
// caller.
XmlNode CreateRepairedElement(XmlDocument& document, std::string name, const std::string& nameWhenEmpty,
                              XmlNode parent);

// Sets "Identifier" and "Instance"; nothing with an empty identifier. `name` is the name under which earlier
// instances are counted.
void SetIdentity(XmlDocument& document, XmlNode element, const std::string& name,
                 const std::string& identifier);

}  // namespace tessel
