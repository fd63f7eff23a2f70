#include "locking/object_locking.h"

#include <optional>

#include "host/error.h"
#include "hostlib/my_common_functions.h"
#include "hostlib/qel_function_pool.h"
#include "locking/lock_record.h"
#include "locking/unlock_right.h"
#include "messages/guard.h"

namespace tessel::CommonXFunctions {
namespace {

constexpr const char* kLockState = "VRKX_DX_LOCK_STATE";
constexpr const char* kLockDescription = "VRKX_DX_LOCK_DESCRIPTION";
constexpr const char* kLockedBy = "VRKX_DX_LOCKED_BY";
constexpr const char* kFirstLockUse = "VRKX_DX_FIRST_LOCK_USE";
constexpr const char* kUnderOperation = "UNDER_OPERATION";
constexpr const char* kRevisionStage = "REVISION_STG";

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
  // Shows the last document anew when a lock changed. True when one did.
  bool Finish();

  [[nodiscard]] std::string ErrorText() const {
    return std::string("Fehlerabbruch im Modul (") + procedure_ + "/CommonXFunctions)";
  }

 private:
  [[nodiscard]] PcObjectPtr ReadDocument(const ObjectKey& key);
  [[nodiscard]] bool MayBeLocked() const;
  [[nodiscard]] bool IsLocked() const;
  [[nodiscard]] bool MayUnlock();
  void AddLock(int row);
  [[nodiscard]] int WriteLock();
  void RemoveLock(int row, PcObject& record);
  [[nodiscard]] bool ReleaseDocument();
  void RestoreRecord();

  void RememberIdentifyingAttribute(PcObject& object);
  [[nodiscard]] std::string IdentifyingValue(int row) const;
  void Show(const std::string& text, MessageIcon icon) {
    services_.toolkit.ShowMessage({.text = text, .title = {}, .icon = icon});
  }
  void ShowAlreadyLocked(int row) {
    Show("Object '" + IdentifyingValue(row) + "' already locked!", MessageIcon::kInformation);
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
    if (code != 0) TraceStep(std::string(step) + " failed with code", std::to_string(code));
    return code == 0;
  }

  Services& services_;
  PcSession& session_;
  const PcRecordList& rows_;
  const char* procedure_;
  LockRecords records_;
  PcObjectPtr document_;  // the last one retrieved
  std::optional<std::string> identifyingAttribute_;
  std::optional<bool> unlockRight_;  // asked for once, since it takes all users of the session
  bool changed_ = false;
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
  const Value operation = document_->GetValue(kUnderOperation);
  const Value stage = document_->GetValue(kRevisionStage);
  const bool idle = (operation.IsNull() ? kNoOperation : operation.AsInt16()) < 0;
  return idle && !stage.IsNull() && stage.AsInt32() == kLockableRevisionStage;
}

bool LockCall::IsLocked() const {
  const Value state = document_->GetValue(kLockState);
  return !state.IsNull() && state.AsBoolean();
}

void LockCall::LockRow(int row) {
  const std::int16_t state = rows_.GetValue("STATE", row).AsInt16();
  if (state != kStateCheckedIn && state != kStateReleased) return;
  document_ = ReadDocument(rows_.KeyOfRow(row));
  RememberIdentifyingAttribute(*document_);
  if (!MayBeLocked()) return;
  if (IsLocked()) {
    ShowAlreadyLocked(row);
    return;
  }
  AddLock(row);
}

// The lock record decides between sessions: the database takes one for a document. Who does not get his in,
// or finds the document still locked with his in place (another session is just unlocking it), is told so.
// Without the lock attributes a record binds nobody and none but privileged users could remove it, so it goes
// again when the document cannot be updated.
void LockCall::AddLock(int row) {
  const PcObjectPtr record = records_.NewRecord(document_->Key());
  if (!Written("Adding the lock record", [&] { return record->Add(DefaultBehavior()); })) {
    document_->ReadData();
    if (IsLocked() || records_.Find(document_->Key())) ShowAlreadyLocked(row);
    return;
  }
  bool taken = false;
  const bool locked = Written("Locking the document", [&] {
    document_->ReadData();
    taken = IsLocked();
    return taken ? kRefused : WriteLock();
  });
  if (locked) {
    changed_ = true;
    TraceStep("Locked document", ObjectKeyText(document_->Key(), '_'));
    return;
  }
  static_cast<void>(Written("Removing the lock record", [&] { return record->Delete(DefaultBehavior()); }));
  if (taken) ShowAlreadyLocked(row);
}

int LockCall::WriteLock() {
  document_->SetValue(kLockState, true);
  document_->SetValue(kLockDescription, services_.Settings().LockedInfo);
  document_->SetValue(kLockedBy, OwnUserObject());
  document_->SetValue(kFirstLockUse, true);
  return document_->Update(DefaultBehavior());
}

bool LockCall::MayUnlock() {
  const Value owner = document_->GetValue(kLockedBy);
  const bool own = !owner.IsNull() && owner.AsInt32() == OwnUserObject();
  if (own) return true;
  if (!unlockRight_) unlockRight_ = HasUnlockRight(services_, session_);
  return *unlockRight_;
}

void LockCall::UnlockRow(int row) {
  const ObjectKey key = rows_.KeyOfRow(row);
  const PcObjectPtr record = records_.Find(key);
  if (!record) return;
  RememberIdentifyingAttribute(*session_.ObjectStore()->NewObject(key.classId));
  if (!records_.IsOwn(*record)) return;
  document_ = ReadDocument(key);
  if (!MayUnlock()) {
    Show("The Object '" + IdentifyingValue(row) + "' is locked by another user!", MessageIcon::kInformation);
    return;
  }
  RemoveLock(row, *record);
}

void LockCall::RemoveLock(int row, PcObject& record) {
  // The message has no closing quote; it is known to the users by this text.
  const std::string failed = "Unlocking doesn't work for Object '" + IdentifyingValue(row);
  if (!Written("Deleting the lock record", [&] { return record.Delete(DefaultBehavior()); })) {
    Show(failed, MessageIcon::kExclamation);
    return;
  }
  if (!ReleaseDocument()) {
    RestoreRecord();
    Show(failed, MessageIcon::kExclamation);
  }
  changed_ = true;
}

bool LockCall::ReleaseDocument() {
  return Written("Unlocking the document", [&] {
    document_->SetValue(kUnderOperation, kNoOperation);
    document_->SetValue(kLockState, false);
    document_->SetValue(kLockDescription, "");
    document_->SetValue(kLockedBy, kNobody);
    return document_->Update(DefaultBehavior());
  });
}

// A document that stays locked keeps a lock record: without one nobody could unlock it any more.
void LockCall::RestoreRecord() {
  static_cast<void>(Written("Restoring the lock record",
                            [&] { return records_.NewRecord(document_->Key())->Add(DefaultBehavior()); }));
}

bool LockCall::Finish() {
  if (!changed_) return false;
  GuardedRun(services_.trace, ErrorText(), [&] {
    const QelFunctionPool pool(services_.platform, services_.runtime);
    pool.RefreshActivePelicoreWindow(*document_, kRefreshMode);
  });
  return true;
}

// Start-up, then the rows one by one; an error in a row ends this row alone.
bool RunCall(Services& services, StartUpState& state, const PcSessionPtr& session,
             const PcRecordListPtr& first, const char* procedure, void (LockCall::*handleRow)(int)) {
  const std::string errorText = std::string("Fehlerabbruch im Modul (") + procedure + "/CommonXFunctions)";
  return Guarded(services.trace, errorText, false, [&] {
    if (!Init(services, state, session)) return false;
    const PcRecordList& rows = *Required(first.get(), "first record list");
    LockCall call(services, *session, rows, procedure);
    for (int row = 0; row < rows.RowCount(); ++row) {
      GuardedRun(services.trace, errorText, [&] { (call.*handleRow)(row); });
    }
    return call.Finish();
  });
}

}  // namespace

bool LockObject(Services& services, StartUpState& state, const PcSessionPtr& session,
                const PcRecordListPtr& first, const PcRecordListPtr&, const PcRecordListPtr&) {
  return RunCall(services, state, session, first, "LockObject", &LockCall::LockRow);
}

bool UnlockObject(Services& services, StartUpState& state, const PcSessionPtr& session,
                  const PcRecordListPtr& first, const PcRecordListPtr&, const PcRecordListPtr&) {
  return RunCall(services, state, session, first, "UnlockObject", &LockCall::UnlockRow);
}

}  // namespace tessel::CommonXFunctions
