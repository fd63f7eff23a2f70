// Named values of a session, in memory.
#pragma once

#include "embedded/model/text_map.h"
#include "host/session.h"

namespace tessel::embedded {

// Every call costs constant time. A value's position is the number that it got when it came in; it stays when
// others are removed.
class GlobalData final : public PcGlobalData {
 public:
  [[nodiscard]] Value Get(std::string_view name) const override;
  void Set(const std::string& name, const Value& value) override;
  [[nodiscard]] int Position(std::string_view name) const override;
  void Remove(std::string_view name) override;

 private:
  struct Entry {
    int position;
    Value value;
  };
  TextMap<Entry> entries_;
  int lastPosition_ = 0;
};

}  // namespace tessel::embedded
