#include "sender/check.h"

#include <functional>
#include <ostream>

#include "host/error.h"
#include "platform/paths.h"
#include "sender/queue.h"
#include "sender/smtp.h"

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

std::string TryPrivate(const FileSystem& files, const std::string& path) {
  const std::string why = WhyNotPrivate(files.NativePath(path));
  if (!why.empty()) Bad(why);
  return {};
}

void CheckDatabases(Checks& checks, const Settings& settings, FileSystem& files) {
  for (const DatabaseLogin& login : settings.databases) {
    checks.Try("database " + login.path, [&] {
      const ExchangeDatabase database(login, files);
      checks.Try("exchange path " + database.Rules().exchangePath,
                 [&] { return TryFolder(files, database.Rules().exchangePath, true); });
      return "\"" + database.Alias() + "\", account \"" + login.user + "\", language " + database.Language();
    });
  }
  for (const std::string& path : settings.exchangePaths)
    checks.Try("exchange path " + path, [&] { return TryFolder(files, path, false); });
}

void CheckMail(Checks& checks, const Settings& settings, FileSystem& files) {
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
  if (settings.mailServer.empty()) return;
  checks.Try("mail server " + settings.mailServer, [&] {
    const MailServer server = ParseServer(settings.mailServer, settings.mailPort);
    const bool usable =
        !settings.mailAuthFile.empty() && WhyNotPrivate(files.NativePath(settings.mailAuthFile)).empty();
    const std::string why =
        TryServer(settings, server, usable ? files.NativePath(settings.mailAuthFile) : "");
    if (!why.empty()) Bad(why);
    return std::string("it lets us in");
  });
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
  CheckDatabases(checks, settings, files);
  CheckMail(checks, settings, files);
  CheckOthers(checks, settings, files);
  return checks.Well();
}

}  // namespace tessel::sender
