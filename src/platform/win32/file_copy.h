// The copy of one file, under a temporary name until it is whole.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace tessel::windows {

// Asked after every piece; false ends the copy. The system's own copy is not used, as its progress cannot be
// relied on everywhere.
using CopyProgress = std::function<bool(std::uint64_t done, std::uint64_t all)>;

// Content, attributes and time of write. Error 58 when the target exists and may not be replaced, 75 when the
// file changes while it is copied. False when `progress` ended the copy: nothing has changed.
[[nodiscard]] bool CopyOneFile(const std::wstring& from, const std::string& path, const std::wstring& to,
                               const std::string& targetPath, bool replace, const CopyProgress& progress);

}  // namespace tessel::windows
