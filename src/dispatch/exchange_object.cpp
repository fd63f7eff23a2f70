#include "dispatch/exchange_object.h"

#include <unordered_map>

#include "host/names.h"
#include "hostlib/my_common_functions.h"
#include "messages/guard.h"

namespace tessel::Kestrix_ExObj {
namespace {

// How a company or contact person is recorded on the data exchange object.
struct PartnerRule {
  const char* attribute;
  std::string displayAttribute1;
  std::string displayAttribute2;
  const char* updated;  // trace text after the update
  const char* linked;   // begin of the trace text after the link
};

class Creation {
 public:
  Creation(Services& services, const PcSessionPtr& session, ClassId classId)
      : services_(services),
        trace_(services.trace),
        session_(*Required(session, "session")),
        store_(Required(session_.ObjectStore(), "object store")),
        metaData_(Required(session_.MetaData(), "metadata")),
        classId_(classId) {}

  void Begin() {
    trace_.Write("Set a new Data Exchange Object");
    if (metaData_->ClassById(classId_)) object_ = store_->NewObject(classId_);
    trace_.Write(object_ ? "...Set Object is not nothing (CreateExchangeObject/Kestrix_ExObj)"
                         : "...Set object is nothing (CreateExchangeObject/Kestrix_ExObj)");
    Required(object_, "data exchange object");
  }

  void SetIdentity(std::string& idValue) {
    trace_.Write("check for exchange object ID Attribute Name");
    PcAttributePtr attribute;
    PcSequencePtr sequence;
    const bool found = myCommonFunctions::FindIDAtt(*object_, attribute, sequence);
    const std::string name = Required(attribute, "ID attribute")->Name();
    trace_.Write("ID Attribute Name: " + name);
    if (!found) throw HostError("The attribute \"" + name + "\" has no sequence");
    idValue = object_->NextSequenceValue(name).AsText();
    object_->SetValue(name, Value(idValue));
    trace_.Write("New sequence for Data exchange object is: " + object_->GetText(name));
  }

  void SetFirstStatus() {
    object_->SetValue(attribute::kProcessPhase, Value(std::int32_t{1}));
    trace_.Write("Process phase has been set to status '1' (New)");
    object_->SetValue(attribute::kStatusInfo, Value("New (no batch process started)"));
    trace_.Write("Status Info has been set to: 'New (no batch process started)'");
  }

  bool Insert(ObjectId& objectId) {
    behavior_ = Required(session_.NewBehavior(), "behaviour");
    behavior_->Set(1, 2);
    for (int setting = 2; setting <= 4; ++setting)
      behavior_->Set(setting, 0);
    if (const int code = object_->Add(*behavior_)) {
      constexpr const char* kRefused = "inserting new data exchange object does not succeed";
      trace_.Write(kRefused);
      KeepRefusal(kRefused, code);
      return false;
    }
    objectId = object_->GetObjectId();
    trace_.Write("Datenaustauschobjekt angelegt(CreateExchangeObject/Kestrix_ExObj): " +
                 std::to_string(object_->GetClassId()) + " ; " + std::to_string(objectId));
    return true;
  }

  void SetTypeAndProtocol(const std::string& typeAttribute, bool exportSwitch, const std::string& protocol) {
    object_->SetValue(typeAttribute, Value(std::int16_t{exportSwitch ? std::int16_t{1} : std::int16_t{2}}));
    trace_.Write("Datenaustauschtyp(CreateExchangeObject/Kestrix_ExObj): " + object_->GetText(typeAttribute));
    object_->SetValue(attribute::kProtocol, Value(protocol));
    static_cast<void>(Update("Datenaustauschobj aktualisiert (CreateExchangeObject/Kestrix_ExObj)"));
  }

  void LinkExported(const PcRecordList& exported) {
    const bool linkAll = services_.Settings().b_LinkAllToMainTransObj;
    const int rows = exported.RowCount();
    for (int row = 0; row < rows; ++row) {
      if (exported.GetValue(attribute::kRootObject, row).AsInt16() == 1 || linkAll)
        LinkExportedRow(exported.KeyOfRow(row));
    }
  }

  void RecordPartner(const PcObjectPtr& partner, const PartnerRule& rule) {
    const auto link = object_->AddLink(*partner, LinkClassTo(partner->GetClassId()), *behavior_);
    const Value before = object_->GetValue(rule.attribute);
    // As on the recipient page, an attribute that is configured empty shows as empty text.
    object_->SetValue(
        rule.attribute,
        Value(rule.displayAttribute1.empty() ? std::string() : partner->GetText(rule.displayAttribute1)));
    if (!rule.displayAttribute2.empty()) {
      object_->SetValue(rule.attribute, Value(object_->GetText(rule.attribute) + " " +
                                              partner->GetText(rule.displayAttribute2)));
    }
    // A text that the database refuses would be refused again with the next partner's.
    if (!Update(rule.updated)) object_->SetValue(rule.attribute, before);
    if (link) {
      trace_.Write(rule.linked + std::string(" '") + std::to_string(partner->GetObjectId()) +
                   "' is linked to ExchangeObject");
    } else {
      KeepRefusal(std::string("Linking ") + rule.linked + " to the data exchange object", 0);
    }
  }

  // Whether the database took everything so far.
  [[nodiscard]] bool Complete() const { return complete_; }

 private:
  // Something is missing in the record.
  void KeepRefusal(const std::string& step, int code) {
    complete_ = false;
    std::string cause = code == 0 ? std::string() : session_.ErrorText(code);
    if (cause.empty()) cause = code == 0 ? "the database made no link" : "the database refused it";
    trace_.problems.Add({step, {}, code, std::move(cause)});
  }

  bool Update(const char* traceText) {
    const int code = object_->Update(*behavior_);
    if (code == 0) {
      trace_.Write(traceText);
    } else {
      KeepRefusal("Updating the data exchange object", code);
    }
    return code == 0;
  }

  void LinkExportedRow(const ObjectKey& key) {
    const auto exported = Required(store_->Object(key), "exported object");
    exported->ReadData();
    const ClassId linkClass = LinkClassTo(exported->GetClassId());
    const std::string name = "CopiedObj '" + std::to_string(exported->GetObjectId()) + "'";
    PcObjectPtr existing;
    if (myCommonFunctions::isObjLinked2Obj(*object_, *exported, linkClass, existing)) {
      trace_.Write(name + " is already linked to ExchangeObject");
    } else if (object_->AddLink(*exported, linkClass, *behavior_)) {
      trace_.Write(name + " is linked to ExchangeObject");
    } else {
      KeepRefusal("Linking " + name + " to the data exchange object", 0);
    }
  }

  // The first link class between the data exchange class and another, asked once a class.
  ClassId LinkClassTo(ClassId other) {
    const auto known = linkClasses_.find(other);
    if (known != linkClasses_.end()) return known->second;
    const auto classes = metaData_->LinkClassesBetween(classId_, other);
    if (classes.empty()) {
      throw RuntimeError(error_number::kSubscriptOutOfRange,
                         "Subscript out of range: no link class between the classes " +
                             std::to_string(classId_) + " and " + std::to_string(other));
    }
    return linkClasses_[other] = Required(classes.front(), "link class")->Id();
  }

  Services& services_;
  Trace& trace_;
  PcSession& session_;
  PcObjectStorePtr store_;
  PcMetaDataPtr metaData_;
  ClassId classId_;
  PcObjectPtr object_;
  PcBehaviorPtr behavior_;
  std::unordered_map<ClassId, ClassId> linkClasses_;
  bool complete_ = true;
};

PartnerRule CompanyRule(const Configuration& settings) {
  return {attribute::kSendToCompany, settings.DisplayAttribCustom1, settings.DisplayAttribCustom2,
          "Datenaustauschobj aktualisiert mit RefToClass Company(CreateExchangeObject/Kestrix_ExObj)",
          "Customer"};
}

PartnerRule ContactRule(const Configuration& settings) {
  return {attribute::kSendToContact, settings.DisplayAttribContact1, settings.DisplayAttribContact2,
          "Datenaustauschobj aktualisiert mit RefToClass Contact person(CreateExchangeObject/Kestrix_ExObj)",
          "Contactperson"};
}

}  // namespace

bool CreateExchangeObject(Services& services, const PcSessionPtr& session, ClassId classId,
                          ObjectId& objectId, const std::string& protocolText, bool exportSwitch,
                          const std::string& exchangeTypeAttribute, std::string& idValue,
                          std::int16_t rootLinkSwitch, const PcObjectPtr& company, const PcObjectPtr& contact,
                          const std::vector<PcRecordListPtr>& exported) {
  const auto create = [&] {
    const Configuration& settings = services.Settings();
    Creation creation(services, session, classId);
    creation.Begin();
    creation.SetIdentity(idValue);
    creation.SetFirstStatus();
    if (!creation.Insert(objectId)) return false;
    creation.SetTypeAndProtocol(exchangeTypeAttribute, exportSwitch, protocolText);
    if (settings.b_UseRootObjRel && rootLinkSwitch != 0) {
      for (const PcRecordListPtr& list : exported)
        creation.LinkExported(*list);
    }
    if (settings.b_UseCustomObjRel && company) creation.RecordPartner(company, CompanyRule(settings));
    if (settings.b_UseContactPersObjRel && contact) creation.RecordPartner(contact, ContactRule(settings));
    return creation.Complete();
  };
  return Guarded(services.trace,
                 "Fehler beim Anlegen des Datenaustauschobjekts (CreateExchangeObject / Kestrix_ExObj)",
                 false, create);
}

std::string WhyNoNumber(const PcClass& exchangeClass) {
  for (int i = 0; i < exchangeClass.AttributeCount(); ++i) {
    const PcAttributePtr attribute = exchangeClass.Attribute(i);
    const std::string name = attribute->Name();
    if (name == attribute::kSiteId || name == "REVISION" || !attribute->IsIdentifying(name)) continue;
    return attribute->HasSequence() ? "" : "the first identifying attribute " + name + " has no sequence";
  }
  return "there is no identifying attribute";
}

}  // namespace tessel::Kestrix_ExObj
