#include "platform/posix/iconv_encodings.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <optional>
#include <system_error>
#include <unordered_map>

#include "host/ascii.h"
#include "host/error.h"
#include "platform/table_encodings.h"

namespace tessel::posix {
namespace {

constexpr const char* kScalars = "UTF-32LE";
constexpr std::size_t kMaxBytes = 32;  // of one character with its shift sequences

// One direction of a conversion.
class Converter {
 public:
  Converter(const std::string& to, const std::string& from)
      : handle_(::iconv_open(to.c_str(), from.c_str())) {}
  ~Converter() {
    if (IsOpen()) ::iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  [[nodiscard]] bool IsOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  // Converts one piece from the initial state and back to it. 0, or the errno of the failure.
  int Convert(std::string_view bytes, std::string& result) {
    ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    std::array<char, kMaxBytes> buffer{};
    char* in = const_cast<char*>(bytes.data());  // iconv leaves its input alone
    std::size_t inLeft = bytes.size();
    char* out = buffer.data();
    std::size_t outLeft = buffer.size();
    if (::iconv(handle_, &in, &inLeft, &out, &outLeft) != 0) return errno == 0 ? EILSEQ : errno;
    if (::iconv(handle_, nullptr, nullptr, &out, &outLeft) != 0) return errno;
    result.assign(buffer.data(), buffer.size() - outLeft);
    return 0;
  }

  // Converts a whole text, `replacement` in place of each byte that stands for nothing.
  std::string ConvertAll(std::string_view bytes, std::string_view replacement) {
    ::iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    std::string result;
    std::array<char, 4096> buffer{};
    char* in = const_cast<char*>(bytes.data());
    std::size_t inLeft = bytes.size();
    while (inLeft > 0) {
      char* out = buffer.data();
      std::size_t outLeft = buffer.size();
      const std::size_t converted = ::iconv(handle_, &in, &inLeft, &out, &outLeft);
      const int error = converted == static_cast<std::size_t>(-1) ? errno : 0;
      result.append(buffer.data(), buffer.size() - outLeft);
      if (error == EILSEQ || error == EINVAL) {
        result.append(replacement);
        ++in;
        --inLeft;
      }
    }
    return result;
  }

 private:
  iconv_t handle_;
};

std::string ScalarBytes(char32_t codePoint) {
  return {static_cast<char>(codePoint & 0xFF), static_cast<char>((codePoint >> 8) & 0xFF),
          static_cast<char>((codePoint >> 16) & 0xFF), static_cast<char>((codePoint >> 24) & 0xFF)};
}

// The one code point in four bytes; nothing for any other number of them.
std::optional<char32_t> Scalar(std::string_view bytes) {
  if (bytes.size() != 4) return std::nullopt;
  char32_t codePoint = 0;
  for (std::size_t i = 4; i-- > 0;) {
    codePoint = (codePoint << 8) | static_cast<unsigned char>(bytes[i]);
  }
  return codePoint;
}

class MultiByteEncoding : public TextEncoding {
 public:
  explicit MultiByteEncoding(const std::string& name)
      : name_(name), toUtf8_("UTF-8", name), toScalar_(kScalars, name), fromScalar_(name, kScalars) {
    markSize_ = MarkSize();
    for (char32_t c = 0; c < 0x80 && isAsciiCompatible_; ++c) {
      const std::optional<std::string> bytes = BytesOf(c);
      isAsciiCompatible_ = bytes && *bytes == std::string(1, static_cast<char>(c));
    }
  }
  [[nodiscard]] std::string Name() const override { return name_; }
  [[nodiscard]] std::string Decode(std::string_view bytes) const override {
    return toUtf8_.ConvertAll(bytes, "\xEF\xBF\xBD");
  }
  [[nodiscard]] bool AppendCodePoint(char32_t codePoint, std::string& bytes) const override {
    const auto [entry, isNew] = known_.try_emplace(codePoint);
    if (isNew) entry->second = BytesOf(codePoint);
    if (!entry->second) return false;
    bytes += *entry->second;
    return true;
  }
  [[nodiscard]] bool IsAmbiguous(char32_t codePoint) const override {
    std::string bytes;
    if (!AppendCodePoint(codePoint, bytes) || bytes.size() != 1) return false;
    const auto ascii = static_cast<unsigned char>(bytes.front());
    if (ascii >= 0x80 || !isAsciiCompatible_) return false;
    std::string scalar;
    return ascii != codePoint || toScalar_.Convert(bytes, scalar) != 0 || Scalar(scalar) != codePoint;
  }
  [[nodiscard]] bool IsAsciiCompatible() const override { return isAsciiCompatible_; }

 private:
  [[nodiscard]] std::optional<std::string> BytesOf(char32_t codePoint) const {
    std::string bytes;
    if (fromScalar_.Convert(ScalarBytes(codePoint), bytes) != 0) return std::nullopt;
    // ASCII that stands for itself is never lost, though some pages read it as a look-alike.
    if (codePoint < 0x80 && bytes == std::string(1, static_cast<char>(codePoint))) return bytes;
    // Converters pass over the tag characters that they lack, and some put a substitute in place of others,
    // as if nothing were lost.
    std::string scalar;
    if (toScalar_.Convert(bytes, scalar) != 0 || Scalar(scalar) != codePoint) return std::nullopt;
    return bytes.substr(markSize_);
  }

  // Some converters begin every text with a byte-order mark, which then comes before each character converted
  // by itself. The mark as a character gives it away: it comes out twice.
  [[nodiscard]] std::size_t MarkSize() const {
    const std::string mark = BytesOf(U'\uFEFF').value_or("");
    const std::size_t half = mark.size() / 2;
    return mark.size() % 2 == 0 && mark.compare(0, half, mark, half) == 0 ? half : 0;
  }

  std::string name_;
  mutable Converter toUtf8_;
  mutable Converter toScalar_;
  mutable Converter fromScalar_;
  mutable std::unordered_map<char32_t, std::optional<std::string>> known_;
  std::size_t markSize_ = 0;  // of the byte-order mark that the converter puts before each character
  bool isAsciiCompatible_ = true;
};

// The table of a single-byte page; nothing when some byte only begins a character.
std::optional<SingleByteTable> TableOf(Converter& toScalar) {
  SingleByteTable characters{};
  for (std::size_t byte = 0; byte < characters.size(); ++byte) {
    const char text = static_cast<char>(byte);
    std::string scalar;
    const int error = toScalar.Convert({&text, 1}, scalar);
    if (error == EINVAL || (error == 0 && scalar.size() != 4)) return std::nullopt;
    characters[byte] = error == 0 ? Scalar(scalar).value_or(kReplacement) : kReplacement;
  }
  return characters;
}

// iconv reads more into a name than an encoding ("//IGNORE"), so only the characters of names are let
// through.
bool IsName(const std::string& name) {
  const auto isNameCharacter = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view("-_.:+()").find(c) != std::string_view::npos;
  };
  return !name.empty() && std::all_of(name.begin(), name.end(), isNameCharacter);
}

std::shared_ptr<const TextEncoding> Make(const std::string& name) {
  if (auto unicode = MakeUnicodeEncoding(name)) return unicode;
  Converter toScalar(kScalars, IsName(name) ? name : "no such encoding");
  if (!toScalar.IsOpen()) {
    // The tables of an encoding are files, which may be there and not to be opened.
    const int error = errno;
    throw RuntimeError(error_number::kInvalidCall,
                       "Cannot open the encoding \"" + name + "\": not known" +
                           (error == EINVAL ? "" : " (" + std::generic_category().message(error) + ")"));
  }
  if (const auto table = TableOf(toScalar)) return MakeSingleByteEncoding(name, *table);
  return std::make_shared<MultiByteEncoding>(name);
}

}  // namespace

std::shared_ptr<const TextEncoding> IconvEncodings::Open(const std::string& name) const {
  auto& encoding = opened_[LowerCase(name)];
  if (!encoding) encoding = Make(name);
  return encoding;
}

}  // namespace tessel::posix
