#include "embedded/sql/postgresql/server_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>

#include "host/ascii.h"

namespace tessel::embedded {
namespace {

// Types of the server that are no texts, by their numbers in its catalogue.
constexpr Oid kBoolean = 16;
constexpr Oid kInteger64 = 20;
constexpr Oid kInteger16 = 21;
constexpr Oid kInteger32 = 23;
constexpr Oid kFloat32 = 700;
constexpr Oid kFloat64 = 701;
constexpr Oid kNumeric = 1700;

bool IsNameCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

std::string TextOf(double value) {
  constexpr double kGreatest = 9e15;  // whole numbers below are exact
  std::array<char, 32> text{};
  char* end = value == std::floor(value) && std::abs(value) < kGreatest
                  ? std::to_chars(text.data(), text.data() + text.size(), std::llround(value)).ptr
                  : std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), end};
}

template <class Number>
Number NumberOf(std::string_view text) {
  Number number{};
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// A number of any size is whole when it is written so, as sums of whole numbers are.
bool IsWhole(Oid type, std::string_view text) {
  if (type == kNumeric) return text.find_first_of(".N") == std::string_view::npos && text.size() < 18;
  return type == kBoolean || type == kInteger16 || type == kInteger32 || type == kInteger64;
}

bool IsReal(Oid type) {
  return type == kFloat32 || type == kFloat64 || type == kNumeric;
}

Value CellOf(Oid type, std::string_view text) {
  if (type == kBoolean) return Value(std::int32_t{text == "t" ? 1 : 0});
  if (IsWhole(type, text)) {
    using Limits = std::numeric_limits<std::int32_t>;
    const auto number = NumberOf<long long>(text);
    if (number < Limits::min() || number > Limits::max()) return Value(static_cast<double>(number));
    return Value(static_cast<std::int32_t>(number));
  }
  return IsReal(type) ? Value(NumberOf<double>(text)) : Value(text);
}

// A column that is computed has the type of its value in the first row.
CellType ColumnTypeOf(const PGresult& result, int column) {
  const Oid type = PQftype(&result, column);
  const char* first = PQntuples(&result) > 0 ? PQgetvalue(&result, 0, column) : "";
  if (IsWhole(type, type == kNumeric && *first == '\0' ? "." : first)) return CellType::kInteger;
  return IsReal(type) ? CellType::kDouble : CellType::kText;
}

}  // namespace

NumberedText WithNumbers(const std::string& sql) {
  NumberedText numbered;
  std::vector<std::string_view> names;
  for (std::size_t i = 0; i < sql.size();) {
    const char c = sql[i];
    std::size_t end = i + 1;
    if (c == '\'' || c == '"') {
      end = std::min(sql.find(c, end), sql.size() - 1) + 1;
    } else if (c == ':' && end < sql.size() && IsNameCharacter(sql[end])) {
      while (end < sql.size() && IsNameCharacter(sql[end]))
        ++end;
      const std::string_view name = std::string_view(sql).substr(i, end - i);
      auto known = std::find(names.begin(), names.end(), name);
      if (known == names.end()) known = names.insert(known, name);
      numbered.text += "$" + std::to_string(known - names.begin() + 1);
      i = end;
      continue;
    }
    numbered.text.append(sql, i, end - i);
    i = end;
  }
  numbered.placeholders = names.size();
  return numbered;
}

Parameters::Parameters(const std::vector<Value>& values) {
  kept_.reserve(values.size());
  texts_.reserve(values.size());
  for (const Value& value : values) {
    if (value.IsNull()) {
      texts_.push_back(nullptr);
      continue;
    }
    kept_.push_back(value.IsText()     ? value.AsText()
                    : value.IsDouble() ? TextOf(value.AsDouble())
                                       : std::to_string(value.AsInt32()));
    if (kept_.back().find('\0') != std::string::npos)
      throw DatabaseError("The database cannot keep a text with a NUL character", kCodeMismatch);
    texts_.push_back(kept_.back().c_str());
  }
}

QueryResult ResultOf(const PGresult& result) {
  auto columns = std::make_shared<std::vector<ResultColumn>>();
  const int count = PQnfields(&result);
  std::vector<Oid> types;
  for (int column = 0; column < count; ++column) {
    columns->push_back({UpperCase(PQfname(&result, column)), ColumnTypeOf(result, column)});
    types.push_back(PQftype(&result, column));
  }
  QueryResult rows;
  rows.columns = columns;
  rows.rows.resize(static_cast<std::size_t>(PQntuples(&result)));
  for (int row = 0; row < PQntuples(&result); ++row) {
    std::vector<Value>& cells = rows.rows[static_cast<std::size_t>(row)];
    cells.reserve(types.size());
    for (int column = 0; column < count; ++column) {
      if (PQgetisnull(&result, row, column) != 0) {
        cells.emplace_back();
        continue;
      }
      const auto length = static_cast<std::size_t>(PQgetlength(&result, row, column));
      cells.push_back(CellOf(types[static_cast<std::size_t>(column)],
                             std::string_view(PQgetvalue(&result, row, column), length)));
    }
  }
  return rows;
}

}  // namespace tessel::embedded
