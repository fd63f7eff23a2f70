#include "win32/control_views.h"

#include <algorithm>

#include "win32/label_view.h"
#include "win32/picture.h"
#include "win32/text.h"
#include "win32/text_view.h"
#include "win32/tree_list_view.h"

namespace tessel::win32 {
namespace {

constexpr int kBoxGap = 6;  // between the box and its caption, at 96 dots an inch

class FrameView : public ControlView {
 public:
  FrameView(Control& frame, const Ground& ground) : ControlView(frame, ground, WC_BUTTONW, BS_GROUPBOX) {}
  void Take(Change) override { ShowText(Literal(Model().Caption())); }
};

class LineView : public ControlView {
 public:
  LineView(Control& line, const Ground& ground)
      : ControlView(line, ground, WC_STATICW,
                    line.Bounds().width >= line.Bounds().height ? SS_ETCHEDHORZ : SS_ETCHEDVERT) {}
  void Take(Change) override {}
};

class PictureView : public ControlView {
 public:
  PictureView(Picture& picture, const Ground& ground)
      : ControlView(picture, ground, WC_STATICW, SS_OWNERDRAW), picture_(picture) {}
  void Take(Change) override { InvalidateRect(Handle(), nullptr, TRUE); }
  void Draw(const DRAWITEMSTRUCT& request) override {
    FillRect(request.hDC, &request.rcItem, GetSysColorBrush(COLOR_BTNFACE));
    if (picture_.File().empty()) return DrawLogo(request.hDC, request.rcItem);
    DrawPicture(request.hDC, request.rcItem, picture_.File());
  }
  void Resized() override { Take(Change::kImages); }

 private:
  Picture& picture_;
};

class ButtonView : public ControlView {
 public:
  ButtonView(Button& button, const Ground& ground)
      : ControlView(button, ground, WC_BUTTONW, WS_TABSTOP | BS_PUSHBUTTON), button_(button) {}
  void Take(Change) override {
    const LPARAM style = button_.IsDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
    if (style != style_) SendMessageW(Handle(), BM_SETSTYLE, static_cast<WPARAM>(style), TRUE);
    style_ = style;
  }
  void TakeMarkedCaption(const std::string& caption) override { ShowText(ToWide(caption)); }
  [[nodiscard]] bool TakesFocus() const override { return true; }
  void Notified(WORD code) override {
    if (code == BN_CLICKED) On().queue([&button = button_] { button.UserClick(); });
  }

 private:
  Button& button_;
  LPARAM style_ = BS_PUSHBUTTON;
};

class CheckBoxView : public ControlView {
 public:
  CheckBoxView(CheckBox& box, const Ground& ground)
      : ControlView(box, ground, WC_BUTTONW, WS_TABSTOP | BS_CHECKBOX), box_(box) {}
  // The control decides what a click comes to, so that the box follows it.
  void Take(Change) override {
    SendMessageW(Handle(), BM_SETCHECK, box_.Checked() ? BST_CHECKED : BST_UNCHECKED, 0);
  }
  void TakeMarkedCaption(const std::string& caption) override { ShowText(ToWide(caption)); }
  [[nodiscard]] bool TakesFocus() const override { return true; }
  [[nodiscard]] int CaptionWidth() const override {
    constexpr double kTwipsPerPixel = 15;
    constexpr int kBox = 13;
    return Measure(ToWide(box_.Caption())).cx + On().units->Pixels((kBox + 2 * kBoxGap) * kTwipsPerPixel);
  }
  void Notified(WORD code) override {
    if (code == BN_CLICKED) On().queue([&box = box_] { box.UserToggle(); });
  }

 private:
  CheckBox& box_;
};

class ProgressView : public ControlView {
 public:
  ProgressView(ProgressBar& bar, const Ground& ground)
      : ControlView(bar, ground, PROGRESS_CLASSW, 0), bar_(bar) {}
  void Take(Change) override {
    SendMessageW(Handle(), PBM_SETRANGE32, 0, std::max(bar_.Maximum(), 1));
    SendMessageW(Handle(), PBM_SETPOS, static_cast<WPARAM>(bar_.Value()), 0);
  }

 private:
  ProgressBar& bar_;
};

template <class ControlType>
ControlType& As(Control& control) {
  return static_cast<ControlType&>(control);
}

}  // namespace

std::unique_ptr<ControlView> MakeControlView(Control& control, const Ground& ground) {
  switch (control.Kind()) {
    case ControlKind::kLabel:
      return MakeLabelView(As<Label>(control), ground);
    case ControlKind::kFrame:
      return std::make_unique<FrameView>(control, ground);
    case ControlKind::kLine:
      return std::make_unique<LineView>(control, ground);
    case ControlKind::kPicture:
      return std::make_unique<PictureView>(As<Picture>(control), ground);
    case ControlKind::kButton:
      return std::make_unique<ButtonView>(As<Button>(control), ground);
    case ControlKind::kCheckBox:
      return std::make_unique<CheckBoxView>(As<CheckBox>(control), ground);
    case ControlKind::kProgressBar:
      return std::make_unique<ProgressView>(As<ProgressBar>(control), ground);
    case ControlKind::kTreeList:
      return MakeTreeListView(As<TreeList>(control), ground);
    case ControlKind::kTextBox:
      break;
  }
  return MakeTextView(As<TextBox>(control), ground);
}

}  // namespace tessel::win32
