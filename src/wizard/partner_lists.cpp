#include "wizard/partner_lists.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <vector>

#include "host/ascii.h"
#include "host/error.h"
#include "host/names.h"
#include "messages/guard.h"

namespace tessel::CommonXFunctions {
namespace {

PcRecordListPtr QueryCustomers(PcSession& session, ClassId classId, const std::string& first,
                               const std::string& second) {
  const PcQueryPtr query = session.ObjectStore()->NewQuery();
  query->SetClass(classId);
  std::vector<std::string> selected;
  const auto select = [&](const std::string& attribute) {
    const std::string column = UpperCase(attribute);  // as query results bear it
    if (attribute.empty() || std::find(selected.begin(), selected.end(), column) != selected.end()) return;
    query->AddSelect(attribute);
    selected.push_back(column);
  };
  select(first);
  select(second);
  select(attribute::kObjectId);
  select(attribute::kClassId);
  const PcClassPtr definition = Required(session.MetaData()->ClassById(classId), "company class");
  if (definition->FindAttribute(attribute::kInactive)) {
    select(attribute::kInactive);
    query->AddCondition(attribute::kInactive, "=", "FALSE");
  }
  return Required(query->Run(), "result of the company query");
}

std::string DisplayOfRow(const PcRecordList& rows, const std::string& attribute, int row) {
  return attribute.empty() ? std::string() : rows.GetValue(UpperCase(attribute), row).AsText();
}

std::string DisplayOfObject(const PcObject& object, const std::string& attribute) {
  return attribute.empty() ? std::string() : object.GetText(attribute);
}

bool IsInactive(const PcObject& object) {
  if (!object.HasAttribute(attribute::kInactive)) return false;
  const Value inactive = object.GetValue(attribute::kInactive);
  return !inactive.IsNull() && inactive.AsBoolean();
}

// The objects below one object, depth first and each once, so that linked structures that lead back to an
// object end there.
class ChildCollector {
 public:
  ChildCollector(PcSession& session, ClassId related) : session_(session) {
    attributes_ = session.ObjectStore()->NewAttributeList();
    attributes_->Add(related, "*", "S");
    behavior_ = session.NewBehavior();
  }

  std::vector<PcObjectPtr> RetrieveAllChildren(const PcObject& top) {
    seen_.insert(top.Key());
    Open(top);
    while (!open_.empty()) {
      Level& level = open_.back();
      if (level.next == level.rows->RowCount()) {
        open_.pop_back();
        continue;
      }
      Take(level.rows->KeyOfRow(level.next++));
    }
    return std::move(list_);
  }

 private:
  struct Level {
    PcRecordListPtr rows;
    int next = 0;
  };

  void Open(const PcObject& object) {
    if (PcRecordListPtr rows = object.Children(*attributes_, *behavior_)) open_.push_back({std::move(rows)});
  }

  void Take(const ObjectKey& key) {
    if (!seen_.insert(key).second) return;
    const PcObjectPtr object = session_.ObjectStore()->Object(key);
    if (!object) return;
    list_.push_back(object);
    Open(*object);
  }

  PcSession& session_;
  PcAttributeListPtr attributes_;
  PcBehaviorPtr behavior_;
  std::vector<Level> open_;
  std::unordered_set<ObjectKey> seen_;
  std::vector<PcObjectPtr> list_;
};

void AddContact(Services& services, PcObject& contact, TreeList& contacts) {
  contact.ReadData();
  if (IsInactive(contact)) return;
  const Configuration& settings = services.Settings();
  const std::string text = DisplayOfObject(contact, settings.DisplayAttribContact1) + " " +
                           DisplayOfObject(contact, settings.DisplayAttribContact2);
  contacts.AddNode(text, ObjectKeyText(contact.Key(), '_'));
  services.trace.Write("Kontakpersonen in Liste: (ListContactPerson/CommonXFunctions); Anzahl: " +
                       std::to_string(contacts.NodeCount()) + " Anzeige: " + text);
}

}  // namespace

void ListCustomer(Services& services, TreeList& customers) {
  GuardedRun(services.trace, "Fehler in function: (ListCustomer/CommonXFunctions)", [&] {
    customers.Clear();
    const ClassId classId = services.declarations.startup.CompanyClassID;
    services.trace.Write("CompanyClassID (ListCustomer/CommonXFunctions): " + std::to_string(classId));
    if (classId <= 0) return;
    const Configuration& settings = services.Settings();
    const PcRecordListPtr rows = QueryCustomers(services.Session(), classId, settings.DisplayAttribCustom1,
                                                settings.DisplayAttribCustom2);
    services.trace.Write("Insgesamt " + std::to_string(rows->RowCount()) +
                         " Kundenobjekte gefunden: (ListCustomer/CommonXFunctions)");
    for (int row = 0; row < rows->RowCount(); ++row) {
      const std::string text = DisplayOfRow(*rows, settings.DisplayAttribCustom1, row) + " " +
                               DisplayOfRow(*rows, settings.DisplayAttribCustom2, row);
      customers.AddNode(text, ObjectKeyText(rows->KeyOfRow(row), '_'));
      services.trace.Write("Kundenobjekte in Liste: (ListCustomer/CommonXFunctions); Anzahl: " +
                           std::to_string(customers.NodeCount()) + " Anzeige: " + text);
    }
  });
}

void ListContactPerson(Services& services, const TreeList& customers, TreeList& contacts) {
  GuardedRun(services.trace, "Fehler in function: (ListContactPerson/CommonXFunctions)", [&] {
    contacts.Clear();
    if (customers.Selected() < 0) ThrowObjectNotSet("selected customer");
    const TreeList::Node& node = customers.NodeAt(customers.Selected());
    PcSession& session = services.Session();
    const PcObjectPtr customer = session.ObjectStore()->Object(ParseObjectKey(node.tag, '_'));
    const ClassId classId = services.declarations.startup.ContactPersonClassID;
    services.trace.Write("ContactPersClassID (ListContactPerson/CommonXFunctions): " +
                         std::to_string(classId));
    if (!customer || classId <= 0) return;
    const std::vector<PcObjectPtr> linked = ChildCollector(session, classId).RetrieveAllChildren(*customer);
    if (linked.empty()) return;
    services.trace.Write("Insgesamt '" + std::to_string(linked.size()) + "' Kontaktpersonen zu Kunde '" +
                         node.tag + "' gefunden: (ListContactPerson/CommonXFunctions)");
    for (const PcObjectPtr& contact : linked)
      AddContact(services, *contact, contacts);
  });
}

}  // namespace tessel::CommonXFunctions
