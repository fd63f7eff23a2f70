// Expectations on errors below the guards.
#pragma once

#include <string>

#include "host/error.h"

namespace tessel::test {

// Number of the RuntimeError that an action throws, 0 when it throws none.
template <class Action>
int ErrorNumberOf(Action&& action) {
  try {
    action();
    return 0;
  } catch (const RuntimeError& error) {
    return error.Number();
  }
}

// Number and description; empty when it throws none.
template <class Action>
std::string ErrorOf(Action&& action) {
  try {
    action();
    return {};
  } catch (const RuntimeError& error) {
    return std::to_string(error.Number()) + " " + error.what();
  }
}

}  // namespace tessel::test
