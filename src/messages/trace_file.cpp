#include "messages/trace_file.h"

#include "messages/guard.h"
#include "messages/trace_line.h"
#include "platform/paths.h"

namespace tessel {
namespace {

constexpr std::size_t kBlockSize = 8 * 1024;

// A start-up call with the switch off is told by its name.
bool IsStart(const std::string& name, bool on) {
  return on || name != kNoTraceName;
}

}  // namespace

FileTraceWriter::~FileTraceWriter() {
  Flush();
}

void FileTraceWriter::WriteEntry(const std::string& text, std::int16_t number, const std::string& description,
                                 const std::string& directory, const std::string& name, bool on) {
  const bool isStart = IsStart(name, on);
  if (isStart) {
    Flush();
    const bool nameIsHarmless = paths::IsPlainFileName(name + ".log");
    settings_ = {nameIsHarmless ? paths::Join(directory, name + ".log") : std::string(), on, false};
  }
  if (!settings_.on || settings_.failed || settings_.file.empty()) return;
  std::string line = OneLine(text);
  if (number != 0) line += " [" + std::to_string(number) + " " + OneLine(description) + "]";
  pending_ += ansi_.Encode(line);
  pending_ += "\r\n";
  if (isStart || number != 0 || pending_.size() >= kBlockSize) Flush();
}

void FileTraceWriter::Flush() noexcept {
  if (pending_.empty()) return;
  settings_.failed = !IgnoringErrors([this] { files_.AppendBytes(settings_.file, pending_); });
  pending_.clear();
}

}  // namespace tessel
