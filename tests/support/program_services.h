// What one loaded program hands down, on a trace that a test can read.
#pragma once

#include <memory>
#include <utility>

#include "config/admin_configuration_reader.h"
#include "config/services.h"
#include "support/machine.h"
#include "support/recording_trace.h"

namespace tessel::test {

class ProgramServices {
 public:
  // The arguments outlive the object.
  ProgramServices(Machine& machine, HostRuntime& host, Toolkit& toolkit,
                  std::shared_ptr<RecordingTraceWriter> writer = std::make_shared<RecordingTraceWriter>())
      : trace{std::move(writer)},
        declarations(trace.trace, toolkit, machine.platform.program.directory,
                     [this] { return std::make_shared<AdminConfigurationReader>(trace.trace); }),
        errors(machine.platform.files, *machine.ansi, declarations, trace.trace.problems),
        services{trace.trace, errors, toolkit, declarations, machine.platform, host} {}

  [[nodiscard]] bool Traced(std::string_view text) const { return trace.writer->Has(text); }

  RecordingTrace trace;
  Deklarationen declarations;
  ErrorHandling errors;
  Services services;
};

}  // namespace tessel::test
