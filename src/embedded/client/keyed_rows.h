// The rows of many objects by few statements.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "embedded/session/session.h"

namespace tessel::embedded {

// Calls `take` with each row of "`head` = id `tail`", `head` being "SELECT ... WHERE column", for every one
// of the ids. The rows of one id come in the order of the tail, those of several ids mixed.
template <class Take>
void ReadKeyedRows(Database& database, const std::string& head, const std::string& tail,
                   const std::vector<ObjectId>& ids, Take take) {
  if (ids.size() == 1) {
    for (auto& row : database.Query(head + " = :k" + tail, {Value(ids.front())}).rows)
      take(row);
    return;
  }
  // One text for every block, which stays prepared; a Null in the last one's rest finds nothing.
  constexpr std::size_t kBlock = 100;
  std::string text = head + " IN (:k0";
  for (std::size_t i = 1; i < kBlock; ++i)
    text += ", :k" + std::to_string(i);
  text += ")" + tail;
  for (std::size_t begin = 0; begin < ids.size(); begin += kBlock) {
    std::vector<Value> values(kBlock);
    for (std::size_t i = 0; i < kBlock && begin + i < ids.size(); ++i)
      values[i] = Value(ids[begin + i]);
    for (auto& row : database.Query(text, values).rows)
      take(row);
  }
}

}  // namespace tessel::embedded
