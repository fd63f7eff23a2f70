#include "host/object_key.h"

#include "host/error.h"
#include "host/value.h"

namespace tessel {

std::string ObjectKeyText(const ObjectKey& key, char separator) {
  return std::to_string(key.classId) + separator + std::to_string(key.objectId);
}

std::vector<std::string> SplitText(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  for (;;) {
    const auto end = text.find(separator);
    pieces.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + separator.size());
  }
}

ObjectKey ParseObjectKey(std::string_view text, char separator) {
  const auto first = text.find(separator);
  if (first == std::string_view::npos) {
    throw RuntimeError(error_number::kSubscriptOutOfRange,
                       "Subscript out of range: \"" + std::string(text) + "\" names no object");
  }
  std::string_view objectId = text.substr(first + 1);
  objectId = objectId.substr(0, objectId.find(separator));
  return {ParseInt16(text.substr(0, first)), ParseInt32(objectId)};
}

}  // namespace tessel
