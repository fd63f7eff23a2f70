#include "messages/guard.h"

#include <exception>
#include <new>

#include "host/error.h"

namespace tessel {
namespace {

// The classic number of an error that has none of its own.
constexpr int kInternalError = 51;

}  // namespace

ErrorInfo CurrentError() {
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

void TraceError(Trace& trace, const std::string& text, const ErrorInfo& error) noexcept {
  try {
    trace.WriteError(text, error.number, error.description);
  } catch (...) {
    // A trace writer that fails takes nothing else down.
  }
}

}  // namespace tessel
