// Encodings that need no code page of the machine: UTF-8, UTF-16, UTF-32, and pages in which every byte is
// one character or none.
#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "platform/text_encoding.h"

namespace tessel {

// Stands for bytes without a character.
inline constexpr char32_t kReplacement = 0xFFFD;

// The character of every byte; kReplacement where there is none.
using SingleByteTable = std::array<char32_t, 256>;

// UTF-8, UTF-16 or UTF-32 by name in any letter case; nothing for another name.
[[nodiscard]] std::shared_ptr<const TextEncoding> MakeUnicodeEncoding(const std::string& name);
[[nodiscard]] std::shared_ptr<const TextEncoding> MakeSingleByteEncoding(const std::string& name,
                                                                         const SingleByteTable& characters);

}  // namespace tessel
