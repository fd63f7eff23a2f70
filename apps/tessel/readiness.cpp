#include "tessel/readiness.h"

#include <algorithm>
#include <ostream>

#include "administration/quiet_trace.h"
#include "administration/setting_keys.h"
#include "administration/settings_text.h"
#include "config/configuration_reader.h"
#include "config/pelicore_admin_tool.h"
#include "host/error.h"
#include "host/names.h"
#include "platform/paths.h"
#include "tessel/workbench.h"

namespace tessel::cli {
namespace {

constexpr const char* kCatalogues[] = {"error.Kestrix_", "caption.Kestrix_", "protocol.Kestrix_"};

struct FoundSettings {
  PcObjectPtr object;  // nothing without one
  std::string cause;   // of a failed read on the way there
};

// As a start-up finds it.
FoundSettings FindSettings(const PcSessionPtr& session) {
  Trace trace = administration::QuietTrace();
  PelicoreAdminTool tool(trace);
  FoundSettings found{tool.adm_GetLinkedAdmObj(session, admin_setting::kSetName, nullptr), {}};
  if (!trace.problems.Kept().empty()) found.cause = trace.problems.Kept().front().cause;
  return found;
}

std::string MissingSettings(const PcSession& session, const std::string& cause) {
  if (!cause.empty()) {
    return "The settings of the user " + session.CurrentUser()->LoginName() + " could not be read: " + cause;
  }
  return "No settings object is linked to the user " + session.CurrentUser()->LoginName() +
         ": the data exchange cannot start (\"tessel config check\" shows what each user has, "
         "docs/configuration.md how to link one)";
}

// The folder that the settings name; the program's own without.
std::string CatalogueFolder(const PcObject& settings, const Platform& platform) {
  const administration::SettingKey& key = administration::FindKey("LanguageFile");
  const administration::SettingsText text(settings.GetText(admin_setting::kTextAttribute));
  return text.Find(key.section, key.name).value_or(platform.program.directory);
}

// The languages of the error catalogues in a folder: "ENG, GER".
std::string LanguagesIn(const FileSystem& files, const std::string& folder) {
  const std::string prefix = kCatalogues[0];
  std::vector<std::string> names = files.ListFiles(folder);
  std::ranges::sort(names);
  std::string languages;
  for (const std::string& name : names) {
    if (name.starts_with(prefix) && name.size() > prefix.size())
      languages += (languages.empty() ? "" : ", ") + name.substr(prefix.size());
  }
  return languages;
}

// What is missing of the texts in a language; empty when every catalogue is there.
std::string MissingTexts(const FileSystem& files, const std::string& folder, const std::string& language) {
  if (folder.empty()) return "the settings name no folder of texts (LanguageFile)";
  const std::string path = files.NativePath(folder);
  if (!files.FolderExists(folder)) return "there is no folder of texts " + path;
  std::string missing;
  for (const char* catalogue : kCatalogues) {
    const bool plain = paths::IsPlainFileName(catalogue + language);
    if (plain && files.FileExists(paths::Join(folder, catalogue + language))) continue;
    missing += (missing.empty() ? "" : ", ") + (catalogue + language);
  }
  if (missing.empty()) return {};
  const std::string others = LanguagesIn(files, folder);
  return "there are no texts " + missing + " in " + path +
         (others.empty() ? ", nor in any other language" : "; languages there: " + others);
}

std::string MissingTexts(Workbench& workbench, const PcObject& settings) {
  const Platform& platform = workbench.LoadedProgram().platform;
  return MissingTexts(platform.files, CatalogueFolder(settings, platform), workbench.Session()->Language());
}

void TellMissingTexts(const std::string& missing, Streams& streams) {
  if (missing.empty() || streams.quiet) return;
  streams.err << "warning: " << missing << ": messages will read \"no Message found\"\n";
}

}  // namespace

void RequireReady(Workbench& workbench, const Login& login, Streams& streams) {
  const auto [settings, cause] = FindSettings(workbench.Session());
  if (!settings) throw HostError(MissingSettings(*workbench.Session(), cause));
  const std::string missing = MissingTexts(workbench, *settings);
  if (!missing.empty() && !login.language.empty())
    throw HostError("The language " + login.language + ": " + missing);
  TellMissingTexts(missing, streams);
}

void TellReadiness(Workbench& workbench, Streams& streams) {
  const auto [settings, cause] = FindSettings(workbench.Session());
  if (settings) return TellMissingTexts(MissingTexts(workbench, *settings), streams);
  streams.err << "warning: " << MissingSettings(*workbench.Session(), cause) << "\n";
}

void TellTraceFile(Workbench& workbench, Streams& streams) {
  const std::string file = workbench.TraceFileName();
  if (!file.empty())
    streams.err << "trace: " << workbench.LoadedProgram().platform.files.NativePath(file) << "\n";
}

}  // namespace tessel::cli
