#include "selection/selection.h"

#include <unordered_set>

#include "host/names.h"
#include "hostlib/my_common_functions.h"
#include "messages/guard.h"

namespace tessel {

std::string global_data::ObjectName(int number) {
  return kObjectPrefix + std::to_string(number);
}

namespace CommonXFunctions {
namespace {

constexpr const char* kRequiredMechanisms[] = {kSupplierExchange, "Admin"};

// A row without a state is refused alone, like one in a wrong state.
bool IsAcceptedState(const Value& value) {
  if (value.IsNull()) return false;
  const std::int32_t state = value.AsInt32();
  return state == 1 || state == 3 || state == 4;
}

// One call of the selection hook.
class Collector {
 public:
  Collector(Services& services, PcSession& session, const PcRecordListPtr& first)
      : services_(services),
        trace_(services.trace),
        globalData_(session.GlobalData()),
        store_(Required(session.ObjectStore(), "object store of the session")),
        metaData_(Required(session.MetaData(), "metadata of the session")),
        list_(first) {
    const Value count = globalData_.Get(global_data::kCount);
    if (!count.IsNull()) count_ = count.AsInt32();
  }

  void Collect() {
    const int rows = Prepare();
    if (rows < 0) return;
    for (int row = 0; row < rows; ++row)
      CollectRow(row);
    globalData_.Set(global_data::kCount, Value(std::to_string(count_)));
    trace_.Write("current amount of selected files: " + globalData_.Get(global_data::kCount).AsText());
  }

  std::vector<CollectRefusal> Refusals() {
    std::vector<CollectRefusal> refusals;
    const int rows = Prepare();
    for (int row = 0; row < rows; ++row) {
      const ObjectKey key = list_->KeyOfRow(row);
      const PcObjectPtr object = Required(store_->Object(key), "selected object");
      object->ReadData();
      refusals.push_back(Check(*object, key, row));
    }
    return refusals;
  }

 private:
  // The number of rows; -1 for a list that names no objects.
  int Prepare() {
    const PcRecordList& list = *Required(list_.get(), "first record list");
    if (!list.HasColumn(attribute::kObjectId)) return -1;
    IndexPresentEntries();
    hasState_ = list.HasColumn(attribute::kState);
    mechanism_ = metaData_->ClassMechanism(class_mechanism::kExchangeDocument);
    return list.RowCount();
  }

  // The values of the entries 0 to count, so that the duplicate check costs one look-up a row.
  void IndexPresentEntries() {
    for (std::int64_t number = 0; number <= count_; ++number) {
      const Value entry = globalData_.Get(global_data::ObjectName(static_cast<int>(number)));
      if (!entry.IsNull()) entries_.insert(entry.AsText());
    }
  }

  void CollectRow(int row) {
    trace_.Write("retrieve selected Object");
    const ObjectKey key = list_->KeyOfRow(row);
    const PcObjectPtr object = Required(store_->Object(key), "selected object");
    object->ReadData();
    trace_.Write("...object no.: " + std::to_string(row + 1) + " . ClassID: " +
                 std::to_string(object->GetClassId()) + " ; ObjID: " + std::to_string(object->GetObjectId()));
    const CollectRefusal refusal = Check(*object, key, row);
    if (refusal == CollectRefusal::kNone) {
      Accept(*object);
    } else {
      services_.toolkit.ShowMessage(
          {MessageOf(refusal, Description(*object)), "Kestrix info", MessageIcon::kInformation});
    }
  }

  // The first check that fails.
  CollectRefusal Check(const PcObject& object, const ObjectKey& key, int row) {
    if (entries_.contains(ObjectKeyText(key, ':'))) return CollectRefusal::kSelectedAlready;
    trace_.Write("Check whether the selected Object has the right class mechanism");
    if (!mechanism_ || !mechanism_->Supports(object.GetClassId())) return CollectRefusal::kNotForExchange;
    trace_.Write("... assigned to the class mechanism 'VRKX_DX_SUPPLIER_EXCH_DOC'");
    trace_.Write("is the selected Obj filebased?");
    if (!Required(object.Class(), "class of the object")->IsFileBased()) return CollectRefusal::kNotFileBased;
    trace_.Write("...True");
    trace_.Write("check wether there is a file attached to the object");
    if (object.HasAttribute(attribute::kFileName) && object.GetText(attribute::kFileName).empty())
      return CollectRefusal::kNoFile;
    trace_.Write("... File is attached");
    trace_.Write("is the object in the right status (CheckedIn or released)");
    if (hasState_ && !IsAcceptedState(list_->GetValue(attribute::kState, row)))
      return CollectRefusal::kWrongState;
    return CollectRefusal::kNone;
  }

  static std::string MessageOf(CollectRefusal refusal, const std::string& description) {
    switch (refusal) {
      case CollectRefusal::kSelectedAlready:
        return "Object '" + description +
               "' has been selected previously. It will not be added to the selection!";
      case CollectRefusal::kNotForExchange:
        return "Object '" + description + "' is not an appropriate data exchange object";
      case CollectRefusal::kNotFileBased:
        return "Object '" + description + "' is not file based";
      case CollectRefusal::kNoFile:
        return "No file is attached to Object '" + description + "'";
      case CollectRefusal::kWrongState:
        return "The Object '" + description + "' has to be in 'Released', 'Checked In' or 'Obsolete' status";
      case CollectRefusal::kNone:
        break;
    }
    return {};
  }

  // Empty for an object whose class has neither attribute.
  static std::string Description(const PcObject& object) {
    for (const char* name : {attribute::kDescription, attribute::kNamedDescription}) {
      if (object.HasAttribute(name)) return object.GetText(name);
    }
    return {};
  }

  void Accept(const PcObject& object) {
    trace_.Write("... the status is correct");
    ++count_;
    const std::string name = global_data::ObjectName(count_);
    const std::string entry = ObjectKeyText(object.Key(), ':');
    globalData_.Set(name, Value(entry));
    entries_.insert(entry);
    trace_.Write("put selected object to the sessions global value: " + globalData_.Get(name).AsText());
  }

  Services& services_;
  Trace& trace_;
  PcGlobalData& globalData_;
  PcObjectStorePtr store_;
  PcMetaDataPtr metaData_;
  PcClassMechanismPtr mechanism_;
  PcRecordListPtr list_;
  int count_ = 0;
  bool hasState_ = false;
  std::unordered_set<std::string> entries_;
};

bool HasRequiredMechanisms(Services& services, PcSession& session) {
  for (const char* mechanism : kRequiredMechanisms) {
    if (myCommonFunctions::CheckDBMechanismExists(services.trace, session, mechanism)) continue;
    services.toolkit.ShowMessage({std::string("could not find the database mechanism '") + mechanism +
                                      "' !\r\nPlease contact your Arvelon Pelicore administrator",
                                  "", MessageIcon::kCritical});
    return false;
  }
  return true;
}

}  // namespace

int PutSelection2PcGlobalData(Services& services, const PcSessionPtr& session, const PcRecordListPtr& first,
                              const PcRecordListPtr& second) {
  const auto collect = [&] {
    Collector collector(services, *Required(session, "session"), first);
    const PcReadingPtr reading = session->BeginReading();
    DumpRecordLists(services.trace, first, second, "List of all selected Pelicore Objects", "");
    if (HasRequiredMechanisms(services, *session)) collector.Collect();
    return true;
  };
  const bool done = Guarded(
      services.trace, "Error while analyzing the selected data(PutSelection2PcGlobalData/CommonXFunctions)",
      false, collect);
  if (!done) {
    services.toolkit.ShowMessage(
        {"Error while analyzing the selected data", "Kestrix Error", MessageIcon::kCritical});
  }
  return 0;
}

std::vector<CollectRefusal> RefusalsOf(Services& services, const PcSessionPtr& session,
                                       const PcRecordListPtr& first) {
  return Collector(services, *Required(session, "session"), first).Refusals();
}

void RemoveSelection(PcGlobalData& globalData) {
  const Value stored = globalData.Get(global_data::kCount);
  if (stored.IsNull()) return;
  const int count = stored.AsInt32();
  for (std::int64_t number = 1; number <= count; ++number) {
    RemoveIfPresent(globalData, global_data::ObjectName(static_cast<int>(number)));
  }
  globalData.Remove(global_data::kCount);
}

void RemoveIfPresent(PcGlobalData& globalData, const std::string& name) {
  if (!globalData.Get(name).IsNull()) globalData.Remove(name);
}

std::string RetrieveDisplayVal(const std::string& firstAttribute, const std::string& secondAttribute,
                               const PcObjectPtr& object) {
  if (!object) return {};
  std::string text;
  if (object->HasAttribute(firstAttribute)) text = object->GetText(firstAttribute);
  if (object->HasAttribute(secondAttribute)) {
    const Value second = object->GetValue(secondAttribute);
    if (!second.IsNull()) text += " ; " + second.AsText();
  }
  return text;
}

PcObjectPtr RetrieveObjFromGlobalData(Services& services, const std::string& key) {
  constexpr const char* kRead = "Reading a selected object";
  PcObjectPtr object;
  const auto retrieve = [&] {
    PcSession& session = services.Session();
    const Value entry = session.GlobalData().Get(key);
    if (entry.IsNull()) return;
    PassingOver(services.trace.problems, kRead,
                [&] { object = session.ObjectStore()->Object(ParseObjectKey(entry.AsText(), ':')); });
    if (!object) {
      services.trace.Write(
          key + " names no object (RetrieveObjFromGlobalData/CommonXFunctions): " + entry.AsText());
      return;
    }
    PassingOver(services.trace.problems, kRead, [&] { object->ReadData(); });
    services.trace.Write(
        "Auslesen der Objekte aus der globalen Variablen(RetrieveObjFromGlobalData/CommonXFunctions) " +
        std::to_string(object->GetObjectId()) + " " + std::to_string(object->GetClassId()));
  };
  GuardedRun(services.trace,
             "Fehler beim Auslesen der Objekte aus der Globalen "
             "Variablen(RetrieveObjFromGlobalData/CommonXFunctions)",
             retrieve);
  return object;
}

PcObjectPtr RetrieveObj2SelListItem(Services& services, const PcRecordList& list, int row) {
  return Guarded(services.trace, "Fehler beim Auslesen des Objekts(RetrieveObj2SelListItem/CommonXFunctions)",
                 PcObjectPtr(), [&] {
                   const auto store = Required(services.Session().ObjectStore(), "object store");
                   return store->Object(list.KeyOfRow(row));
                 });
}

}  // namespace CommonXFunctions
}  // namespace tessel
