// The window model: a top-level window with its controls, its life (load, activate, hide, unload) and
// geometry.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "toolkit/control.h"
#include "toolkit/geometry.h"
#include "toolkit/tree_list.h"

namespace tessel {

// Why a window is about to close.
enum class CloseReason { kUserCommand, kProgramCode, kSystemShutdown, kTaskManager };

// One item of a popup menu.
struct MenuItem {
  std::string name;
  std::string caption;
  std::function<void()> OnClick;
};

struct PopupMenu {
  std::string name;
  std::string caption;
  std::vector<MenuItem> items;
};

// What a toolkit hears of a window that it draws.
class WindowListener {
 public:
  virtual ~WindowListener() = default;
  virtual void ControlAdded(Control& control) = 0;
  virtual void ControlChanged(Control& control, Change change) = 0;
  // Position or size were set by the program.
  virtual void GeometryChanged() = 0;
};

class Window : public ControlOwner {
 public:
  // Outer size is the client area plus border and title bar.
  static constexpr double kBorderWidth = 120;
  static constexpr double kBorderHeight = 405;

  // A window of a name ("Tessel_1"), a title and a client area in twips.
  Window(std::string name, std::string title, const Size& clientArea);

  [[nodiscard]] const std::string& Name() const { return name_; }
  [[nodiscard]] const std::string& Title() const { return title_; }

  template <class ControlType, class... Arguments>
  ControlType& Add(const std::string& name, int index, Frame* parent, const Rect& rect,
                   Arguments&&... arguments) {
    auto control = std::make_unique<ControlType>(*this, name, index, parent, rect,
                                                 std::forward<Arguments>(arguments)...);
    ControlType& added = *control;
    Adopt(std::move(control));
    return added;
  }
  [[nodiscard]] const std::vector<std::unique_ptr<Control>>& Controls() const override { return controls_; }
  // Null when there is none. Index -1 stands for a single control.
  [[nodiscard]] Control* Find(std::string_view name, int index = -1) const;
  // By Control::Id.
  [[nodiscard]] Control* FindById(std::string_view id) const;

  // Outer position and size.
  [[nodiscard]] const Rect& Bounds() const { return rect_; }
  // Sets the outer rectangle and raises OnResize when the size changed. The program's own setting.
  void SetBounds(const Rect& rect);
  void MoveTo(double left, double top);
  // The user moved or sized the window.
  void UserSetBounds(const Rect& rect);
  // False until a position was set; a toolkit then centres the window on the screen.
  [[nodiscard]] bool Placed() const { return placed_; }

  [[nodiscard]] bool Visible() const { return visible_; }
  // For toolkits alone: keeps the model's state true.
  void SetVisible(bool visible) { visible_ = visible; }
  // Set once by the toolkit that unloaded the window.
  [[nodiscard]] bool Unloaded() const { return unloaded_; }
  void SetUnloaded() { unloaded_ = true; }

  void SetListener(WindowListener* listener) { listener_ = listener; }

  // Raised by the toolkit each time the window is shown.
  std::function<void()> OnActivate;
  std::function<void()> OnResize;
  // False refuses the closing.
  std::function<bool(CloseReason)> OnQueryClose;
  // The window is unloaded; it will not be shown again.
  std::function<void()> OnUnload;

 private:
  void Adopt(std::unique_ptr<Control> control);
  void ControlChanged(Control& control, Change change) override;
  void ApplyBounds(const Rect& rect, bool tellListener);

  std::string name_;
  std::string title_;
  Rect rect_;
  bool placed_ = false;
  bool visible_ = false;
  bool unloaded_ = false;
  std::vector<std::unique_ptr<Control>> controls_;
  WindowListener* listener_ = nullptr;
};

}  // namespace tessel
