#include "tessel/cli.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <map>
#include <ostream>

#include "tessel/commands.h"

namespace tessel::cli {
namespace {

// All commands as they are filled by the parser, and the one that was named.
struct Parsed {
  HostCreate hostCreate;
  HostShow hostShow;
  Drive drive;
  Export exportCommand;
  bool noSend = false;
  std::string contentFile;
  std::map<std::string, NamedHookCall> hooks;
  std::function<int(Streams&)> run;
};

void AddLogin(CLI::App& command, Login& login) {
  command.add_option("database", login.database, "Database file")->required();
  command.add_option("--user", login.user, "Login name")->required();
  command.add_option("--password", login.password, "Password, when the user has one")
      ->envname("TESSEL_PASSWORD");
  command.add_option("--language", login.language, "Language of texts, for example GER or ENG");
}

void AddHost(CLI::App& app, Parsed& parsed) {
  CLI::App* host = app.add_subcommand("host", "Make and inspect databases of the embedded host");
  host->require_subcommand(1);
  CLI::App* create = host->add_subcommand("create", "Make a database and its file vault from a model file");
  create->add_option("database", parsed.hostCreate.database, "Database file, made anew")->required();
  create->add_option("model", parsed.hostCreate.model, "Model file (JSON)")->required();
  create->callback([&parsed] {
    parsed.run = [&parsed](Streams& streams) { return RunHostCreate(parsed.hostCreate, streams); };
  });
  CLI::App* show = host->add_subcommand("show", "List what is in a database");
  show->add_option("database", parsed.hostShow.database, "Database file")->required();
  show->callback([&parsed] {
    parsed.run = [&parsed](Streams& streams) { return RunHostShow(parsed.hostShow, streams); };
  });
}

void AddDrive(CLI::App& app, Parsed& parsed) {
  CLI::App* drive = app.add_subcommand("drive", "Drive hooks and pages, one JSON object a line");
  AddLogin(*drive, parsed.drive.login);
  drive->callback(
      [&parsed] { parsed.run = [&parsed](Streams& streams) { return RunDrive(parsed.drive, streams); }; });
}

void AddExport(CLI::App& app, Parsed& parsed) {
  Export& command = parsed.exportCommand;
  CLI::App* sub = app.add_subcommand("export", "Export documents without a person");
  AddLogin(*sub, command.login);
  sub->add_option("--select", command.objects, "Documents, CLASS:OBJECT,...")->required()->delimiter(',');
  CLI::Option* mode = sub->add_option("--mode", command.mode, "Send mode")
                          ->check(CLI::IsMember({"mail", "mail-structure", "odette", "custom", "no-send"}));
  sub->add_flag("--no-send", parsed.noSend, "Short for --mode no-send")->excludes(mode);
  sub->add_option("--recipient", command.recipients,
                  "CUSTOMER:CONTACT, each as CLASS_OBJECT or as the text shown; may be repeated")
      ->allow_extra_args(false);
  sub->add_option("--subject", command.subject, "Subject of the mails");
  CLI::Option* content = sub->add_option("--content", command.content, "Text of the mails");
  sub->add_option("--content-file", parsed.contentFile, "File that holds the text of the mails (UTF-8)")
      ->check(CLI::ExistingFile)
      ->excludes(content);
  sub->add_option("--field", command.fields, "N=TEXT, a field of the custom form; may be repeated")
      ->allow_extra_args(false)
      ->check([](const std::string& field) -> std::string {
        const auto equals = field.find('=');
        const bool numbered = equals != std::string::npos && equals > 0 && equals < 5 &&
                              field.find_first_not_of("0123456789") == equals;
        return numbered ? "" : "\"" + field + "\" is no N=TEXT";
      });
  sub->add_option("--folder-structure", command.folderStructure,
                  "Folder structure, as CLASS_OBJECT or as the text shown");
  sub->add_flag("--dry-run", command.dryRun, "Stop before the dispatch and say what would be sent to whom");
  sub->callback([&parsed, &command] {
    if (parsed.noSend) command.mode = "no-send";
    if (command.mode.empty()) throw CLI::RequiredError("--mode or --no-send");
    parsed.run = [&parsed](Streams& streams) { return RunExport(parsed.exportCommand, streams); };
  });
}

void AddHook(CLI::App& app, Parsed& parsed, const char* name, const char* hook, const char* description) {
  NamedHookCall& command = parsed.hooks[name];
  command.hook = hook;
  CLI::App* sub = app.add_subcommand(name, description);
  AddLogin(*sub, command.login);
  sub->add_option("objects", command.objects, "CLASS:OBJECT ...")->required()->delimiter(',');
  sub->callback([&parsed, &command] {
    parsed.run = [&command](Streams& streams) { return RunHook(command, streams); };
  });
}

int ParseAndRun(std::vector<std::string> arguments, Streams& streams) {
  Parsed parsed;
  CLI::App app("Supplier data exchange for the Pelicore product data management system", "tessel");
  app.require_subcommand(1);
  app.set_version_flag("--version", TESSEL_VERSION);
  AddHost(app, parsed);
  AddDrive(app, parsed);
  AddExport(app, parsed);
  AddHook(app, parsed, "lock", "LockObject", "Lock documents for an exchange");
  AddHook(app, parsed, "unlock", "UnlockObject", "Unlock documents");
  AddHook(app, parsed, "continue", "ContinueBatchMode", "Continue a stopped exchange");
  AddHook(app, parsed, "latest", "GetLatestDataExObj", "Show the newest exchange object of a document");
  try {
    std::reverse(arguments.begin(), arguments.end());
    app.parse(arguments);
  } catch (const CLI::ParseError& error) {
    const bool asked = error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success);
    app.exit(error, streams.out, streams.err);
    return asked ? kDone : kBadUsage;
  }
  if (!parsed.contentFile.empty()) {
    std::ifstream file(parsed.contentFile, std::ios::binary);
    parsed.exportCommand.content.emplace(std::istreambuf_iterator<char>(file),
                                         std::istreambuf_iterator<char>());
  }
  return parsed.run(streams);
}

}  // namespace

int Run(const std::vector<std::string>& arguments, Streams streams) noexcept {
  try {
    return ParseAndRun(arguments, streams);
  } catch (const std::exception& error) {
    streams.err << "tessel: " << error.what() << "\n";
  } catch (...) {
    streams.err << "tessel: unknown error\n";
  }
  return kRefused;
}

}  // namespace tessel::cli
