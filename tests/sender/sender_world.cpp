#include "sender/sender_world.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "sender/command_line.h"
#include "tessel/cli.h"

namespace tessel::test {

std::string OutputOf(const std::string& command) {
  std::string output;
  FILE* pipe = ::popen(command.c_str(), "r");
  std::array<char, 4096> piece{};
  while (const std::size_t count = ::fread(piece.data(), 1, piece.size(), pipe))
    output.append(piece.data(), count);
  EXPECT_EQ(::pclose(pipe), 0) << command;
  return output;
}

MailServer::MailServer(const TemporaryFolder& folder, const std::vector<std::string>& options) {
  folder.MakeFolder("mail");
  int input[2];
  int output[2];
  if (::pipe2(input, O_CLOEXEC) != 0 || ::pipe2(output, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
  std::vector<std::string> texts{TESSEL_SCRIPTS "/loopback-mail-server", folder.Path("mail")};
  texts.insert(texts.end(), options.begin(), options.end());
  std::vector<char*> arguments;
  for (std::string& text : texts)
    arguments.push_back(text.data());
  arguments.push_back(nullptr);
  process_ = ::fork();
  if (process_ == 0) {
    ::dup2(input[0], STDIN_FILENO);
    ::dup2(output[1], STDOUT_FILENO);
    ::execv(arguments[0], arguments.data());
    ::_exit(127);
  }
  ::close(input[0]);
  ::close(output[1]);
  input_ = input[1];
  FILE* lines = ::fdopen(output[0], "r");
  if (std::fscanf(lines, "%d", &port) != 1) throw std::runtime_error("the mail server does not start");
  std::fclose(lines);
}

MailServer::~MailServer() {
  ::close(input_);
  ::kill(process_, SIGKILL);
  ::waitpid(process_, nullptr, 0);
}

SenderWorld::SenderWorld(const std::vector<std::string>& serverOptions)
    : mailServer(folder, serverOptions), machine([this] {
        NativePlatformOptions options;
        options.drivesDirectory = folder.MakeFolder("drives");
        return options;
      }()) {
  ::setenv("TESSEL_DRIVES", folder.Path("drives").c_str(), 1);
  const std::string company = folder.Path("company");
  std::filesystem::copy(TESSEL_EXAMPLES, company, std::filesystem::copy_options::recursive);
  std::string model = folder.Read("company/company.json");
  const std::string configured = "SMTPServer=mail.wendelau.example";
  model.replace(model.find(configured), configured.size(),
                "SMTPServer=localhost:" + std::to_string(mailServer.port));
  folder.Write("company/company.json", model);
  EXPECT_EQ(Tessel({"host", "create", Database(), company + "/company.json"}), 0) << err;
  folder.Write("login", "machine localhost login kestrix password geheim\n");
  std::filesystem::permissions(folder.Path("login"),
                               std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  WriteSettings();
}

void SenderWorld::WriteSettings(const std::string& more) {
  folder.Write("sender.ini",
               "[Database]\nPath=company.db\nLanguage=ENG\n[Queue]\nFirstPause=0\nAttempts=2\nLease=0.3\n"
               "[Mail]\nCAFile=mail/ca.pem\nAuthFile=login\nAnswerTimeout=1\n" +
                   more);
}

int SenderWorld::Tessel(const std::vector<std::string>& arguments) {
  std::istringstream in;
  std::ostringstream outStream;
  std::ostringstream errStream;
  const int status = cli::Run(arguments, {in, outStream, errStream, false});
  out = outStream.str();
  err = errStream.str();
  return status;
}

std::vector<std::string> SenderWorld::Export(const std::string& mode,
                                             const std::vector<std::string>& recipients,
                                             const std::vector<std::string>& more) {
  std::vector<std::string> arguments{"export",   Database(),  "--user", "anna",
                                     "--select", "1202:4721", "--mode", mode};
  for (const std::string& recipient : recipients) {
    arguments.insert(arguments.end(), {"--recipient", recipient});
  }
  if (mode.starts_with("mail"))
    arguments.insert(arguments.end(), {"--subject", "Wellen Größe 4", "--content", "Grüße"});
  arguments.insert(arguments.end(), more.begin(), more.end());
  EXPECT_EQ(Tessel(arguments), 0) << err;
  std::vector<std::string> bases;
  std::istringstream lines(out);
  for (std::string line; std::getline(lines, line);) {
    const std::string name = line.substr(line.rfind('/') + 1);
    if (name.ends_with("_New")) bases.push_back(name.substr(0, name.size() - 4));
  }
  return bases;
}

int SenderWorld::Sender(const std::vector<std::string>& arguments, const Platform* platform) {
  std::vector<std::string> all{"--settings", folder.Path("sender.ini")};
  all.insert(all.end(), arguments.begin(), arguments.end());
  std::ostringstream outStream;
  std::ostringstream errStream;
  const int status = sender::Run(all, platform ? *platform : machine.Services(), outStream, errStream);
  out = outStream.str();
  err = errStream.str();
  return status;
}

std::string SenderWorld::EndOf(const std::string& base) const {
  for (const char* end : {"New", "Sent", "Break"}) {
    if (folder.Exists(ExchangePath() + "/" + base + "_" + end)) return end;
  }
  return "gone";
}

std::size_t SenderWorld::Mails() const {
  const auto tree = folder.Tree("mail");
  return static_cast<std::size_t>(std::count_if(
      tree.begin(), tree.end(), [](const std::string& name) { return name.ends_with(".eml"); }));
}

std::string SenderWorld::ShowMail(int number, const std::string& extractTo) const {
  char name[32];
  std::snprintf(name, sizeof name, "mail/mail-%03d.eml", number);
  return OutputOf(TESSEL_SCRIPTS "/show-mail " + folder.Path(name) + " " + extractTo);
}

std::string SenderWorld::Record(const std::string& attribute, int number) const {
  char id[16];
  std::snprintf(id, sizeof id, "DX-%06d", number);
  std::string text = OutputOf("sqlite3 " + Database() + " \"select " + attribute +
                              " from DATA_EXCHANGE where VRK_ID = '" + id + "'\"");
  while (text.ends_with('\n'))
    text.pop_back();
  return text;
}

void SenderWorld::SetRecord(const std::string& assignment, int number) const {
  char id[16];
  std::snprintf(id, sizeof id, "DX-%06d", number);
  static_cast<void>(OutputOf("sqlite3 " + Database() + " \"update DATA_EXCHANGE set " + assignment +
                             " where VRK_ID = '" + id + "'\""));
}

}  // namespace tessel::test
