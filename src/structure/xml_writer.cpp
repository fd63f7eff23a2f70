#include "structure/xml_writer.h"

#include <array>
#include <charconv>
#include <iterator>
#include <pugixml.hpp>

namespace tessel {
namespace {

constexpr std::size_t kPiece = 65536;

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

// The next code point of a text. `allowed` tells whether it is well-formed and XML allows it.
char32_t NextCharacter(std::string_view text, std::size_t& position, bool& allowed) {
  bool malformed = false;
  const char32_t codePoint = NextCodePoint(text, position, malformed);
  const bool control = codePoint < 0x20 && codePoint != U'\t' && codePoint != U'\n' && codePoint != U'\r';
  allowed = !malformed && !control && codePoint != 0xFFFE && codePoint != 0xFFFF;
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
    : encoding_(encoding), sink_(sink), asciiCompatible_(encoding.IsAsciiCompatible()) {
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

// A reference may not stand in a name, so a character that the encoding lacks is written as "_x3b1_".
void XmlWriter::WriteName(std::string_view name) {
  std::size_t position = 0;
  while (position < name.size()) {
    if (const auto written = WritePlainRun(name.substr(position), Place::kText); written > 0) {
      position += written;
      continue;
    }
    bool malformed = false;
    const char32_t codePoint = NextCodePoint(name, position, malformed);
    if (encoding_.AppendCodePoint(codePoint, buffer_)) continue;
    WriteMarkup("_x" + HexText(codePoint) + "_");
    ++replaced_;
  }
}

// Nothing can be escaped here: what the encoding lacks becomes "?", and the end mark is split by a blank.
void XmlWriter::WriteInstruction(std::string_view target, std::string_view data) {
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
    bool allowed = true;
    const char32_t codePoint = NextCharacter(data, position, allowed);
    if (!allowed || !encoding_.AppendCodePoint(codePoint, buffer_)) {
      WriteMarkup("?");
      ++replaced_;
    }
  }
  WriteMarkup("?>");
}

void XmlWriter::WriteEscaped(std::string_view text, Place place) {
  std::size_t position = 0;
  while (position < text.size()) {
    if (const auto written = WritePlainRun(text.substr(position), place); written > 0) {
      position += written;
      continue;
    }
    bool allowed = true;
    const char32_t codePoint = NextCharacter(text, position, allowed);
    const bool kept =
        codePoint != U'\r' && (place == Place::kText || (codePoint != U'\n' && codePoint != U'\t'));
    if (const auto reference = NamedReference(codePoint, place == Place::kAttribute); !reference.empty()) {
      WriteMarkup(reference);
    } else if (!allowed) {
      WriteReplacement();
    } else if (!kept || !encoding_.AppendCodePoint(codePoint, buffer_)) {
      WriteReference(codePoint);
    }
  }
}

// References stand between sections: the section is closed before the first and opened again after the last.
void XmlWriter::WriteCData(std::string_view text) {
  constexpr std::string_view kOpen = "<![CDATA[";
  constexpr std::string_view kEnd = "]]>";
  bool open = true;
  const auto setOpen = [&](bool wanted) {
    if (open != wanted) WriteMarkup(wanted ? kOpen : kEnd);
    open = wanted;
  };
  WriteMarkup(kOpen);
  std::size_t position = 0;
  while (position < text.size()) {
    const std::string_view rest = text.substr(position);
    if (const auto written = open ? WritePlainRun(rest, Place::kCData) : 0; written > 0) {
      position += written;
      continue;
    }
    bool allowed = true;
    const char32_t codePoint = NextCharacter(text, position, allowed);
    std::string bytes;
    if (allowed && (codePoint == U'\r' || !encoding_.AppendCodePoint(codePoint, bytes))) {
      setOpen(false);
      WriteReference(codePoint);
      continue;
    }
    setOpen(true);
    if (!allowed) {
      WriteReplacement();
    } else if (rest.starts_with(kEnd)) {
      WriteMarkup("]]]]><![CDATA[>");
      position += kEnd.size() - 1;
    } else {
      buffer_ += bytes;
    }
  }
  setOpen(true);
  WriteMarkup(kEnd);
}

std::size_t XmlWriter::WritePlainRun(std::string_view rest, Place place) {
  if (!asciiCompatible_) return 0;
  const auto isPlain = [place](char character) {
    return (kPlain[static_cast<unsigned char>(character)] & static_cast<unsigned char>(place)) != 0;
  };
  std::size_t length = 0;
  while (length < rest.size() && isPlain(rest[length]))
    ++length;
  buffer_.append(rest.data(), length);
  return length;
}

void XmlWriter::WriteReference(char32_t codePoint) {
  WriteMarkup("&#" + std::to_string(static_cast<unsigned>(codePoint)) + ";");
}

void XmlWriter::WriteReplacement() {
  if (!encoding_.AppendCodePoint(0xFFFD, buffer_)) WriteMarkup("?");
  ++replaced_;
}

}  // namespace tessel
