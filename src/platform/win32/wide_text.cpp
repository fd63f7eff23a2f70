#include "platform/win32/wide_text.h"

#include "platform/table_encodings.h"
#include "platform/text_encoding.h"

namespace tessel::windows {

std::wstring ToWide(std::string_view utf8) {
  std::wstring text;
  text.reserve(utf8.size());
  bool malformed = false;
  for (std::size_t position = 0; position < utf8.size();) {
    const char32_t codePoint = NextCodePoint(utf8, position, malformed);
    if (codePoint < 0x10000) {
      text += static_cast<wchar_t>(codePoint);
    } else {
      text += static_cast<wchar_t>(0xD800 + ((codePoint - 0x10000) >> 10));
      text += static_cast<wchar_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
    }
  }
  return text;
}

std::string ToUtf8(std::wstring_view text) {
  const auto isHigh = [](char32_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; };
  const auto isLow = [](char32_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; };
  std::string utf8;
  utf8.reserve(text.size());
  for (std::size_t position = 0; position < text.size(); ++position) {
    const char32_t unit = text[position];
    const char32_t next = position + 1 < text.size() ? text[position + 1] : 0;
    if (isHigh(unit) && isLow(next)) {
      AppendUtf8(0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00), utf8);
      ++position;
    } else {
      AppendUtf8(isHigh(unit) || isLow(unit) ? kReplacement : unit, utf8);
    }
  }
  return utf8;
}

}  // namespace tessel::windows
