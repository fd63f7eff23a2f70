// A file that a process holds, by opening it without sharing it for writing.
#pragma once

#include <memory>
#include <string>

#include "platform/held_file.h"

namespace tessel::windows {

// As FileSystem::Hold.
[[nodiscard]] std::unique_ptr<HeldFile> HoldFile(const std::wstring& native, const std::string& path,
                                                 bool make);

}  // namespace tessel::windows
