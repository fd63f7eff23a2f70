#include "tessel/json_result.h"

#include <ostream>

namespace tessel::cli {
namespace {

const char* NameOf(ProblemKind kind) {
  switch (kind) {
    case ProblemKind::kTrapped:
      return "failed";
    case ProblemKind::kIgnored:
      return "passed-over";
    case ProblemKind::kAside:
      break;
  }
  return "aside";
}

}  // namespace

int WriteResult(Streams& streams, const char* command, int status, const Json& results) {
  Json line{{"command", command}, {"status", status}};
  line.update(results);
  streams.out << line.dump(-1, ' ', false, Json::error_handler_t::replace) << "\n";
  return status;
}

Json JsonOf(const std::vector<Problem>& problems) {
  Json all = Json::array();
  for (const Problem& problem : problems) {
    all.push_back({{"kind", NameOf(problem.kind)},
                   {"step", problem.step},
                   {"subject", problem.subject},
                   {"number", problem.number},
                   {"cause", problem.cause}});
  }
  return all;
}

Json JsonOf(const ObjectKey& object) {
  return ObjectKeyText(object, ':');
}

}  // namespace tessel::cli
