// Paths as texts. Both "/" and "\" separate, but in a path that begins with "/", which is native, "/" alone
// does. A path is kept as given and becomes a native one only in the adapters of this folder.
#pragma once

#include <string>
#include <string_view>

namespace tessel::paths {

// Base and name with one separator between them: none added when the base ends with one, otherwise the one
// that the base uses ("\" for a drive path, "/" for a path that begins with it). An empty base gives the
// name.
[[nodiscard]] std::string Join(std::string_view base, std::string_view name);

// Position of the last separator of a path in its own style: "\" (or "/") for a drive path, "/" alone for a
// path that begins with "/"; npos when there is none.
[[nodiscard]] std::size_t LastSeparator(std::string_view path);

// What follows the last separator; the whole path when there is none.
[[nodiscard]] std::string FileName(std::string_view path);

// What stands before the last separator; empty when there is none.
[[nodiscard]] std::string Parent(std::string_view path);

// Whether a path begins at a root: a drive ("C:"), a separator or a share. Any other depends on the directory
// in which the program was started.
[[nodiscard]] bool IsFullPath(std::string_view path);

// Whether Windows takes two file names for one: equal in any case of Latin, Greek and Cyrillic letters.
[[nodiscard]] bool IsSameFileName(std::string_view one, std::string_view other);

// Whether a text is one harmless file name: not empty, no separator, no drive colon, no NUL or other control
// character, neither "." nor "..", and UTF-8 that an XML file can name.
[[nodiscard]] bool IsPlainFileName(std::string_view name);

}  // namespace tessel::paths
