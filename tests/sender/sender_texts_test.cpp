// Texts that leave the house, or come into it: mail fields, packages, paths, data files' rules.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <chrono>
#include <fstream>

#include "host/error.h"
#include "platform/native/native_platform.h"
#include "sender/directory_lock.h"
#include "sender/mail.h"
#include "sender/mail_text.h"
#include "sender/package.h"
#include "sender/record.h"
#include "sender/root_directory.h"
#include "sender/sender_world.h"
#include "sender/smtp.h"
#include "sender/status_texts.h"
#include "support/temporary_folder.h"

namespace tessel::sender {
namespace {

std::string AddressesOf(const std::string& text) {
  try {
    std::string result;
    for (const Address& address : ParseAddresses(text))
      result += "[" + address.name + "|" + address.mailbox + "]";
    return result;
  } catch (const RuntimeError&) {
    return "refused";
  }
}

TEST(MailFields, KnowAddresses) {
  const std::pair<const char*, const char*> cases[] = {
      {"a@b.example", "[|a@b.example]"},
      {" a@b.example ; c@d.example,", "[|a@b.example][|c@d.example]"},
      {"Jörg <j@b.example>", "[Jörg|j@b.example]"},
      {"\"Sons, Ltd\" <s@b.example>", "[Sons, Ltd|s@b.example]"},
      {"Müller, Jörg <a@b.example>", "[Müller, Jörg|a@b.example]"},
      {"c@d.example, Müller, Jörg <a@b.example>,x@y.example",
       "[|c@d.example][Müller, Jörg|a@b.example][|x@y.example]"},
      {"Müller; Jörg <a@b.example>", "refused"},
      {"j@größe.example", "[|j@xn--gre-6ka8i.example]"},
      {"jörg@b.example", "[|jörg@b.example]"},
      {"", "refused"},
      {"a@", "refused"},
      {"@b.example", "refused"},
      {"a b@c.example", "refused"},
      {"a@b.example\r\nBcc: c@d.example", "refused"},
      {"a@b..example", "refused"},
      {"a@b.example> SIZE=1 <c@d.example", "refused"},
      {"-f@b.example", "refused"},
      {"a@b.example\xC2\x85", "refused"},
  };
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(AddressesOf(text), expected) << text;
}

TEST(MailFields, HoldNoFurtherLine) {
  EXPECT_EQ(HeaderText("Gearbox, second issue", 9), "Gearbox, second issue");
  EXPECT_EQ(HeaderText("x\r\nBcc: y@z.example", 9), "x  Bcc: y@z.example");
  EXPECT_EQ(HeaderText("=?UTF-8?Q?x?=", 9), EncodedWords("=?UTF-8?Q?x?=", 9));
  EXPECT_EQ(HeaderText("Größe", 9), "=?UTF-8?B?R3LDtsOfZQ==?=");
  for (const std::size_t used : {4U, 9U, 20U}) {
    const std::string folded = HeaderText(std::string(44, 'x') + "öö" + std::string(300, 'y'), used);
    for (std::size_t at = 0; at < folded.size();) {
      const auto end = std::min(folded.find("\r\n", at), folded.size());
      EXPECT_LE(end - at + (at == 0 ? used : 0), 76U) << folded;
      EXPECT_TRUE(at == 0 || folded[at] == ' ');
      at = end + 2;
    }
  }
  EXPECT_EQ(Parameter("filename", "Kestrix.zip"), "; filename=\"Kestrix.zip\"");
  EXPECT_EQ(Parameter("filename", "Größe \".zip"), "; filename*=UTF-8''Gr%C3%B6%C3%9Fe%20%22.zip");
  EXPECT_EQ(MailDate(1706715902), "Wed, 31 Jan 2024 15:45:02 +0000");
  EXPECT_EQ(MessageIdOf("SAM PLE", "20240131_154502_ö", "900.4900", 1, "a@b.example"),
            "<kestrix.20240131.154502.900.4900.1.SAM.PLE@b.example>");
}

TEST(MailFields, NameServers) {
  const auto text = [](const char* server) {
    try {
      return ParseServer(server, 587).Text();
    } catch (const RuntimeError&) {
      return std::string("refused");
    }
  };
  EXPECT_EQ(text("mail.example"), "mail.example:587");
  EXPECT_EQ(text("mail.example:25"), "mail.example:25");
  EXPECT_EQ(text("[::1]:25"), "[::1]:25");
  for (const char* bad : {"", "a:b", "a:0", "a:70000", "::1", "a/b", "a@b", "a b"})
    EXPECT_EQ(text(bad), "refused") << bad;
}

TEST(MailSource, HasTheSizeThatItSays) {
  test::TemporaryFolder folder;
  for (const std::size_t size : {0U, 1U, 57U, 58U, 57U * 1024U, 100'000U}) {
    const std::string path = folder.Write("x.zip", std::string(size, 'z'));
    MailHead head{
        {"Ä", "a@b.example"}, {{"", "c@d.example"}}, "s", "<i@b>", "d", "e", "text\nlines", "x.zip"};
    MailSource source(head, path);
    std::string mail;
    char piece[777];
    while (const std::size_t count = source.Read(piece, sizeof piece))
      mail.append(piece, count);
    EXPECT_EQ(static_cast<long long>(mail.size()), source.Size());
    EXPECT_EQ(mail.find("\n."), std::string::npos);
    EXPECT_NE(mail.find("\r\n\r\ntext\r\nlines\r\n--=_kestrix_ib\r\n"), std::string::npos)
        << mail.substr(0, 900);
  }
}

TEST(Package, IsTheSameForTheSameDocuments) {
  test::TemporaryFolder folder;
  NativePlatform machine;
  const FileSystem& files = machine.Services().files;
  const ExchangeDirectory directory{folder.Path(), "Export_x", Place::kQueued};
  folder.Write("Export_x_New/Gehäuse.stp", std::string(100'000, 'a'));
  folder.Write("Export_x_New/sub/b.stp", "b");
  const auto documents = ListDocuments(files, directory, {});
  ASSERT_EQ(documents.size(), 2U);
  WritePackage(files, directory, documents, "20240131_154502_anna", folder.Path("1.zip"));
  std::filesystem::last_write_time(folder.Path("Export_x_New/sub/b.stp"), std::filesystem::file_time_type{});
  ::setenv("TZ", "Asia/Tokyo", 1);
  WritePackage(files, directory, documents, "20240131_154502_anna", folder.Path("2.zip"));
  ::unsetenv("TZ");
  EXPECT_EQ(folder.Read("1.zip"), folder.Read("2.zip"));
  folder.Write("Export_x_New/sub/b.stp", "");
  EXPECT_THROW(WritePackage(files, directory, documents, "", folder.Path("3.zip")), RuntimeError);
  EXPECT_THROW(WritePackage(files, directory, {}, "", folder.Path("3.zip")), RuntimeError);
  EXPECT_FALSE(folder.Exists("3.zip"));
}

// More entries than the first form of the format can count; a file beyond 4 GB as well when asked for, since
// it takes its time.
TEST(Package, GoesBeyondTheBordersOfTheOldFormat) {
  test::TemporaryFolder folder;
  NativePlatform machine;
  const FileSystem& files = machine.Services().files;
  const ExchangeDirectory directory{folder.Path(), "Export_x", Place::kQueued};
  constexpr int kMany = 65'600;
  folder.MakeFolder("Export_x_New");
  for (int i = 0; i < kMany; ++i)
    std::ofstream(folder.Path("Export_x_New/" + std::to_string(i)));
  const bool large = std::getenv("TESSEL_SENDER_LARGE") != nullptr;
  if (large) std::filesystem::resize_file(folder.Path("Export_x_New/0"), 5'000'000'000);
  WritePackage(files, directory, ListDocuments(files, directory, {}), "", folder.Path("x.zip"));
  const std::string told =
      test::OutputOf("python3 -c \"import zipfile; z = zipfile.ZipFile('" + folder.Path("x.zip") +
                     "'); print(len(z.namelist()), z.getinfo('0').file_size)\"");
  EXPECT_EQ(told, std::to_string(kMany) + (large ? " 5000000000\n" : " 0\n"));
}

// A limit on the size of files stands for the full disk: the same error path, and no other file is in danger.
TEST(Package, LeavesNothingOnAFullDisk) {
  test::TemporaryFolder folder;
  NativePlatform machine;
  const ExchangeDirectory directory{folder.Path(), "Export_x", Place::kQueued};
  std::string noise(100'000, 'x');
  for (std::size_t i = 0; i < noise.size(); ++i)
    noise[i] = static_cast<char>((i * i + i / 7) % 251);
  folder.Write("Export_x_New/a", noise);
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{1000, before.rlim_max};
  const auto oldHandler = ::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(RLIMIT_FSIZE, &small);
  int number = 0;
  try {
    WritePackage(machine.Services().files, directory, {{"a", 100'000}}, "", folder.Path("x.zip"));
  } catch (const RuntimeError& error) {
    number = error.Number();
  }
  ::setrlimit(RLIMIT_FSIZE, &before);
  ::signal(SIGXFSZ, oldHandler);
  EXPECT_EQ(number, error_number::kDiskFull);
  EXPECT_EQ(folder.Tree(), (std::vector<std::string>{"Export_x_New/", "Export_x_New/a"}));
}

TEST(Lock, IsHeldOnceAndOutlivesNoWorker) {
  test::TemporaryFolder folder;
  NativePlatform machine;
  FileSystem& files = machine.Services().files;
  LeaseBook leases(std::chrono::milliseconds(50));
  LockAnswer answer = LockAnswer::kForeign;
  auto lock = DirectoryLock::Take(files, folder.Path(), "Export_x", leases, answer);
  ASSERT_TRUE(lock);
  EXPECT_FALSE(DirectoryLock::Take(files, folder.Path(), "Export_x", leases, answer));
  EXPECT_EQ(answer, LockAnswer::kBusy);
  lock.reset();
  EXPECT_EQ(folder.Tree(".KestrixServMon"), std::vector<std::string>{});
  // Another machine's sign, on a share that does not carry its lock to us.
  folder.Write(".KestrixServMon/Export_x.lock", "elsewhere/0 process 1 sign 1\n");
  EXPECT_FALSE(DirectoryLock::Take(files, folder.Path(), "Export_x", leases, answer));
  EXPECT_EQ(answer, LockAnswer::kForeign);
  const std::string path = folder.Path(".KestrixServMon/Export_x.lock");
  const auto waitsOut = [&](const std::string& sign) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (std::chrono::steady_clock::now() < end) {
      if (leases.HasRunOut(path, sign)) return true;
    }
    return false;
  };
  EXPECT_FALSE(leases.HasRunOut(path, "elsewhere/0 process 1 sign 2\n")) << "it lives";
  EXPECT_TRUE(waitsOut("elsewhere/0 process 1 sign 2\n")) << "it has stood still";
  // It yielded to us; then it takes ours over.
  folder.Write(".KestrixServMon/Export_x.lock",
               "elsewhere/0 process 1 sign 1\nelsewhere/0 process 1 yields\n");
  lock = DirectoryLock::Take(files, folder.Path(), "Export_x", leases, answer);
  ASSERT_TRUE(lock);
  EXPECT_TRUE(lock->IsStillOurs());
  files.AppendBytes(path, "elsewhere/0 process 2 sign 1\n");
  EXPECT_FALSE(lock->IsStillOurs());
}

TEST(Paths, TellWhoseDirectoryItIs) {
  EXPECT_EQ(FileUrl("C:\\temp\\Größe x\\SubDir"), "file:///C:/temp/Gr%C3%B6%C3%9Fe%20x/SubDir");
  EXPECT_EQ(FileUrl("\\\\server\\data\\x"), "file://server/data/x");
  EXPECT_EQ(FileUrl("/srv/x#1"), "file:///srv/x%231");
  EXPECT_EQ(RootDirectoryText({"C:\\temp", "Export_x", Place::kStopped}, ""), "C:\\temp\\Export_x_Break\\")
      << "what stands before the last separator is the directory";
  EXPECT_TRUE(LiesIn("C:\\temp\\Export_x_Sent\\SubDir", "Export_x"));
  EXPECT_TRUE(LiesIn(FileUrl("/srv/Export_ö_Sent/SubDir"), "Export_ö"));
  EXPECT_FALSE(LiesIn("C:\\temp\\Export_xx_Sent\\SubDir", "Export_x"));
  EXPECT_FALSE(LiesIn("C:\\temp\\AnExport_x_Sent", "Export_x"));
}

TEST(Texts, AreThereInBothLanguagesWithTheSameValues) {
  const std::vector<std::string> values{"<0>", "<1>", "<2>", "<3>"};
  for (int number = 0; number <= static_cast<int>(StatusText::kFileFailed); ++number) {
    const std::string english = TextOf("ENG", static_cast<StatusText>(number), values);
    const std::string german = TextOf("GER", static_cast<StatusText>(number), values);
    EXPECT_FALSE(english.empty() || german.empty()) << number;
    for (const std::string& value : values)
      EXPECT_EQ(english.find(value) == std::string::npos, german.find(value) == std::string::npos) << german;
  }
  EXPECT_EQ(ReasonText("GER", RuntimeError(error_number::kDiskFull, "Cannot write x: No space left")),
            "der Datenträger ist voll (Cannot write x: No space left)");
  EXPECT_STREQ(Reason(StatusText::kNoAddress).what(), "There is no mail address");
}

TEST(Rules, AreReadAsTheDatabaseHasThem) {
  const std::string text =
      "[Path]\r\n#ExchangePath=A\r\nExchangePath =B\r\nExchangePath=C:\\x\r\n[Other]\r\nK=1=2\r\n";
  EXPECT_EQ(RuleValue(text, "Path", "ExchangePath", "d"), "C:\\x");
  EXPECT_EQ(RuleValue(text, "Other", "K", "d"), "d");
  EXPECT_EQ(RuleValue(text, "None", "K", "d"), "d");
  EXPECT_EQ(TextOf("GER", StatusText::kStopped, {"{1} {0}"}), "Angehalten: {1} {0}");
}

}  // namespace
}  // namespace tessel::sender
