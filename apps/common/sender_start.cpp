#include "common/sender_start.h"

#include "hostlib/my_common_functions.h"
#include "selection/start_up.h"

namespace tessel {

SenderStart StartSenderFor(HostedProgram& hosted, const ObjectKey& exchange) {
  Services& services = hosted.LoadedProgram().services;
  const PcObjectPtr object = hosted.Session()->ObjectStore()->Object(exchange);
  if (!object || !CommonXFunctions::Init(services, hosted.Session()) || !services.Settings().UseServerMonitor)
    return SenderStart::kNotWanted;
  PcAttributePtr attribute;
  PcSequencePtr related;
  const bool found = myCommonFunctions::FindIDAtt(*object, attribute, related);
  const std::string id = found ? object->GetText(attribute->Name()) : std::string();
  const bool started =
      hosted.Entry().StartServerMon(hosted.LoadedProgram().platform.program.directory, hosted.Session(),
                                    exchange.objectId, exchange.classId, id);
  return started ? SenderStart::kStarted : SenderStart::kFailed;
}

}  // namespace tessel
