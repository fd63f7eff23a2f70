// The trace: the port of the trace writer, and the one reference to it that the whole program shares.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "messages/problems.h"

namespace tessel {

// Directory and name of every call but the start-up call; they say nothing.
inline constexpr const char* kNoTraceDirectory = "C:";
inline constexpr const char* kNoTraceName = "Trace";

// Stores trace lines. The first call of a hook carries directory, name and switch; every other call carries
// kNoTraceDirectory, kNoTraceName and the switch off.
class TraceWriter {
 public:
  virtual ~TraceWriter() = default;
  // Error: RuntimeError when the line could not be stored and the writer wants the caller to know.
  virtual void WriteEntry(const std::string& text, std::int16_t number, const std::string& description,
                          const std::string& directory, const std::string& name, bool on) = 0;
  // Stores the lines that the writer still holds back. For writers that hold none, nothing.
  virtual void Flush() {}
};

// Holds the writer: made on first use, dropped by Release.
class Trace {
 public:
  using Factory = std::function<std::shared_ptr<TraceWriter>()>;
  explicit Trace(Factory factory) : factory_(std::move(factory)) {}

  void Write(const std::string& text);
  // An error line. A number beyond 16 bits is cut to the nearest that fits.
  void WriteError(const std::string& text, int number, const std::string& description);
  // The start-up call of a hook.
  void Start(const std::string& text, const std::string& directory, const std::string& name, bool on);
  void Release() { writer_.reset(); }
  // At the end of a hook and before the wizard opens: the file then shows every line so far. Errors are
  // ignored; nothing happens while there is no writer.
  void Flush() noexcept;
  // The writer itself, for the outside components that take it.
  [[nodiscard]] std::shared_ptr<TraceWriter> Writer();

  // The problems of the run that this trace belongs to; the guards add to them.
  Problems problems;

 private:
  Factory factory_;
  std::shared_ptr<TraceWriter> writer_;
};

}  // namespace tessel
