// Attribute values: lookups, references, display texts, mandatory attributes.
#include <string_view>

#include "host/ascii.h"
#include "host/error.h"
#include "host/names.h"
#include "hostlib/qel_function_pool.h"

namespace tessel {
namespace {

constexpr const char* kDescription = "DESCRIPTION";
constexpr const char* kProjectionValue = "PROJECTIONVALUE";
constexpr const char* kFileType = "FILE_TYPE";
constexpr const char* kEmptyTime = "00:00:00";
// Tables whose rows are shown by a value of their own.
constexpr const char* kUserTable = "USERS";
constexpr const char* kLoginAttribute = "LOGIN";
constexpr const char* kStateTable = "VRK_STATE";

bool IsTime(AttributeType type) {
  return type == AttributeType::kDate || type == AttributeType::kTime || type == AttributeType::kDateTime ||
         type == AttributeType::kTimeStamp || type == AttributeType::kDuration;
}

bool HasValue(const PcObject& object, const PcAttribute& attribute) {
  const std::string text = object.GetText(attribute.Name());
  const std::string_view trimmed = Trimmed(text, " ");
  return !trimmed.empty() && !(IsTime(attribute.Type()) && trimmed == kEmptyTime);
}

// Attribute of a referenced row that stands for it; empty when references into the class show the plain id.
std::string ShownAttribute(const PcAttribute& reference, const PcObject& target) {
  if (reference.Type() == AttributeType::kLookup) return kDescription;
  const std::string table = Required(target.Class(), "class of the referenced object")->TableName();
  if (table == kUserTable) return kLoginAttribute;
  if (table == kStateTable) return kDescription;
  return {};
}

// What the host shows for an object as a whole: its projection column, else its identifying attribute.
std::string ProjectionText(const PcObject& object) {
  if (object.HasAttribute(kProjectionValue)) return object.GetText(kProjectionValue);
  const PcClassPtr classData = Required(object.Class(), "class of the object");
  for (int i = 0; i < classData->AttributeCount(); ++i) {
    const PcAttributePtr attribute = classData->Attribute(i);
    const std::string name = attribute->Name();
    if (attribute->IsIdentifying(name)) return object.GetText(name);
  }
  return {};
}

const char* SearchColumn(LookupSearch search) {
  switch (search) {
    case LookupSearch::kValueOrder:
      return attribute::kValueOrder;
    case LookupSearch::kObjectId:
      return attribute::kObjectId;
    case LookupSearch::kDescription:
      break;
  }
  return kDescription;
}

}  // namespace

ObjectId QelFunctionPool::LookupObject(PcSession& session, const ClassArgument& lookupClass,
                                       const std::string& description, const std::string& searchText,
                                       LookupSearch search, std::int16_t prefix) const {
  const PcClassPtr classData = lookupClass.ResolveClass(session);
  if (!classData) return 0;
  const PcQueryPtr query = session.ObjectStore()->NewQuery();
  query->SetSql("select * from " + classData->TableName() + " order by value_order");
  const PcRecordListPtr rows = query->Run();
  const char* column = SearchColumn(search);
  const std::string& wanted = search == LookupSearch::kDescription ? description : searchText;
  for (int row = 0; row < rows->RowCount(); ++row) {
    const std::string text = rows->GetValue(column, row).AsText();
    if (text == wanted || (prefix != 0 && text.starts_with(wanted))) {
      return rows->GetValue(attribute::kObjectId, row).AsInt32();
    }
  }
  return 0;
}

PcObjectPtr QelFunctionPool::ReferencedObject(const PcObject& object, const std::string& attribute,
                                              std::int16_t option) const {
  const Value value = object.GetValue(attribute);
  const PcAttributePtr definition = Required(object.Class(), "class of the object")->FindAttribute(attribute);
  if (value.IsNull() || !definition || definition->TargetClassId() == 0) return nullptr;
  const PcSessionPtr session = Required(object.Session(), "session of the object");
  PcObjectPtr target = session->ObjectStore()->Object({definition->TargetClassId(), value.AsInt32()});
  if (target && option != 1) target->ReadData();
  return target;
}

std::string QelFunctionPool::AttributeValue(const PcObject& object, const std::string& attribute) const {
  const std::size_t dot = attribute.find('.');
  if (dot != std::string::npos) {
    const PcObjectPtr target = ReferencedObject(object, attribute.substr(0, dot), 0);
    return target ? AttributeValue(*target, attribute.substr(dot + 1)) : std::string();
  }
  if (attribute == kProjectionValue) return ProjectionText(object);
  if (attribute == attribute::kObjectId) return std::to_string(object.GetObjectId());
  std::string text = object.GetText(attribute);
  const PcAttributePtr definition = Required(object.Class(), "class of the object")->FindAttribute(attribute);
  if (!definition) return text;
  if (IsTime(definition->Type()) && Trimmed(text, " ") == kEmptyTime) return {};
  if (definition->TargetClassId() == 0) return text;
  const PcObjectPtr target = ReferencedObject(object, attribute, 0);
  if (!target) return {};
  const std::string shown = ShownAttribute(*definition, *target);
  return shown.empty() ? text : target->GetText(shown);
}

bool QelFunctionPool::MandatoryAttributeHasValue(const PcAttribute& attribute, const PcObject& object) const {
  if (!HasValue(object, attribute)) return false;
  // A type without a file says nothing.
  return attribute.Name() != kFileType || !object.HasAttribute(attribute::kFileName) ||
         !Trimmed(object.GetText(attribute::kFileName), " ").empty();
}

bool QelFunctionPool::MandatoryAttributesHaveValues(const PcObject& object, const PcClass& classData,
                                                    std::string& missing) const {
  missing.clear();
  for (int i = 0; i < classData.AttributeCount(); ++i) {
    const PcAttributePtr attribute = classData.Attribute(i);
    if (!attribute->IsMandatory() || MandatoryAttributeHasValue(*attribute, object)) continue;
    if (!missing.empty()) missing += ", ";
    missing += attribute->Name();
  }
  return missing.empty();
}

}  // namespace tessel
