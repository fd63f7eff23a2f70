// The program in a loaded library: one set of state, made with the first entry object.
#pragma once

#include "automation/host/remote_runtime.h"
#include "entry/program.h"
#include "entry/start_application.h"
#include "messages/trace_file.h"
#include "platform/win32/win32_platform.h"

namespace tessel::automation {

class LoadedProgram {
 public:
  // The toolkit outlives the object.
  explicit LoadedProgram(Toolkit& toolkit);

  [[nodiscard]] StartApplication& Entry() { return entry_; }
  [[nodiscard]] const RemoteRuntime& Runtime() const { return runtime_; }
  [[nodiscard]] Trace& ProgramTrace() { return program_.trace; }

 private:
  [[nodiscard]] std::string ComponentName(const char* key);
  [[nodiscard]] std::shared_ptr<TraceWriter> NewTraceWriter();
  [[nodiscard]] std::unique_ptr<AdditionalValues> NewAdditionalValues();

  Win32Platform platform_;
  RemoteRuntime runtime_;
  TraceFile traceFile_;
  Program program_;
  StartApplication entry_;
};

}  // namespace tessel::automation
