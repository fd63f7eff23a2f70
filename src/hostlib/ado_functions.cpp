#include "hostlib/ado_functions.h"

#include "messages/guard.h"

namespace tessel::ADOFunctions {

bool FieldExist(const AdoRecordSet& records, const std::string& name) {
  const int count = records.FieldCount();
  for (int i = 0; i < count; ++i) {
    if (records.FieldName(i) == name) return true;
  }
  return false;
}

std::int16_t AddField(AdoRecordSet& records, const std::string& name, int type, int size) {
  if (FieldExist(records, name)) return 0;
  IgnoringErrors([&] { records.Close(); });
  records.AppendField(name, type, size);
  return FieldExist(records, name) ? 1 : -1;
}

}  // namespace tessel::ADOFunctions
