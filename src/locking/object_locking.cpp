#include "locking/object_locking.h"

#include <optional>

#include "host/error.h"
#include "host/names.h"
#include "hostlib/active_window.h"
#include "hostlib/my_common_functions.h"
#include "locking/lock_record.h"
#include "locking/unlock_right.h"
#include "messages/guard.h"

namespace tessel::CommonXFunctions {
namespace {

// The host's empty 16- and 32-bit values.
constexpr std::int16_t kNoOperation = -32767;
constexpr std::int32_t kNobody = -2147483647;

constexpr std::int16_t kStateCheckedIn = 1;
constexpr std::int16_t kStateReleased = 3;
constexpr std::int32_t kLockableRevisionStage = 1;
constexpr int kRefreshMode = 1;
// Results of writes that the database did not refuse itself.
constexpr int kRaised = -1;
constexpr int kRefused = -2;

// One call of a hook: what it needs of the program, and what it holds over the rows.
class LockCall {
 public:
  LockCall(Services& services, PcSession& session, const PcRecordList& rows, const char* procedure)
      : services_(services), session_(session), rows_(rows), procedure_(procedure), records_(session) {}

  void LockRow(int row);
  void UnlockRow(int row);
  // Shows the last document anew when a lock changed.
  void Finish();

  // One entry a row; the row in hand is the last.
  LockOutcome outcome;

  [[nodiscard]] std::string ErrorText() const {
    return std::string("Fehlerabbruch im Modul (") + procedure_ + "/CommonXFunctions)";
  }

 private:
  [[nodiscard]] PcObjectPtr ReadDocument(const ObjectKey& key);
  [[nodiscard]] bool MayBeLocked() const;
  [[nodiscard]] bool IsLocked() const;
  [[nodiscard]] bool MayUnlock();
  void AddLock(int row);
  [[nodiscard]] bool IsHalfLocked();
  [[nodiscard]] int WriteLock();
  void RemoveLock(int row, PcObject* record);
  void UnlockWithoutRecord(int row, const ObjectKey& key);
  [[nodiscard]] bool ReleaseDocument(PcUnitOfWork* unit);
  void RestoreRecord();

  void RememberIdentifyingAttribute(PcObject& object);
  [[nodiscard]] std::string IdentifyingValue(int row) const;
  void Show(const std::string& text, MessageIcon icon) {
    services_.toolkit.ShowMessage({.text = text, .title = {}, .icon = icon});
  }
  void Note(LockResult result, const std::string& reason = {}) {
    outcome.documents.back().result = result;
    outcome.documents.back().reason = reason;
  }
  void ShowAlreadyLocked(int row) {
    Note(LockResult::kAlreadyLocked);
    Show("Object '" + IdentifyingValue(row) + "' already locked!", MessageIcon::kInformation);
  }

  void ShowLockedByOther(int row) {
    Note(LockResult::kLockedByOther);
    Show("The Object '" + IdentifyingValue(row) + "' is locked by another user!", MessageIcon::kInformation);
  }

  // A failing trace never leaves a lock half done.
  void TraceStep(const std::string& statement, const std::string& value) {
    IgnoringErrors(
        [&] { services_.trace.Write(statement + "(" + procedure_ + "/CommonXFunctions): " + value); });
  }
  [[nodiscard]] PcBehavior& DefaultBehavior() const {
    return *Required(services_.declarations.startup.DefaultBehavior.get(), "DefaultBehavior");
  }
  [[nodiscard]] ObjectId OwnUserObject() const {
    const PcUserPtr user = Required(session_.CurrentUser(), "current user");
    return Required(user->UserObject(), "object of the current user")->GetObjectId();
  }
  // Result of a database write. One that raises an error is traced and counts as refused.
  template <class Write>
  [[nodiscard]] bool Written(const char* step, Write&& write) {
    const int code = Guarded(services_.trace, ErrorText(), kRaised, std::forward<Write>(write));
    if (code == 0) return true;
    TraceStep(std::string(step) + " failed with code", std::to_string(code));
    if (code != kRaised && code != kRefused)
      services_.trace.problems.Add({step, {}, code, session_.ErrorText(code)});
    return false;
  }

  Services& services_;
  PcSession& session_;
  const PcRecordList& rows_;
  const char* procedure_;
  LockRecords records_;
  PcObjectPtr document_;  // the last one retrieved
  std::optional<std::string> identifyingAttribute_;
  std::optional<bool> unlockRight_;  // asked for once, since it takes all users of the session
};

PcObjectPtr LockCall::ReadDocument(const ObjectKey& key) {
  TraceStep("Read document", ObjectKeyText(key, '_'));
  PcObjectPtr document = Required(session_.ObjectStore()->Object(key), "document");
  document->ReadData();
  return document;
}

// The class of the first object gives the attribute that names all documents of the call.
void LockCall::RememberIdentifyingAttribute(PcObject& object) {
  if (identifyingAttribute_) return;
  PcAttributePtr attribute;
  PcSequencePtr related;
  static_cast<void>(myCommonFunctions::FindIDAtt(object, attribute, related));
  identifyingAttribute_ = attribute ? attribute->Name() : std::string();
}

// A row without the column is named by the document itself.
std::string LockCall::IdentifyingValue(int row) const {
  const std::string name = identifyingAttribute_.value_or("");
  if (rows_.HasColumn(name)) return rows_.GetValue(name, row).AsText();
  return document_->HasAttribute(name) ? document_->GetText(name) : std::string();
}

bool LockCall::MayBeLocked() const {
  const Value operation = document_->GetValue(attribute::kUnderOperation);
  const Value stage = document_->GetValue(attribute::kRevisionStage);
  const bool idle = (operation.IsNull() ? kNoOperation : operation.AsInt16()) < 0;
  return idle && !stage.IsNull() && stage.AsInt32() == kLockableRevisionStage;
}

bool LockCall::IsLocked() const {
  const Value state = document_->GetValue(attribute::kLockState);
  return !state.IsNull() && state.AsBoolean();
}

void LockCall::LockRow(int row) {
  outcome.documents.back().document = rows_.KeyOfRow(row);
  const std::int16_t state = rows_.GetValue(attribute::kState, row).AsInt16();
  if (state != kStateCheckedIn && state != kStateReleased) {
    Note(LockResult::kNotLockable, "it is in state " + std::to_string(state));
    return;
  }
  document_ = ReadDocument(rows_.KeyOfRow(row));
  RememberIdentifyingAttribute(*document_);
  if (!MayBeLocked()) {
    Note(LockResult::kNotLockable, "it is under an operation, or an old revision");
    return;
  }
  if (IsLocked()) {
    ShowAlreadyLocked(row);
    return;
  }
  AddLock(row);
}

// Inside a unit of work nobody else is between the two halves of a lock: a record of this system's without a
// locked document was left there by a fault.
bool LockCall::IsHalfLocked() {
  document_->ReadData();
  const PcObjectPtr record = IsLocked() ? nullptr : records_.Find(document_->Key());
  return record && records_.IsOwn(*record);
}

// The lock record decides between sessions: the database takes one for a document. Who does not get his in,
// or finds the document still locked with his in place (another session is just unlocking it), is told so.
// Record and document are one unit of work. Where the host has none, the record goes again when the document
// cannot be updated: without the lock attributes it binds nobody.
void LockCall::AddLock(int row) {
  PcUnitOfWorkPtr unit = session_.BeginUnitOfWork("");
  PcObjectPtr record;
  if (!unit || !IsHalfLocked()) {
    record = records_.NewRecord(document_->Key());
    if (!Written("Adding the lock record", [&] { return record->Add(DefaultBehavior()); })) {
      unit.reset();
      document_->ReadData();
      if (IsLocked() || records_.Find(document_->Key())) ShowAlreadyLocked(row);
      return;
    }
  }
  bool taken = false;
  const bool locked = Written("Locking the document", [&] {
    document_->ReadData();
    taken = IsLocked();
    const int code = taken ? kRefused : WriteLock();
    if (code == 0 && unit) unit->Commit();
    return code;
  });
  if (locked) {
    Note(LockResult::kDone);
    outcome.changed = true;
    TraceStep("Locked document", ObjectKeyText(document_->Key(), '_'));
    return;
  }
  if (!unit) {
    static_cast<void>(Written("Removing the lock record", [&] { return record->Delete(DefaultBehavior()); }));
  }
  unit.reset();
  if (taken) ShowAlreadyLocked(row);
}

int LockCall::WriteLock() {
  document_->SetValue(attribute::kLockState, true);
  document_->SetValue(attribute::kLockDescription, services_.Settings().LockedInfo);
  document_->SetValue(attribute::kLockedBy, OwnUserObject());
  document_->SetValue(attribute::kFirstLockUse, true);
  return document_->Update(DefaultBehavior());
}

bool LockCall::MayUnlock() {
  const Value owner = document_->GetValue(attribute::kLockedBy);
  const ObjectId holder = owner.IsNull() ? kNobody : owner.AsInt32();
  // A record without a locked document, as a fault may have left it, binds nobody.
  if (holder == kNobody && !IsLocked()) return true;
  if (holder == OwnUserObject()) return true;
  if (!unlockRight_) unlockRight_ = HasUnlockRight(services_, session_);
  return *unlockRight_;
}

void LockCall::UnlockRow(int row) {
  const ObjectKey key = rows_.KeyOfRow(row);
  outcome.documents.back().document = key;
  const PcObjectPtr record = records_.Find(key);
  if (!record) {
    UnlockWithoutRecord(row, key);
    return;
  }
  RememberIdentifyingAttribute(*session_.ObjectStore()->NewObject(key.classId));
  if (!records_.IsOwn(*record)) {
    Note(LockResult::kLockedByOther, "its lock record is not of the data exchange");
    return;
  }
  document_ = ReadDocument(key);
  if (MayUnlock()) {
    RemoveLock(row, record.get());
  } else {
    ShowLockedByOther(row);
  }
}

// A document that a fault left locked without its record.
void LockCall::UnlockWithoutRecord(int row, const ObjectKey& key) {
  Note(LockResult::kNotLocked);
  const PcObjectPtr document = session_.ObjectStore()->Object(key);
  if (!document || !document->HasAttribute(attribute::kLockState)) return;
  document_ = ReadDocument(key);
  if (!IsLocked()) return;
  RememberIdentifyingAttribute(*document_);
  if (MayUnlock()) {
    RemoveLock(row, nullptr);
  } else {
    ShowLockedByOther(row);
  }
}

// Record and document are one unit of work. Without one, a document that stays locked gets its record back:
// without it nobody could unlock it any more.
void LockCall::RemoveLock(int row, PcObject* record) {
  Note(LockResult::kFailed);
  // The message has no closing quote; it is known to the users by this text.
  const std::string failed = "Unlocking doesn't work for Object '" + IdentifyingValue(row);
  PcUnitOfWorkPtr unit = session_.BeginUnitOfWork("");
  if (record != nullptr &&
      !Written("Deleting the lock record", [&] { return record->Delete(DefaultBehavior()); })) {
    unit.reset();
    Show(failed, MessageIcon::kExclamation);
    return;
  }
  const bool released = ReleaseDocument(unit.get());
  if (!released && record != nullptr && !unit) RestoreRecord();
  unit.reset();
  if (released) {
    Note(LockResult::kDone);
  } else {
    Show(failed, MessageIcon::kExclamation);
  }
  outcome.changed = true;
}

bool LockCall::ReleaseDocument(PcUnitOfWork* unit) {
  return Written("Unlocking the document", [&] {
    document_->SetValue(attribute::kUnderOperation, kNoOperation);
    document_->SetValue(attribute::kLockState, false);
    document_->SetValue(attribute::kLockDescription, "");
    document_->SetValue(attribute::kLockedBy, kNobody);
    const int code = document_->Update(DefaultBehavior());
    if (code == 0 && unit != nullptr) unit->Commit();
    return code;
  });
}

void LockCall::RestoreRecord() {
  static_cast<void>(Written("Restoring the lock record",
                            [&] { return records_.NewRecord(document_->Key())->Add(DefaultBehavior()); }));
}

void LockCall::Finish() {
  if (!outcome.changed) return;
  GuardedRun(
      services_.trace, ErrorText(), [&] { RefreshActiveWindow(session_, document_->Key(), kRefreshMode); },
      ProblemKind::kAside);
}

// Start-up, then the rows one by one; an error in a row ends this row alone.
LockOutcome RunCall(Services& services, const PcSessionPtr& session, const PcRecordListPtr& first,
                    const char* procedure, void (LockCall::*handleRow)(int)) {
  const std::string errorText = std::string("Fehlerabbruch im Modul (") + procedure + "/CommonXFunctions)";
  LockOutcome outcome;
  GuardedRun(services.trace, errorText, [&] {
    if (!Init(services, session)) return;
    const PcRecordList& rows = *Required(first.get(), "first record list");
    LockCall call(services, *session, rows, procedure);
    for (int row = 0; row < rows.RowCount(); ++row) {
      call.outcome.documents.emplace_back();
      GuardedRun(services.trace, errorText, [&] { (call.*handleRow)(row); });
    }
    call.Finish();
    outcome = std::move(call.outcome);
    outcome.started = true;
  });
  outcome.problems = services.trace.problems.Kept();
  return outcome;
}

}  // namespace

LockOutcome LockObject(Services& services, const PcSessionPtr& session, const PcRecordListPtr& first,
                       const PcRecordListPtr&, const PcRecordListPtr&) {
  return RunCall(services, session, first, "LockObject", &LockCall::LockRow);
}

LockOutcome UnlockObject(Services& services, const PcSessionPtr& session, const PcRecordListPtr& first,
                         const PcRecordListPtr&, const PcRecordListPtr&) {
  return RunCall(services, session, first, "UnlockObject", &LockCall::UnlockRow);
}

}  // namespace tessel::CommonXFunctions
