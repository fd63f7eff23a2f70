#include "host/record_list.h"

#include "host/error.h"
#include "host/names.h"

namespace tessel {
namespace {

int RequiredColumn(const PcRecordList& list, std::string_view name) {
  const int column = list.FindColumn(name);
  if (column < 0) throw HostError("The record list has no column \"" + std::string(name) + "\"");
  return column;
}

}  // namespace

Value PcRecordList::GetValue(std::string_view column, int row) const {
  return GetValue(RequiredColumn(*this, column), row);
}

void PcRecordList::SetValue(std::string_view column, int row, const Value& value) {
  SetValue(RequiredColumn(*this, column), row, value);
}

ObjectKey PcRecordList::KeyOfRow(int row) const {
  return {GetValue(attribute::kClassId, row).AsInt16(), GetValue(attribute::kObjectId, row).AsInt32()};
}

}  // namespace tessel
