// The schemas of docs/schemas, built in.
#pragma once

#include <string_view>

namespace tessel::received {

enum class FileKind { kStructure, kData, kNeutralFormats };

[[nodiscard]] std::string_view SchemaText(FileKind kind);
// Name of the root element.
[[nodiscard]] std::string_view RootName(FileKind kind);

}  // namespace tessel::received
