// What one loaded program hands down, on a trace that a test can read.
#pragma once

#include <memory>
#include <utility>

#include "config/admin_configuration_reader.h"
#include "config/services.h"
#include "support/recording_trace.h"

namespace tessel::test {

class ProgramServices {
 public:
  // The arguments outlive the object.
  ProgramServices(Platform& platform, HostRuntime& host, Toolkit& toolkit,
                  std::shared_ptr<RecordingTraceWriter> writer = std::make_shared<RecordingTraceWriter>())
      : trace{std::move(writer)},
        declarations(trace.trace, toolkit, platform.program.directory,
                     [this] { return std::make_shared<AdminConfigurationReader>(trace.trace); }),
        ansi(platform.encodings.Open(platform.ansiCodePage)),
        errors(platform.files, *ansi, declarations),
        services{trace.trace, errors, toolkit, declarations, platform, host} {}

  [[nodiscard]] bool Traced(std::string_view text) const { return trace.writer->Has(text); }

  RecordingTrace trace;
  Deklarationen declarations;
  std::shared_ptr<const TextEncoding> ansi;
  ErrorHandling errors;
  Services services;
};

}  // namespace tessel::test
