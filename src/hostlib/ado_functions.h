// ADOFunctions: field test and field append for record sets of an outside data source.
#pragma once

#include <cstdint>
#include <string>

namespace tessel {

// What the two functions need of a record set.
class AdoRecordSet {
 public:
  virtual ~AdoRecordSet() = default;
  [[nodiscard]] virtual int FieldCount() const = 0;
  // Index from 0; error 9 outside.
  [[nodiscard]] virtual std::string FieldName(int index) const = 0;
  virtual void Close() = 0;
  // Fields can be appended to a closed record set only. Type and size are the data source's codes.
  virtual void AppendField(const std::string& name, int type, int size) = 0;
};

namespace ADOFunctions {

// Whether a field has exactly this name; case counts.
[[nodiscard]] bool FieldExist(const AdoRecordSet& records, const std::string& name);

// 0 when the field exists already (nothing is changed), 1 when it was appended, -1 when it is still missing
// afterwards. Errors of the append go to the caller.
[[nodiscard]] std::int16_t AddField(AdoRecordSet& records, const std::string& name, int type, int size);

}  // namespace ADOFunctions
}  // namespace tessel
