#include "structure/xml/xml_writer.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <pugixml.hpp>

namespace tessel {
namespace {

constexpr std::size_t kPiece = 65536;
constexpr std::size_t kLongestSequence = 4;  // of UTF-8

// ASCII characters that stand for themselves, one bit a place as Place numbers them. "]" is left out of
// CDATA, since it may begin the end mark.
constexpr std::array<unsigned char, 256> MakePlain() {
  std::array<unsigned char, 256> plain{};
  for (std::size_t character = 0x20; character < 0x80; ++character)
    plain[character] = 7;
  for (const char character : {'<', '>', '&'})
    plain[static_cast<unsigned char>(character)] = 4;
  plain[static_cast<unsigned char>('"')] = 5;
  plain[static_cast<unsigned char>(']')] = 3;
  plain[static_cast<unsigned char>('\t')] = 5;
  plain[static_cast<unsigned char>('\n')] = 5;
  return plain;
}
constexpr std::array<unsigned char, 256> kPlain = MakePlain();

bool HasAllCharacters(const TextEncoding& encoding) {
  std::string bytes;
  return encoding.AppendCodePoint(0x10FFFD, bytes);
}

// Whether a name goes on with what an escaped character looks like: "_x", hexadecimal digits, "_".
bool LooksEscaped(std::string_view name) {
  if (!name.starts_with("_x")) return false;
  const auto end = name.find_first_not_of("0123456789abcdef", 2);
  return end != std::string_view::npos && end > 2 && name[end] == '_';
}

// Whether a code point that was read is well-formed and XML allows it.
bool IsAllowed(char32_t codePoint, bool malformed) {
  const bool control = codePoint < 0x20 && codePoint != U'\t' && codePoint != U'\n' && codePoint != U'\r';
  return !malformed && !control && codePoint != 0xFFFE && codePoint != 0xFFFF;
}

// The next code point of a text that ends with NUL; `rest` moves past it.
char32_t NextCharacter(const char*& rest, bool& allowed) {
  std::size_t length = 0;
  bool malformed = false;
  const char32_t codePoint = NextCodePoint({rest, strnlen(rest, kLongestSequence)}, length, malformed);
  allowed = IsAllowed(codePoint, malformed);
  rest += length;
  return codePoint;
}

std::string_view NamedReference(char32_t codePoint, bool inAttribute) {
  switch (codePoint) {
    case U'<':
      return "&lt;";
    case U'>':
      return "&gt;";
    case U'&':
      return "&amp;";
    case U'"':
      return inAttribute ? "&quot;" : std::string_view();
    default:
      return {};
  }
}

std::string HexText(char32_t codePoint) {
  char digits[8];
  const auto end =
      std::to_chars(std::begin(digits), std::end(digits), static_cast<unsigned>(codePoint), 16).ptr;
  return {digits, end};
}

}  // namespace

XmlWriter::XmlWriter(const TextEncoding& encoding, const FileSystem::ByteSink& sink)
    : encoding_(encoding),
      sink_(sink),
      asciiCompatible_(encoding.IsAsciiCompatible()),
      complete_(HasAllCharacters(encoding)),
      plain_(kPlain) {
  for (std::size_t character = 0x20; character < 0x80; ++character) {
    if (encoding.IsAmbiguous(static_cast<char32_t>(character))) plain_[character] = 0;
  }
  buffer_.reserve(kPiece + kPiece / 4);
}

void XmlWriter::WriteByteOrderMark() {
  (void)encoding_.AppendCodePoint(0xFEFF, buffer_);
}

void XmlWriter::WriteContent(const pugi::xml_node& top) {
  pugi::xml_node node = top.first_child();
  while (node) {
    if (Open(node)) {
      node = node.first_child();
      continue;
    }
    while (!node.next_sibling() && node.parent() != top) {
      node = node.parent();
      Close(node);
    }
    node = node.next_sibling();
  }
}

void XmlWriter::Finish() {
  sink_(buffer_);
  buffer_.clear();
}

// Writes a node up to its children; true when it has some, so that its end is still to come.
bool XmlWriter::Open(const pugi::xml_node& node) {
  if (buffer_.size() >= kPiece) Finish();
  switch (node.type()) {
    case pugi::node_element:
      break;
    case pugi::node_cdata:
      WriteCData(node.value());
      return false;
    case pugi::node_pi:
      WriteInstruction(node.name(), node.value());
      return false;
    default:
      WriteEscaped(node.value(), Place::kText);
      return false;
  }
  WriteMarkup("<");
  WriteName(node.name());
  for (pugi::xml_attribute attribute = node.first_attribute(); attribute;
       attribute = attribute.next_attribute()) {
    WriteMarkup(" ");
    WriteName(attribute.name());
    WriteMarkup("=\"");
    WriteEscaped(attribute.value(), Place::kAttribute);
    WriteMarkup("\"");
  }
  const bool hasChildren = static_cast<bool>(node.first_child());
  WriteMarkup(hasChildren ? ">" : "/>");
  return hasChildren;
}

void XmlWriter::Close(const pugi::xml_node& element) {
  WriteMarkup("</");
  WriteName(element.name());
  WriteMarkup(">");
}

void XmlWriter::WriteMarkup(std::string_view ascii) {
  if (asciiCompatible_) {
    buffer_ += ascii;
    return;
  }
  for (const char character : ascii) {
    (void)encoding_.AppendCodePoint(static_cast<unsigned char>(character), buffer_);
  }
}

void XmlWriter::WriteName(const char* name) {
  EncodedName& known = names_[(reinterpret_cast<std::uintptr_t>(name) / 8) % names_.size()];
  if (known.name != name) {
    const std::size_t start = buffer_.size();
    const int before = replaced_;
    EncodeName(name);
    known.name = name;
    known.bytes.assign(buffer_, start);
    known.replaced = replaced_ - before;
    return;
  }
  buffer_ += known.bytes;
  replaced_ += known.replaced;
}

// A reference may not stand in a name, so a character that the encoding lacks is written as "_x3b1_". What
// looks so in the name itself is escaped too, so that two names stay two.
void XmlWriter::EncodeName(const char* name) {
  if (asciiCompatible_ && (complete_ || std::strstr(name, "_x") == nullptr))
    name += WritePlainRun(name, Place::kText);
  while (*name != '\0') {
    const bool escape = !complete_ && LooksEscaped(name);
    bool allowed = true;
    const char32_t codePoint = NextCharacter(name, allowed);
    if (escape || !Append(codePoint, buffer_)) {
      WriteMarkup("_x" + HexText(codePoint) + "_");
      ++replaced_;
    }
  }
}

// Nothing can be escaped here: what the encoding lacks becomes "?", and the end mark is split by a blank.
void XmlWriter::WriteInstruction(const char* target, std::string_view data) {
  WriteMarkup("<?");
  WriteName(target);
  WriteMarkup(" ");
  std::size_t position = 0;
  while (position < data.size()) {
    if (data.substr(position, 2) == "?>") {
      WriteMarkup("? >");
      position += 2;
      continue;
    }
    bool malformed = false;
    const char32_t codePoint = NextCodePoint(data, position, malformed);
    if (!IsAllowed(codePoint, malformed) || !Append(codePoint, buffer_)) {
      WriteMarkup("?");
      ++replaced_;
    }
  }
  WriteMarkup("?>");
}

void XmlWriter::WriteEscaped(const char* text, Place place) {
  const char* rest = text + WritePlainRun(text, place);
  while (*rest != '\0') {
    bool allowed = true;
    const char32_t codePoint = NextCharacter(rest, allowed);
    const bool kept =
        codePoint != U'\r' && (place == Place::kText || (codePoint != U'\n' && codePoint != U'\t'));
    if (const auto reference = NamedReference(codePoint, place == Place::kAttribute); !reference.empty()) {
      WriteMarkup(reference);
    } else if (!allowed) {
      WriteReplacement();
    } else if (!kept || !Append(codePoint, buffer_)) {
      WriteReference(codePoint);
    }
    rest += WritePlainRun(rest, place);
  }
}

// References stand between sections: the section is closed before the first and opened again after the last.
void XmlWriter::WriteCData(const char* text) {
  constexpr std::string_view kOpen = "<![CDATA[";
  constexpr std::string_view kEnd = "]]>";
  bool open = true;
  const auto setOpen = [&](bool wanted) {
    if (open != wanted) WriteMarkup(wanted ? kOpen : kEnd);
    open = wanted;
  };
  WriteMarkup(kOpen);
  const char* rest = text + WritePlainRun(text, Place::kCData);
  while (*rest != '\0') {
    const bool endMark = kEnd == std::string_view(rest, strnlen(rest, kEnd.size()));
    bool allowed = true;
    const char32_t codePoint = NextCharacter(rest, allowed);
    std::string bytes;
    if (allowed && (codePoint == U'\r' || !Append(codePoint, bytes))) {
      setOpen(false);
      WriteReference(codePoint);
      continue;
    }
    setOpen(true);
    if (!allowed) {
      WriteReplacement();
    } else if (endMark) {
      WriteMarkup("]]]]><![CDATA[>");
      rest += kEnd.size() - 1;
    } else {
      buffer_ += bytes;
    }
    rest += WritePlainRun(rest, Place::kCData);
  }
  setOpen(true);
  WriteMarkup(kEnd);
}

std::size_t XmlWriter::WritePlainRun(const char* text, Place place) {
  if (!asciiCompatible_) return 0;
  const auto bit = static_cast<unsigned char>(place);
  const char* end = text;
  while ((plain_[static_cast<unsigned char>(*end)] & bit) != 0)
    ++end;
  const auto length = static_cast<std::size_t>(end - text);
  buffer_.append(text, length);
  return length;
}

bool XmlWriter::Append(char32_t codePoint, std::string& bytes) const {
  return !encoding_.IsAmbiguous(codePoint) && encoding_.AppendCodePoint(codePoint, bytes);
}

void XmlWriter::WriteReference(char32_t codePoint) {
  WriteMarkup("&#" + std::to_string(static_cast<unsigned>(codePoint)) + ";");
}

void XmlWriter::WriteReplacement() {
  if (!encoding_.AppendCodePoint(0xFFFD, buffer_)) WriteMarkup("?");
  ++replaced_;
}

}  // namespace tessel
