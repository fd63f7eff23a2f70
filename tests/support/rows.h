// Record lists as text: cells separated by "|", Null as "-", rows by "; ".
#pragma once

#include <string>
#include <vector>

#include "host/session.h"

namespace tessel::test {

// The named columns, in this order.
inline std::string RowsText(const PcRecordList& list, const std::vector<std::string>& columns) {
  std::string text;
  for (int row = 0; row < list.RowCount(); ++row) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const Value value = list.GetValue(columns[i], row);
      text += (i > 0 ? "|" : row > 0 ? "; " : "") + (value.IsNull() ? "-" : value.AsText());
    }
  }
  return text;
}

// What a query gives.
inline std::string QueryRows(PcSession& session, const std::string& sql) {
  const PcQueryPtr query = session.ObjectStore()->NewQuery();
  query->SetSql(sql);
  const PcRecordListPtr list = query->Run();
  std::vector<std::string> columns;
  for (int i = 0; i < list->ColumnCount(); ++i)
    columns.push_back(list->ColumnName(i));
  return RowsText(*list, columns);
}

}  // namespace tessel::test
