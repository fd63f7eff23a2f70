#include "config/pelicore_admin_tool.h"

#include <algorithm>
#include <limits>

#include "config/configuration_reader.h"
#include "config/string_tool.h"
#include "host/error.h"
#include "host/names.h"
#include "messages/guard.h"

namespace tessel {
namespace {

constexpr const char* kReadLinked = "Reading the linked admin setting object";

// Calls `use` with each line of a section until it returns false or the section ends.
template <class Use>
void ForSectionLines(const std::string& text, const std::string& section, Use use) {
  const std::string header = "[" + section + "]";
  StringTool reader;
  reader.OpenString(text);
  bool found = false;
  while (!found && !reader.EndOfString()) {
    found = reader.ReadLine().starts_with(header);
  }
  while (!reader.EndOfString()) {
    const std::string_view line = reader.ReadLine();
    if (line.starts_with('[') || !use(line)) return;
  }
}

std::vector<ClassId> LinkClassesBetween(const PcMetaData& metaData, ClassId first, ClassId second) {
  std::vector<PcClassPtr> classes = metaData.LinkClassesBetween(first, second);
  if (classes.empty()) classes = metaData.LinkClassesBetween(second, first);
  std::vector<ClassId> ids;
  for (const PcClassPtr& linkClass : classes) {
    ids.push_back(linkClass->Id());
  }
  return ids;
}

}  // namespace

std::string PelicoreAdminTool::IniValue_Retrieve(const std::string& text, const std::string& section,
                                                 const std::string& key, const std::string& defaultText) {
  std::string value = defaultText;
  ForSectionLines(text, section, [&](std::string_view line) {
    const auto equals = line.find('=');
    const bool isEntry =
        equals != std::string_view::npos && line.find('=', equals + 1) == std::string_view::npos;
    if (!isEntry || line.substr(0, equals) != key) return true;
    value = line.substr(equals + 1);
    return false;
  });
  return value;
}

std::vector<std::string> PelicoreAdminTool::IniSectionLines(const std::string& text,
                                                            const std::string& section) {
  std::vector<std::string> lines;
  ForSectionLines(text, section, [&lines](std::string_view line) {
    if (!line.empty() && !line.starts_with('#')) lines.emplace_back(line);
    return true;
  });
  return lines;
}

std::int16_t PelicoreAdminTool::IniValue_Count(const std::string& text, const std::string& section) {
  const std::size_t count = IniSectionLines(text, section).size();
  if (count > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) {
    throw RuntimeError(error_number::kOverflow, "The section \"" + section + "\" has too many lines");
  }
  return static_cast<std::int16_t>(count);
}

// Each step's errors are ignored by themselves; what the step would have produced stays empty.
PcObjectPtr PelicoreAdminTool::adm_GetLinkedAdmObj(const PcSessionPtr& session, const std::string& name,
                                                   PcObjectPtr baseObject) {
  if (!session) return nullptr;
  const auto trace = [this](const std::string& text) { IgnoringErrors([&] { trace_.Write(text); }); };
  trace("Get Admin ClassID");
  ClassId adminClass = 0;
  PassingOver(trace_.problems, kReadLinked,
              [&] { adminClass = session->MetaData()->ClassIdByName(admin_setting::kClassName); });
  trace("  AdmClassID= " + std::to_string(adminClass));
  if (!baseObject) {
    PassingOver(trace_.problems, kReadLinked,
                [&] { baseObject = Required(session->CurrentUser(), "user")->UserObject(); });
  }
  ClassId linkClass = 0;
  PassingOver(trace_.problems, kReadLinked, [&] {
    const auto base = Required(baseObject, "base object");
    linkClass = GetGenLinkCLassID_ByClass(*session, base->GetClassId(), adminClass);
  });
  trace("LinkClassID = " + std::to_string(linkClass));
  trace("run query to get linked admin objects");
  PcRecordListPtr linked;
  PassingOver(trace_.problems, kReadLinked, [&] {
    if (linkClass != 0) linked = GetLinkedObjs(baseObject, adminClass, linkClass);
  });
  trace("LinkedObjs.count = " + std::to_string(linked ? linked->RowCount() : 0));
  PcObjectPtr found = linked ? FindByName(*session, *linked, name) : nullptr;
  PassingOver(trace_.problems, kReadLinked, [&] {
    if (found) found->ReadData();
  });
  return found;
}

PcObjectPtr PelicoreAdminTool::FindByName(PcSession& session, const PcRecordList& linked,
                                          const std::string& name) {
  const auto trace = [this](const std::string& text) { IgnoringErrors([&] { trace_.Write(text); }); };
  const std::string attribute = admin_setting::kNameAttribute;
  PcObjectPtr examined;
  for (int row = 0; row < linked.RowCount(); ++row) {
    PcObjectPtr object;
    PassingOver(trace_.problems, kReadLinked,
                [&] { object = session.ObjectStore()->Object(linked.KeyOfRow(row)); });
    if (!object) continue;
    examined = object;
    trace("SingLinkedObj.ClassID = " + std::to_string(object->GetClassId()));
    trace("AdminAttribName = " + attribute);
    std::string value;
    PassingOver(trace_.problems, kReadLinked, [&] { value = object->GetText(attribute); });
    trace("SingLinkedObj.Data.ValueAsString(AdminAttribName) = " + value);
    trace("InitValue = " + name);
    if (value == name) break;
  }
  return examined;
}

bool PelicoreAdminTool::getAdminObject(PcSession& session, const PcBehaviorPtr&,
                                       const std::string& identifier, PcObjectPtr& object) const {
  object = nullptr;
  const PcQueryPtr query = session.ObjectStore()->NewQuery();
  query->SetClass(session.MetaData()->ClassIdByName(admin_setting::kClassName));
  for (const char* column : {attribute::kObjectId, attribute::kClassId, admin_setting::kIdentifier}) {
    query->AddSelect(column);
  }
  query->AddCondition(admin_setting::kIdentifier, "=", identifier);
  const PcRecordListPtr rows = query->Run();
  if (rows->RowCount() != 1) return false;
  const PcObjectPtr found =
      Required(session.ObjectStore()->Object(rows->KeyOfRow(0)), "admin setting object");
  found->ReadData();
  object = found;
  return true;
}

std::string PelicoreAdminTool::getValueFromAdminObj(const PcObjectPtr& object,
                                                    const std::string& attribute) const {
  return Required(object, "admin setting object")->GetText(attribute);
}

std::string PelicoreAdminTool::ReadXMLStringFromAdminobj(const PcObjectPtr& object) const {
  return Guarded(trace_,
                 "Error while reading the settings text (ReadXMLStringFromAdminobj/PelicoreAdminTool)",
                 std::string(), [&] { return getValueFromAdminObj(object, admin_setting::kTextAttribute); });
}

bool PelicoreAdminTool::WriteXMLStringToAdminObj(const std::string& text) {
  return Guarded(trace_, "Error while writing the settings text (WriteXMLStringToAdminObj/PelicoreAdminTool)",
                 false, [&] {
                   PcObject& object = *Required(AdminObject.get(), "admin setting object");
                   object.SetValue(admin_setting::kTextAttribute, text);
                   return object.Update(*Required(DefaultBehavior.get(), "default behavior")) == 0;
                 });
}

ClassId PelicoreAdminTool::GetGenLinkCLassID_byObject(const PcObjectPtr& object,
                                                      const PcObjectPtr& other) const {
  const auto session = Required(Required(object, "object")->Session(), "session");
  return GetGenLinkCLassID_ByClass(*session, object->GetClassId(), Required(other, "object")->GetClassId());
}

ClassId PelicoreAdminTool::GetGenLinkCLassID_ByClass(PcSession& session, ClassId first,
                                                     ClassId second) const {
  const std::vector<ClassId> classes = LinkClassesBetween(*session.MetaData(), first, second);
  return classes.empty() ? ClassId{0} : classes.front();
}

PcRecordListPtr PelicoreAdminTool::GetLinkedObjs(const PcObjectPtr& object, ClassId relatedClass,
                                                 ClassId linkClass) const {
  return Retrieve(*Required(object, "object"), relatedClass, {linkClass});
}

PcRecordListPtr PelicoreAdminTool::GetAllGenLinkedObjs(const PcObjectPtr& object,
                                                       ClassId relatedClass) const {
  const auto session = Required(Required(object, "object")->Session(), "session");
  return Retrieve(*object, relatedClass,
                  LinkClassesBetween(*session->MetaData(), object->GetClassId(), relatedClass));
}

PcRecordListPtr PelicoreAdminTool::Retrieve(const PcObject& object, ClassId relatedClass,
                                            const std::vector<ClassId>& linkClasses) const {
  const auto session = Required(object.Session(), "session");
  const PcAttributeListPtr attributes = session->ObjectStore()->NewAttributeList();
  attributes->Add(relatedClass, "*", "S");
  for (const ClassId linkClass : linkClasses) {
    attributes->Add(linkClass, "*", "L");
  }
  const PcBehaviorPtr behavior = DefaultBehavior ? DefaultBehavior : session->NewBehavior();
  return object.Relations(*attributes, *behavior);
}

bool PelicoreAdminTool::MechanismManaged(PcSession& session, const PcObjectPtr& object,
                                         const std::string& mechanism) const {
  const PcClassMechanismPtr found = session.MetaData()->ClassMechanism(mechanism);
  return found && found->Supports(Required(object, "object")->GetClassId());
}

}  // namespace tessel
