#include "win32/text.h"

#include "win32/api.h"

namespace tessel::win32 {

std::wstring ToWide(std::string_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)),
                    L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string FromWide(std::wstring_view text) {
  if (text.empty()) return {};
  const int size = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, bytes.data(), needed, nullptr, nullptr);
  return bytes;
}

std::wstring Literal(const std::string& text) {
  std::string doubled;
  for (const char character : text)
    doubled.append(character == '&' ? 2 : 1, character);
  return ToWide(doubled);
}

std::wstring OnOneLine(const std::string& text) {
  std::wstring line;
  bool gap = false;
  for (const wchar_t character : ToWide(text)) {
    if (character == L' ' || (character >= L'\t' && character <= L'\r') || character == L'\u00A0') {
      gap = !line.empty();
      continue;
    }
    if (gap) line += L' ';
    gap = false;
    line += character;
  }
  return line;
}

std::wstring WithEditBreaks(const std::string& text) {
  std::string broken;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n') continue;
    if (text[at] == '\n' || text[at] == '\r') {
      broken += "\r\n";
    } else {
      broken += text[at];
    }
  }
  return ToWide(broken);
}

std::string WithoutEditBreaks(std::wstring_view text) {
  std::string plain = FromWide(text);
  std::erase(plain, '\r');
  return plain;
}

}  // namespace tessel::win32
