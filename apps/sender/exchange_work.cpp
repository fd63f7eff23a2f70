#include "sender/exchange_work.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <filesystem>

#include "host/error.h"
#include "platform/paths.h"
#include "sender/login_file.h"
#include "sender/package.h"
#include "sender/root_directory.h"
#include "sender/system.h"

namespace tessel::sender {
namespace {

constexpr double kLongestPause = 3600;
constexpr const char* kNeutralFormats = "NeutralFormats.xml";

std::int64_t Now() {
  return std::time(nullptr);
}

std::string LowerCase(std::string text) {
  for (char& c : text)
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return text;
}

WorkAnswer Left(const std::string& why) {
  return {WorkResult::kLeft, 0, why};
}

}  // namespace

void ExchangeWork::Say(const char* step, const std::string& text, StepKind kind) {
  parts_.log.Write({directory_.Name(), step, text, kind});
}

void ExchangeWork::Protocol(const std::string& line) {
  const std::string text = TimeText(parts_.clock.Now()) + " " + line + "\r\n";
  journal_.protocol += text;
  try {
    MakeWorkFolder(parts_.files, directory_);
    const std::string copy = paths::Join(directory_.WorkFolder(), "protocol.txt");
    const std::string native = parts_.files.NativePath(copy);
    std::error_code unknown;
    const auto type = std::filesystem::symlink_status(native, unknown).type();
    if (type == std::filesystem::file_type::not_found || RegularFileSize(native) >= 0)
      parts_.files.AppendBytes(copy, text);
  } catch (const RuntimeError&) {
    // A copy for people; the record has the lines.
  }
}

void ExchangeWork::SaveIfPossible() {
  try {
    Save();
  } catch (const RuntimeError& error) {
    Say("journal", error.what(), StepKind::kProblem);
  }
}

std::string ExchangeWork::Words(StatusText text, const std::vector<std::string>& values) const {
  return TextOf(Language(), text, values);
}

// Until it is known whose exchange it is, that of the first database.
std::string ExchangeWork::Language() const {
  if (database_ != nullptr) return database_->Language();
  return databases_.All().empty() ? std::string() : databases_.All().begin()->second->Language();
}

void ExchangeWork::Report(std::optional<Phase> phase, const std::string& status,
                          const std::string& rootDirectory) {
  if (!record_) return;
  record_->Write({phase, OneLine(status), journal_.protocol, rootDirectory});
  journal_.protocol.clear();
  SaveIfPossible();
}

std::string ExchangeWork::PackageName() const {
  return data_.subdirectory.empty() ? data_.zipFileName : data_.subdirectory + "/" + data_.zipFileName;
}

std::string ExchangeWork::PackagePath() const {
  return paths::Join(directory_.In(data_.subdirectory), data_.zipFileName);
}

TransferJob ExchangeWork::Job() {
  return {parts_.settings,
          parts_.files,
          parts_.clock,
          *database_,
          directory_,
          data_,
          journal_,
          record_->Identifier(),
          PackagePath(),
          database_->Language(),
          [this] {
            if (!lock_.IsStillOurs() || !objectLock_->IsStillOurs())
              throw HostError("another worker has taken " + directory_.Path() + " over");
            Journal announced = journal_;
            announced.stage = Stage::kSending;
            announced.handedOver = Now();
            WriteJournal(parts_.files, directory_, announced);
            journal_ = std::move(announced);
            Say("sending", "the transfer begins");
          }};
}

WorkAnswer ExchangeWork::Run() {
  if (const auto answer = ReadAll()) return *answer;
  if (const auto answer = FindRecord()) return *answer;
  if (const auto answer = CheckIdentity()) return *answer;
  // It may have told of a transfer, and of how many on purpose: the next mail needs an identity that none
  // had.
  if (journalProblem_) {
    journal_.lost = !record_->RootDirectory().empty();
    journal_.issue = static_cast<int>(Now() / 60);
    return Stop(Words(StatusText::kOutcomeUnknown, {ReasonText(Language(), *journalProblem_)}));
  }
  return GoOn();
}

std::optional<WorkAnswer> ExchangeWork::ReadAll() {
  if (!IsRealFolder(parts_.files.NativePath(directory_.Path()))) return Left("it is a link");
  const std::string name = DataFileIn(parts_.files, databases_, directory_);
  if (name.empty()) return Left("it holds no data file");
  // First of all what was done so far: a stop may not forget a transfer.
  try {
    journal_ = ReadJournal(parts_.files, directory_);
  } catch (const DamagedJournal& error) {
    journalProblem_ = error;
  }
  // What cannot be read now may be read later; what is wrong stays wrong.
  dataBytes_ = parts_.files.ReadBytes(directory_.In(name));
  try {
    data_ = ParseDataFile(dataBytes_);
  } catch (const Reason& why) {
    return StopUnusable(why);
  }
  database_ = databases_.Find(data_.databaseAlias);
  if (!database_) return Left("the settings know no database \"" + data_.databaseAlias + "\"");
  return std::nullopt;
}

std::optional<WorkAnswer> ExchangeWork::FindRecord() {
  if (data_.exchange.objectId == 0) return StopUnusable(Reason(StatusText::kNoObject));
  // Two directories that name one object are not worked on at once: the first one's name is on the record
  // before the second one is compared with it.
  LockAnswer answer = LockAnswer::kTaken;
  objectLock_ = DirectoryLock::Take(parts_.files, database_->Rules().exchangePath,
                                    "object " + ObjectKeyText(data_.exchange, '_'), parts_.leases, answer);
  if (!objectLock_) return WorkAnswer{WorkResult::kLater, Now() + 1, {}};
  try {
    record_ = database_->Find(data_);
  } catch (const Reason& why) {
    return StopUnusable(why);
  }
  if (!record_) return StopUnusable(Reason(StatusText::kObjectGone, {ObjectKeyText(data_.exchange, ':')}));
  return std::nullopt;
}

std::optional<WorkAnswer> ExchangeWork::CheckIdentity() {
  const std::string root = record_->RootDirectory();
  const std::string key = ObjectKeyText(data_.exchange, ':');
  if (!root.empty() && !BelongsTo(parts_.files, root, directory_))
    return StopUnusable(Reason(StatusText::kObjectElsewhere, {key, root}));
  if (journal_.exchange != ObjectKey{} && journal_.exchange != data_.exchange) {
    return StopUnusable(Reason(StatusText::kObjectBefore, {key, ObjectKeyText(journal_.exchange, ':')}));
  }
  const bool finished = journal_.stage == Stage::kAccepted || journal_.stage == Stage::kSent;
  if (record_->CurrentPhase() == Phase::kSent && !finished)
    return StopUnusable(Reason(StatusText::kObjectSent, {key}));
  // The first attempt writes the journal, then the record's path.
  const bool fresh = journal_.exchange == ObjectKey{} && journal_.stage == Stage::kQueued && !journalProblem_;
  const Phase phase = record_->CurrentPhase();
  if (fresh && !root.empty() &&
      (phase == Phase::kNew ||
       (phase == Phase::kContinued && !parts_.files.FileExists(JournalPath(directory_)))))
    journalProblem_ = Reason(StatusText::kJournalMissing, {JournalPath(directory_)});
  return std::nullopt;
}

WorkAnswer ExchangeWork::GoOn() {
  const Phase phase = record_->CurrentPhase();
  const bool putBack = phase == Phase::kContinued || (phase == Phase::kNew && !journal_.recordKnown);
  // A stop tells the record phase and path in one write; until then the phase is that of the time before.
  const bool stopRecorded = IsOfPlace(record_->RootDirectory(), directory_, Place::kStopped);
  switch (journal_.stage) {
    case Stage::kAccepted:
      return FinishSent();
    case Stage::kSent:
      // Put into the queue again on purpose; the record says so before the directory gets its name.
      if (phase != Phase::kContinued) return FinishSent();
      Requeue();
      break;
    case Stage::kSending:
      return Conclude(AfterCrash());
    case Stage::kWaiting:
      return Conclude(AskStation(Job()));
    case Stage::kStopping:
      if (phase != Phase::kContinued || !stopRecorded) return FinishStop();
      Requeue();
      break;
    case Stage::kStopped:
      if (!putBack) return Left("its exchange is stopped; it is sent when it is continued");
      Requeue();
      break;
    case Stage::kQueued:
      if (phase == Phase::kStopped) return Left("its exchange is stopped; it is sent when it is continued");
      if (journal_.notBefore > Now()) return {WorkResult::kLater, journal_.notBefore, {}};
      break;
  }
  return Attempt();
}

void ExchangeWork::Requeue() {
  journal_.stage = Stage::kQueued;
  journal_.attempt = 0;
  journal_.notBefore = 0;
  journal_.packageSize = -1;
  journal_.recordKnown = true;
  Save();
}

WorkAnswer ExchangeWork::Attempt() {
  // What cannot get its name afterwards is not sent first.
  for (const Place place : {Place::kSent, Place::kStopped}) {
    const std::string later = directory_.At(place).Path();
    if (parts_.files.FolderExists(later))
      return Left("its later name is taken by another exchange: " + later);
  }
  CheckAccount();
  try {
    TakeDocuments();
    Claim();
    if (data_.mode != SendMode::kNoSend) Pack();
  } catch (const HostError&) {
    throw;
  } catch (const RuntimeError& error) {
    // Another account's sender may be let in.
    if (error.Number() == error_number::kPermissionDenied) throw;
    return Stop(ReasonText(Language(), error));
  }
  Outcome outcome;
  try {
    outcome = Transfer();
  } catch (const std::exception& error) {
    if (journal_.stage != Stage::kSending && dynamic_cast<const HostError*>(&error) != nullptr) throw;
    outcome.text = ReasonText(Language(), error);
    outcome.kind = journal_.stage == Stage::kSending ? Outcome::Kind::kUnknown : Outcome::Kind::kRefused;
  }
  return Conclude(outcome);
}

// The package may not take the place of a file of the house; the other system may know no letter case.
void ExchangeWork::CheckPackageName(const std::vector<std::string>& taken) const {
  if (LowerCase(directory_.In(data_.subdirectory)) == LowerCase(directory_.WorkFolder()))
    throw Reason(StatusText::kNotSendable, {directory_.WorkFolder()}, error_number::kPathFileAccess);
  for (const std::string& name : taken) {
    if (LowerCase(name) == LowerCase(PackageName()))
      throw Reason(StatusText::kPackageName, {directory_.In(name)}, error_number::kPathFileAccess);
  }
}

// The documents as they are now; none may have gone, or become shorter, since the first time.
void ExchangeWork::TakeDocuments() {
  const std::string dataFile = DataFileIn(parts_.files, databases_, directory_);
  CheckPackageName({dataFile, kNeutralFormats, data_.structureFileName});
  std::vector<std::string> except{dataFile};
  const std::string neutral = directory_.In(kNeutralFormats);
  if (RegularFileSize(parts_.files.NativePath(neutral)) >= 0 &&
      IsNeutralFormats(parts_.files.ReadBytes(neutral)))
    except.emplace_back(kNeutralFormats);
  // Before the first packing, something under the package's name is a document.
  if (journal_.attempt > 0 || !journal_.documents.empty() || journal_.lost) except.push_back(PackageName());
  if (data_.mode == SendMode::kMail) except.push_back(data_.structureFileName);
  std::vector<Document> now = ListDocuments(parts_.files, directory_, except);
  for (const Document& before : journal_.documents) {
    const auto found = std::lower_bound(
        now.begin(), now.end(), before.name,
        [](const Document& document, const std::string& name) { return document.name < name; });
    if (found == now.end() || found->name != before.name || found->size < before.size) {
      throw Reason(StatusText::kDocumentShrank, {directory_.In(before.name), std::to_string(before.size)},
                   error_number::kPathFileAccess);
    }
  }
  for (const Document& document : now) {
    if (document.name == PackageName())
      throw Reason(StatusText::kPackageName, {directory_.In(document.name)}, error_number::kPathFileAccess);
  }
  journal_.documents = std::move(now);
}

void ExchangeWork::Claim() {
  if (journal_.exchange == ObjectKey{}) {
    journal_.exchange = data_.exchange;
    // What was written since the object was made; what was before is on it.
    if (!data_.protocol.empty())
      journal_.protocol += data_.protocol + (data_.protocol.back() == '\n' ? "" : "\r\n");
  }
  Save();
  Say("taken", "attempt " + std::to_string(journal_.attempt + 1) + ", " + record_->Identifier());
  Report(std::nullopt, Words(StatusText::kBeingSent, {std::to_string(journal_.attempt + 1)}),
         RootDirectoryText(directory_, data_.subdirectory));
}

// A sender of an account that may not use the password leaves the exchange to one that may.
void ExchangeWork::CheckAccount() {
  const bool mail = data_.mode == SendMode::kMail || data_.mode == SendMode::kMailStructure;
  const std::string& file = parts_.settings.mailAuthFile;
  if (!mail || file.empty()) return;
  const std::string why = WhyNoLogin(parts_.files, file);
  if (!why.empty()) throw HostError("the file of the mail password " + file + " is not used: " + why);
}

// What a sender that was killed left of its package.
void ExchangeWork::ClearWorkFolder() {
  const std::string folder = directory_.WorkFolder();
  if (!IsRealFolder(parts_.files.NativePath(folder)))
    throw Reason(StatusText::kNoWorkFolder, {folder}, error_number::kPathFileAccess);
  for (const auto& [name, kind] : EntriesOf(parts_.files.NativePath(folder))) {
    if (kind == EntryKind::kFile && name != "journal.json" && name != "protocol.txt")
      parts_.files.DeleteFile(paths::Join(folder, name));
  }
}

void ExchangeWork::Pack() {
  const std::string finished = PackagePath();
  const long long there = RegularFileSize(parts_.files.NativePath(finished));
  // That of an earlier attempt may hold what the documents were then.
  if (there >= 0) parts_.files.DeleteFile(finished);
  const std::string made = paths::Join(directory_.WorkFolder(), "package.tmp");
  ClearWorkFolder();
  WritePackage(parts_.files, directory_, journal_.documents, data_.stamp, made);
  parts_.files.CreateFolders(directory_.In(data_.subdirectory));
  parts_.files.Move(made, finished);
  parts_.files.SyncFolder(directory_.In(data_.subdirectory));
  journal_.packageSize = RegularFileSize(parts_.files.NativePath(finished));
  Protocol(Words(StatusText::kPacked, {std::to_string(journal_.documents.size()),
                                       std::to_string(journal_.packageSize), data_.zipFileName}));
  Save();
  Say("packed", std::to_string(journal_.documents.size()) + " files, " +
                    std::to_string(journal_.packageSize) + " bytes, into " + finished);
}

Outcome ExchangeWork::Transfer() {
  switch (data_.mode) {
    case SendMode::kMail:
    case SendMode::kMailStructure:
      return SendMail(Job());
    case SendMode::kOdette:
      return HandToStation(Job());
    case SendMode::kCustom:
      return RunCommand(Job());
    default:
      return {Outcome::Kind::kSent, Words(StatusText::kWithoutSending), {}};
  }
}

Outcome ExchangeWork::AfterCrash() {
  if (data_.mode == SendMode::kOdette && StationHasJob(Job())) {
    return {Outcome::Kind::kWaiting, Words(StatusText::kWaiting, {record_->Identifier()}), {}};
  }
  return {Outcome::Kind::kUnknown, Words(StatusText::kEndedMeanwhile), {}};
}

WorkAnswer ExchangeWork::Conclude(const Outcome& outcome) {
  switch (outcome.kind) {
    case Outcome::Kind::kSent:
      journal_.stage = Stage::kAccepted;
      journal_.reason.clear();
      journal_.outcome = outcome.text;
      Protocol(outcome.text + (outcome.receipt.empty() ? "" : " (" + outcome.receipt + ")"));
      SaveIfPossible();
      Say("accepted", outcome.text + (outcome.receipt.empty() ? "" : ": " + outcome.receipt));
      return FinishSent();
    case Outcome::Kind::kWaiting:
      return Wait(outcome);
    case Outcome::Kind::kLater:
      return TryLater(outcome);
    case Outcome::Kind::kUnknown:
      return Stop(Words(StatusText::kOutcomeUnknown, {outcome.text}));
    default:
      return Stop(outcome.text);
  }
}

WorkAnswer ExchangeWork::TryLater(const Outcome& outcome) {
  ++journal_.attempt;
  if (journal_.attempt >= parts_.settings.attempts)
    return Stop(Words(StatusText::kGivenUp, {std::to_string(journal_.attempt), outcome.text}));
  const double pause =
      std::min(kLongestPause, parts_.settings.firstPause.count() *
                                  std::pow(parts_.settings.pauseFactor, journal_.attempt - 1));
  journal_.stage = Stage::kQueued;
  journal_.notBefore = Now() + static_cast<std::int64_t>(std::ceil(pause));
  journal_.reason = outcome.text;
  const std::time_t due = journal_.notBefore;
  std::tm local{};
  char time[32] = "";
  if (::localtime_r(&due, &local) != nullptr) std::strftime(time, sizeof time, "%Y-%m-%d %H:%M:%S", &local);
  const std::string text =
      Words(StatusText::kNextAttempt,
            {std::to_string(journal_.attempt), std::to_string(parts_.settings.attempts), time, outcome.text});
  Protocol(text);
  Save();
  Say("later", text, StepKind::kProblem);
  Report(std::nullopt, text);
  return {WorkResult::kLater, journal_.notBefore, {}};
}

WorkAnswer ExchangeWork::Wait(const Outcome& outcome) {
  if (journal_.stage == Stage::kWaiting) return {WorkResult::kWaiting, 0, outcome.text};
  journal_.stage = Stage::kWaiting;
  journal_.handedOver = Now();
  Protocol(outcome.text);
  Save();
  Say("waiting", outcome.text);
  Report(std::nullopt, outcome.text);
  return {WorkResult::kWaiting, 0, outcome.text};
}

WorkAnswer ExchangeWork::Stop(const std::string& reason) {
  journal_.stage = Stage::kStopping;
  journal_.reason = reason;
  Protocol(Words(StatusText::kStopped, {reason}));
  SaveIfPossible();
  return FinishStop();
}

// The data file does not lead to a record that may be reported in.
WorkAnswer ExchangeWork::StopUnusable(const Reason& why) {
  record_.reset();
  objectLock_.reset();
  journal_.recordKnown = FindRecordOtherwise();
  return Stop(WithHistory(ReasonText(Language(), why)));
}

// By the directory's name, which a record has as soon as it was worked on. One that never was is known by
// what can be made out in the data file, as long as no other directory has it. What is sent stays so.
bool ExchangeWork::FindRecordOtherwise() {
  std::vector<std::pair<ExchangeDatabase*, ObjectKey>> named;
  for (const auto& [alias, database] : databases_.All()) {
    for (const ObjectKey& key : database->NamingDirectory(directory_.base))
      named.emplace_back(database.get(), key);
  }
  if (named.size() == 1 && TakeRecord(*named.front().first, named.front().second)) return true;
  const ObjectKey key = ObjectIn(dataBytes_);
  if (databases_.All().size() != 1 || key == ObjectKey{} || IsNamedElsewhere(key)) return false;
  return TakeRecord(*databases_.All().begin()->second, key);
}

bool ExchangeWork::TakeRecord(ExchangeDatabase& database, const ObjectKey& key) {
  DataFile usual;
  usual.exchange = key;
  usual.subdirectory = data_.subdirectory;
  LockAnswer answer = LockAnswer::kTaken;
  objectLock_ = DirectoryLock::Take(parts_.files, database.Rules().exchangePath,
                                    "object " + ObjectKeyText(key, '_'), parts_.leases, answer);
  if (!objectLock_) throw HostError("another worker has the object " + ObjectKeyText(key, ':'));
  std::unique_ptr<ExchangeRecord> record;
  try {
    record = database.Find(usual);
  } catch (const Reason&) {
    return false;
  }
  if (!record || record->CurrentPhase() == Phase::kSent) return false;
  const std::string root = record->RootDirectory();
  if (root.empty() ? record->CurrentPhase() != Phase::kNew : !BelongsTo(parts_.files, root, directory_))
    return false;
  database_ = &database;
  data_ = usual;
  record_ = std::move(record);
  return true;
}

bool ExchangeWork::IsNamedElsewhere(const ObjectKey& key) const {
  for (const std::string& path : ExchangePaths(parts_.settings, parts_.files, databases_)) {
    for (const ExchangeDirectory& other : ListExchanges(parts_.files, path)) {
      if (other.Path() == directory_.Path()) continue;
      const std::string name = DataFileIn(parts_.files, databases_, other);
      if (!name.empty() && ObjectIn(parts_.files.ReadBytes(other.In(name))) == key) return true;
    }
  }
  return false;
}

// A stop for another reason says as well what is known of transfers before.
std::string ExchangeWork::WithHistory(const std::string& reason) const {
  switch (journal_.stage) {
    case Stage::kSending:
    case Stage::kWaiting:
      return Words(StatusText::kOutcomeUnknown, {reason});
    case Stage::kAccepted:
    case Stage::kSent:
      return reason + " (" + journal_.outcome + ")";
    case Stage::kStopping:
      return reason + " (" + journal_.reason + ")";
    default:
      if (!journalProblem_) return reason;
      return Words(StatusText::kOutcomeUnknown, {reason + "; " + ReasonText(Language(), *journalProblem_)});
  }
}

WorkAnswer ExchangeWork::FinishStop() {
  Report(Phase::kStopped, Words(StatusText::kStopped, {journal_.reason}),
         RootDirectoryText(directory_.At(Place::kStopped), data_.subdirectory));
  if (record_) {
    Say("recorded", "stopped");
  } else {
    Say("unrecorded", "which data exchange object it is, is not known: its status stays as it is",
        StepKind::kProblem);
  }
  MoveTo(Place::kStopped);
  journal_.stage = Stage::kStopped;
  journal_.protocol.clear();
  SaveIfPossible();
  Say("stopped", journal_.reason, StepKind::kProblem);
  if (WasContinued()) {
    MoveTo(Place::kQueued);
    return {WorkResult::kLater, Now(), {}};
  }
  return {WorkResult::kStopped, 0, journal_.reason};
}

// Whether somebody continued it between our report and the directory's new name, and found it in the queue.
bool ExchangeWork::WasContinued() {
  if (!record_) return false;
  try {
    const auto now = database_->Find(data_);
    return now && now->CurrentPhase() == Phase::kContinued;
  } catch (const RuntimeError& error) {
    Say("database", error.what(), StepKind::kProblem);
    return false;
  }
}

WorkAnswer ExchangeWork::FinishSent() {
  std::string root = RootDirectoryText(directory_.At(Place::kSent), data_.subdirectory);
  if (database_->Rules().useUrl) root = FileUrl(root);
  Report(Phase::kSent, journal_.outcome, root);
  Say("recorded", "sent");
  MoveTo(Place::kSent);
  journal_.stage = Stage::kSent;
  journal_.protocol.clear();
  SaveIfPossible();
  Say("sent", root);
  return {WorkResult::kDone, 0, {}};
}

// The exchange keeps its work folder, journal and package under the new name.
void ExchangeWork::MoveTo(Place place) {
  const ExchangeDirectory moved = directory_.At(place);
  parts_.files.Move(directory_.Path(), moved.Path());
  parts_.files.SyncFolder(directory_.parent);
  directory_ = moved;
}

}  // namespace tessel::sender
