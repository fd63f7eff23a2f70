#include "messages/guard.h"

#include <exception>
#include <new>

#include "host/error.h"

namespace tessel {
namespace {

// The classic number of an error that has none of its own.
constexpr int kInternalError = 51;

// May run out of memory itself.
ErrorInfo DescribeCurrentError() {
  try {
    throw;
  } catch (const RuntimeError& error) {
    return {error.Number(), error.what()};
  } catch (const std::bad_alloc&) {
    return {error_number::kOutOfMemory, "Out of memory"};
  } catch (const std::exception& error) {
    return {kInternalError, std::string("Internal error: ") + error.what()};
  } catch (...) {
    return {kInternalError, "Internal error"};
  }
}

}  // namespace

// The text is short enough to need no memory.
ErrorInfo CurrentError() {
  try {
    return DescribeCurrentError();
  } catch (...) {
    return {error_number::kOutOfMemory, "Out of memory"};
  }
}

void TraceError(Trace& trace, const std::string& text, const ErrorInfo& error, ProblemKind kind) noexcept {
  try {
    trace.problems.Add({text, {}, error.number, error.description, kind});
    trace.WriteError(text, error.number, error.description);
  } catch (...) {
    // A trace writer that fails takes nothing else down.
  }
}

void KeepIgnored(Problems& problems, const std::string& step) noexcept {
  try {
    ErrorInfo error = CurrentError();
    problems.Add({step, {}, error.number, std::move(error.description), ProblemKind::kIgnored});
  } catch (...) {
    problems.Add({});
  }
}

}  // namespace tessel
