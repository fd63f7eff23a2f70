// Classes, mechanisms, link classes, sequences and the lock records' uniqueness.
#include <algorithm>

#include "administration/site_check.h"

namespace tessel::administration {
namespace {

constexpr const char* kWhere = "database";

struct NeededMechanism {
  const char* name;
  bool required;  // else only one kind of export needs it
  const char* purpose;
};

constexpr NeededMechanism kMechanisms[] = {
    {"VRKX_DX_SUPPLIER_EXCH_DOC", true, "documents that may be exported"},
    {"VRKX_DX_TRANSMITTAL", true, "data exchange objects"},
    {"VRKX_DX_SUPPLIER_COMPANY", false, "companies on the recipient page"},
    {"VRKX_DX_SUPPLIER_CONT_PERSON", false, "contact persons on the recipient page"},
    {"VRKX_DX_FOLDER_STRUCTURE", false, "exports with folder structure"},
};

constexpr const char* kExchangeAttributes[] = {"VRKX_DX_PROCESS_PHASE",     "VRKX_DX_STATUS_INFO",
                                               "VRKX_DX_EXCHANGE_TYPE",     "VRKX_DX_EXCH_PROTOCOL",
                                               "VRKX_DX_SEND_TO_COMPANY",   "VRKX_DX_SEND_TO_CONT_PERS",
                                               "VRKX_DX_EXCHANGE_ROOT_DIR", "VRKX_DX_TARGET_FOLDER"};
constexpr const char* kDocumentAttributes[] = {"STATE",
                                               "REVISION",
                                               "REVISION_STG",
                                               "CAD_REF_FILE_NAME",
                                               "UNDER_OPERATION",
                                               "VRKX_DX_LOCK_STATE",
                                               "VRKX_DX_LOCK_DESCRIPTION",
                                               "VRKX_DX_LOCKED_BY",
                                               "VRKX_DX_FIRST_LOCK_USE"};

class DatabaseCheck {
 public:
  DatabaseCheck(const Site& site, Findings& findings)
      : site_(site), findings_(findings), metaData_(*site.session->MetaData()) {}

  void Run() {
    if (!metaData_.DatabaseMechanism("Supplier Exchange")) {
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
    if (needed.required || (mechanism && std::string(needed.name) != "VRKX_DX_FOLDER_STRUCTURE")) {
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
    const PcClassPtr exchange = FirstClass("VRKX_DX_TRANSMITTAL");
    if (!exchange) return;
    RequireAttributes(*exchange, kExchangeAttributes, "exchanges are not recorded completely");
    if (!HasNumber(*exchange)) {
      findings_.Error(kWhere,
                      "the class " + exchange->Name() +
                          " has no identifying attribute with a sequence: no "
                          "exchange can be recorded",
                      "give its identifying attribute a sequence");
    }
    for (const char* mechanism :
         {"VRKX_DX_SUPPLIER_EXCH_DOC", "VRKX_DX_SUPPLIER_COMPANY", "VRKX_DX_SUPPLIER_CONT_PERSON"}) {
      const PcClassMechanismPtr others = metaData_.ClassMechanism(mechanism);
      for (int i = 0; others && i < others->SupportedClassCount(); ++i)
        CheckLink(*exchange, *others->SupportedClass(i));
    }
  }

  static bool HasNumber(const PcClass& checked) {
    for (int i = 0; i < checked.AttributeCount(); ++i) {
      const PcAttributePtr attribute = checked.Attribute(i);
      const std::string name = attribute->Name();
      if (name != "SITE_ID" && name != "REVISION" && attribute->IsIdentifying(name) &&
          attribute->HasSequence()) {
        return true;
      }
    }
    return false;
  }

  void CheckLink(const PcClass& exchange, const PcClass& other) {
    if (!metaData_.LinkClassesBetween(exchange.Id(), other.Id()).empty()) return;
    findings_.Error(kWhere,
                    "no link class ties " + exchange.Name() + " to " + other.Name() +
                        ": such exchanges are not recorded completely",
                    "add a link class between the two");
  }

  void CheckDocuments() {
    const PcClassMechanismPtr documents = metaData_.ClassMechanism("VRKX_DX_SUPPLIER_EXCH_DOC");
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
    const ClassId locking = metaData_.ClassIdByName("Object Locking");
    if (locking == 0) {
      findings_.Error(kWhere, "there is no class \"Object Locking\": no document can be locked",
                      "add the class");
      return;
    }
    const auto found = site_.uniqueSets.find(locking);
    if (site_.uniqueSets.empty()) return;  // the host does not tell
    std::vector<std::string> wanted = {"OPER_CLASS_ID", "OPER_OBJECT_ID"};
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
