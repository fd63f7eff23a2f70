// Classes, mechanisms, link classes, sequences and the lock records' uniqueness.
#include <algorithm>

#include "administration/site_check.h"
#include "dispatch/exchange_object.h"
#include "host/names.h"

namespace tessel::administration {
namespace {

constexpr const char* kWhere = "database";

struct NeededMechanism {
  const char* name;
  bool required;  // else only one kind of export needs it
  const char* purpose;
};

constexpr NeededMechanism kMechanisms[] = {
    {class_mechanism::kExchangeDocument, true, "documents that may be exported"},
    {class_mechanism::kTransmittal, true, "data exchange objects"},
    {class_mechanism::kCompany, false, "companies on the recipient page"},
    {class_mechanism::kContactPerson, false, "contact persons on the recipient page"},
    {class_mechanism::kFolderStructure, false, "exports with folder structure"},
};

constexpr const char* kExchangeAttributes[] = {attribute::kProcessPhase,  attribute::kStatusInfo,
                                               attribute::kExchangeType,  attribute::kProtocol,
                                               attribute::kSendToCompany, attribute::kSendToContact,
                                               attribute::kRootDirectory, attribute::kTargetFolder};
constexpr const char* kDocumentAttributes[] = {attribute::kState,           "REVISION",
                                               attribute::kRevisionStage,   attribute::kCadFileName,
                                               attribute::kUnderOperation,  attribute::kLockState,
                                               attribute::kLockDescription, attribute::kLockedBy,
                                               attribute::kFirstLockUse};

class DatabaseCheck {
 public:
  DatabaseCheck(const Site& site, Findings& findings)
      : site_(site), findings_(findings), metaData_(*site.session->MetaData()) {}

  void Run() {
    if (!metaData_.DatabaseMechanism(kSupplierExchange)) {
      findings_.Error(kWhere,
                      "the database lacks the mechanism \"Supplier Exchange\": every export ends with e9010",
                      "add the database mechanism");
    }
    for (const NeededMechanism& needed : kMechanisms)
      CheckMechanism(needed);
    CheckExchangeClass();
    CheckDocuments();
    CheckLocking();
  }

 private:
  void CheckMechanism(const NeededMechanism& needed) {
    const PcClassMechanismPtr mechanism = metaData_.ClassMechanism(needed.name);
    if (mechanism && mechanism->SupportedClassCount() > 0) return;
    const std::string what = std::string(mechanism ? "no class supports " : "there is no class mechanism ") +
                             needed.name + ", which marks " + needed.purpose;
    // An empty list stops the start-up, whatever it is for; in folder-structure mode alone for the last one.
    if (needed.required || (mechanism && std::string(needed.name) != class_mechanism::kFolderStructure)) {
      findings_.Error(kWhere, what + ": every start-up ends with e9030", "let a class support the mechanism");
    } else {
      findings_.Warning(kWhere, what, "let a class support the mechanism");
    }
  }

  [[nodiscard]] PcClassPtr FirstClass(const char* mechanismName) const {
    const PcClassMechanismPtr mechanism = metaData_.ClassMechanism(mechanismName);
    return mechanism && mechanism->SupportedClassCount() > 0 ? mechanism->SupportedClass(0) : nullptr;
  }

  template <std::size_t Count>
  void RequireAttributes(const PcClass& checked, const char* const (&names)[Count], const char* effect) {
    std::string missing;
    for (const char* name : names) {
      if (!checked.FindAttribute(name)) missing += (missing.empty() ? "" : ", ") + std::string(name);
    }
    if (!missing.empty()) {
      findings_.Error(kWhere, "the class " + checked.Name() + " lacks " + missing + ": " + effect,
                      "add the attributes to the class");
    }
  }

  void CheckExchangeClass() {
    const PcClassPtr exchange = FirstClass(class_mechanism::kTransmittal);
    if (!exchange) return;
    RequireAttributes(*exchange, kExchangeAttributes, "exchanges are not recorded completely");
    if (const std::string why = Kestrix_ExObj::WhyNoNumber(*exchange); !why.empty()) {
      findings_.Error(kWhere, "the class " + exchange->Name() + ": " + why + ": no exchange can be recorded",
                      "give its first identifying attribute a sequence");
    }
    for (const char* mechanism :
         {class_mechanism::kExchangeDocument, class_mechanism::kCompany, class_mechanism::kContactPerson}) {
      const PcClassMechanismPtr others = metaData_.ClassMechanism(mechanism);
      for (int i = 0; others && i < others->SupportedClassCount(); ++i)
        CheckLink(*exchange, *others->SupportedClass(i));
    }
  }

  void CheckLink(const PcClass& exchange, const PcClass& other) {
    if (!metaData_.LinkClassesBetween(exchange.Id(), other.Id()).empty()) return;
    findings_.Error(kWhere,
                    "no link class ties " + exchange.Name() + " to " + other.Name() +
                        ": such exchanges are not recorded completely",
                    "add a link class between the two");
  }

  void CheckDocuments() {
    const PcClassMechanismPtr documents = metaData_.ClassMechanism(class_mechanism::kExchangeDocument);
    for (int i = 0; documents && i < documents->SupportedClassCount(); ++i) {
      const PcClassPtr document = documents->SupportedClass(i);
      RequireAttributes(*document, kDocumentAttributes, "its documents can be neither described nor locked");
      CheckCopy(*document);
    }
  }

  void CheckCopy(const PcClass& document) {
    try {
      static_cast<void>(document.LifeCycleOperations()->Item("COPYFILE"));
    } catch (const std::exception&) {
      findings_.Error(
          kWhere, "the class " + document.Name() + " has no operation COPYFILE: its files cannot be copied",
          "let the class have files");
    }
  }

  void CheckLocking() {
    const ClassId locking = metaData_.ClassIdByName(kLockClass);
    if (locking == 0) {
      findings_.Error(kWhere, "there is no class \"Object Locking\": no document can be locked",
                      "add the class");
      return;
    }
    const auto found = site_.uniqueSets.find(locking);
    if (site_.uniqueSets.empty()) return;  // the host does not tell
    std::vector<std::string> wanted = {attribute::kLockedClassId, attribute::kLockedObjectId};
    const bool unique = found != site_.uniqueSets.end() &&
                        std::ranges::any_of(found->second, [&](std::vector<std::string> names) {
                          std::ranges::sort(names);
                          return names == wanted;
                        });
    if (!unique) {
      findings_.Error(kWhere,
                      "the class \"Object Locking\" allows several records for a document: two users may "
                      "lock it at once",
                      "make OPER_CLASS_ID and OPER_OBJECT_ID unique together");
    }
  }

  const Site& site_;
  Findings& findings_;
  const PcMetaData& metaData_;
};

}  // namespace

void CheckDatabase(const Site& site, Findings& findings) {
  DatabaseCheck(site, findings).Run();
}

}  // namespace tessel::administration
