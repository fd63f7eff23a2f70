#include "structure/draxa_objects.h"

#include <string>

#include "host/ascii.h"
#include "host/error.h"
#include "host/metadata.h"
#include "host/session.h"

namespace tessel::CommonXFunctions {

std::int16_t GetIsDraxaObj(const PcObject& object) {
  const auto session = Required(object.Session(), "session of the object");
  const PcMetaDataPtr metaData = Required(session->MetaData(), "metadata");
  const PcClassPtr objectClass = Required(object.Class(), "class of the object");
  const int count = metaData->ClassMechanismCount();
  for (int index = 0; index < count; ++index) {
    const std::string name = Required(metaData->ClassMechanismAt(index), "class mechanism")->Name();
    if (UpperCase(name).find("_DRAXA_") == std::string::npos || !objectClass->HasMechanism(name)) continue;
    if (name != "VRK_DRAXA_DESIGN_TABLE" && name != "VRK_DRAXA_DOCUMENT") return 1;
  }
  return 0;
}

}  // namespace tessel::CommonXFunctions
