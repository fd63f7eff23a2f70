// The parts of the host port over the client's automation objects. Nothing behind nothing.
#pragma once

#include "automation/host/remote.h"
#include "host/application.h"
#include "host/services.h"

namespace tessel::automation {

[[nodiscard]] PcMetaDataPtr WrapMetaData(const LateBound& object);
[[nodiscard]] PcClassPtr WrapClass(const LateBound& object);
[[nodiscard]] PcRecordListPtr WrapRecordList(const LateBound& object);
[[nodiscard]] PcObjectPtr WrapObject(const LateBound& object);
[[nodiscard]] PcBehaviorPtr WrapBehavior(const LateBound& object);
[[nodiscard]] PcObjectStorePtr WrapObjectStore(const LateBound& object);
[[nodiscard]] PcSessionPtr WrapSession(const LateBound& object);
[[nodiscard]] PcEnginePtr WrapEngine(const LateBound& object);
// The part that a ProgID stands for. Error 429 for a ProgID that the port does not know.
[[nodiscard]] std::shared_ptr<PcService> WrapService(std::string_view progId, const LateBound& object);

}  // namespace tessel::automation
