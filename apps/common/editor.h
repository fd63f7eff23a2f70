// A text edited by a person with the program of his choice.
#pragma once

#include <string>

namespace tessel {

// Starts the program that VISUAL or EDITOR names (else "vi") on a private file with the text, its line ends
// as LF, and waits. The text that was saved. Error: RuntimeError when the program cannot be started or fails;
// the file with the person's work is kept then, and named.
[[nodiscard]] std::string EditedText(const std::string& text);

}  // namespace tessel
