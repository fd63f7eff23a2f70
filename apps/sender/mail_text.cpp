#include "sender/mail_text.h"

#include <algorithm>

#include "platform/text_encoding.h"

namespace tessel::sender {
namespace {

constexpr std::size_t kLongestInLine = 24;  // of a parameter that stands in one line with its field
constexpr std::size_t kLineBytes = 57;      // 76 characters of base64
constexpr std::size_t kHeaderLine = 76;
constexpr std::size_t kWordFrame = 12;  // "=?UTF-8?B?" and "?="

bool IsParameterCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '.' || c == '-' ||
         c == '_';
}

}  // namespace

std::string Base64(std::string_view bytes) {
  constexpr const char* kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    unsigned group = 0;
    for (std::size_t k = 0; k < 3; ++k)
      group = (group << 8) | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    for (std::size_t k = 0; k < 4; ++k)
      text += k <= count ? kDigits[(group >> (18 - 6 * k)) & 63U] : '=';
  }
  return text;
}

std::string Base64Lines(std::string_view bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += kLineBytes)
    text.append(Base64(bytes.substr(i, kLineBytes))).append("\r\n");
  return text;
}

long long Base64LinesSize(long long bytes) {
  const auto line = static_cast<long long>(kLineBytes);
  return (bytes + 2) / 3 * 4 + (bytes + line - 1) / line * 2;
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string CleanText(std::string_view text) {
  std::string clean;
  for (std::size_t at = 0; at < text.size();) {
    bool malformed = false;
    const char32_t codePoint = NextCodePoint(text, at, malformed);
    const bool control = codePoint < 0x20 || (codePoint >= 0x7F && codePoint < 0xA0) || codePoint == 0x2028 ||
                         codePoint == 0x2029;
    AppendUtf8(control ? U' ' : codePoint, clean);
  }
  return clean;
}

std::string EncodedWords(std::string_view text, std::size_t used) {
  std::string words;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t before = words.empty() ? used : 1;
    std::size_t end = std::min(text.size(), start + (kHeaderLine - kWordFrame - before) / 4 * 3);
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
      --end;
    if (!words.empty()) words += "\r\n ";
    words += "=?UTF-8?B?" + Base64(text.substr(start, end - start)) + "?=";
    start = end;
  }
  return words;
}

std::string Parameter(std::string_view name, std::string_view value) {
  std::string text = value.size() < kLongestInLine ? "; " : ";\r\n ";
  text += name;
  if (std::all_of(value.begin(), value.end(), IsParameterCharacter))
    return text + "=\"" + std::string(value) + "\"";
  constexpr const char* kDigits = "0123456789ABCDEF";
  text += "*=UTF-8''";
  for (const char c : value) {
    if (IsParameterCharacter(c)) {
      text += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      text.append(1, '%').append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 15]);
    }
  }
  return text;
}

}  // namespace tessel::sender
