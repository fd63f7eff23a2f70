#include "platform/text_encoding.h"

#include <algorithm>

namespace tessel {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

// Length of the sequence that a first byte announces, 0 for a byte that starts none.
std::size_t SequenceLength(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (first >= 0xE0 && first <= 0xEF) return 3;
  if (first >= 0xF0 && first <= 0xF4) return 4;
  return 0;
}

bool IsScalar(char32_t codePoint, std::size_t length) {
  constexpr char32_t kLowest[] = {0, 0, 0x80, 0x800, 0x10000};
  return codePoint >= kLowest[length] && codePoint <= 0x10FFFF && (codePoint < 0xD800 || codePoint > 0xDFFF);
}

// Length of the ASCII characters that a text begins with.
std::size_t AsciiLength(std::string_view text) {
  const auto isOther = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
  return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), isOther) - text.begin());
}

}  // namespace

char32_t NextCodePoint(std::string_view utf8, std::size_t& position, bool& malformed) {
  const auto first = static_cast<unsigned char>(utf8[position]);
  if (first < 0x80) {
    ++position;
    return first;
  }
  const std::size_t length = SequenceLength(first);
  if (length != 0 && position + length <= utf8.size()) {
    char32_t codePoint = first & (0xFFU >> (length + 1));
    std::size_t used = 1;
    for (; used < length; ++used) {
      const auto next = static_cast<unsigned char>(utf8[position + used]);
      if ((next & 0xC0) != 0x80) break;
      codePoint = (codePoint << 6) | (next & 0x3FU);
    }
    if (used == length && IsScalar(codePoint, length)) {
      position += length;
      return codePoint;
    }
  }
  ++position;
  malformed = true;
  return kReplacement;
}

void AppendUtf8(char32_t codePoint, std::string& text) {
  const auto append = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
  if (codePoint < 0x80) {
    append(codePoint);
  } else if (codePoint < 0x800) {
    append(0xC0 | (codePoint >> 6));
    append(0x80 | (codePoint & 0x3F));
  } else if (codePoint < 0x10000) {
    append(0xE0 | (codePoint >> 12));
    append(0x80 | ((codePoint >> 6) & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  } else {
    append(0xF0 | (codePoint >> 18));
    append(0x80 | ((codePoint >> 12) & 0x3F));
    append(0x80 | ((codePoint >> 6) & 0x3F));
    append(0x80 | (codePoint & 0x3F));
  }
}

std::string TextEncoding::Encode(std::string_view utf8) const {
  const bool asciiAsItIs = IsAsciiCompatible();
  std::string bytes;
  bytes.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    if (asciiAsItIs) {
      const std::size_t run = AsciiLength(utf8.substr(position));
      bytes.append(utf8, position, run);
      position += run;
      if (position == utf8.size()) break;
    }
    bool malformed = false;
    const char32_t codePoint = NextCodePoint(utf8, position, malformed);
    if (malformed || !AppendCodePoint(codePoint, bytes)) (void)AppendCodePoint(U'?', bytes);
  }
  return bytes;
}

}  // namespace tessel
