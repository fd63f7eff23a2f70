#include "headless/user_actions.h"

#include <cmath>

namespace tessel {

namespace {

// Positions and sizes beyond this are no place that a person could drag a window to.
constexpr double kFarthest = 1'000'000;

Refusal WhyNotOnTop(const HeadlessToolkit& toolkit, const std::string& name, const Window* top) {
  if (top == nullptr) return "no window is open";
  if (name.empty() || top->Name() == name) return {};
  const auto window = toolkit.FindWindow(name);
  if (!window) return "there is no window " + name;
  if (!window->Visible()) return "window " + name + " is hidden";
  return "window " + name + " is not on top, " + top->Name() + " is";
}

Refusal WhyUnusable(const Control& control) {
  if (!control.Visible()) return control.Id() + " is hidden";
  if (!control.Enabled()) return control.Id() + " is disabled";
  for (const Frame* frame = control.Parent(); frame != nullptr; frame = frame->Parent()) {
    if (!frame->Visible()) return control.Id() + " is inside " + frame->Id() + ", which is hidden";
    if (!frame->Enabled()) return control.Id() + " is inside " + frame->Id() + ", which is disabled";
  }
  return {};
}

int FindNode(const TreeList& list, const NodeChoice& choice) {
  if (const int* position = std::get_if<int>(&choice)) return list.HasNode(*position) ? *position : -1;
  const std::string& text = std::get<std::string>(choice);
  for (int node = 0; node < list.NodeCount(); ++node) {
    if (list.NodeAt(node).text == text) return node;
  }
  return list.FindTag(text);
}

std::string NodeText(const NodeChoice& choice) {
  const int* position = std::get_if<int>(&choice);
  return position != nullptr ? std::to_string(*position) : "\"" + std::get<std::string>(choice) + "\"";
}

bool WantsChange(bool checked, CheckWish wish) {
  return wish == CheckWish::kToggled || checked != (wish == CheckWish::kChecked);
}

bool IsReachable(const Rect& bounds) {
  const auto near = [](double value) { return std::abs(value) <= kFarthest; };
  return near(bounds.left) && near(bounds.top) && near(bounds.width) && near(bounds.height) &&
         bounds.width >= 0 && bounds.height >= 0;
}

}  // namespace

template <class Action>
Refusal UserActions::OnWindow(Action&& action) {
  const auto window = toolkit_.TopWindow();
  Refusal refusal = WhyNotOnTop(toolkit_, windowName_, window.get());
  return refusal.empty() ? action(*window) : refusal;
}

template <class ControlType, class Action>
Refusal UserActions::OnControl(const std::string& control, const char* kindName, Action&& action) {
  return OnWindow([&](Window& window) -> Refusal {
    Control* found = window.FindById(control);
    if (found == nullptr) return window.Name() + " has no control " + control;
    auto* typed = dynamic_cast<ControlType*>(found);
    if (typed == nullptr) return control + " is no " + kindName;
    Refusal refusal = WhyUnusable(*found);
    return refusal.empty() ? action(*typed) : refusal;
  });
}

template <class Action>
Refusal UserActions::OnNode(const std::string& control, const NodeChoice& node, Action&& action) {
  return OnControl<TreeList>(control, "list", [&](TreeList& list) -> Refusal {
    const int position = FindNode(list, node);
    if (position < 0) return control + " has no node " + NodeText(node);
    return action(list, position);
  });
}

Refusal UserActions::Click(const std::string& control) {
  return OnControl<Control>(control, "control", [&](Control& found) -> Refusal {
    if (auto* button = dynamic_cast<Button*>(&found)) {
      button->UserClick();
    } else if (auto* box = dynamic_cast<CheckBox*>(&found)) {
      box->UserToggle();
    } else {
      return control + " is neither a button nor a check box";
    }
    return {};
  });
}

Refusal UserActions::Check(const std::string& control, CheckWish wish) {
  return OnControl<CheckBox>(control, "check box", [&](CheckBox& box) -> Refusal {
    if (WantsChange(box.Checked(), wish)) box.UserToggle();
    return {};
  });
}

Refusal UserActions::CheckNode(const std::string& control, const NodeChoice& node, CheckWish wish) {
  return OnNode(control, node, [&](TreeList& list, int position) -> Refusal {
    if (!list.HasCheckBoxes()) return control + " has no check boxes";
    if (WantsChange(list.NodeAt(position).checked, wish)) list.UserClickCheckBox(position);
    return {};
  });
}

Refusal UserActions::ClickNode(const std::string& control, const NodeChoice& node, MouseButton button) {
  return OnNode(control, node, [&](TreeList& list, int position) -> Refusal {
    list.UserClickNode(position, button);
    return {};
  });
}

Refusal UserActions::ReleaseButton(const std::string& control, MouseButton button) {
  return OnControl<TreeList>(control, "list", [&](TreeList& list) -> Refusal {
    list.UserReleaseButton(button);
    return {};
  });
}

Refusal UserActions::PressKey(const std::string& control, char32_t key) {
  return OnControl<TreeList>(control, "list", [&](TreeList& list) -> Refusal {
    list.UserPressKey(key);
    return {};
  });
}

Refusal UserActions::PressEnter() {
  return PressButtonOf(&Button::IsDefault, "Enter");
}

Refusal UserActions::PressEscape() {
  return PressButtonOf(&Button::IsCancel, "Escape");
}

Refusal UserActions::PressButtonOf(bool Button::*role, const char* key) {
  return OnWindow([&](Window& window) -> Refusal {
    for (const auto& control : window.Controls()) {
      auto* button = dynamic_cast<Button*>(control.get());
      if (button == nullptr || !(button->*role) || !WhyUnusable(*button).empty()) continue;
      button->UserClick();
      return {};
    }
    return "no button of " + window.Name() + " answers " + key;
  });
}

Refusal UserActions::Type(const std::string& control, const std::string& text) {
  return OnControl<TextBox>(control, "text box", [&](TextBox& box) -> Refusal {
    box.UserType(text);
    return {};
  });
}

Rect UserActions::WindowBounds() const {
  const auto window = toolkit_.TopWindow();
  return window ? window->Bounds() : Rect{};
}

Refusal UserActions::SetBounds(const Rect& bounds) {
  return OnWindow([&](Window& window) -> Refusal {
    if (!IsReachable(bounds)) return "no window can be dragged there";
    window.UserSetBounds(bounds);
    return {};
  });
}

Refusal UserActions::CloseWindow() {
  return OnWindow([&](Window& window) -> Refusal {
    toolkit_.Unload(window, CloseReason::kUserCommand);
    return {};
  });
}

}  // namespace tessel
