// A value as the automation interface passes it: Null, 16- or 32-bit integer, Boolean, double, date or text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace tessel {

// Conversions of text, shared by values, configuration and tags. Numbers are decimal with an optional sign,
// surrounding blanks and fraction (rounded half to even). Errors: 13 no such value, 6 out of range.
[[nodiscard]] std::int16_t ParseInt16(std::string_view text);
[[nodiscard]] std::int32_t ParseInt32(std::string_view text);
[[nodiscard]] double ParseDouble(std::string_view text);
// "True" and "False" in any letter case, or any number (0 is false). Error 13 otherwise.
[[nodiscard]] bool ParseBoolean(std::string_view text);

// "True" or "False".
[[nodiscard]] const char* BooleanText(bool value);

// A day and its time: days since 30 December 1899, the time as their fraction.
struct Date {
  double days = 0;
  friend bool operator==(const Date&, const Date&) = default;
};

class Value {
 public:
  Value() = default;  // Null
  Value(std::int16_t value) : data_(value) {}
  Value(std::int32_t value) : data_(value) {}
  Value(bool value) : data_(value) {}
  Value(double value) : data_(value) {}
  Value(Date value) : data_(value) {}
  Value(std::string value) : data_(std::move(value)) {}
  Value(std::string_view value) : data_(std::string(value)) {}
  Value(const char* value) : data_(std::string(value)) {}

  [[nodiscard]] bool IsNull() const { return std::holds_alternative<std::monostate>(data_); }
  [[nodiscard]] bool IsText() const { return std::holds_alternative<std::string>(data_); }
  [[nodiscard]] bool IsBoolean() const { return std::holds_alternative<bool>(data_); }
  [[nodiscard]] bool IsDouble() const { return std::holds_alternative<double>(data_); }
  [[nodiscard]] bool IsInt16() const { return std::holds_alternative<std::int16_t>(data_); }
  [[nodiscard]] bool IsDate() const { return std::holds_alternative<Date>(data_); }

  // Plain display text: Null is empty, a Boolean "True" or "False", numbers in plain decimal, a date
  // "yyyy-mm-dd hh:mm:ss" (error 6 for a year before 100 or after 9999).
  [[nodiscard]] std::string AsText() const;
  // Errors: 94 Null, 13 text that is no number, 6 out of range. A Boolean is -1 or 0, a date its days.
  [[nodiscard]] std::int16_t AsInt16() const;
  [[nodiscard]] std::int32_t AsInt32() const;
  [[nodiscard]] double AsDouble() const;
  // Errors: 94 Null, 13 text that is neither a Boolean word nor a number.
  [[nodiscard]] bool AsBoolean() const;

  // Same kind and same content; a 16-bit and a 32-bit integer of one value are equal.
  friend bool operator==(const Value& left, const Value& right);

 private:
  std::variant<std::monostate, std::int16_t, std::int32_t, bool, double, Date, std::string> data_;
};

}  // namespace tessel
