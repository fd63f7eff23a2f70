#include "locking/lock_record.h"

#include "host/error.h"
#include "host/names.h"
#include "host/object_store.h"

namespace tessel {
namespace {

constexpr const char* kTypeAttribute = "LOCK_TYPE";
constexpr std::int16_t kLockType = 8;
constexpr const char* kOwnDescription = "Kestrix";

}  // namespace

ClassId LockRecords::LockClass() const {
  const ClassId lockClass = session_.MetaData()->ClassIdByName(kLockClass);
  if (lockClass == 0) throw HostError(std::string("The database has no class \"") + kLockClass + "\"");
  return lockClass;
}

const std::string& LockRecords::DescriptionAttribute() {
  if (!descriptionAttribute_) {
    const PcClassPtr lockClass = Required(session_.MetaData()->ClassById(LockClass()), "lock class");
    descriptionAttribute_.emplace();
    for (const char* name : {attribute::kNamedDescription, attribute::kDescription}) {
      if (lockClass->FindAttribute(name)) descriptionAttribute_ = name;
    }
  }
  return *descriptionAttribute_;
}

PcObjectPtr LockRecords::NewRecord(const ObjectKey& document) {
  PcObjectPtr record = Required(session_.ObjectStore()->NewObject(LockClass()), "lock record");
  record->SetValue(attribute::kLockedClassId, document.classId);
  record->SetValue(attribute::kLockedObjectId, document.objectId);
  record->SetValue(kTypeAttribute, kLockType);
  const std::string& description = DescriptionAttribute();
  if (!description.empty()) record->SetValue(description, kOwnDescription);
  return record;
}

PcObjectPtr LockRecords::Find(const ObjectKey& document) {
  const PcObjectStorePtr store = session_.ObjectStore();
  const PcQueryPtr query = Required(store->NewQuery(), "query");
  query->SetClass(LockClass());
  query->AddSelect(attribute::kClassId);
  query->AddSelect(attribute::kObjectId);
  query->AddCondition(attribute::kLockedClassId, "=", document.classId);
  query->AddCondition(attribute::kLockedObjectId, "=", document.objectId);
  const PcRecordListPtr rows = query->Run();
  PcObjectPtr found;
  for (int row = 0; row < rows->RowCount(); ++row) {
    const PcObjectPtr record = store->Object(rows->KeyOfRow(row));
    if (!record) continue;  // unlocked meanwhile
    if (!found || IsOwn(*record)) found = record;
    if (IsOwn(*found)) break;
  }
  return found;
}

bool LockRecords::IsOwn(const PcObject& record) {
  const std::string& description = DescriptionAttribute();
  return !description.empty() && record.GetText(description) == kOwnDescription;
}

}  // namespace tessel
