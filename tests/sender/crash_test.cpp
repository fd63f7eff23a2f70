// The sender dies, at every step of its own and at any moment: nothing is lost, and nothing is sent twice
// without a person having said so. Several senders share a queue.
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <functional>
#include <random>
#include <sstream>

#include "platform/posix/posix_file_system.h"
#include "sender/command_line.h"
#include "sender/sender_world.h"

namespace tessel::test {
namespace {

constexpr int kDied = 9;

// What becomes of the n-th write into a database from now on; 0: of none.
std::atomic<int> databaseWritesLeft{0};
std::atomic<bool> databaseWriteFails{false};
std::atomic<bool> noWatchIsLeft{false};

// Ends the process before or after its n-th change.
class DyingFiles : public posix::PosixFileSystem {
 public:
  DyingFiles(const std::string& drives, int changes) : PosixFileSystem(drives), left_(changes) {}
  void CreateFolders(const std::string& path) override {
    Around([&] { PosixFileSystem::CreateFolders(path); });
  }
  void DeleteFile(const std::string& path) override {
    Around([&] { PosixFileSystem::DeleteFile(path); });
  }
  using FileSystem::CopyFile;
  bool CopyFile(const std::string& from, const std::string& to, bool overwrite,
                const CopyProgress& progress) override {
    bool whole = false;
    Around([&] { whole = PosixFileSystem::CopyFile(from, to, overwrite, progress); });
    return whole;
  }
  void SyncFolder(const std::string& folder) override {
    Around([&] { PosixFileSystem::SyncFolder(folder); });
  }
  void CreateFolder(const std::string& path) override {
    Around([&] { PosixFileSystem::CreateFolder(path); });
  }
  void Move(const std::string& from, const std::string& to) override {
    Around([&] { PosixFileSystem::Move(from, to); });
  }
  void WriteBytes(const std::string& path, std::string_view bytes) override {
    Around([&] { PosixFileSystem::WriteBytes(path, bytes); });
  }
  void AppendBytes(const std::string& path, std::string_view bytes) override {
    Around([&] { PosixFileSystem::AppendBytes(path, bytes); });
  }

 private:
  template <class Change>
  void Around(Change change) {
    Count();
    change();
    Count();
  }
  void Count() {
    if (--left_ == 0) ::_exit(kDied);
  }
  std::atomic<int> left_;
};

class CrashTest : public SenderWorld {
 protected:
  // Everything as it is now, and back to it.
  void Keep() { Copy(folder.Path(), folder.Path("../" + Kept())); }
  void Restore() {
    std::filesystem::remove_all(folder.Path("drives"));
    Copy(folder.Path("../" + Kept()), folder.Path());
    for (const char* end : {"-wal", "-shm"})
      std::filesystem::remove(Database() + end);
  }
  ~CrashTest() override { std::filesystem::remove_all(folder.Path("../" + Kept())); }

  // Runs the sender in a process of its own until its n-th change, or its n-th write into the database. False
  // when it came to its end before.
  bool DiesAt(int changes, int databaseWrites = 0) {
    const pid_t child = ::fork();
    if (child == 0) {
      databaseWritesLeft = databaseWrites;
      DyingFiles files(folder.Path("drives"), changes);
      Platform& whole = machine.Services();
      const Platform dying{files,          whole.encodings, whole.clock,   whole.pauser,      whole.processes,
                           whole.profiles, whole.system,    whole.program, whole.ansiCodePage};
      ::_exit(Sender({"--once"}, &dying) == 0 ? 0 : 1);
    }
    return WEXITSTATUS(Collect(child)) == kDied;
  }
  static int Collect(pid_t child) {
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
  }
  pid_t Start(const std::string& how = "--once") const {
    std::vector<std::string> texts{TESSEL_SENDER, how, "--settings", folder.Path("sender.ini")};
    std::vector<char*> arguments;
    for (std::string& text : texts)
      arguments.push_back(text.data());
    arguments.push_back(nullptr);
    pid_t child = 0;
    EXPECT_EQ(::posix_spawn(&child, TESSEL_SENDER, nullptr, nullptr, arguments.data(), environ), 0);
    return child;
  }

  // Sent with one mail, or stopped for a person to decide.
  void ExpectWhole(const std::vector<std::string>& bases, std::size_t mails) {
    std::size_t sent = 0;
    std::size_t asked = 0;
    for (std::size_t i = 0; i < bases.size(); ++i) {
      const int number = static_cast<int>(i) + 2;
      const std::string phase = Record("VRKX_DX_PROCESS_PHASE", number);
      const std::string status = Record("VRKX_DX_STATUS_INFO", number);
      const bool isSent = EndOf(bases[i]) == "Sent" && phase == "4";
      const bool isAsked =
          EndOf(bases[i]) == "Break" && phase == "3" && status.find("not known") != std::string::npos;
      EXPECT_TRUE(isSent || isAsked) << EndOf(bases[i]) << " " << phase << " " << status << "\n" << err;
      sent += isSent;
      asked += isAsked;
    }
    EXPECT_GE(mails, sent) << "lost";
    EXPECT_LE(mails, sent + asked) << "doubled";
  }

 private:
  [[nodiscard]] std::string Kept() const {
    return std::filesystem::path(folder.Path()).filename().string() + "-kept";
  }
  static void Copy(const std::string& from, const std::string& to) {
    std::filesystem::create_directories(to);
    for (const char* name : {"company.db", "drives"}) {
      std::filesystem::copy(
          from + "/" + name, to + "/" + name,
          std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
    }
  }
};

struct Way {
  const char* mode;
  const char* settings;
};

class EveryChangeTest : public CrashTest, public testing::WithParamInterface<Way> {
 protected:
  void SetUp() override {
    WriteSettings(GetParam().settings);
    folder.Write("deliver", "#!/bin/sh\necho one >> delivered\n");
    std::filesystem::permissions(folder.Path("deliver"), std::filesystem::perms::owner_all);
    folder.MakeFolder("outbox");
    bases_ = {ExportOne(GetParam().mode)};
    static_cast<void>(OutputOf("sqlite3 " + Database() + " 'pragma wal_checkpoint(truncate)'"));
    Keep();
    before_ = Left();
  }
  // How often the exchange left the house.
  std::size_t Left() {
    std::size_t left = Mails();
    for (const std::string& name : folder.Tree("outbox"))
      left += name.ends_with(".job");
    for (const std::string& name : folder.Tree(ExchangePath())) {
      if (name.ends_with("/delivered")) left += folder.Read(ExchangePath() + "/" + name).size() / 4;
    }
    return left;
  }
  // The next senders, and the station.
  void GoOn() {
    static_cast<void>(Once());
    for (const std::string& name : folder.Tree("outbox")) {
      if (!name.ends_with(".job") || EndOf(bases_[0]) != "New") continue;
      folder.Write("outbox/" + name.substr(0, name.size() - 4) + ".ack", "delivered");
      static_cast<void>(Once());
    }
    ExpectWhole(bases_, Left() - before_);
  }
  void StartAnew() {
    Restore();
    std::filesystem::remove_all(folder.Path("outbox"));
    folder.MakeFolder("outbox");
    before_ = Left();
  }
  // After a stop that asks, a person has it sent once more.
  void Continue() {
    EXPECT_EQ(Tessel({"continue", Database(), "--user", "anna", RecordKey()}), 0) << err;
    static_cast<void>(Once());
    EXPECT_EQ(EndOf(bases_[0]), "Sent") << err;
  }

  std::vector<std::string> bases_;
  std::size_t before_ = 0;
};

TEST_P(EveryChangeTest, LosesNothingAndDoublesNothing) {
  const bool odette = std::string(GetParam().mode) == "odette";
  int changes = 1;
  int asked = 0;
  for (;; ++changes) {
    SCOPED_TRACE(changes);
    if (!DiesAt(changes)) break;
    GoOn();
    asked += EndOf(bases_[0]) == "Break";
    if (EndOf(bases_[0]) == "Break" && !odette) Continue();
    StartAnew();
  }
  EXPECT_GT(changes, 15);
  EXPECT_GT(asked, 0) << "between mark and acceptance a person is asked";
  EXPECT_LT(asked, changes / 2) << "and only there";
}

// The sender dies in the midst of a write into the database, or the write fails.
TEST_P(EveryChangeTest, IncludesWritesIntoTheDatabase) {
  constexpr int kNever = 1'000'000;
  int writes = 1;
  for (;; ++writes) {
    SCOPED_TRACE(writes);
    if (!DiesAt(kNever, writes)) break;
    GoOn();
    StartAnew();
  }
  EXPECT_GT(writes, 5);
  for (int write = 1; write < writes; ++write) {
    SCOPED_TRACE(write);
    databaseWriteFails = true;
    databaseWritesLeft = write;
    static_cast<void>(Once());
    databaseWritesLeft = 0;
    databaseWriteFails = false;
    GoOn();
    EXPECT_NE(EndOf(bases_[0]), "Break") << "the database is no reason to stop: " << err;
    StartAnew();
  }
}

INSTANTIATE_TEST_SUITE_P(All, EveryChangeTest,
                         testing::Values(Way{"mail", ""}, Way{"odette", "[Odette]\nOutbox=outbox\n"},
                                         Way{"custom", "[Command]\nProgram=deliver\n"}),
                         [](const auto& one) { return CaseName(one.param.mode); });

TEST_F(CrashTest, AtAnyMomentLosesNothingAndDoublesNothing) {
  const char* wanted = std::getenv("TESSEL_SENDER_KILLS");
  const int kills = wanted == nullptr ? 12 : std::atoi(wanted);
  const auto bases = Export("mail-structure", {"901_301:902_401", "901_302:902_404"});
  static_cast<void>(OutputOf("sqlite3 " + Database() + " 'pragma wal_checkpoint(truncate)'"));
  Keep();
  std::mt19937 random(4711);
  for (int kill = 0; kill < kills; ++kill) {
    SCOPED_TRACE(kill);
    const std::size_t before = Mails();
    const pid_t child = Start();
    ::poll(nullptr, 0, static_cast<int>(random() % 160));
    ::kill(child, SIGKILL);
    static_cast<void>(Collect(child));
    static_cast<void>(Once());
    ExpectWhole(bases, Mails() - before);
    Restore();
  }
}

TEST_F(CrashTest, SeveralSendersShareAQueue) {
  const auto bases = Export("mail", {"901_301:902_401", "901_302:902_404", "901_302:902_405"});
  std::vector<pid_t> senders;
  for (int i = 0; i < 4; ++i)
    senders.push_back(Start());
  for (const pid_t sender : senders)
    EXPECT_EQ(WEXITSTATUS(Collect(sender)), 0);
  EXPECT_EQ(Mails(), 3U);
  EXPECT_EQ(Once(), 0) << err;
  EXPECT_EQ(Mails(), 3U);
  for (const std::string& base : bases)
    EXPECT_EQ(EndOf(base), "Sent");
}

// No scan comes within the test: what it takes up it has seen. Then it ends, and brings a transfer to its
// end.
TEST_F(CrashTest, WatchesUntilItIsEnded) {
  std::string settings = folder.Read("sender.ini");
  folder.Write("sender.ini",
               settings.insert(settings.find("[Queue]\n") + 8, "ScanInterval=600\n") + "StallTimeout=1\n");
  const auto waitFor = [](const std::function<bool()>& done) {
    for (int i = 0; i < 1200 && !done(); ++i)
      ::poll(nullptr, 0, 50);
    return done();
  };
  const std::string first = ExportOne("mail");
  const pid_t sender = Start("--watch");
  EXPECT_TRUE(waitFor([&] { return EndOf(first) == "Sent"; }));
  Misbehave("hang-after");
  const std::string second = ExportOne("mail");
  EXPECT_TRUE(waitFor([&] { return Mails() == 2; })) << "seen at once";
  ::kill(sender, SIGTERM);
  EXPECT_EQ(Collect(sender), 0);
  ExpectWhole({first, second}, 2);
  EXPECT_EQ(EndOf(second), "Break");
}

TEST_F(CrashTest, AnExhaustedWatchLeavesTheScans) {
  const std::string base = ExportOne("mail");
  noWatchIsLeft = true;
  EXPECT_EQ(Once(), 0) << err;
  noWatchIsLeft = false;
  EXPECT_EQ(EndOf(base), "Sent");
}

}  // namespace
}  // namespace tessel::test

extern "C" int inotify_init1(int flags) {
  if (!tessel::test::noWatchIsLeft) return static_cast<int>(::syscall(SYS_inotify_init1, flags));
  errno = EMFILE;
  return -1;
}

// Stands before the system's function of this name, through which the database library writes.
extern "C" ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t at) {
  if (tessel::test::databaseWritesLeft > 0 && --tessel::test::databaseWritesLeft == 0) {
    if (!tessel::test::databaseWriteFails) ::_exit(tessel::test::kDied);
    errno = EIO;
    return -1;
  }
  return ::syscall(SYS_pwrite64, file, bytes, size, at);
}
