// config: the settings of a site, and whether the site works.
#include <algorithm>
#include <ostream>

#include "administration/opened_site.h"
#include "administration/setting_keys.h"
#include "administration/settings_objects.h"
#include "administration/settings_text.h"
#include "common/editor.h"
#include "host/error.h"
#include "platform/native/native_platform.h"
#include "tessel/cli.h"
#include "tessel/command.h"
#include "tessel/command_group.h"
#include "tessel/json_result.h"

namespace tessel::cli {
namespace {

using namespace administration;

struct ConfigOptions {
  std::string database;
  std::string user;
  std::string key;
  std::string value;
};

// A site and the settings that a command is about.
struct Opened {
  explicit Opened(const ConfigOptions& options) : site(options.database, system.Services()) {}
  NativePlatform system;
  OpenedSite site;
};

std::string DefaultText(const SettingKey& key) {
  return key.defaultIsProgramDirectory ? "the program's directory" : key.defaultText;
}

void ListObject(const SettingsObject& settings, std::ostream& out) {
  out << settings.Title() << " of " << settings.Logins() << "\n";
  if (!settings.object) return;
  const SettingsText text(settings.Text());
  std::string section;
  for (const SettingKey& key : SettingKeys()) {
    if (key.section != section) out << "\n[" << (section = key.section) << "]\n";
    const auto value = text.Find(key.section, key.name);
    out << key.name << "=" << value.value_or(DefaultText(key));
    if (!value) out << "  (default)";
    if (value && *value != DefaultText(key)) out << "  (default: " << DefaultText(key) << ")";
    out << "\n    " << key.meaning << "\n";
  }
}

Json JsonOf(const SettingsObject& settings) {
  Json logins = Json::array();
  for (const UserSettings& user : settings.users)
    logins.push_back(user.login);
  Json keys = Json::array();
  const SettingsText text(settings.Text());
  for (const SettingKey& key : SettingKeys()) {
    const auto value = text.Find(key.section, key.name);
    keys.push_back({{"section", key.section},
                    {"key", key.name},
                    {"value", value.value_or(DefaultText(key))},
                    {"set", value.has_value()},
                    {"default", DefaultText(key)},
                    {"meaning", key.meaning}});
  }
  return {{"title", settings.Title()}, {"users", logins}, {"keys", settings.object ? keys : Json::array()}};
}

void WarnOfLineFeeds(const SettingsObject& settings, std::ostream& err) {
  if (!settings.object || !HasBareLineFeeds(settings.Text())) return;
  err << "warning: the settings " << settings.Title()
      << " hold lines that end with LF alone, in which nothing is found; tessel config edit saves them with "
         "CR LF\n";
}

int RunList(const ConfigOptions& options, Streams& streams) {
  Opened opened(options);
  bool first = true;
  Json all = Json::array();
  for (const SettingsObject& settings : FindSettingsObjects(opened.site.Session())) {
    const bool wanted =
        options.user.empty() ||
        std::ranges::find(settings.users, options.user, &UserSettings::login) != settings.users.end();
    if (!wanted) continue;
    if (!first && !streams.json) streams.out << "\n";
    first = false;
    if (streams.json) {
      all.push_back(JsonOf(settings));
    } else {
      ListObject(settings, streams.out);
    }
    WarnOfLineFeeds(settings, streams.err);
  }
  if (first) throw HostError("There is no user " + options.user);
  return streams.json ? WriteResult(streams, "config list", kDone, {{"settings", all}}) : kDone;
}

int RunGet(const ConfigOptions& options, Streams& streams) {
  Opened opened(options);
  const SettingKey& key = FindKey(options.key);
  const SettingsObject settings = RequireSettings(opened.site.Session(), options.user);
  WarnOfLineFeeds(settings, streams.err);
  const std::string value =
      SettingsText(settings.Text()).Find(key.section, key.name).value_or(DefaultText(key));
  if (streams.json)
    return WriteResult(streams, "config get", kDone, {{"key", key.FullName()}, {"value", value}});
  streams.out << value << "\n";
  return kDone;
}

void RequireReadable(const SettingsObject& settings) {
  if (!HasBareLineFeeds(settings.Text())) return;
  throw HostError("The settings " + settings.Title() +
                  " hold lines that end with LF alone; tessel config edit saves them with CR LF");
}

int RunSet(const ConfigOptions& options, Streams& streams) {
  Opened opened(options);
  const SettingKey& key = FindKey(options.key);
  if (const std::string refusal = RefusalOf(key, options.value); !refusal.empty()) {
    throw HostError(key.FullName() + "=" + options.value + ": " + refusal + "; nothing was changed");
  }
  const SettingsObject settings = RequireSettings(opened.site.Session(), options.user);
  RequireReadable(settings);
  const std::string before = settings.Text();
  SettingsText text(before);
  text.Set(key.section, key.name, options.value);
  WriteSettings(opened.site.Session(), settings, before, text.Text());
  if (streams.json) {
    return WriteResult(streams, "config set", kDone,
                       {{"key", key.FullName()}, {"value", options.value}, {"settings", settings.Title()}});
  }
  if (streams.quiet) return kDone;
  streams.out << "set: " << key.FullName() << "=" << options.value << " in " << settings.Title() << " of "
              << settings.Logins() << "\n";
  return kDone;
}

int RunUnset(const ConfigOptions& options, Streams& streams) {
  Opened opened(options);
  const SettingKey& key = FindKey(options.key);
  const SettingsObject settings = RequireSettings(opened.site.Session(), options.user);
  RequireReadable(settings);
  const std::string before = settings.Text();
  SettingsText text(before);
  if (!text.Unset(key.section, key.name)) {
    throw HostError(key.FullName() + " is not set in " + settings.Title());
  }
  WriteSettings(opened.site.Session(), settings, before, text.Text());
  if (streams.json) {
    return WriteResult(
        streams, "config unset", kDone,
        {{"key", key.FullName()}, {"value", DefaultText(key)}, {"settings", settings.Title()}});
  }
  if (streams.quiet) return kDone;
  streams.out << "unset: " << key.FullName() << " in " << settings.Title() << "; default " << DefaultText(key)
              << "\n";
  return kDone;
}

// What an edited text has that a start-up would refuse.
void RequireValid(const std::string& text) {
  const SettingsText settings(text);
  std::string refusals;
  for (const SettingKey& key : SettingKeys()) {
    const auto value = settings.Find(key.section, key.name);
    const std::string refusal = value ? RefusalOf(key, *value) : std::string();
    if (!refusal.empty()) refusals += "\n  " + key.FullName() + "=" + *value + ": " + refusal;
  }
  if (!refusals.empty()) throw HostError("Nothing was saved; a start-up would refuse" + refusals);
}

int RunEdit(const ConfigOptions& options, Streams& streams) {
  Opened opened(options);
  const SettingsObject settings = RequireSettings(opened.site.Session(), options.user);
  const std::string before = settings.Text();
  const std::string after = WithCrLf(EditedText(before));
  if (after == before) {
    if (streams.json) return WriteResult(streams, "config edit", kDone, {{"changed", false}});
    streams.out << "nothing was changed\n";
    return kDone;
  }
  RequireValid(after);
  WriteSettings(opened.site.Session(), settings, before, after);
  for (const SuspectLine& line : FindSuspectLines(after))
    streams.err << "warning: line " << line.number << " \"" << line.text << "\": " << line.why << "\n";
  if (streams.json) return WriteResult(streams, "config edit", kDone, {{"changed", true}});
  streams.out << "saved: " << settings.Title() << " of " << settings.Logins() << "\n";
  return kDone;
}

int RunCheck(const ConfigOptions& options, Streams& streams) {
  Opened opened(options);
  int errors = 0;
  int warnings = 0;
  Json found = Json::array();
  for (const Finding& finding : CheckSite(opened.site.Parts())) {
    const bool error = finding.weight == Finding::Weight::kError;
    ++(error ? errors : warnings);
    found.push_back({{"weight", error ? "error" : "warning"},
                     {"where", finding.where},
                     {"what", finding.what},
                     {"mend", finding.mend}});
    if (streams.json) continue;
    streams.out << (error ? "error: " : "warning: ") << finding.where << ": " << finding.what
                << "\n    mend: " << finding.mend << "\n";
  }
  if (streams.json) {
    return WriteResult(streams, "config check", errors == 0 ? kDone : kRefused,
                       {{"errors", errors}, {"warnings", warnings}, {"findings", found}});
  }
  streams.out << (errors == 0 ? "ok" : "not ok") << ": " << errors << (errors == 1 ? " error, " : " errors, ")
              << warnings << (warnings == 1 ? " warning\n" : " warnings\n");
  return errors == 0 ? kDone : kRefused;
}

}  // namespace

void AddConfigCommands(CLI::App& app, CommandRun& run) {
  CLI::App* config = app.add_subcommand("config", "Show, change and check the settings of a site");
  config->require_subcommand(1);
  const auto add = [&](const char* name, const char* description,
                       int (*action)(const ConfigOptions&, Streams&), bool key, bool value) {
    auto options = std::make_shared<ConfigOptions>();
    CLI::App* command = config->add_subcommand(name, description);
    command->add_option("database", options->database, "Database file, or its address on a server")
        ->required();
    if (key) command->add_option("key", options->key, "Key or Section.Key")->required();
    if (value) command->add_option("value", options->value, "New value")->required();
    command->add_option("--user", options->user, "Whose settings, when users have different ones");
    OnCommand(*command, run, options, action);
  };
  add("list", "List every key with value, default and meaning", &RunList, false, false);
  add("get", "Show the value of a key", &RunGet, true, false);
  add("set", "Change a value", &RunSet, true, true);
  add("unset", "Take a value away, so that the default counts", &RunUnset, true, false);
  add("edit", "Edit the whole text with the program named by VISUAL or EDITOR", &RunEdit, false, false);
  add("check", "Look at the whole site and say what people would meet", &RunCheck, false, false);
}

}  // namespace tessel::cli
