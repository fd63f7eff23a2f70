// How a person gets at the controls without a mouse, and what a screen reader says of them. Texts are UTF-8.
#pragma once

#include <string>
#include <unordered_map>

namespace tessel {

class Control;
class Window;

// The captions of a window's buttons and check boxes with "&" before the letter that presses them together
// with Alt, every other "&" doubled. A caption that brings its own mark ("&Weiter", at the beginning of a
// word) keeps it, the others get a letter that is still free; a caption without one stays unmarked. Hidden
// controls take no letters and are left out.
[[nodiscard]] std::unordered_map<const Control*, std::string> CaptionsWithAltLetters(const Window& window);

// What the control is to a person: its caption, else that of the nearest label before or above it, else that
// of the frame around it. Its Id when nothing of that is there.
[[nodiscard]] std::string SpokenName(const Control& control);

}  // namespace tessel
