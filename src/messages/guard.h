// The one place where procedures trap errors: a trace line with number and description, and the failure
// value.
#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>

#include "messages/trace.h"

namespace tessel {

struct ErrorInfo {
  int number = 0;
  std::string description;
};

// Number and description of the exception being handled. Only inside a catch block.
[[nodiscard]] ErrorInfo CurrentError();

// Writes an error line and keeps the problem; a failing trace writer is ignored.
void TraceError(Trace& trace, const std::string& text, const ErrorInfo& error,
                ProblemKind kind = ProblemKind::kTrapped) noexcept;
// Keeps the exception being handled as a problem that the rules pass over. Only inside a catch block.
void KeepIgnored(Problems& problems, const std::string& step) noexcept;

// Runs the body. On any exception: the error line, then the failure value.
template <class Body>
std::invoke_result_t<Body> Guarded(Trace& trace, const std::string& text,
                                   std::invoke_result_t<Body> failureValue, Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    TraceError(trace, text, CurrentError());
    return failureValue;
  }
}

// The same for a body without result.
template <class Body>
void GuardedRun(Trace& trace, const std::string& text, Body&& body,
                ProblemKind kind = ProblemKind::kTrapped) {
  static_assert(std::is_void_v<std::invoke_result_t<Body>>);
  try {
    std::forward<Body>(body)();
  } catch (...) {
    TraceError(trace, text, CurrentError(), kind);
  }
}

// Runs one step whose errors the rules pass over: no trace line, but a problem of the run. True when it
// raised none.
template <class Body>
bool PassingOver(Problems& problems, const std::string& step, Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (...) {
    KeepIgnored(problems, step);
    return false;
  }
}

// Runs one step whose errors are of no consequence to anybody, as those of the trace. True when it raised
// none.
template <class Body>
bool IgnoringErrors(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace tessel
