// The parts of a host as automation objects, under the members that docs/host-automation.md lists. Nothing
// behind nothing.
#pragma once

#include "automation/standin/scripted_object.h"
#include "host/application.h"
#include "host/services.h"

namespace tessel::automation {

#define TESSEL_KIND(Part, Name)                \
  template <>                                  \
  struct KindOf<Part> {                        \
    static constexpr const char* kName = Name; \
  }
TESSEL_KIND(PcRecordList, "PcRecordList");
TESSEL_KIND(PcSession, "PcSession");
TESSEL_KIND(PcObject, "PcObject");
TESSEL_KIND(PcBehavior, "PcBehavior");
TESSEL_KIND(PcAttributeList, "PcAttributeList");
TESSEL_KIND(PcObjectList, "PcObjectList");
TESSEL_KIND(const PcAttribute, "PcAttribute");
TESSEL_KIND(const PcLifeCycleOperation, "PcLifeCycleOperation");
#undef TESSEL_KIND

[[nodiscard]] Variant Wrap(Module& module, const PcRecordListPtr& list);
[[nodiscard]] Variant Wrap(Module& module, const PcSessionPtr& session);
[[nodiscard]] Variant Wrap(Module& module, const PcObjectPtr& object);
[[nodiscard]] Variant Wrap(Module& module, const PcMetaDataPtr& metaData);
[[nodiscard]] Variant Wrap(Module& module, const PcClassPtr& objectClass);
[[nodiscard]] Variant Wrap(Module& module, const PcObjectStorePtr& store);
[[nodiscard]] Variant Wrap(Module& module, const PcEnginePtr& engine);
[[nodiscard]] Variant Wrap(Module& module, const std::shared_ptr<PcService>& service);
[[nodiscard]] Variant Wrap(Module& module, const PcBehaviorPtr& behavior);

}  // namespace tessel::automation
