#include "structure/repaired_element.h"

#include <string_view>

#include "host/error.h"
#include "platform/text_encoding.h"

namespace tessel {
namespace {

// The character after the "-->" of an error description; empty when there is no such mark. NUL ends a
// description, so that nothing after the mark stands for NUL.
std::string OffendingCharacter(std::string_view description) {
  constexpr std::string_view kMark = "-->";
  const std::size_t mark = description.find(kMark);
  if (mark == std::string_view::npos) return {};
  const std::string_view rest = description.substr(mark + kMark.size());
  if (rest.empty()) return std::string(1, '\0');
  std::size_t length = 0;
  bool malformed = false;
  (void)NextCodePoint(rest, length, malformed);
  return std::string(rest.substr(0, length));
}

void ReplaceAll(std::string& text, std::string_view what, std::string_view with) {
  for (std::size_t found = text.find(what); found != std::string::npos;
       found = text.find(what, found + with.size())) {
    text.replace(found, what.size(), with);
  }
}

}  // namespace

XmlNode CreateRepairedElement(XmlDocument& document, std::string name, const std::string& nameWhenEmpty,
                              XmlNode parent) {
  if (name.empty()) name = nameWhenEmpty;
  for (;;) {
    try {
      return parent ? document.AppendElement(parent, name) : document.NewElement(name);
    } catch (const RuntimeError& error) {
      const std::string offending = OffendingCharacter(error.what());
      if (offending.empty() || name.find(offending) == std::string::npos) throw;
      ReplaceAll(name, offending, "_");
    }
  }
}

}  // namespace tessel
