#include "platform/table_encodings.h"

#include <unordered_map>

#include "host/ascii.h"

namespace tessel {
namespace {

class Utf8Encoding : public TextEncoding {
 public:
  explicit Utf8Encoding(std::string name) : name_(std::move(name)) {}
  [[nodiscard]] std::string Name() const override { return name_; }
  [[nodiscard]] std::string Decode(std::string_view bytes) const override {
    std::string text;
    text.reserve(bytes.size());
    bool malformed = false;
    for (std::size_t position = 0; position < bytes.size();) {
      AppendUtf8(NextCodePoint(bytes, position, malformed), text);
    }
    return text;
  }
  [[nodiscard]] bool AppendCodePoint(char32_t codePoint, std::string& bytes) const override {
    AppendUtf8(codePoint, bytes);
    return true;
  }
  [[nodiscard]] bool IsAsciiCompatible() const override { return true; }

 private:
  std::string name_;
};

class Utf16Encoding : public TextEncoding {
 public:
  Utf16Encoding(std::string name, bool bigEndian) : name_(std::move(name)), bigEndian_(bigEndian) {}
  [[nodiscard]] std::string Name() const override { return name_; }

  [[nodiscard]] std::string Decode(std::string_view bytes) const override {
    bool bigEndian = bigEndian_;
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
      bigEndian = bytes.starts_with("\xFE");
      bytes.remove_prefix(2);
    }
    std::string text;
    std::size_t position = 0;
    const auto unitAt = [&](std::size_t at) {
      const auto first = static_cast<unsigned char>(bytes[at]);
      const auto second = static_cast<unsigned char>(bytes[at + 1]);
      return static_cast<char32_t>(bigEndian ? (first << 8) | second : (second << 8) | first);
    };
    while (position + 2 <= bytes.size()) {
      const char32_t unit = unitAt(position);
      position += 2;
      const bool isHigh = unit >= 0xD800 && unit <= 0xDBFF;
      const char32_t low = isHigh && position + 2 <= bytes.size() ? unitAt(position) : 0;
      if (low >= 0xDC00 && low <= 0xDFFF) {
        position += 2;
        AppendUtf8(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00), text);
      } else {
        AppendUtf8(unit >= 0xD800 && unit <= 0xDFFF ? kReplacement : unit, text);
      }
    }
    if (position < bytes.size()) AppendUtf8(kReplacement, text);
    return text;
  }

  [[nodiscard]] bool AppendCodePoint(char32_t codePoint, std::string& bytes) const override {
    if (codePoint < 0x10000) {
      AppendUnit(codePoint, bytes);
    } else {
      AppendUnit(0xD800 + ((codePoint - 0x10000) >> 10), bytes);
      AppendUnit(0xDC00 + ((codePoint - 0x10000) & 0x3FF), bytes);
    }
    return true;
  }
  [[nodiscard]] bool IsAsciiCompatible() const override { return false; }

 private:
  void AppendUnit(char32_t unit, std::string& bytes) const {
    const auto high = static_cast<char>(unit >> 8);
    const auto low = static_cast<char>(unit & 0xFF);
    bytes += bigEndian_ ? high : low;
    bytes += bigEndian_ ? low : high;
  }

  std::string name_;
  bool bigEndian_;
};

class Utf32Encoding : public TextEncoding {
 public:
  Utf32Encoding(std::string name, bool bigEndian) : name_(std::move(name)), bigEndian_(bigEndian) {}
  [[nodiscard]] std::string Name() const override { return name_; }

  [[nodiscard]] std::string Decode(std::string_view bytes) const override {
    using namespace std::string_view_literals;
    bool bigEndian = bigEndian_;
    if (bytes.starts_with("\xFF\xFE\0\0"sv) || bytes.starts_with("\0\0\xFE\xFF"sv)) {
      bigEndian = bytes[0] == '\0';
      bytes.remove_prefix(kSize);
    }
    std::string text;
    for (; bytes.size() >= kSize; bytes.remove_prefix(kSize)) {
      char32_t codePoint = 0;
      for (std::size_t i = 0; i < kSize; ++i)
        codePoint = (codePoint << 8) | static_cast<unsigned char>(bytes[bigEndian ? i : kSize - 1 - i]);
      const bool isNone = codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF);
      AppendUtf8(isNone ? kReplacement : codePoint, text);
    }
    if (!bytes.empty()) AppendUtf8(kReplacement, text);
    return text;
  }
  [[nodiscard]] bool AppendCodePoint(char32_t codePoint, std::string& bytes) const override {
    for (std::size_t i = 0; i < kSize; ++i)
      bytes += static_cast<char>((codePoint >> (8 * (bigEndian_ ? kSize - 1 - i : i))) & 0xFF);
    return true;
  }
  [[nodiscard]] bool IsAsciiCompatible() const override { return false; }

 private:
  static constexpr std::size_t kSize = 4;

  std::string name_;
  bool bigEndian_;
};

// A page in which every byte is one character or none.
class SingleByteEncoding : public TextEncoding {
 public:
  SingleByteEncoding(std::string name, const SingleByteTable& characters)
      : name_(std::move(name)), characters_(characters) {
    for (std::size_t byte = 0; byte < characters.size(); ++byte) {
      if (characters[byte] != kReplacement) bytes_.try_emplace(characters[byte], static_cast<char>(byte));
      if (byte < 0x80 && characters[byte] != byte) isAsciiCompatible_ = false;
    }
  }
  [[nodiscard]] std::string Name() const override { return name_; }
  [[nodiscard]] std::string Decode(std::string_view bytes) const override {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
      AppendUtf8(characters_[static_cast<unsigned char>(byte)], text);
    }
    return text;
  }
  [[nodiscard]] bool AppendCodePoint(char32_t codePoint, std::string& bytes) const override {
    if (codePoint < 0x80 && isAsciiCompatible_) {
      bytes += static_cast<char>(codePoint);
      return true;
    }
    const auto found = bytes_.find(codePoint);
    if (found == bytes_.end()) return false;
    bytes += found->second;
    return true;
  }
  [[nodiscard]] bool IsAsciiCompatible() const override { return isAsciiCompatible_; }

 private:
  std::string name_;
  SingleByteTable characters_;
  std::unordered_map<char32_t, char> bytes_;
  bool isAsciiCompatible_ = true;
};

}  // namespace

std::shared_ptr<const TextEncoding> MakeUnicodeEncoding(const std::string& name) {
  const std::string lowerName = LowerCase(name);
  if (lowerName == "utf-8" || lowerName == "utf8") return std::make_shared<Utf8Encoding>(name);
  const auto is = [&lowerName](std::string_view bits, std::string_view order) {
    return lowerName == "utf-" + std::string(bits) + std::string(order) ||
           lowerName == "utf" + std::string(bits) + std::string(order);
  };
  if (is("16", "") || is("16", "le")) return std::make_shared<Utf16Encoding>(name, false);
  if (is("16", "be")) return std::make_shared<Utf16Encoding>(name, true);
  if (is("32", "") || is("32", "le")) return std::make_shared<Utf32Encoding>(name, false);
  if (is("32", "be")) return std::make_shared<Utf32Encoding>(name, true);
  return nullptr;
}

std::shared_ptr<const TextEncoding> MakeSingleByteEncoding(const std::string& name,
                                                           const SingleByteTable& characters) {
  return std::make_shared<SingleByteEncoding>(name, characters);
}

}  // namespace tessel
