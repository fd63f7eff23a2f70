// The automation runtime: the running client, and new objects by their class names.
#pragma once

#include "automation/com/late_bound.h"
#include "host/application.h"

namespace tessel::automation {

class RemoteRuntime : public HostRuntime {
 public:
  [[nodiscard]] PcApplicationPtr RunningApplication() override;
  [[nodiscard]] PcRecordListPtr CreateRecordList() override;
  [[nodiscard]] PcEnginePtr CreateEngine() override;

  // What a caller handed over. Nothing behind nothing; error 438 for an object of another kind.
  [[nodiscard]] PcSessionPtr Session(const DispatchPtr& object) const;
  [[nodiscard]] PcRecordListPtr RecordList(const DispatchPtr& object) const;
  [[nodiscard]] const std::shared_ptr<MemberIds>& Ids() const { return ids_; }

 private:
  std::shared_ptr<MemberIds> ids_ = std::make_shared<MemberIds>();
};

// A new object of a class. Error 429 when the class is not registered or cannot be made.
[[nodiscard]] DispatchPtr CreateByProgId(const std::string& progId);

}  // namespace tessel::automation
