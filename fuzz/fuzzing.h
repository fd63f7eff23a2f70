// What the fuzz targets share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace tessel::fuzz {

// A finding: what must always hold does not.
inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "finding: %s\n", what);
  std::abort();
}

// The input in parts, cut at a byte that no text of the targets needs.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  // Up to the next cut.
  std::string Part() {
    constexpr char kCut = '\x1F';
    const auto end = rest_.find(kCut);
    const std::string part(rest_.substr(0, end));
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    return part;
  }
  [[nodiscard]] std::string Rest() const { return std::string(rest_); }
  // One of `count`, from a byte.
  std::size_t Choice(std::size_t count) {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<unsigned char>(rest_.front());
    rest_.remove_prefix(1);
    return byte % count;
  }

 private:
  std::string_view rest_;
};

}  // namespace tessel::fuzz
