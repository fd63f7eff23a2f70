#include "structure/xml/xml_encoding.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/error.h"

namespace tessel {
namespace {

// Readers take the first bytes for one of these until they have read the declaration; few know UTF-32.
constexpr std::array kFamilies{"US-ASCII", "UTF-16LE", "UTF-16BE", "IBM037"};

constexpr std::string_view kMarkup =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 <>&;#/\"=?![]-_.:";

[[noreturn]] void Refuse(const std::string& name, const std::string& reason) {
  throw RuntimeError(error_number::kInvalidCall,
                     "Cannot write XML in the encoding \"" + name + "\": " + reason);
}

bool IsDeclarable(std::string_view name) {
  const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); };
  const auto isNameCharacter = [isLetter](char c) {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '_' || c == '-';
  };
  return !name.empty() && isLetter(name.front()) && std::all_of(name.begin(), name.end(), isNameCharacter);
}

}  // namespace

void CheckXmlEncoding(const TextEncodings& encodings, const TextEncoding& encoding, const std::string& name) {
  if (!IsDeclarable(name)) Refuse(name, "XML does not allow this name");
  if (encoding.IsAsciiCompatible()) return;
  for (const char character : kMarkup) {
    std::string bytes;
    if (!encoding.AppendCodePoint(static_cast<unsigned char>(character), bytes)) {
      Refuse(name, std::string("it lacks the character ") + character);
    }
  }
  const std::string declaration = "<?xml version=\"1.0\" encoding=\"" + name + "\"?>";
  const std::string bytes = encoding.Encode(declaration);
  if (std::none_of(kFamilies.begin(), kFamilies.end(), [&](const char* family) {
        return encodings.Open(family)->Encode(declaration) == bytes;
      })) {
    Refuse(name, "a reader could not make out its declaration");
  }
}

}  // namespace tessel
