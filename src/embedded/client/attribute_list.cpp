#include "embedded/client/attribute_list.h"

#include "host/error.h"

namespace tessel::embedded {

void AttributeList::Add(ClassId classId, const std::string& attribute, const std::string& code) {
  const ClassDefinition& definition = metadata_->Required(classId);
  if (code != "S" && code != "L" && code != "F")
    throw HostError("Unknown attribute list code \"" + code + "\"");
  if (code == "L" && !definition.linkClass) throw HostError("\"" + definition.name + "\" is no link class");
  if (attribute != "*" && !definition.Has(attribute)) {
    throw HostError("Class \"" + definition.name + "\" has no attribute \"" + attribute + "\"");
  }
  entries_.push_back({classId, attribute, code[0]});
}

}  // namespace tessel::embedded
