// Failures on request, for tests of what happens when the host refuses a call.
#pragma once

#include <vector>

#include "host/object_key.h"

namespace tessel::embedded {

enum class HostCall { kRead, kInsert, kUpdate, kDelete, kLink, kQuery, kRetrieve, kOperation };

struct PlannedFailure {
  HostCall call = HostCall::kRead;
  ClassId classId = 0;  // 0: any class; a free query counts as class 0 alone
  int nth = 1;          // 1 the next such call, 2 the one after it, ...
  int code = 1;         // what the write returns, or the number of the error
  // Writes return their code and links nothing, unless they are to raise an error; the other calls always
  // raise.
  bool raise = false;
};

class FailurePlan {
 public:
  void Add(const PlannedFailure& failure) { planned_.push_back(failure); }
  void Clear() { planned_.clear(); }
  // Counts a call. The code that it is to return, 0 when it is to go on. Error: HostError when it is to
  // raise.
  [[nodiscard]] int Code(HostCall call, ClassId classId);
  // Counts a call that has no code to return. Error: HostError when it is to fail.
  void Check(HostCall call, ClassId classId);

 private:
  [[nodiscard]] const PlannedFailure* Due(HostCall call, ClassId classId);

  std::vector<PlannedFailure> planned_;
  PlannedFailure due_;
};

}  // namespace tessel::embedded
