// Values as automation passes them, and ours.
#pragma once

#include <string>
#include <vector>

#include "automation/com/com_ptr.h"
#include "host/value.h"

namespace tessel::automation {

class Variant {
 public:
  Variant() { ::VariantInit(&value_); }  // Empty
  explicit Variant(const Value& value);
  explicit Variant(const std::string& utf8);
  explicit Variant(const char* utf8) : Variant(std::string(utf8)) {}
  explicit Variant(bool value);
  explicit Variant(std::int16_t value);
  explicit Variant(std::int32_t value);
  // Nothing is the object that is not there.
  explicit Variant(const DispatchPtr& object);
  Variant(const Variant& other);
  Variant(Variant&& other) noexcept : value_(other.value_) { ::VariantInit(&other.value_); }
  Variant& operator=(Variant other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Variant() { ::VariantClear(&value_); }

  [[nodiscard]] VARIANT& Raw() { return value_; }
  [[nodiscard]] const VARIANT& Raw() const { return value_; }
  // Gives the content away.
  void MoveTo(VARIANT* target) {
    *target = value_;
    ::VariantInit(&value_);
  }

 private:
  VARIANT value_;
};

// Empty becomes the empty text and Null stays Null; a decimal or currency value becomes a double. References
// are followed. Error 13 for arrays and other values that have no like.
[[nodiscard]] Value ToValue(const VARIANT& value);
// The object in a variant; nothing for Nothing, Empty and Null. Error 13 for anything else.
[[nodiscard]] DispatchPtr ToObject(const VARIANT& value);
// The elements of a one-dimensional array of texts or variants. Error 13 for anything else.
[[nodiscard]] std::vector<std::string> ToTexts(const VARIANT& value);
[[nodiscard]] Variant TextArray(const std::vector<std::string>& texts);

}  // namespace tessel::automation
