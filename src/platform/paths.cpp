#include "platform/paths.h"

#include <algorithm>

#include "platform/text_encoding.h"

namespace tessel::paths {
namespace {

bool IsNative(std::string_view path) {
  return path.starts_with('/');
}

bool IsDrivePath(std::string_view path) {
  const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  return path.size() >= 2 && path[1] == ':' && isLetter(path[0]);
}

char32_t LowerCase(char32_t c) {
  const auto isIn = [c](char32_t first, char32_t last) { return c >= first && c <= last; };
  if (isIn('A', 'Z') || (isIn(0xC0, 0xDE) && c != 0xD7) || isIn(0x391, 0x3A9) || isIn(0x410, 0x42F)) {
    return c + 0x20;
  }
  if (isIn(0x400, 0x40F)) return c + 0x50;
  // Pairs that begin with the capital letter at an even place, or at an odd one.
  if (isIn(0x100, 0x12F) || isIn(0x132, 0x137) || isIn(0x14A, 0x177)) return c | 1;
  if (isIn(0x139, 0x148) || isIn(0x179, 0x17E)) return c + (c & 1);
  return c;
}

// Texts that hold anything else cannot be written into an XML file as they are.
bool IsCleanUtf8(std::string_view text) {
  bool malformed = false;
  for (std::size_t position = 0; position < text.size();) {
    const char32_t codePoint = NextCodePoint(text, position, malformed);
    if (malformed || codePoint == 0xFFFE || codePoint == 0xFFFF) return false;
  }
  return true;
}

}  // namespace

std::size_t LastSeparator(std::string_view path) {
  return IsNative(path) ? path.rfind('/') : path.find_last_of("/\\");
}

std::string Join(std::string_view base, std::string_view name) {
  std::string path(base);
  const auto separator = LastSeparator(base);
  if (!base.empty() && separator != base.size() - 1) {
    if (separator != std::string_view::npos) {
      path += base[separator];
    } else {
      path += IsDrivePath(base) ? '\\' : '/';
    }
  }
  return path.append(name);
}

std::string FileName(std::string_view path) {
  const auto separator = LastSeparator(path);
  return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string Parent(std::string_view path) {
  const auto separator = LastSeparator(path);
  return std::string(separator == std::string_view::npos ? std::string_view() : path.substr(0, separator));
}

bool IsFullPath(std::string_view path) {
  return path.starts_with('/') || path.starts_with('\\') || IsDrivePath(path);
}

bool IsSameFileName(std::string_view one, std::string_view other) {
  bool malformed = false;
  std::size_t place = 0;
  std::size_t otherPlace = 0;
  while (place < one.size() && otherPlace < other.size()) {
    const char32_t left = NextCodePoint(one, place, malformed);
    if (LowerCase(left) != LowerCase(NextCodePoint(other, otherPlace, malformed))) return false;
  }
  return place == one.size() && otherPlace == other.size();
}

bool IsPlainFileName(std::string_view name) {
  const auto isHarmful = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F || c == '/' || c == '\\' || c == ':';
  };
  return !name.empty() && name != "." && name != ".." && std::none_of(name.begin(), name.end(), isHarmful) &&
         IsCleanUtf8(name);
}

}  // namespace tessel::paths
