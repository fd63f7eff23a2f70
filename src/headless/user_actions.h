// What a person can do with the window on top. An action that a person could not perform (no such control, a
// hidden or disabled one, a window that is not on top) changes nothing and says why.
#pragma once

#include <string>
#include <variant>

#include "headless/headless_toolkit.h"
#include "toolkit/tree_list.h"

namespace tessel {

// Why an action was refused; empty when it was performed.
using Refusal = std::string;

// A node by its position from 0, or by its text or tag (the first that fits).
using NodeChoice = std::variant<int, std::string>;

enum class CheckWish { kChecked, kUnchecked, kToggled };

class UserActions {
 public:
  // Acts on the window on top; when a window is named, that one must be it.
  explicit UserActions(HeadlessToolkit& toolkit, std::string windowName = {})
      : toolkit_(toolkit), windowName_(std::move(windowName)) {}

  // Controls go by Control::Id.
  // Presses a button, or clicks a check box.
  [[nodiscard]] Refusal Click(const std::string& control);
  // Clicks a check box unless it already is as wished.
  [[nodiscard]] Refusal Check(const std::string& control, CheckWish wish);
  // Clicks the check box of a node unless it already is as wished.
  [[nodiscard]] Refusal CheckNode(const std::string& control, const NodeChoice& node, CheckWish wish);
  [[nodiscard]] Refusal ClickNode(const std::string& control, const NodeChoice& node,
                                  MouseButton button = MouseButton::kLeft);
  // Releases a mouse button over the empty space of a tree list.
  [[nodiscard]] Refusal ReleaseButton(const std::string& control, MouseButton button);
  [[nodiscard]] Refusal PressKey(const std::string& control, char32_t key);
  // Enter and Escape for the window: presses its default or its cancel button.
  [[nodiscard]] Refusal PressEnter();
  [[nodiscard]] Refusal PressEscape();
  // Replaces the text of a text box.
  [[nodiscard]] Refusal Type(const std::string& control, const std::string& text);
  // Position and size of the window on top; all zero when there is none.
  [[nodiscard]] Rect WindowBounds() const;
  // Drags the window to a place and size, in twips.
  [[nodiscard]] Refusal SetBounds(const Rect& bounds);
  // Closes the window through its frame. That the window refuses to close is no refusal of the action.
  [[nodiscard]] Refusal CloseWindow();

 private:
  template <class Action>
  Refusal OnWindow(Action&& action);
  template <class ControlType, class Action>
  Refusal OnControl(const std::string& control, const char* kindName, Action&& action);
  template <class Action>
  Refusal OnNode(const std::string& control, const NodeChoice& node, Action&& action);
  Refusal PressButtonOf(bool Button::*role, const char* key);

  HeadlessToolkit& toolkit_;
  std::string windowName_;
};

}  // namespace tessel
