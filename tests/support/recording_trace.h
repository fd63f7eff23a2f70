// A trace whose lines a test can read.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/error.h"
#include "messages/trace.h"

namespace tessel::test {

struct TraceEntry {
  std::string text;
  std::int16_t number = 0;
  std::string description;
  std::string directory;
  std::string name;
  bool on = false;
};

class RecordingTraceWriter : public TraceWriter {
 public:
  void WriteEntry(const std::string& text, std::int16_t number, const std::string& description,
                  const std::string& directory, const std::string& name, bool on) override {
    if (failing) throw RuntimeError(error_number::kDeviceIo, "the trace writer fails");
    entries.push_back({text, number, description, directory, name, on});
  }

  void Flush() override { flushed = entries.size(); }

  // The texts; an error line is followed by " [number description]".
  [[nodiscard]] std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    for (const TraceEntry& entry : entries) {
      lines.push_back(entry.text);
      if (entry.number != 0) {
        lines.back() += " [" + std::to_string(entry.number) + " " + entry.description + "]";
      }
    }
    return lines;
  }
  [[nodiscard]] bool Has(std::string_view text) const {
    return std::any_of(entries.begin(), entries.end(),
                       [text](const TraceEntry& entry) { return entry.text == text; });
  }
  void Clear() { entries.clear(); }

  std::vector<TraceEntry> entries;
  std::size_t flushed = 0;  // entries that the last flush saw
  bool failing = false;
};

// A trace with its recording writer, which outlives every Release.
struct RecordingTrace {
  std::shared_ptr<RecordingTraceWriter> writer = std::make_shared<RecordingTraceWriter>();
  Trace trace{[kept = writer] { return kept; }};
};

}  // namespace tessel::test
