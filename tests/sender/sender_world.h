// The sample company, exports of it, a mail server on the loopback, and the sender run in process.
#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <memory>
#include <string>
#include <vector>

#include "platform/native/native_platform.h"
#include "support/temporary_folder.h"

namespace tessel::test {

// The name of a case: the letters and digits of a text.
inline std::string CaseName(const std::string& text) {
  std::string name;
  for (const char character : text) {
    if (std::isalnum(static_cast<unsigned char>(character)) != 0) name += character;
  }
  return name;
}

// scripts/loopback-mail-server, ended with the object.
class MailServer {
 public:
  explicit MailServer(const TemporaryFolder& folder, const std::vector<std::string>& options = {});
  ~MailServer();
  MailServer(const MailServer&) = delete;
  MailServer& operator=(const MailServer&) = delete;
  int port = 0;

 private:
  int process_ = 0;
  int input_ = -1;
};

class SenderWorld : public testing::Test {
 protected:
  // Makes the company's database; its mail server is the one of this world.
  explicit SenderWorld(const std::vector<std::string>& serverOptions = {});

  // Exports the housing (1202:4721) as anna. The names of the finished directories without their ends.
  std::vector<std::string> Export(const std::string& mode, const std::vector<std::string>& recipients,
                                  const std::vector<std::string>& more = {});
  std::string ExportOne(const std::string& mode) { return Export(mode, {"901_302:902_404"}).at(0); }
  int Tessel(const std::vector<std::string>& arguments);
  // Runs the sender with the settings.
  int Sender(const std::vector<std::string>& arguments, const Platform* platform = nullptr);
  int Once() { return Sender({"--once"}); }
  void WriteSettings(const std::string& more = {});
  // How the next connections to the mail server go, see there.
  void Misbehave(const std::string& lines) const { folder.Write("mail/behaviour", lines); }

  [[nodiscard]] std::string Database() const { return folder.Path("company.db"); }
  [[nodiscard]] std::string ExchangePath() const { return "drives/C/temp/Exchange"; }
  // "New", "Sent" or "Break"; "gone".
  [[nodiscard]] std::string EndOf(const std::string& base) const;
  [[nodiscard]] std::string In(const std::string& base, const std::string& name = {}) const {
    return ExchangePath() + "/" + base + "_" + EndOf(base) + "/" + name;
  }
  // Mails that arrived, as the server has them; the fields of one as scripts/show-mail prints it.
  [[nodiscard]] std::size_t Mails() const;
  [[nodiscard]] std::string ShowMail(int number, const std::string& extractTo = {}) const;
  // An attribute of the exchange object whose number counts from 2, as in DX-000002.
  [[nodiscard]] std::string Record(const std::string& attribute, int number = 2) const;
  void SetRecord(const std::string& assignment, int number = 2) const;
  // CLASS:OBJECT of it.
  [[nodiscard]] std::string RecordKey(int number = 2) const { return "900:" + Record("OBJECT_ID", number); }

  TemporaryFolder folder;
  MailServer mailServer;
  NativePlatform machine;
  std::string out;
  std::string err;
};

// Standard output of a shell command.
[[nodiscard]] std::string OutputOf(const std::string& command);

}  // namespace tessel::test
