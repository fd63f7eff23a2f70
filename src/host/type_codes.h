// Codes of column and attribute types, as the host stores them.
#pragma once

namespace tessel {

// Type argument of PcRecordList::AddColumn.
enum class ColumnType { kText = 1, kInteger = 2, kLong = 3, kDouble = 4, kBoolean = 5 };

// Type of a class attribute. The five time kinds print an empty time as "00:00:00".
enum class AttributeType {
  kText = 1,
  kInteger = 2,  // 16-bit
  kLong = 3,     // 32-bit
  kDouble = 4,
  kBoolean = 5,
  kLongText = 6,
  kDate = 7,
  kTime = 8,
  kReference = 9,  // object id in another class's table
  kLookup = 10,    // object id in a lookup class's table
  kDateTime = 11,
  kTimeStamp = 12,
  kDuration = 13,
};

}  // namespace tessel
