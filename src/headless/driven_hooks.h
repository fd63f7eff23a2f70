// The driven program as the drive protocol sees it, and a call of one of its hooks.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/value.h"

namespace tessel {

// Records as a caller writes them: named cells, in the order in which they were given.
using PlainRow = std::vector<std::pair<std::string, Value>>;
using PlainRecords = std::vector<PlainRow>;

struct HookCall {
  std::string hook;
  std::string operation;
  // Nothing: the hook gets no record list.
  std::optional<PlainRecords> first;
  std::optional<PlainRecords> second;
  std::optional<PlainRecords> third;
};

class DrivenHooks {
 public:
  virtual ~DrivenHooks() = default;
  [[nodiscard]] virtual std::vector<std::string> HookNames() const = 0;
  // The hook's status. The name is one of HookNames.
  [[nodiscard]] virtual int Call(const HookCall& call) = 0;
  // A value of the session's global data; Null when it was never set.
  [[nodiscard]] virtual Value GlobalValue(const std::string& name) const = 0;
};

}  // namespace tessel
