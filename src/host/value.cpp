#include "host/value.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <limits>

#include "host/ascii.h"
#include "host/error.h"

namespace tessel {
namespace {

[[noreturn]] void ThrowMismatch(std::string_view text) {
  throw RuntimeError(error_number::kTypeMismatch, "Type mismatch: \"" + std::string(text) + "\"");
}

[[noreturn]] void ThrowNull() {
  throw RuntimeError(error_number::kInvalidUseOfNull, "Invalid use of Null");
}

double RoundHalfToEven(double value) {
  const double floor = std::floor(value);
  const double fraction = value - floor;
  if (fraction > 0.5) return floor + 1;
  if (fraction < 0.5) return floor;
  return std::fmod(floor, 2.0) == 0.0 ? floor : floor + 1;
}

template <class Integer>
Integer ToInteger(double value) {
  const double rounded = RoundHalfToEven(value);
  if (!(rounded >= static_cast<double>(std::numeric_limits<Integer>::min()) &&
        rounded <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
    throw RuntimeError(error_number::kOverflow, "Overflow");
  }
  return static_cast<Integer>(rounded);
}

// The number's characters without blanks around them and without a plus sign, which from_chars does not take.
std::string_view Digits(std::string_view text) {
  const std::string_view digits = Trimmed(text);
  const bool hasPlus = digits.size() > 1 && digits[0] == '+' && digits[1] != '-';
  return hasPlus ? digits.substr(1) : digits;
}

template <class Integer>
Integer ParseInteger(std::string_view text) {
  const std::string_view digits = Digits(text);
  Integer value{};
  const char* end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, value);
  if (error == std::errc() && rest == end) return value;
  return ToInteger<Integer>(ParseDouble(text));
}

std::string DateText(Date date) {
  constexpr std::chrono::sys_days kFirst = std::chrono::year{1899} / 12 / 30;
  constexpr double kOldest = -657434;    // 1 January 100
  constexpr double kYoungest = 2958465;  // 31 December 9999
  constexpr int kSecondsPerDay = 86400;
  double day = std::trunc(date.days);
  // The fraction counts forward on days before the first, too.
  int seconds = static_cast<int>(std::lround(std::abs(date.days - day) * kSecondsPerDay));
  if (seconds == kSecondsPerDay) {
    seconds = 0;
    ++day;
  }
  if (!(day >= kOldest && day <= kYoungest)) throw RuntimeError(error_number::kOverflow, "Overflow");
  const std::chrono::year_month_day calendar{kFirst + std::chrono::days(static_cast<int>(day))};
  char text[32];
  const int size =
      std::snprintf(text, sizeof text, "%04d-%02u-%02u %02d:%02d:%02d", static_cast<int>(calendar.year()),
                    static_cast<unsigned>(calendar.month()), static_cast<unsigned>(calendar.day()),
                    seconds / 3600, seconds / 60 % 60, seconds % 60);
  return {text, static_cast<std::size_t>(size)};
}

}  // namespace

double ParseDouble(std::string_view text) {
  const std::string_view digits = Digits(text);
  double value = 0;
  const char* end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, value);
  if (error == std::errc::result_out_of_range) throw RuntimeError(error_number::kOverflow, "Overflow");
  if (error != std::errc() || rest != end || !std::isfinite(value)) ThrowMismatch(text);
  return value;
}

std::int16_t ParseInt16(std::string_view text) {
  return ParseInteger<std::int16_t>(text);
}

std::int32_t ParseInt32(std::string_view text) {
  return ParseInteger<std::int32_t>(text);
}

bool ParseBoolean(std::string_view text) {
  const std::string_view word = Trimmed(text);
  if (EqualsIgnoringCase(word, "true")) return true;
  if (EqualsIgnoringCase(word, "false")) return false;
  return ParseDouble(text) != 0;
}

const char* BooleanText(bool value) {
  return value ? "True" : "False";
}

std::string Value::AsText() const {
  if (const auto* text = std::get_if<std::string>(&data_)) return *text;
  if (const auto* flag = std::get_if<bool>(&data_)) return BooleanText(*flag);
  if (const auto* small = std::get_if<std::int16_t>(&data_)) return std::to_string(*small);
  if (const auto* large = std::get_if<std::int32_t>(&data_)) return std::to_string(*large);
  if (const auto* date = std::get_if<Date>(&data_)) return DateText(*date);
  if (const auto* number = std::get_if<double>(&data_)) {
    char buffer[400];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, *number, std::chars_format::fixed);
    return std::string(buffer, result.ptr);
  }
  return {};
}

std::int16_t Value::AsInt16() const {
  if (const auto* small = std::get_if<std::int16_t>(&data_)) return *small;
  if (const auto* text = std::get_if<std::string>(&data_)) return ParseInt16(*text);
  return ToInteger<std::int16_t>(AsDouble());
}

std::int32_t Value::AsInt32() const {
  if (const auto* large = std::get_if<std::int32_t>(&data_)) return *large;
  if (const auto* small = std::get_if<std::int16_t>(&data_)) return *small;
  if (const auto* text = std::get_if<std::string>(&data_)) return ParseInt32(*text);
  return ToInteger<std::int32_t>(AsDouble());
}

double Value::AsDouble() const {
  if (const auto* number = std::get_if<double>(&data_)) return *number;
  if (const auto* small = std::get_if<std::int16_t>(&data_)) return *small;
  if (const auto* large = std::get_if<std::int32_t>(&data_)) return *large;
  if (const auto* flag = std::get_if<bool>(&data_)) return *flag ? -1 : 0;
  if (const auto* date = std::get_if<Date>(&data_)) return date->days;
  if (const auto* text = std::get_if<std::string>(&data_)) return ParseDouble(*text);
  ThrowNull();
}

bool Value::AsBoolean() const {
  if (const auto* flag = std::get_if<bool>(&data_)) return *flag;
  if (const auto* text = std::get_if<std::string>(&data_)) return ParseBoolean(*text);
  return AsDouble() != 0;
}

bool operator==(const Value& left, const Value& right) {
  const auto isInteger = [](const Value& value) {
    return std::holds_alternative<std::int16_t>(value.data_) ||
           std::holds_alternative<std::int32_t>(value.data_);
  };
  if (isInteger(left) && isInteger(right)) return left.AsInt32() == right.AsInt32();
  return left.data_ == right.data_;
}

}  // namespace tessel
