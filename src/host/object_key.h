// Class ids, object ids and the key that both make.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tessel {

using ClassId = std::int16_t;
using ObjectId = std::int32_t;

struct ObjectKey {
  ClassId classId = 0;
  ObjectId objectId = 0;

  friend bool operator==(const ObjectKey&, const ObjectKey&) = default;
  friend auto operator<=>(const ObjectKey&, const ObjectKey&) = default;
};

// Class id, separator, object id in decimal: 1201_4711 or 1201:4711.
[[nodiscard]] std::string ObjectKeyText(const ObjectKey& key, char separator);

// The pieces of a text between separators; always at least one piece.
[[nodiscard]] std::vector<std::string> SplitText(std::string_view text, std::string_view separator);

// The key in the first two pieces of a text; further pieces are ignored. Errors: 9 no separator, 13 not a
// number, 6 out of range.
[[nodiscard]] ObjectKey ParseObjectKey(std::string_view text, char separator);

}  // namespace tessel

template <>
struct std::hash<tessel::ObjectKey> {
  std::size_t operator()(const tessel::ObjectKey& key) const noexcept {
    const auto high = static_cast<std::uint64_t>(static_cast<std::uint16_t>(key.classId)) << 32;
    return std::hash<std::uint64_t>()(high | static_cast<std::uint32_t>(key.objectId));
  }
};
