#include "tessel/cli.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>
#include <ostream>
#include <set>
#include <system_error>

#include "embedded/embedded_host.h"
#include "tessel/command_group.h"
#include "tessel/commands.h"
#include "tessel/json_result.h"
#include "tessel/usage.h"

namespace tessel::cli {
namespace {

// All commands as they are filled by the parser, and the one that was named.
struct Parsed {
  HostCreate hostCreate;
  HostShow hostShow;
  Recover recover;
  Drive drive;
  Export exportCommand;
  bool noSend = false;
  std::string contentFile;
  std::map<std::string, NamedHookCall> hooks;
  bool json = false;
  bool quiet = false;
  // Of the command that was named.
  CommandRun run;
  std::string command;
  Login* login = nullptr;
};

// The form alone: whether there is such a class, the database tells.
std::string WhyNoObject(const std::string& text) {
  const auto colon = text.rfind(':');
  const bool formed = colon != std::string::npos && colon > 0 && colon + 1 < text.size() &&
                      text.find_first_not_of("0123456789", colon + 1) == std::string::npos;
  return formed ? "" : "\"" + text + "\" is no CLASS:OBJECT";
}

void AddLogin(CLI::App& command, Login& login) {
  command.add_option("database", login.database, "Database file, or its address on a server")->required();
  command.add_option("--user", login.user, "Login name")->required();
  command.add_option("--password", login.password, "Password, when the user has one")
      ->envname("TESSEL_PASSWORD");
  command.add_flag("--password-stdin", login.passwordFromInput,
                   "Take the password from the first line of standard input");
  command.add_option("--language", login.language, "Language of texts, for example GER or ENG");
}

void AddHost(CLI::App& app, Parsed& parsed) {
  CLI::App* host = app.add_subcommand("host", "Make and inspect databases of the embedded host");
  host->require_subcommand(1);
  CLI::App* create = host->add_subcommand("create", "Make a database and its file vault from a model file");
  create
      ->add_option("database", parsed.hostCreate.database, "Database file, made anew, or address on a server")
      ->required();
  create->add_option("model", parsed.hostCreate.model, "Model file (JSON)")->required();
  create->callback([&parsed] {
    parsed.run = [&parsed](Streams& streams) { return RunHostCreate(parsed.hostCreate, streams); };
  });
  CLI::App* show = host->add_subcommand("show", "List what is in a database");
  show->add_option("database", parsed.hostShow.database, "Database file, or its address on a server")
      ->required();
  show->callback([&parsed] {
    parsed.run = [&parsed](Streams& streams) { return RunHostShow(parsed.hostShow, streams); };
  });
}

void AddRecover(CLI::App& app, Parsed& parsed) {
  CLI::App* recover =
      app.add_subcommand("recover", "Put in order what exports left that were cut off; needs no login");
  recover->add_option("database", parsed.recover.database, "Database file, or its address on a server")
      ->required();
  recover->add_flag("--dry-run", parsed.recover.dryRun, "Change nothing, and say what would be done");
  recover->add_flag("--strays", parsed.recover.strays,
                    "Remove temporary directories without a journal as well; only while no export runs");
  recover->callback([&parsed] {
    parsed.run = [&parsed](Streams& streams) { return RunRecover(parsed.recover, streams); };
  });
}

void AddDrive(CLI::App& app, Parsed& parsed) {
  CLI::App* drive = app.add_subcommand("drive", "Drive hooks and pages, one JSON object a line");
  AddLogin(*drive, parsed.drive.login);
  drive->callback([&parsed] {
    parsed.run = [&parsed](Streams& streams) { return RunDrive(parsed.drive, streams); };
    parsed.login = &parsed.drive.login;
  });
}

void RefuseDoubledFields(const std::vector<std::string>& fields) {
  std::set<int> numbers;
  for (const std::string& field : fields) {
    const int number = std::stoi(field);
    if (!numbers.insert(number).second)
      throw CLI::ValidationError("--field", "field " + std::to_string(number) + " is given twice");
  }
}

void AddExport(CLI::App& app, Parsed& parsed) {
  Export& command = parsed.exportCommand;
  CLI::App* sub = app.add_subcommand("export", "Export documents without a person");
  AddLogin(*sub, command.login);
  sub->add_option("--select", command.objects, "Documents, CLASS:OBJECT,...; may be repeated")
      ->required()
      ->allow_extra_args(false)
      ->delimiter(',')
      ->check(WhyNoObject);
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
                  "Folder structure, as CLASS_OBJECT or as the text shown")
      ->check([](const std::string& name) { return name.empty() ? "it names no folder structure" : ""; });
  sub->add_flag("--dry-run", command.dryRun, "Stop before the dispatch and say what would be sent to whom");
  sub->callback([&parsed, &command] {
    if (parsed.noSend) command.mode = "no-send";
    if (command.mode.empty()) throw CLI::RequiredError("--mode or --no-send");
    RefuseDoubledFields(command.fields);
    parsed.login = &command.login;
    parsed.run = [&parsed](Streams& streams) { return RunExport(parsed.exportCommand, streams); };
  });
}

void AddHook(CLI::App& app, Parsed& parsed, const char* name, HookRun action, const char* description) {
  NamedHookCall& command = parsed.hooks[name];
  CLI::App* sub = app.add_subcommand(name, description);
  AddLogin(*sub, command.login);
  sub->add_option("objects", command.objects, "CLASS:OBJECT ...")
      ->required()
      ->delimiter(',')
      ->check(WhyNoObject);
  sub->callback([&parsed, &command, action] {
    parsed.login = &command.login;
    parsed.run = [&command, action](Streams& streams) { return RunHook(command, action, streams); };
  });
}

// Every command that prints results prints them as JSON, too. The drive protocol is JSON anyway.
void AddOutput(CLI::App& app, Parsed& parsed) {
  for (CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
    AddOutput(*command, parsed);
    const bool group = !command->get_subcommands([](CLI::App*) { return true; }).empty();
    if (group || command->get_name() == "drive") continue;
    if (command->get_option_no_throw("--json") == nullptr)
      command->add_flag("--json", parsed.json, "Write the results as one line of JSON");
    command->add_flag("--quiet", parsed.quiet, "Say only the results and what failed");
  }
}

void AddCommands(CLI::App& app, Parsed& parsed) {
  app.require_subcommand(1);
  app.set_version_flag("--version", "tessel " TESSEL_VERSION);
  app.footer(kHelpFooter);
  AddHost(app, parsed);
  AddRecover(app, parsed);
  AddDrive(app, parsed);
  AddExport(app, parsed);
  AddHook(app, parsed, "lock", &RunLock, "Lock documents for an exchange");
  AddHook(app, parsed, "unlock", &RunUnlock, "Unlock documents");
  AddHook(app, parsed, "continue", &RunContinue, "Continue a stopped exchange");
  AddHook(app, parsed, "latest", &RunLatest, "Show the newest exchange object of a document");
#ifdef TESSEL_WITH_RECEIVED
  AddReceivedCommands(app, parsed.run);
#endif
  AddConfigCommands(app, parsed.run);
  AddOutput(app, parsed);
}

int TellUsage(const std::string& error, Streams& streams) {
  streams.err << "tessel: " << error << "\nRun with --help for more information.\n";
  return kBadUsage;
}

// The exit status when there is nothing to run.
std::optional<int> Parse(CLI::App& app, const std::vector<std::string>& arguments, Streams& streams) {
  if (const auto foreign = FindForeignText(arguments)) return TellUsage(*foreign, streams);
  try {
    std::vector<std::string> backwards(arguments.rbegin(), arguments.rend());
    app.parse(backwards);
    return std::nullopt;
  } catch (const CLI::Success& asked) {
    app.exit(asked, streams.out, streams.err);
    return kDone;
  } catch (const CLI::ParseError& error) {
    if (const auto unknown = FindUnknownName(app, arguments)) return TellUsage(*unknown, streams);
    app.exit(error, streams.out, streams.err);
    return kBadUsage;
  }
}

std::string CommandName(const CLI::App& app) {
  const auto named = app.get_subcommands();
  if (named.empty()) return {};
  const std::string inner = CommandName(*named.front());
  return named.front()->get_name() + (inner.empty() ? "" : " " + inner);
}

std::string ContentOf(const std::string& path) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  std::ifstream file(path, std::ios::binary);
  std::string content((std::istreambuf_iterator<char>(file)), {});
  if (content.starts_with(kByteOrderMark)) content.erase(0, kByteOrderMark.size());
  if (!IsUtf8(content)) throw HostError("The text in " + path + " is not UTF-8");
  return content;
}

void ReadPassword(Login& login, std::istream& in) {
  if (!login.passwordFromInput) return;
  if (!std::getline(in, login.password)) throw HostError("Standard input holds no password");
  if (login.password.ends_with('\r')) login.password.pop_back();
}

// Whoever sits at a terminal is asked for the password that the account turns out to need.
int RunAsked(const Parsed& parsed, Streams& streams) {
  if (parsed.login == nullptr) return parsed.run(streams);
  Login& login = *parsed.login;
  ReadPassword(login, streams.in);
  if (!IsUtf8(login.password)) throw HostError("The password is not UTF-8");
  try {
    return parsed.run(streams);
  } catch (const embedded::LoginRefused&) {
    if (!login.password.empty() || login.passwordFromInput || !streams.askUnseen) throw;
    const auto typed = streams.askUnseen("Password of " + login.user + ": ");
    if (!typed) throw;
    login.password = *typed;
  }
  return parsed.run(streams);
}

int RunParsed(Parsed& parsed, Streams& streams) {
  try {
    if (!parsed.contentFile.empty()) parsed.exportCommand.content = ContentOf(parsed.contentFile);
    return RunAsked(parsed, streams);
  } catch (const std::exception& error) {
    streams.err << "tessel: " << error.what() << "\n";
    if (streams.json) WriteResult(streams, parsed.command.c_str(), kRefused, {{"error", error.what()}});
    return kRefused;
  }
}

// A result that nobody could read is no success.
int WithWrittenOutput(int status, bool handsOver, Streams& streams) {
  errno = 0;
  streams.out.flush();
  if (streams.out) return status;
  const int cause = errno;
  streams.err << "tessel: standard output could not be written";
  if (cause != 0) streams.err << ": " << std::generic_category().message(cause);
  streams.err << "\n";
  if (status != kDone) return status;
  return handsOver ? kIncomplete : kRefused;
}

int ParseAndRun(const std::vector<std::string>& arguments, Streams& streams) {
  Parsed parsed;
  CLI::App app("Supplier data exchange for the Pelicore product data management system", "tessel");
  AddCommands(app, parsed);
  const auto ended = Parse(app, arguments, streams);
  if (ended) return WithWrittenOutput(*ended, false, streams);
  parsed.command = CommandName(app);
  streams.json = parsed.json;
  streams.quiet = parsed.quiet;
  const int status = RunParsed(parsed, streams);
  return WithWrittenOutput(status, parsed.command == "export" && !parsed.exportCommand.dryRun, streams);
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
