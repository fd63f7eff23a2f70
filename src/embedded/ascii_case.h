// Letter case of ASCII letters; all other characters stay.
#pragma once

#include <string>
#include <string_view>

namespace tessel::embedded {

[[nodiscard]] inline std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return upper;
}

}  // namespace tessel::embedded
