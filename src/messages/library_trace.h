// The trace-file operations of the host wrapper library: labelled values, host objects and record lists in
// one plain text file, written only while that file exists.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "host/object.h"
#include "host/record_list.h"
#include "host/value.h"
#include "platform/file_system.h"
#include "platform/text_encoding.h"

namespace tessel {

// An array with the index of its first element.
struct TraceArray {
  int lowerBound = 0;
  std::vector<Value> elements;
};

// Items counted from 1, as late-bound collections have them. Both operations may throw.
class TraceCollection {
 public:
  virtual ~TraceCollection() = default;
  [[nodiscard]] virtual int Count() const = 0;
  [[nodiscard]] virtual Value Item(int position) const = 0;
};

// A value that may be missing, which is not the same as Null.
using TraceValue = std::variant<std::monostate, Value, TraceArray, std::shared_ptr<const TraceCollection>>;

struct TracePair {
  std::string text;
  TraceValue value;
};

class LibraryTrace {
 public:
  // Both references outlive the object. `ansi` is the code page of the file.
  LibraryTrace(FileSystem& files, const TextEncoding& ansi) : files_(files), ansi_(ansi) {}

  // Nothing is opened or looked at.
  void SetTraceFile(const std::string& path) { traceFile_ = path; }

  // Writes one to ten pairs in their order; a pair without value is left out. Errors are swallowed: what
  // cannot be printed is skipped, and the rest is written.
  template <class... Pairs>
  requires(sizeof...(Pairs) <= 9) void PutTrace(const TracePair& first, const Pairs&... others) const {
    const TracePair pairs[] = {first, others...};
    WritePairs(pairs);
  }

  // Lets the host write the object's attributes, or the list, to the trace file under the title. Nothing
  // happens for no object or no list. Errors of the host go to the caller.
  void PutTraceObject(const PcObjectPtr& object, const std::string& title) const;
  void PutTraceRecList(const PcRecordListPtr& records, const std::string& title) const;

 private:
  // Off, too, when it cannot be told whether the file is there.
  [[nodiscard]] bool IsOn() const noexcept;
  void WritePairs(std::span<const TracePair> pairs) const;

  FileSystem& files_;
  const TextEncoding& ansi_;
  std::string traceFile_;
};

}  // namespace tessel
