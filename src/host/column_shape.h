// What a column of a record list holds: the length in bytes and the type code that AddColumn takes.
#pragma once

#include <string>

#include "host/record_list.h"
#include "host/type_codes.h"

namespace tessel {

struct ColumnShape {
  int length = 0;
  ColumnType type = ColumnType::kText;
};

namespace column_shape {
inline constexpr ColumnShape kText{255, ColumnType::kText};
inline constexpr ColumnShape kInteger{2, ColumnType::kInteger};
inline constexpr ColumnShape kLong{4, ColumnType::kLong};
inline constexpr ColumnShape kDouble{8, ColumnType::kDouble};
inline constexpr ColumnShape kBoolean{2, ColumnType::kBoolean};
}  // namespace column_shape

// Error: HostError when the list has a column of that name.
inline void AddColumn(PcRecordList& list, const std::string& name, const ColumnShape& shape) {
  list.AddColumn(name, shape.length, static_cast<int>(shape.type));
}

}  // namespace tessel
