#include "sender/check.h"

#include <functional>
#include <ostream>
#include <set>

#include "embedded/store/database_place.h"
#include "host/error.h"
#include "platform/paths.h"
#include "sender/login_file.h"
#include "sender/smtp.h"
#include "sender/system.h"
#include "sender/work.h"

namespace tessel::sender {
namespace {

class Checks {
 public:
  explicit Checks(std::ostream& out) : out_(out) {}
  // The check throws a reason, or returns a remark.
  void Try(const std::string& what, const std::function<std::string()>& check) {
    try {
      const std::string remark = check();
      out_ << "ok       " << what << (remark.empty() ? "" : ": " + remark) << "\n";
    } catch (const std::exception& error) {
      out_ << "PROBLEM  " << what << ": " << error.what() << "\n";
      well_ = false;
    }
  }
  [[nodiscard]] bool Well() const { return well_; }

 private:
  std::ostream& out_;
  bool well_ = true;
};

[[noreturn]] void Bad(const std::string& why) {
  throw RuntimeError(error_number::kInvalidCall, why);
}

// A folder that can be written, tried by writing.
std::string TryFolder(FileSystem& files, const std::string& path, bool mayBeMissing) {
  if (!files.FolderExists(path)) {
    if (mayBeMissing) return "not there yet";
    Bad("it is not there");
  }
  const std::string probe = paths::Join(path, ".KestrixServMon.check");
  files.WriteBytes(probe, "");
  files.DeleteFile(probe);
  return {};
}

// The path, the folder of the locks, and the exchanges that are to be sent or can be continued: all are
// written, and renamed.
std::string TryExchangePath(FileSystem& files, const std::string& path, bool mayBeMissing) {
  std::string remark = TryFolder(files, path, mayBeMissing);
  if (!remark.empty()) return remark;
  if (files.FolderExists(LockFolder(path))) TryFolder(files, LockFolder(path), false);
  int count = 0;
  for (const ExchangeDirectory& directory : ListExchanges(files, path)) {
    if (directory.place == Place::kSent) continue;
    const std::string why = WhyNotWritable(files.NativePath(directory.Path()));
    if (!why.empty()) Bad(directory.Name() + " cannot be sent by this account: " + why);
    ++count;
  }
  return count == 0 ? remark : std::to_string(count) + " exchanges to be sent or stopped, all writable";
}

std::string TryPrivate(const FileSystem& files, const std::string& path) {
  const std::string why = WhyNoLogin(files, path);
  if (!why.empty()) Bad(why);
  return {};
}

// Gives the mail servers that the databases name to `servers`.
void CheckDatabases(Checks& checks, const Settings& settings, FileSystem& files,
                    std::set<std::string>& servers) {
  for (const DatabaseLogin& login : settings.databases) {
    checks.Try("database " + embedded::ShownPlace(login.path), [&] {
      const ExchangeDatabase database(login, files);
      checks.Try("exchange path " + database.Rules().exchangePath,
                 [&] { return TryExchangePath(files, database.Rules().exchangePath, true); });
      servers.insert(database.Rules().mailServer);
      return "\"" + database.Alias() + "\", account \"" + login.user + "\", language " + database.Language();
    });
  }
  for (const std::string& path : settings.exchangePaths)
    checks.Try("exchange path " + path, [&] { return TryExchangePath(files, path, false); });
}

void CheckServer(Checks& checks, const Settings& settings, const FileSystem& files, const std::string& name) {
  checks.Try("mail server " + name, [&] {
    const MailServer server = ParseServer(name, settings.mailPort);
    const bool usable = !settings.mailAuthFile.empty() && WhyNoLogin(files, settings.mailAuthFile).empty();
    const std::string why =
        TryServer(settings, server, usable ? files.NativePath(settings.mailAuthFile) : "");
    if (!why.empty()) Bad(why);
    return std::string("it lets us in");
  });
}

void CheckMail(Checks& checks, const Settings& settings, FileSystem& files,
               const std::set<std::string>& servers) {
  if (!settings.mailAuthFile.empty())
    checks.Try("file of the mail password " + settings.mailAuthFile,
               [&] { return TryPrivate(files, settings.mailAuthFile); });
  if (!settings.mailCaFile.empty()) {
    checks.Try("certificates " + settings.mailCaFile, [&] {
      if (files.ReadBytes(settings.mailCaFile).find("-----BEGIN CERTIFICATE-----") == std::string::npos)
        Bad("it holds no certificate in PEM");
      return std::string();
    });
  }
  if (settings.mailSecurity == MailSecurity::kPlain)
    checks.Try("mail security", [] { return std::string("not encrypted, and no password is sent"); });
  for (const std::string& name : servers) {
    if (!name.empty()) CheckServer(checks, settings, files, name);
  }
}

void CheckOthers(Checks& checks, const Settings& settings, FileSystem& files) {
  if (!settings.odetteOutbox.empty()) {
    checks.Try("outbox " + settings.odetteOutbox,
               [&] { return TryFolder(files, settings.odetteOutbox, false); });
    checks.Try("acknowledgements " + settings.odetteAcknowledgements,
               [&] { return TryFolder(files, settings.odetteAcknowledgements, false); });
  }
  if (!settings.commandProgram.empty()) {
    checks.Try("program " + settings.commandProgram, [&] {
      if (!IsProgram(files.NativePath(settings.commandProgram))) Bad("it is no program that can be run");
      return std::string();
    });
  }
}

}  // namespace

bool CheckSettings(const Settings& settings, FileSystem& files, std::ostream& out) {
  Checks checks(out);
  std::set<std::string> servers{settings.mailServer};
  CheckDatabases(checks, settings, files, servers);
  CheckMail(checks, settings, files, servers);
  CheckOthers(checks, settings, files);
  return checks.Well();
}

}  // namespace tessel::sender
