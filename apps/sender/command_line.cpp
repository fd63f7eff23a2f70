#include "sender/command_line.h"

#include <CLI/CLI.hpp>
#include <fstream>
#include <functional>
#include <ostream>

#include "host/error.h"
#include "host/object_key.h"
#include "sender/by_hand.h"
#include "sender/check.h"
#include "sender/list.h"
#include "sender/queue.h"
#include "sender/system.h"

namespace tessel::sender {
namespace {

constexpr int kDone = 0;
constexpr int kProblems = 1;
constexpr int kBadUsage = 2;

struct Options {
  std::vector<std::string> start;  // an id with blanks comes as several
  bool watch = false;
  bool once = false;
  bool list = false;
  bool check = false;
  bool keys = false;
  bool json = false;
  std::string sendAgain;
  std::string markSent;
  std::string settings;
};

void Describe(CLI::App& app, Options& options) {
  app.add_option("start", options.start,
                 "SESSION@CLASS@OBJECT@ID: works off the queue, as the export starts it");
  auto* what = app.add_option_group("what");
  what->add_flag("--once", options.once, "works off the queue and ends");
  what->add_flag("--watch", options.watch, "goes on working until it is ended");
  what->add_flag("--list", options.list, "shows queue, stopped and sent");
  what->add_option("--send-again", options.sendAgain, "puts a sent or stopped EXCHANGE into the queue again");
  what->add_option("--mark-sent", options.markSent, "a stopped EXCHANGE counts as sent: it has arrived");
  what->add_flag("--check", options.check, "tries out the settings");
  what->add_flag("--keys", options.keys, "shows every key of the settings with default and meaning");
  what->require_option(0, 1);
  app.add_flag("--json", options.json, "one JSON object a line on standard output");
  app.add_option("--settings", options.settings,
                 "settings file; default KestrixServMon.ini beside the program, else in /etc/kestrix");
}

void PrintKeys(std::ostream& out) {
  std::string section;
  for (const SettingKey& key : SettingKeys()) {
    if (section != key.section) out << (section.empty() ? "" : "\n") << "[" << key.section << "]\n";
    section = key.section;
    out << "# " << key.meaning << "\n" << key.key << "=" << key.defaultText << "\n";
  }
}

int List(const WorkParts& parts, bool json, std::ostream& out) {
  Databases databases(parts.settings, parts.files);
  const auto problems = databases.Open();
  for (const std::string& problem : problems)
    parts.log.Write({{}, "database", problem, StepKind::kProblem});
  PrintList(ListAll(parts.settings, parts.files, databases), parts.files, json, out);
  return problems.empty() ? kDone : kProblems;
}

int Work(const WorkParts& parts, const Options& options) {
  const std::unique_ptr<Watch> watch = NewWatch();
  if (options.watch && !watch->SeesChanges())
    parts.log.Write(
        {{}, "watch", "changes are seen at scans alone: the system has no watch left", StepKind::kProblem});
  Queue queue(parts, *watch);
  if (options.watch) {
    queue.Serve();
    return kDone;
  }
  return queue.WorkOff() ? kDone : kProblems;
}

// The log of senders that exports start; the one before it is kept when it has grown.
void OpenLog(FileSystem& files, const std::string& path, std::ofstream& log) {
  constexpr long long kMostLog = 1'000'000;
  const std::string before = path + ".1";
  try {
    if (RegularFileSize(files.NativePath(path)) > kMostLog) {
      if (files.FileExists(before)) files.DeleteFile(before);
      files.Move(path, before);
    }
  } catch (const RuntimeError&) {
    // Another sender has just done it, or this account may not.
  }
  log.open(files.NativePath(path), std::ios::app);
}

int RunOptions(const Options& options, const Platform& platform, std::ostream& out, std::ostream& err) {
  if (options.keys) {
    PrintKeys(out);
    return kDone;
  }
  const std::string path =
      options.settings.empty() ? SettingsPath(platform.files, platform.program.directory) : options.settings;
  const Settings settings = ReadSettings(platform.files, path);
  if (options.check) return CheckSettings(settings, platform.files, out) ? kDone : kProblems;
  // The list is for a program to read as it stands.
  StreamLog log(out, err, options.json && !options.list, platform.clock);
  LeaseBook leases(std::chrono::duration_cast<std::chrono::milliseconds>(settings.lease));
  const WorkParts parts{settings, platform.files, platform.clock, log, leases};
  if (options.list) return List(parts, options.json, out);
  if (!options.sendAgain.empty() || !options.markSent.empty()) {
    const bool again = !options.sendAgain.empty();
    const std::string done = Decide(parts, again ? options.sendAgain : options.markSent,
                                    again ? Decision::kSendAgain : Decision::kMarkSent);
    if (!options.json) out << done << "\n";
    return kDone;
  }
  if (!options.start.empty()) {
    std::string text;
    for (const std::string& part : options.start)
      text += (text.empty() ? "" : " ") + part;
    const DispatchStart start = ParseDispatchStart(text);
    log.Write({{},
               "started",
               "by session " + start.session + " for " + start.identifier + " (" + start.exchange + ")"});
  }
  return Work(parts, options);
}

}  // namespace

DispatchStart ParseDispatchStart(const std::string& argument) {
  const auto third = [&] {
    std::size_t at = std::string::npos;
    std::vector<std::size_t> found;
    for (at = argument.find('@'); at != std::string::npos && found.size() < 3;
         at = argument.find('@', at + 1))
      found.push_back(at);
    return found;
  }();
  if (third.size() < 3)
    throw RuntimeError(error_number::kInvalidCall, "\"" + argument + "\" is no SESSION@CLASS@OBJECT@ID");
  const std::string key = argument.substr(third[0] + 1, third[2] - third[0] - 1);
  try {
    return {argument.substr(0, third[0]), ObjectKeyText(ParseObjectKey(key, '@'), ':'),
            argument.substr(third[2] + 1)};
  } catch (const RuntimeError&) {
    throw RuntimeError(error_number::kInvalidCall, "\"" + argument + "\" is no SESSION@CLASS@OBJECT@ID");
  }
}

int Run(const std::vector<std::string>& arguments, const Platform& platform, std::ostream& out,
        std::ostream& err) {
  CLI::App app("Sends what the export hands over: the server monitor.", "KestrixServMon.exe");
  Options options;
  Describe(app, options);
  try {
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    app.parse(reversed);
    const bool named = options.watch || options.once || options.list || options.check || options.keys ||
                       !options.sendAgain.empty() || !options.markSent.empty();
    if (named != options.start.empty())
      throw CLI::RequiredError("one of the options, or SESSION@CLASS@OBJECT@ID");
  } catch (const CLI::ParseError& error) {
    return app.exit(error, out, err) == 0 ? kDone : kBadUsage;
  }
  // Nobody sees the standard error of one that the export starts.
  std::ofstream file;
  if (!options.start.empty()) {
    const std::string settings = options.settings.empty()
                                     ? SettingsPath(platform.files, platform.program.directory)
                                     : options.settings;
    OpenLog(platform.files, settings + ".log", file);
  }
  std::ostream& told = file.is_open() ? file : err;
  try {
    return RunOptions(options, platform, out, told);
  } catch (const std::exception& error) {
    told << error.what() << std::endl;
    return dynamic_cast<const RuntimeError*>(&error) != nullptr ? kBadUsage : kProblems;
  }
}

}  // namespace tessel::sender
