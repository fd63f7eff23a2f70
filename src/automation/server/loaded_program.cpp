#include "automation/server/loaded_program.h"

#include "automation/server/components.h"
#include "messages/guard.h"
#include "platform/paths.h"

namespace tessel::automation {
namespace {

// Section of the local settings file that names automation classes in place of the built-in components.
constexpr const char* kSection = "Components";
constexpr std::size_t kLongestName = 256;

}  // namespace

LoadedProgram::LoadedProgram(Toolkit& toolkit)
    : traceFile_(platform_.Services().files,
                 platform_.Services().encodings.Open(platform_.Services().ansiCodePage)),
      program_(
          platform_.Services(), toolkit, runtime_, [this] { return NewTraceWriter(); },
          [this] { return NewAdditionalValues(); }),
      entry_(program_) {
  // Made at once, since the reader is made when there is none.
  if (const std::string reader = ComponentName("ConfigurationReader"); !reader.empty()) {
    GuardedRun(program_.trace, "Cannot make the configuration reader (LoadedProgram/StartApplication)",
               [&] { program_.declarations.pciniAdminTool = NewOutsideReader(reader, runtime_.Ids()); });
  }
}

std::string LoadedProgram::ComponentName(const char* key) {
  const Platform& services = platform_.Services();
  return services.profiles.Get(paths::Join(services.program.directory, services.program.name + ".ini"),
                               kSection, key, "", kLongestName);
}

std::shared_ptr<TraceWriter> LoadedProgram::NewTraceWriter() {
  const std::string name = ComponentName("TraceWriter");
  return name.empty() ? traceFile_.Factory()() : NewOutsideTraceWriter(name, runtime_.Ids());
}

std::unique_ptr<AdditionalValues> LoadedProgram::NewAdditionalValues() {
  const std::string name = ComponentName("AdditionalValues");
  return name.empty() ? MakeTracingAdditionalValues() : NewOutsideAdditionalValues(name, runtime_.Ids());
}

}  // namespace tessel::automation
