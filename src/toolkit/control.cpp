#include "toolkit/control.h"

#include <algorithm>

namespace tessel {

namespace {

// Whether typing can leave the character in a text box.
bool IsTypeable(char character) {
  const auto byte = static_cast<unsigned char>(character);
  return byte >= 0x20 ? byte != 0x7F : character == '\t' || character == '\r' || character == '\n';
}

}  // namespace

Control::Control(ControlOwner& owner, ControlKind kind, std::string name, int index, Frame* parent,
                 const Rect& rect)
    : owner_(owner), kind_(kind), name_(std::move(name)), index_(index), parent_(parent), rect_(rect) {}

std::string Control::Id() const {
  return index_ < 0 ? name_ : name_ + "(" + std::to_string(index_) + ")";
}

void Control::SetLeft(double left) {
  if (rect_.left == left) return;
  rect_.left = left;
  Changed(Change::kGeometry);
}

void Control::SetTop(double top) {
  if (rect_.top == top) return;
  rect_.top = top;
  Changed(Change::kGeometry);
}

void Control::SetWidth(double width) {
  if (rect_.width == width) return;
  rect_.width = width;
  Changed(Change::kGeometry);
}

void Control::SetHeight(double height) {
  if (rect_.height == height) return;
  rect_.height = height;
  Changed(Change::kGeometry);
}

void Control::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  Changed(Change::kVisible);
}

bool Control::ShownOnWindow() const {
  return visible_ && (parent_ == nullptr || parent_->ShownOnWindow());
}

void Control::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  Changed(Change::kEnabled);
}

void Control::SetCaption(const std::string& caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  Changed(Change::kCaption);
}

void Control::Changed(Change change) {
  owner_.ControlChanged(*this, change);
}

void Picture::SetFile(const std::string& file) {
  if (file_ == file) return;
  file_ = file;
  Changed(Change::kImages);
}

void Button::UserClick() {
  if (Enabled() && OnClick) OnClick();
}

void CheckBox::SetChecked(bool checked) {
  if (checked_ == checked) return;
  checked_ = checked;
  Changed(Change::kValue);
  if (OnClick) OnClick();
}

void CheckBox::UserToggle() {
  if (Enabled()) SetChecked(!checked_);
}

void TextBox::SetText(const std::string& text) {
  if (text_ == text) return;
  text_ = text;
  Changed(Change::kValue);
}

void TextBox::UserType(const std::string& text) {
  if (!Enabled()) return;
  std::string typed = multiLine_ ? text : text.substr(0, text.find_first_of("\r\n"));
  std::string shown;
  for (const char character : typed) {
    if (IsTypeable(character)) {
      shown += character;
    } else {
      shown += "\xEF\xBF\xBD";
    }
  }
  SetText(shown);
}

void ProgressBar::SetMaximum(int maximum) {
  const int bounded = std::max(maximum, 0);
  if (maximum_ == bounded) return;
  maximum_ = bounded;
  value_ = std::min(value_, maximum_);
  Changed(Change::kValue);
}

void ProgressBar::SetValue(int value) {
  const int bounded = std::clamp(value, 0, maximum_);
  if (value_ == bounded) return;
  value_ = bounded;
  Changed(Change::kValue);
}

}  // namespace tessel
