#include "dispatch/export_outcome.h"

#include <algorithm>

namespace tessel {

bool ExportOutcome::Whole() const {
  const auto recorded = [](const HandedOver& one) { return one.recordWhole; };
  const auto aside = [](const Problem& problem) { return problem.kind == ProblemKind::kAside; };
  return dispatch == DispatchEnd::kFinished && monitor != MonitorStart::kFailed &&
         std::all_of(directories.begin(), directories.end(), recorded) &&
         std::all_of(problems.begin(), problems.end(), aside);
}

}  // namespace tessel
