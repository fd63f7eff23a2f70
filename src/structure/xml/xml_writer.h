// Writes a document tree as bytes of an encoding.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/text_encoding.h"

namespace pugi {
class xml_node;
}

namespace tessel {

class XmlWriter {
 public:
  // Both outlive the writer. The sink gets pieces of some 64 KB.
  XmlWriter(const TextEncoding& encoding, const FileSystem::ByteSink& sink);

  // U+FEFF, as the encoding has it.
  void WriteByteOrderMark();
  // Everything below a node, in document order, however deep.
  void WriteContent(const pugi::xml_node& top);
  // Hands the rest to the sink.
  void Finish();
  // Characters written as something else, because XML does not allow them or, in names, the encoding lacks
  // them.
  [[nodiscard]] int Replaced() const { return replaced_; }

 private:
  enum class Place : unsigned char { kText = 1, kAttribute = 2, kCData = 4 };

  bool Open(const pugi::xml_node& node);
  void Close(const pugi::xml_node& element);
  void WriteMarkup(std::string_view ascii);
  // Texts of the tree, ended by NUL. A name whose text several nodes share is encoded once.
  void WriteName(const char* name);
  void EncodeName(const char* name);
  void WriteInstruction(const char* target, std::string_view data);
  void WriteEscaped(const char* text, Place place);
  void WriteCData(const char* text);
  // Number of characters written; 0 when the next one needs a closer look or is the end.
  std::size_t WritePlainRun(const char* text, Place place);
  // Appends a character that every reader of the encoding gets back; false, nothing appended, for another.
  bool Append(char32_t codePoint, std::string& bytes) const;
  void WriteReference(char32_t codePoint);
  // U+FFFD, or "?" when the encoding lacks it.
  void WriteReplacement();

  const TextEncoding& encoding_;
  const FileSystem::ByteSink& sink_;
  const bool asciiCompatible_;
  const bool complete_;                   // the encoding has all characters, so that names need no escapes
  std::array<unsigned char, 256> plain_;  // ASCII characters written as they are, one bit a place
  struct EncodedName {
    const char* name = nullptr;
    std::string bytes;
    int replaced = 0;
  };
  std::array<EncodedName, 128> names_;  // by place in memory
  std::string buffer_;
  int replaced_ = 0;
};

}  // namespace tessel
