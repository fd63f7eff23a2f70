// Elements under names that come from data.
#pragma once

#include <string>

#include "structure/xml/xml_document.h"

namespace tessel {

// Creates an element below the parent (detached without one). Each character of the name that XML does not
// accept becomes "_"; an empty name becomes `nameWhenEmpty`. Errors other than those of the name go to the
// caller.
XmlNode CreateRepairedElement(XmlDocument& document, std::string name, const std::string& nameWhenEmpty,
                              XmlNode parent);

}  // namespace tessel
