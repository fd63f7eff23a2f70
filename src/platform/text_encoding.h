// Port of the code pages: bytes of an encoding to UTF-8 and back.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace tessel {

class TextEncoding {
 public:
  virtual ~TextEncoding() = default;
  [[nodiscard]] virtual std::string Name() const = 0;
  // UTF-8 of the bytes. Bytes that stand for nothing become U+FFFD; never fails.
  [[nodiscard]] virtual std::string Decode(std::string_view bytes) const = 0;
  // Appends the bytes of one code point; false, nothing appended, when the encoding lacks it.
  [[nodiscard]] virtual bool AppendCodePoint(char32_t codePoint, std::string& bytes) const = 0;
  // Whether some reader of this encoding takes the character's bytes for another one, as with the backslash
  // and the yen sign of Shift_JIS.
  [[nodiscard]] virtual bool IsAmbiguous(char32_t) const { return false; }
  // Whether every ASCII byte stands for itself, so that markup can be written as it is.
  [[nodiscard]] virtual bool IsAsciiCompatible() const = 0;
  // Bytes of UTF-8 text; what the encoding lacks or is no UTF-8 becomes "?".
  [[nodiscard]] std::string Encode(std::string_view utf8) const;
};

class TextEncodings {
 public:
  virtual ~TextEncodings() = default;
  // By IANA name in any letter case, for example "iso-8859-1", "windows-1252", "UTF-8", "UTF-16". Error 5 for
  // a name that the machine does not know.
  [[nodiscard]] virtual std::shared_ptr<const TextEncoding> Open(const std::string& name) const = 0;
};

// The next code point of UTF-8 text at `position`, which moves past it. Malformed bytes give U+FFFD, one a
// byte, and `malformed` is set.
[[nodiscard]] char32_t NextCodePoint(std::string_view utf8, std::size_t& position, bool& malformed);

// Appends a code point as UTF-8.
void AppendUtf8(char32_t codePoint, std::string& text);

}  // namespace tessel
