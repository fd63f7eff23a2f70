// What is wrong with a command line, said better than the parser can.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

namespace tessel::cli {

// The help's last words: exit statuses and examples.
extern const char* const kHelpFooter;

[[nodiscard]] bool IsUtf8(std::string_view text);

// Names the first argument that is not UTF-8, its other bytes as "\xNN"; nothing when all are.
[[nodiscard]] std::optional<std::string> FindForeignText(const std::vector<std::string>& arguments);

// The first command or option that there is not, with the one that was probably meant; nothing when all are
// known. `arguments` in their order.
[[nodiscard]] std::optional<std::string> FindUnknownName(const CLI::App& app,
                                                         const std::vector<std::string>& arguments);

}  // namespace tessel::cli
