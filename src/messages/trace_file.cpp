#include "messages/trace_file.h"

#include <algorithm>

#include "messages/guard.h"
#include "messages/trace_line.h"
#include "platform/paths.h"

namespace tessel {
namespace {

constexpr std::size_t kBlockSize = 64 * 1024;

// A start-up call with the switch off is told by its name.
bool IsStart(const std::string& name, bool on) {
  return on || name != kNoTraceName;
}

// Printable ASCII and tabs, as nearly every line is: neither to be made one line nor, as a rule, to be
// encoded.
bool IsPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return (c >= ' ' && c <= '~') || c == '\t'; });
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
    // Neither out of the directory nor into the one in which the program happens to run.
    const bool hasPlace = paths::IsPlainFileName(name + ".log") && paths::IsFullPath(directory);
    settings_ = {hasPlace ? paths::Join(directory, name + ".log") : std::string(), on, false};
  }
  if (!settings_.on || settings_.failed || settings_.file.empty()) return;
  if (pending_.capacity() < kBlockSize) pending_.reserve(kBlockSize + kBlockSize / 8);
  Append(text);
  if (number != 0) Append(" [" + std::to_string(number) + " " + description + "]");
  pending_ += ansi_.Encode("\r\n");
  if (isStart || number != 0 || pending_.size() >= kBlockSize) Flush();
}

void FileTraceWriter::Append(std::string_view text) {
  if (IsPlain(text) && ansi_.IsAsciiCompatible()) {
    pending_ += text;
  } else {
    pending_ += ansi_.Encode(OneLine(text));
  }
}

void FileTraceWriter::Flush() noexcept {
  if (pending_.empty()) return;
  settings_.failed = !IgnoringErrors([this] { files_.AppendBytes(settings_.file, pending_); });
  pending_.clear();
}

}  // namespace tessel
