#include "platform/paths.h"

#include <algorithm>

namespace tessel::paths {
namespace {

bool IsNative(std::string_view path) {
  return path.starts_with('/');
}

bool IsDrivePath(std::string_view path) {
  const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  return path.size() >= 2 && path[1] == ':' && isLetter(path[0]);
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
  return !name.empty() && name != "." && name != ".." && std::none_of(name.begin(), name.end(), isHarmful);
}

}  // namespace tessel::paths
