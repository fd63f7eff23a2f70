// The control model: what a page puts on its window. A page sets properties and listens to events; a toolkit
// draws the controls, listens to changes and hands on what the user does through the User... operations.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/geometry.h"

namespace tessel {

class Control;
class Frame;

enum class ControlKind {
  kLabel,
  kFrame,
  kButton,
  kCheckBox,
  kTextBox,
  kTreeList,
  kProgressBar,
  kPicture,
  kLine,
};

// What changed about a control, for the toolkit that draws it.
enum class Change { kGeometry, kVisible, kEnabled, kCaption, kValue, kNodes, kSelection, kImages };

// What controls stand on: the window.
class ControlOwner {
 public:
  virtual ~ControlOwner() = default;
  // In the order in which they were added, which is the tab order.
  [[nodiscard]] virtual const std::vector<std::unique_ptr<Control>>& Controls() const = 0;
  // A control of it changed.
  virtual void ControlChanged(Control& control, Change change) = 0;
};

class Control {
 public:
  Control(ControlOwner& owner, ControlKind kind, std::string name, int index, Frame* parent,
          const Rect& rect);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] ControlKind Kind() const { return kind_; }
  [[nodiscard]] const std::string& Name() const { return name_; }
  // Element of a control array, -1 for a single control.
  [[nodiscard]] int Index() const { return index_; }
  // "Command1", or "Check1(2)" for an element of a control array. Also the object name that tests and scripts
  // go by.
  [[nodiscard]] std::string Id() const;
  // The frame that holds it, or null; coordinates are relative to it.
  [[nodiscard]] Frame* Parent() const { return parent_; }
  [[nodiscard]] ControlOwner& Owner() const { return owner_; }

  [[nodiscard]] const Rect& Bounds() const { return rect_; }
  void SetLeft(double left);
  void SetTop(double top);
  void SetWidth(double width);
  void SetHeight(double height);

  [[nodiscard]] bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  // Visible, and so is every frame around it.
  [[nodiscard]] bool ShownOnWindow() const;
  [[nodiscard]] bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  void SetCaption(const std::string& caption);

  // Free text of the page.
  std::string Tag;

 protected:
  void Changed(Change change);

 private:
  ControlOwner& owner_;
  ControlKind kind_;
  std::string name_;
  int index_;
  Frame* parent_;
  Rect rect_;
  bool visible_ = true;
  bool enabled_ = true;
  std::string caption_;
};

class Label : public Control {
 public:
  Label(ControlOwner& owner, std::string name, int index, Frame* parent, const Rect& rect)
      : Control(owner, ControlKind::kLabel, std::move(name), index, parent, rect) {}
};

class Frame : public Control {
 public:
  Frame(ControlOwner& owner, std::string name, int index, Frame* parent, const Rect& rect)
      : Control(owner, ControlKind::kFrame, std::move(name), index, parent, rect) {}
};

class Line : public Control {
 public:
  Line(ControlOwner& owner, std::string name, int index, Frame* parent, const Rect& rect)
      : Control(owner, ControlKind::kLine, std::move(name), index, parent, rect) {}
};

// Shows the picture of a file, or the product logo when the file is empty.
class Picture : public Control {
 public:
  Picture(ControlOwner& owner, std::string name, int index, Frame* parent, const Rect& rect)
      : Control(owner, ControlKind::kPicture, std::move(name), index, parent, rect) {}
  [[nodiscard]] const std::string& File() const { return file_; }
  void SetFile(const std::string& file);

 private:
  std::string file_;
};

class Button : public Control {
 public:
  Button(ControlOwner& owner, std::string name, int index, Frame* parent, const Rect& rect)
      : Control(owner, ControlKind::kButton, std::move(name), index, parent, rect) {}
  std::function<void()> OnClick;
  // A press by the user; nothing happens while the button is disabled.
  void UserClick();
  // Answers Enter and Escape for the window.
  bool IsDefault = false;
  bool IsCancel = false;
};

class CheckBox : public Control {
 public:
  CheckBox(ControlOwner& owner, std::string name, int index, Frame* parent, const Rect& rect)
      : Control(owner, ControlKind::kCheckBox, std::move(name), index, parent, rect) {}
  // Raised by every change of the value, the program's own included.
  std::function<void()> OnClick;
  [[nodiscard]] bool Checked() const { return checked_; }
  void SetChecked(bool checked);
  void UserToggle();

 private:
  bool checked_ = false;
};

class TextBox : public Control {
 public:
  TextBox(ControlOwner& owner, std::string name, int index, Frame* parent, const Rect& rect, bool multiLine)
      : Control(owner, ControlKind::kTextBox, std::move(name), index, parent, rect), multiLine_(multiLine) {}
  [[nodiscard]] bool MultiLine() const { return multiLine_; }
  [[nodiscard]] const std::string& Text() const { return text_; }
  void SetText(const std::string& text);
  // Replaces the text as if typed; a single-line box keeps what stands before the first line break. A control
  // character, which nobody could see, becomes U+FFFD.
  void UserType(const std::string& text);

 private:
  bool multiLine_;
  std::string text_;
};

class ProgressBar : public Control {
 public:
  ProgressBar(ControlOwner& owner, std::string name, int index, Frame* parent, const Rect& rect)
      : Control(owner, ControlKind::kProgressBar, std::move(name), index, parent, rect) {}
  [[nodiscard]] int Maximum() const { return maximum_; }
  [[nodiscard]] int Value() const { return value_; }
  void SetMaximum(int maximum);
  // Cut to the range from 0 to the maximum.
  void SetValue(int value);

 private:
  int maximum_ = 100;
  int value_ = 0;
};

}  // namespace tessel
