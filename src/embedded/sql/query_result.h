// What a query returns: typed columns and their rows.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/value.h"

namespace tessel::embedded {

enum class CellType { kText, kInteger, kDouble };

struct ResultColumn {
  std::string name;  // upper case
  CellType type = CellType::kText;
};

struct QueryResult {
  std::shared_ptr<const std::vector<ResultColumn>> columns;
  std::vector<std::vector<Value>> rows;
};

}  // namespace tessel::embedded
