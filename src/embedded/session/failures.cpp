#include "embedded/session/failures.h"

#include "host/error.h"

namespace tessel::embedded {
namespace {

[[noreturn]] void Raise(const PlannedFailure& failure) {
  throw HostError("The host refused the call, as it was told to", failure.code);
}

}  // namespace

const PlannedFailure* FailurePlan::Due(HostCall call, ClassId classId) {
  for (auto planned = planned_.begin(); planned != planned_.end(); ++planned) {
    if (planned->call != call || (planned->classId != 0 && planned->classId != classId)) continue;
    if (--planned->nth > 0) continue;
    due_ = *planned;
    planned_.erase(planned);
    return &due_;
  }
  return nullptr;
}

int FailurePlan::Code(HostCall call, ClassId classId) {
  if (planned_.empty()) return 0;
  const PlannedFailure* failure = Due(call, classId);
  if (!failure) return 0;
  if (failure->raise) Raise(*failure);
  return failure->code;
}

void FailurePlan::Check(HostCall call, ClassId classId) {
  if (planned_.empty()) return;
  if (const PlannedFailure* failure = Due(call, classId)) Raise(*failure);
}

}  // namespace tessel::embedded
