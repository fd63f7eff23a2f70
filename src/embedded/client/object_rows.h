// The record lists of objects as the client passes them to a hook: one row an object with all its attributes.
#pragma once

#include <string>
#include <vector>

#include "host/record_list.h"
#include "host/session.h"

namespace tessel::embedded {

// Fills the list from row 0 on. Error: HostError naming what is no object.
void FillObjectRows(PcSession& session, const std::vector<ObjectKey>& keys, PcRecordList& list);

// Sets a cell; a column that the list does not have yet is added with the shape that the client gives it.
void SetCell(PcRecordList& list, int row, const std::string& column, const Value& value);

}  // namespace tessel::embedded
