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

bool IsPlainFileName(std::string_view name) {
  const auto isHarmful = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F || c == '/' || c == '\\' || c == ':';
  };
  return !name.empty() && name != "." && name != ".." && std::none_of(name.begin(), name.end(), isHarmful) &&
         IsCleanUtf8(name);
}

}  // namespace tessel::paths
