// The trace writer that appends each text as one line to "<directory>/<name>.log", directory and name being
// those of the last start-up call, while its switch is on. An error line goes on with " [number
// description]".
//
// Lines are collected and appended in blocks, since an export writes some thirty lines a document. The file
// is brought up to date by the start-up call, by every error line, by Flush (at the end of a hook and
// whenever a page is shown) and by the end of the writer, so that a crash loses at most the last block of
// lines without an error, since the last page was shown. When the file cannot be written, the lines are
// dropped and nothing is tried again before the next start-up call.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "messages/trace.h"
#include "platform/file_system.h"
#include "platform/text_encoding.h"

namespace tessel {

// What the last start-up call said. It outlives the writers, so that lines traced after a release still land
// in the hook's file.
struct TraceFileSettings {
  std::string file;  // empty before the first start-up call
  bool on = false;
  bool failed = false;
};

class FileTraceWriter : public TraceWriter {
 public:
  // All references outlive the object. `ansi` is the code page of the file.
  FileTraceWriter(TraceFileSettings& settings, FileSystem& files, const TextEncoding& ansi)
      : settings_(settings), files_(files), ansi_(ansi) {}
  ~FileTraceWriter() override;

  void WriteEntry(const std::string& text, std::int16_t number, const std::string& description,
                  const std::string& directory, const std::string& name, bool on) override;
  void Flush() noexcept override;

 private:
  // A piece of a line, which it cannot break.
  void Append(std::string_view text);

  TraceFileSettings& settings_;
  FileSystem& files_;
  const TextEncoding& ansi_;
  std::string pending_;
};

// Makes the writers of one program; outlives the Trace that is given its factory.
class TraceFile {
 public:
  // The file system outlives the object.
  TraceFile(FileSystem& files, std::shared_ptr<const TextEncoding> ansi)
      : files_(files), ansi_(std::move(ansi)) {}
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;

  [[nodiscard]] Trace::Factory Factory() {
    return [this] { return std::make_shared<FileTraceWriter>(settings_, files_, *ansi_); };
  }
  // The file that lines go to; empty while none does.
  [[nodiscard]] std::string FileName() const {
    return settings_.on && !settings_.failed ? settings_.file : std::string();
  }

 private:
  TraceFileSettings settings_;
  FileSystem& files_;
  std::shared_ptr<const TextEncoding> ansi_;
};

}  // namespace tessel
