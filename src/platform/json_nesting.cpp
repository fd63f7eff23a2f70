#include "platform/json_nesting.h"

namespace tessel {
namespace {

// Position behind the text that begins with a quotation mark at `position`.
std::size_t BehindText(std::string_view json, std::size_t position) {
  for (++position; position < json.size() && json[position] != '"'; ++position) {
    if (json[position] == '\\') ++position;
  }
  return position + 1;
}

// Position behind the comment that begins at `position`; the next one when none begins there.
std::size_t BehindComment(std::string_view json, std::size_t position) {
  const std::string_view start = json.substr(position, 2);
  if (start != "//" && start != "/*") return position + 1;
  const std::string_view end = start == "//" ? "\n" : "*/";
  const std::size_t found = json.find(end, position + 2);
  return found == std::string_view::npos ? json.size() : found + end.size();
}

}  // namespace

bool NestsDeeperThan(std::string_view json, int limit) {
  int depth = 0;
  for (std::size_t i = 0; i < json.size();) {
    switch (json[i]) {
      case '"':
        i = BehindText(json, i);
        continue;
      case '/':
        i = BehindComment(json, i);
        continue;
      case '[':
      case '{':
        if (++depth > limit) return true;
        break;
      case ']':
      case '}':
        --depth;
        break;
      default:
        break;
    }
    ++i;
  }
  return false;
}

}  // namespace tessel
