#include "platform/win32/code_pages.h"

#include <optional>
#include <string_view>
#include <unordered_map>

#include "host/ascii.h"
#include "host/error.h"
#include "platform/table_encodings.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/windows_api.h"

namespace tessel::windows {
namespace {

struct NamedPage {
  std::string_view name;
  UINT page;
};

constexpr NamedPage kPages[] = {
    {"us-ascii", 20127}, {"ascii", 20127},   {"koi8-r", 20866}, {"koi8-u", 21866}, {"macintosh", 10000},
    {"shift_jis", 932},  {"shift-jis", 932}, {"sjis", 932},     {"ms_kanji", 932}, {"windows-31j", 932},
    {"cp932", 932},      {"gbk", 936},       {"gb2312", 936},   {"cp936", 936},    {"ks_c_5601-1987", 949},
    {"euc-kr", 949},     {"uhc", 949},       {"cp949", 949},    {"big5", 950},     {"cp950", 950},
    {"euc-jp", 20932},   {"gb18030", 54936}, {"latin1", 28591}, {"tis-620", 874},  {"iso-8859-11", 874},
};

// The number behind a prefix; 0 for anything else.
UINT NumberBehind(std::string_view name, std::string_view prefix) {
  if (!name.starts_with(prefix) || name.size() == prefix.size() || name.size() > prefix.size() + 5) return 0;
  UINT number = 0;
  for (const char c : name.substr(prefix.size())) {
    if (c < '0' || c > '9') return 0;
    number = number * 10 + static_cast<UINT>(c - '0');
  }
  return number;
}

UINT PageOf(std::string_view name) {
  for (const NamedPage& each : kPages) {
    if (name == each.name) return each.page;
  }
  if (const UINT part = NumberBehind(name, "iso-8859-"); part != 0) return 28590 + part;
  for (const char* prefix : {"windows-", "cp", "ibm"}) {
    if (const UINT page = NumberBehind(name, prefix); page != 0) return page;
  }
  return 0;
}

bool IsWindowsPage(UINT page) {
  return (page >= 1250 && page <= 1258) || page == 874;
}

// Whether a character is only what Windows fills a hole of the page up with.
bool FillsHole(UINT page, char32_t character) {
  const bool isPrivate = character >= 0xE000 && character <= 0xF8FF;
  return isPrivate || (IsWindowsPage(page) && character >= 0x80 && character < 0xA0);
}

// The one character of some bytes; nothing when they stand for none or more.
std::optional<char32_t> CharacterOf(UINT page, std::string_view bytes) {
  wchar_t units[4];
  const int count = ::MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(),
                                          static_cast<int>(bytes.size()), units, 4);
  if (count < 1 || count > 2) return std::nullopt;
  const std::string utf8 = ToUtf8({units, static_cast<std::size_t>(count)});
  std::size_t position = 0;
  bool malformed = false;
  const char32_t character = NextCodePoint(utf8, position, malformed);
  if (malformed || position != utf8.size() || character == kReplacement || FillsHole(page, character))
    return std::nullopt;
  return character;
}

SingleByteTable TableOf(UINT page) {
  SingleByteTable characters{};
  for (std::size_t byte = 0; byte < characters.size(); ++byte) {
    const char text = static_cast<char>(byte);
    characters[byte] = CharacterOf(page, {&text, 1}).value_or(kReplacement);
  }
  return characters;
}

// Pages in which one or two bytes (GB 18030: up to four) are a character.
class MultiByteEncoding : public TextEncoding {
 public:
  MultiByteEncoding(std::string name, UINT page, std::size_t longest)
      : name_(std::move(name)), page_(page), longest_(longest) {
    for (char32_t c = 0; c < 0x80 && isAsciiCompatible_; ++c) {
      const std::optional<std::string> bytes = BytesOf(c);
      isAsciiCompatible_ = bytes && *bytes == std::string(1, static_cast<char>(c));
    }
  }
  [[nodiscard]] std::string Name() const override { return name_; }
  [[nodiscard]] std::string Decode(std::string_view bytes) const override {
    std::string text;
    for (std::size_t position = 0; position < bytes.size();) {
      std::size_t size = 1;
      std::optional<char32_t> character;
      for (; size <= longest_ && position + size <= bytes.size(); ++size) {
        if ((character = CharacterOf(page_, bytes.substr(position, size)))) break;
      }
      AppendUtf8(character.value_or(kReplacement), text);
      position += character ? size : 1;
    }
    return text;
  }
  [[nodiscard]] bool AppendCodePoint(char32_t codePoint, std::string& bytes) const override {
    const auto [entry, isNew] = known_.try_emplace(codePoint);
    if (isNew) entry->second = BytesOf(codePoint);
    if (!entry->second) return false;
    bytes += *entry->second;
    return true;
  }
  [[nodiscard]] bool IsAsciiCompatible() const override { return isAsciiCompatible_; }

 private:
  [[nodiscard]] std::optional<std::string> BytesOf(char32_t codePoint) const {
    std::string utf8;
    AppendUtf8(codePoint, utf8);
    const std::wstring units = ToWide(utf8);
    char buffer[8];
    const int size = ::WideCharToMultiByte(page_, 0, units.data(), static_cast<int>(units.size()), buffer,
                                           sizeof buffer, nullptr, nullptr);
    if (size <= 0) return std::nullopt;
    const std::string bytes(buffer, static_cast<std::size_t>(size));
    // A look-alike comes back as another character.
    if (CharacterOf(page_, bytes) != codePoint) return std::nullopt;
    return bytes;
  }

  std::string name_;
  UINT page_;
  std::size_t longest_;
  mutable std::unordered_map<char32_t, std::optional<std::string>> known_;
  bool isAsciiCompatible_ = true;
};

std::shared_ptr<const TextEncoding> Make(const std::string& name) {
  if (auto unicode = MakeUnicodeEncoding(name)) return unicode;
  const UINT page = PageOf(LowerCase(name));
  CPINFO information{};
  if (page == 0 || page == CP_UTF7 || page == CP_UTF8 || ::IsValidCodePage(page) == 0 ||
      ::GetCPInfo(page, &information) == 0) {
    throw RuntimeError(error_number::kInvalidCall, "Cannot open the encoding \"" + name + "\": not known");
  }
  if (information.MaxCharSize == 1) return MakeSingleByteEncoding(name, TableOf(page));
  return std::make_shared<MultiByteEncoding>(name, page, information.MaxCharSize);
}

}  // namespace

std::shared_ptr<const TextEncoding> CodePages::Open(const std::string& name) const {
  auto& encoding = opened_[LowerCase(name)];
  if (!encoding) encoding = Make(name);
  return encoding;
}

}  // namespace tessel::windows
