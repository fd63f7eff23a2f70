#include "entry/program.h"

#include "config/admin_configuration_reader.h"

namespace tessel {

Program::Program(Platform& platformPorts, Toolkit& toolkit, HostRuntime& runtime, Trace::Factory traceWriter,
                 AdditionalValuesFactory additionalValues)
    : platform(platformPorts),
      trace(std::move(traceWriter)),
      declarations(trace, toolkit, platform.program.directory,
                   [this] { return std::make_shared<AdminConfigurationReader>(trace); }),
      ansi(platform.encodings.Open(platform.ansiCodePage)),
      errors(platform.files, *ansi, declarations, trace.problems),
      services{trace, errors, toolkit, declarations, platform, runtime},
      systemTool(platform, toolkit),
      wizard(services, exchange, structure, std::move(additionalValues)) {}

}  // namespace tessel
