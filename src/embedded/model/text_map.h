// A hash map keyed by text that is searched without making a copy of the text.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tessel::embedded {

struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
};

template <class Mapped>
using TextMap = std::unordered_map<std::string, Mapped, TextHash, std::equal_to<>>;

}  // namespace tessel::embedded
