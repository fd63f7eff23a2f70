#include "host/error.h"

namespace tessel {

void ThrowObjectNotSet(const std::string& what) {
  throw RuntimeError(error_number::kObjectNotSet, "Object variable not set: " + what);
}

}  // namespace tessel
