#include "automation/com/variant.h"

#include <stdexcept>

#include "host/error.h"
#include "platform/win32/wide_text.h"

namespace tessel::automation {
namespace {

using windows::ToUtf8;
using windows::ToWide;

[[noreturn]] void ThrowMismatch(const char* wanted) {
  throw RuntimeError(error_number::kTypeMismatch, std::string("Type mismatch: ") + wanted + " expected");
}

BSTR NewBstr(const std::string& utf8) {
  const std::wstring wide = ToWide(utf8);
  BSTR text = ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (text == nullptr) throw std::bad_alloc();
  return text;
}

std::string TextOf(BSTR text) {
  return text == nullptr ? std::string() : ToUtf8({text, ::SysStringLen(text)});
}

Value ConvertedValue(const VARIANT& value, VARTYPE type) {
  Variant converted;
  if (FAILED(
          ::VariantChangeTypeEx(&converted.Raw(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT, 0, type)))
    throw RuntimeError(error_number::kOverflow, "Overflow");
  return ToValue(converted.Raw());
}

}  // namespace

Variant::Variant(const std::string& utf8) {
  value_.vt = VT_BSTR;
  value_.bstrVal = NewBstr(utf8);
}

Variant::Variant(bool value) {
  value_.vt = VT_BOOL;
  value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(std::int16_t value) {
  value_.vt = VT_I2;
  value_.iVal = value;
}

Variant::Variant(std::int32_t value) {
  value_.vt = VT_I4;
  value_.lVal = value;
}

Variant::Variant(const DispatchPtr& object) {
  value_.vt = VT_DISPATCH;
  value_.pdispVal = DispatchPtr(object).Detach();
}

Variant::Variant(const Value& value) : Variant() {
  if (value.IsNull()) {
    value_.vt = VT_NULL;
  } else if (value.IsText()) {
    *this = Variant(value.AsText());
  } else if (value.IsBoolean()) {
    *this = Variant(value.AsBoolean());
  } else if (value.IsDouble()) {
    value_.vt = VT_R8;
    value_.dblVal = value.AsDouble();
  } else if (value.IsDate()) {
    value_.vt = VT_DATE;
    value_.date = value.AsDouble();
  } else if (value.IsInt16()) {
    *this = Variant(value.AsInt16());
  } else {
    *this = Variant(value.AsInt32());
  }
}

Variant::Variant(const Variant& other) : Variant() {
  if (FAILED(::VariantCopy(&value_, const_cast<VARIANT*>(&other.value_)))) throw std::bad_alloc();
}

Value ToValue(const VARIANT& value) {
  switch (value.vt) {
    case VT_EMPTY:
      return Value("");
    case VT_NULL:
      return {};
    case VT_I2:
      return Value(static_cast<std::int16_t>(value.iVal));
    case VT_I4:
    case VT_INT:
      return Value(static_cast<std::int32_t>(value.lVal));
    case VT_UI1:
      return Value(static_cast<std::int16_t>(value.bVal));
    case VT_BOOL:
      return Value(value.boolVal != VARIANT_FALSE);
    case VT_R4:
      return Value(static_cast<double>(value.fltVal));
    case VT_R8:
      return Value(value.dblVal);
    case VT_BSTR:
      return Value(TextOf(value.bstrVal));
    case VT_DATE:
      return Value(Date{value.date});
    case VT_I1:
      return ConvertedValue(value, VT_I2);
    case VT_UI2:
    case VT_UI4:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
      return ConvertedValue(value, VT_I4);
    case VT_CY:
    case VT_DECIMAL:
      return ConvertedValue(value, VT_R8);
    default:
      break;
  }
  if ((value.vt & VT_BYREF) != 0) {
    Variant content;
    if (SUCCEEDED(::VariantCopyInd(&content.Raw(), const_cast<VARIANT*>(&value))) &&
        (content.Raw().vt & VT_BYREF) == 0)
      return ToValue(content.Raw());
  }
  ThrowMismatch("a value");
}

DispatchPtr ToObject(const VARIANT& value) {
  Variant content;
  if (FAILED(::VariantCopyInd(&content.Raw(), const_cast<VARIANT*>(&value)))) ThrowMismatch("an object");
  switch (content.Raw().vt) {
    case VT_DISPATCH:
      return DispatchPtr(content.Raw().pdispVal);
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_UNKNOWN: {
      DispatchPtr object;
      IUnknown* const unknown = content.Raw().punkVal;
      if (unknown == nullptr) return {};
      if (SUCCEEDED(unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(object.Out()))))
        return object;
      break;
    }
    default:
      break;
  }
  ThrowMismatch("an object");
}

std::vector<std::string> ToTexts(const VARIANT& value) {
  Variant content;
  if (FAILED(::VariantCopyInd(&content.Raw(), const_cast<VARIANT*>(&value))) ||
      (content.Raw().vt & VT_ARRAY) == 0 || ::SafeArrayGetDim(content.Raw().parray) != 1)
    ThrowMismatch("a list of texts");
  SAFEARRAY* const array = content.Raw().parray;
  const auto type = static_cast<VARTYPE>(content.Raw().vt & ~VT_ARRAY);
  if (type != VT_BSTR && type != VT_VARIANT) ThrowMismatch("a list of texts");
  LONG first = 0;
  LONG last = -1;
  (void)::SafeArrayGetLBound(array, 1, &first);
  (void)::SafeArrayGetUBound(array, 1, &last);
  std::vector<std::string> texts;
  for (LONG index = first; index <= last; ++index) {
    Variant element;
    if (type == VT_BSTR) element.Raw().vt = VT_BSTR;
    void* const target = type == VT_BSTR ? static_cast<void*>(&element.Raw().bstrVal) : &element.Raw();
    if (FAILED(::SafeArrayGetElement(array, &index, target))) ThrowMismatch("a list of texts");
    texts.push_back(ToValue(element.Raw()).AsText());
  }
  return texts;
}

Variant TextArray(const std::vector<std::string>& texts) {
  Variant result;
  SAFEARRAY* const array = ::SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(texts.size()));
  if (array == nullptr) throw std::bad_alloc();
  result.Raw().vt = VT_ARRAY | VT_VARIANT;
  result.Raw().parray = array;
  LONG index = 0;
  for (const std::string& text : texts) {
    Variant element(text);
    (void)::SafeArrayPutElement(array, &index, &element.Raw());
    ++index;
  }
  return result;
}

}  // namespace tessel::automation
