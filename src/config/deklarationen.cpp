#include "config/deklarationen.h"

#include "config/supported_classes.h"
#include "host/error.h"
#include "messages/guard.h"
#include "platform/paths.h"

namespace tessel {
namespace {

constexpr const char* kIconDirectoryKey = "$Local\\Directory Structure\\ICONS_DIR";
// The four settings of the default behaviour, the first to the fourth.
constexpr int kBehaviorSettings[] = {2, 0, 0, 0};

void TraceQuietly(Trace& trace, const std::string& text) {
  IgnoringErrors([&] { trace.Write(text); });
}

// Numbers and truth values are taken without trimming, like all values.
void CheckUntrimmed(const std::string& text) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
  if (!text.empty() && (isBlank(text.front()) || isBlank(text.back()))) {
    throw RuntimeError(error_number::kTypeMismatch, "Type mismatch: \"" + text + "\"");
  }
}

// Stores the text of one key, converted by the type of its member, and gives it back as the trace shows it.
struct StoreText {
  Configuration& configuration;
  const std::string& text;

  std::string operator()(std::string Configuration::*member) const { return configuration.*member = text; }
  std::string operator()(bool Configuration::*member) const {
    CheckUntrimmed(text);
    return BooleanText(configuration.*member = ParseBoolean(text));
  }
  std::string operator()(std::int16_t Configuration::*member) const {
    CheckUntrimmed(text);
    return std::to_string(configuration.*member = ParseInt16(text));
  }
};

// Stores one value. An error names the key.
std::string Store(Configuration& configuration, const ConfigurationKey& key, const std::string& text) {
  try {
    return std::visit(StoreText{configuration, text}, key.member);
  } catch (const RuntimeError& error) {
    throw RuntimeError(error.Number(), std::string("[") + key.section + "] " + key.key + ": " + error.what());
  }
}

void ReadValues(ConfigurationReader& reader, StartupValues& startup, Configuration& configuration,
                const std::string& programDirectory, Trace& trace) {
  const std::shared_ptr<void> oneMoment = reader.KeepSettings();
  for (const ConfigurationKey& key : ConfigurationKeys()) {
    const std::string defaultText = key.defaultText == nullptr ? programDirectory : key.defaultText;
    const std::string text = reader.ReadValue(startup.session, key.section, key.key, defaultText, {});
    trace.Write(key.label + Store(configuration, key, text));
  }
}

// One of the files would replace the other, here or on the recipient's machine.
void CheckOwnFileNames(const Configuration& configuration) {
  const std::pair<const char*, std::string> names[] = {
      {"StructurFileName", configuration.StructureFileName},
      {"DataFileName", configuration.DataFileName},
      {"the neutral formats", kNeutralFormatsFile},
  };
  for (const auto& [key, name] : names) {
    for (const auto& [otherKey, otherName] : names) {
      if (key == otherKey || !paths::IsSameFileName(name, otherName)) continue;
      throw RuntimeError(error_number::kInvalidCall, std::string("[ini_xml] ") + key + " and " + otherKey +
                                                         " have the same file name: " + name);
    }
  }
}

}  // namespace

Deklarationen::Deklarationen(Trace& trace, Toolkit& toolkit, std::string programDirectory,
                             ReaderFactory makeReader)
    : trace_(trace),
      toolkit_(toolkit),
      programDirectory_(std::move(programDirectory)),
      makeReader_(std::move(makeReader)) {
  configuration.LanguageFilePath = programDirectory_;  // until the settings name a folder, or none
}

bool Deklarationen::SetSessionGlobal(const PcSessionPtr& session) {
  TraceQuietly(trace_, "Set PcSession as global variable");
  startup.session = session;
  TraceQuietly(trace_, std::string("  session has been set globally with result: ") + BooleanText(true));
  return true;
}

bool Deklarationen::SetDefaultBehavior() {
  TraceQuietly(trace_, "set default Behavior for Pelicore operations");
  bool done = PassingOver(trace_.problems, "Making the default behaviour", [&] {
    startup.DefaultBehavior = Required(startup.session.get(), "stored session")->NewBehavior();
  });
  for (int number = 1; number <= static_cast<int>(std::size(kBehaviorSettings)); ++number) {
    done &= PassingOver(trace_.problems, "Setting the default behaviour", [&] {
      Required(startup.DefaultBehavior.get(), "default behavior")->Set(number, kBehaviorSettings[number - 1]);
    });
  }
  const bool result = done || startup.DefaultBehavior != nullptr;
  TraceQuietly(trace_, std::string("  Behavior has been set with result: ") + BooleanText(result));
  return result;
}

bool Deklarationen::SetIconDirectory() {
  TraceQuietly(trace_, "Set Icon directory");
  const bool done = PassingOver(trace_.problems, "Reading the icon directory", [&] {
    startup.IconDirectory =
        Required(startup.session.get(), "stored session")->ConfigurationValue(kIconDirectoryKey);
  });
  TraceQuietly(trace_, "  Icon directory has been set with result: " + startup.IconDirectory);
  return done;
}

bool Deklarationen::ReadConfiguration(const ErrorHandling& errors) {
  try {
    trace_.Write("begin value initialization");
    const auto metaData = Required(Required(startup.session.get(), "stored session")->MetaData(), "metadata");
    if (!FixSupportedClasses(*metaData, startup, trace_)) return false;
    if (!pciniAdminTool) pciniAdminTool = makeReader_();
    trace_.Write(pciniAdminTool ? "pciniAdminTool is not nothing" : "pciniAdminTool is nothing");
    ReadValues(*Required(pciniAdminTool.get(), "pciniAdminTool"), startup, configuration, programDirectory_,
               trace_);
    CheckOwnFileNames(configuration);
    startup.TracePath = configuration.TracePath;
    return true;
  } catch (...) {
    TraceError(trace_, "Stop on error: Could not initiate Variables!", CurrentError());
  }
  toolkit_.ShowMessage({errors.ErrorHandle("e9020"), "Kestrix Error", MessageIcon::kCritical});
  return false;
}

std::string Deklarationen::Folder() const {
  return configuration.LanguageFilePath;
}

std::string Deklarationen::Language() const {
  return Required(startup.session.get(), "stored session")->Language();
}

}  // namespace tessel
