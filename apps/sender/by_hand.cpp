#include "sender/by_hand.h"

#include <thread>

#include "host/error.h"
#include "sender/list.h"
#include "sender/root_directory.h"
#include "sender/status_texts.h"

namespace tessel::sender {
namespace {

[[noreturn]] void Refuse(const std::string& why) {
  throw RuntimeError(error_number::kInvalidCall, why);
}

bool IsMeant(const ListedExchange& exchange, const FileSystem& files, const std::string& name) {
  return name == exchange.directory.Name() || name == exchange.directory.Path() ||
         name == files.NativePath(exchange.directory.Path()) || name == exchange.identifier ||
         name == ObjectKeyText(exchange.exchange, ':');
}

ExchangeDirectory FindMeant(const WorkParts& parts, const Databases& databases, const std::string& name) {
  std::vector<ExchangeDirectory> meant;
  for (const ListedExchange& exchange : ListAll(parts.settings, parts.files, databases)) {
    if (IsMeant(exchange, parts.files, name)) meant.push_back(exchange.directory);
  }
  if (meant.empty()) Refuse("There is no exchange \"" + name + "\"");
  if (meant.size() > 1) Refuse("\"" + name + "\" are several exchanges: name the directory");
  return meant.front();
}

class Hand {
 public:
  Hand(const WorkParts& parts, const Databases& databases, ExchangeDirectory directory)
      : parts_(parts), directory_(std::move(directory)) {
    const std::string file = DataFileIn(parts_.files, databases, directory_);
    if (file.empty()) Refuse(directory_.Path() + " holds no data file");
    data_ = ParseDataFile(parts_.files.ReadBytes(directory_.In(file)));
    database_ = databases.Find(data_.databaseAlias);
    if (!database_) Refuse("The settings know no database \"" + data_.databaseAlias + "\"");
    record_ = database_->Find(data_);
    if (!record_) Refuse("The data exchange object " + ObjectKeyText(data_.exchange, ':') + " is gone");
    const std::string root = record_->RootDirectory();
    if (!root.empty() && !BelongsTo(parts_.files, root, directory_)) Refuse("Its object belongs to " + root);
    journal_ = ReadJournal(parts_.files, directory_);
  }

  std::string SendAgain() {
    if (directory_.place == Place::kQueued) Refuse(directory_.Name() + " is in the queue already");
    // A new mail to its recipient's program; one that is not known to have arrived keeps its identity.
    if (directory_.place == Place::kSent) {
      ++journal_.issue;
      journal_.handedOver = 0;
    }
    journal_.stage = directory_.place == Place::kSent ? Stage::kSent : Stage::kStopped;
    Finish(Phase::kContinued, Place::kQueued, StatusText::kSentAgain);
    return directory_.Path() + " is in the queue";
  }

  std::string MarkSent() {
    if (directory_.place != Place::kStopped) Refuse(directory_.Name() + " is not stopped");
    journal_.stage = Stage::kSent;
    journal_.outcome = TextOf(database_->Language(), StatusText::kMarkedSent);
    Finish(Phase::kSent, Place::kSent, StatusText::kMarkedSent);
    return directory_.Path() + " counts as sent";
  }

 private:
  // Journal, record, name: a crash in between leaves an exchange that the same decision can be made about
  // again.
  void Finish(Phase phase, Place place, StatusText status) {
    WriteJournal(parts_.files, directory_, journal_);
    const ExchangeDirectory moved = directory_.At(place);
    if (parts_.files.FolderExists(moved.Path())) Refuse(moved.Path() + " is there already");
    const std::string text = TextOf(database_->Language(), status);
    std::string root = RootDirectoryText(moved, data_.subdirectory);
    if (phase == Phase::kSent && database_->Rules().useUrl) root = FileUrl(root);
    record_->Write({phase, text, TimeText(parts_.clock.Now()) + " " + text + "\r\n", root});
    parts_.files.Move(directory_.Path(), moved.Path());
    parts_.files.SyncFolder(directory_.parent);
    directory_ = moved;
    parts_.log.Write({directory_.Name(), phase == Phase::kSent ? "sent" : "queued", text, StepKind::kInfo});
  }

  const WorkParts& parts_;
  ExchangeDirectory directory_;
  DataFile data_;
  Journal journal_;
  ExchangeDatabase* database_ = nullptr;
  std::unique_ptr<ExchangeRecord> record_;
};

}  // namespace

std::string Decide(const WorkParts& parts, const std::string& name, Decision decision) {
  Databases databases(parts.settings, parts.files);
  for (const std::string& problem : databases.Open())
    parts.log.Write({{}, "database", problem, StepKind::kProblem});
  const ExchangeDirectory directory = FindMeant(parts, databases, name);
  LockAnswer answer = LockAnswer::kTaken;
  auto lock = DirectoryLock::Take(parts.files, directory.parent, directory.base, parts.leases, answer);
  // What a machine that is gone left behind is known by its silence.
  for (int i = 0; i < 16 && !lock && answer == LockAnswer::kForeign; ++i) {
    std::this_thread::sleep_for(parts.leases.Lease() / 8);
    lock = DirectoryLock::Take(parts.files, directory.parent, directory.base, parts.leases, answer);
  }
  if (!lock || !parts.files.FolderExists(directory.Path())) Refuse(directory.Path() + " is being worked on");
  Hand hand(parts, databases, directory);
  return decision == Decision::kSendAgain ? hand.SendAgain() : hand.MarkSent();
}

}  // namespace tessel::sender
