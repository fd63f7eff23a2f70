#include "messages/trace.h"

#include <algorithm>
#include <limits>

namespace tessel {

std::shared_ptr<TraceWriter> Trace::Writer() {
  if (!writer_ && factory_) writer_ = factory_();
  return writer_;
}

void Trace::Write(const std::string& text) {
  if (const auto writer = Writer()) writer->WriteEntry(text, 0, {}, kNoTraceDirectory, kNoTraceName, false);
}

void Trace::WriteError(const std::string& text, int number, const std::string& description) {
  using Limits = std::numeric_limits<std::int16_t>;
  const auto shortNumber = static_cast<std::int16_t>(std::clamp<int>(number, Limits::min(), Limits::max()));
  if (const auto writer = Writer()) {
    writer->WriteEntry(text, shortNumber, description, kNoTraceDirectory, kNoTraceName, false);
  }
}

void Trace::Start(const std::string& text, const std::string& directory, const std::string& name, bool on) {
  if (const auto writer = Writer()) writer->WriteEntry(text, 0, {}, directory, name, on);
}

void Trace::Flush() noexcept {
  try {
    if (writer_) writer_->Flush();
  } catch (...) {
    // Lines that could not be stored are lost; the run goes on.
  }
}

}  // namespace tessel
