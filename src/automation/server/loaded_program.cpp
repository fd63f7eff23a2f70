#include "automation/server/loaded_program.h"

#include <utility>

#include "automation/server/components.h"
#include "host/error.h"
#include "messages/guard.h"
#include "platform/paths.h"

namespace tessel::automation {
namespace {

// Section of the local settings file that names automation classes in place of the built-in components.
constexpr const char* kSection = "Components";
constexpr std::size_t kLongestName = 256;

// The built-in trace writer in place of an outside one that could not be made: the trace says so first.
class SubstituteWriter : public TraceWriter {
 public:
  SubstituteWriter(std::shared_ptr<TraceWriter> writer, RuntimeError reason)
      : writer_(std::move(writer)), reason_(std::move(reason)) {}
  void WriteEntry(const std::string& text, std::int16_t number, const std::string& description,
                  const std::string& directory, const std::string& name, bool on) override {
    writer_->WriteEntry(text, number, description, directory, name, on);
    if (!on || std::exchange(told_, true)) return;
    writer_->WriteEntry("Cannot make the trace writer (LoadedProgram/StartApplication)",
                        static_cast<std::int16_t>(reason_.Number()), reason_.what(), kNoTraceDirectory,
                        kNoTraceName, false);
  }
  void Flush() override { writer_->Flush(); }

 private:
  std::shared_ptr<TraceWriter> writer_;
  RuntimeError reason_;
  bool told_ = false;
};

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
  if (name.empty()) return traceFile_.Factory()();
  try {
    return NewOutsideTraceWriter(name, runtime_.Ids());
  } catch (const RuntimeError& error) {
    return std::make_shared<SubstituteWriter>(traceFile_.Factory()(), error);
  }
}

std::unique_ptr<AdditionalValues> LoadedProgram::NewAdditionalValues() {
  const std::string name = ComponentName("AdditionalValues");
  return name.empty() ? MakeTracingAdditionalValues() : NewOutsideAdditionalValues(name, runtime_.Ids());
}

}  // namespace tessel::automation
