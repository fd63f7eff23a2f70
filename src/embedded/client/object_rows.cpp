#include "embedded/client/object_rows.h"

#include "host/column_shape.h"
#include "host/error.h"
#include "host/names.h"

namespace tessel::embedded {
namespace {

using namespace column_shape;

ColumnShape ShapeOf(const std::string& name, const Value& value) {
  if (name.starts_with(attribute::kClassId) || name == attribute::kState || name == attribute::kOperationId)
    return kInteger;
  if (value.IsText()) return kText;
  if (value.IsBoolean()) return kBoolean;
  if (value.IsDouble()) return kDouble;
  return kLong;
}

ColumnShape ShapeOf(const PcAttribute& attribute) {
  switch (attribute.Type()) {
    case AttributeType::kInteger:
      return kInteger;
    case AttributeType::kLong:
    case AttributeType::kReference:
    case AttributeType::kLookup:
      return kLong;
    case AttributeType::kDouble:
      return kDouble;
    case AttributeType::kBoolean:
      return kBoolean;
    default:
      return kText;
  }
}

void SetShapedCell(PcRecordList& list, int row, const std::string& column, const Value& value,
                   const ColumnShape& shape) {
  if (!list.HasColumn(column)) AddColumn(list, column, shape);
  list.SetValue(std::string_view(column), row, value);
}

}  // namespace

void FillObjectRows(PcSession& session, const std::vector<ObjectKey>& keys, PcRecordList& list) {
  int row = 0;
  for (const ObjectKey& key : keys) {
    const PcObjectPtr object = session.ObjectStore()->Object(key);
    if (!object) throw HostError("there is no object " + ObjectKeyText(key, ':'));
    object->ReadData();
    SetCell(list, row, attribute::kClassId, key.classId);
    SetCell(list, row, attribute::kObjectId, key.objectId);
    const PcClassPtr objectClass = object->Class();
    for (int index = 0; index < objectClass->AttributeCount(); ++index) {
      const PcAttributePtr attribute = objectClass->Attribute(index);
      const std::string name = attribute->Name();
      if (name == attribute::kClassId || name == attribute::kObjectId) continue;
      SetShapedCell(list, row, name, object->GetValue(name), ShapeOf(*attribute));
    }
    ++row;
  }
}

void SetCell(PcRecordList& list, int row, const std::string& column, const Value& value) {
  SetShapedCell(list, row, column, value, ShapeOf(column, value));
}

}  // namespace tessel::embedded
