// The path of an exchange as its record keeps it: the exchange directory, a separator, and the configured
// subdirectory, which may be empty. "Continue" takes what stands before the last separator.
#pragma once

#include <string>

#include "platform/file_system.h"
#include "sender/exchange_directory.h"

namespace tessel::sender {

[[nodiscard]] std::string RootDirectoryText(const ExchangeDirectory& directory,
                                            const std::string& subdirectory);

// The path as a file URL: "file:///C:/temp/..." or "file://server/share/...".
[[nodiscard]] std::string FileUrl(const std::string& path);

// Whether a text of one of the two forms lies in the exchange directory, under any end of its name.
[[nodiscard]] bool LiesIn(const std::string& rootDirectory, const std::string& base);

// Whether it is this directory's. One of the same name below another exchange path is so when it stands there
// no more: it was moved here.
[[nodiscard]] bool BelongsTo(const FileSystem& files, const std::string& rootDirectory,
                             const ExchangeDirectory& directory);

// Whether it names the directory with the end of a place.
[[nodiscard]] bool IsOfPlace(const std::string& rootDirectory, const ExchangeDirectory& directory,
                             Place place);

}  // namespace tessel::sender
