#include "win32/window_view.h"

#include <algorithm>
#include <utility>

#include "toolkit/access.h"
#include "win32/accessibility.h"
#include "win32/control_views.h"
#include "win32/module.h"
#include "win32/picture.h"
#include "win32/screen.h"
#include "win32/text.h"

namespace tessel::win32 {
namespace {

constexpr const wchar_t* kClassName = L"prjTesselPage";
constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
constexpr DWORD kExtendedStyle = WS_EX_CONTROLPARENT;
constexpr UINT kFit = WM_APP;
constexpr double kCaptionGap = 60;  // between a widened caption and what stands beside it
constexpr int kDefaultButton = 1;   // answers to DM_GETDEFID need some number

bool SameRows(const Rect& first, const Rect& second) {
  return first.top < second.top + second.height && second.top < first.top + first.height;
}

// The controls lie on the window itself, so that the keyboard finds them all.
Rect OnWindow(const Control& control) {
  Rect bounds = control.Bounds();
  for (const Frame* frame = control.Parent(); frame != nullptr; frame = frame->Parent()) {
    bounds.left += frame->Bounds().left;
    bounds.top += frame->Bounds().top;
  }
  return bounds;
}

bool EnabledOnWindow(const Control& control) {
  return control.Enabled() && (control.Parent() == nullptr || EnabledOnWindow(*control.Parent()));
}

}  // namespace

WindowView::WindowView(std::shared_ptr<Window> window, HWND owner, WindowEvents events)
    : window_(std::move(window)), owner_(owner), events_(std::move(events)), units_(DotsPerInch(owner)) {
  handle_ = CreateWindowExW(kExtendedStyle, kClassName, ToWide(window_->Title()).c_str(), kStyle, 0, 0, 0, 0,
                            owner_, nullptr, OwnModule(), this);
  // Where the keyboard is and what the Alt letters are is always shown.
  SendMessageW(handle_, WM_CHANGEUISTATE, MAKEWPARAM(UIS_CLEAR, UISF_HIDEFOCUS | UISF_HIDEACCEL), 0);
  smallIcon_ = LogoIcon(GetSystemMetrics(SM_CXSMICON));
  bigIcon_ = LogoIcon(GetSystemMetrics(SM_CXICON));
  SendMessageW(handle_, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon_.get()));
  SendMessageW(handle_, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(bigIcon_.get()));
  MakeFont();
  for (const auto& control : window_->Controls())
    ControlAdded(*control);
  GeometryChanged();
  FitCaptions();
  window_->SetListener(this);
}

WindowView::~WindowView() {
  window_->SetListener(nullptr);
  SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
  DestroyWindow(handle_);
}

void WindowView::RegisterNativeClass() {
  WNDCLASSEXW description{};
  description.cbSize = sizeof description;
  description.lpfnWndProc = &WindowView::Procedure;
  description.hInstance = OwnModule();
  description.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = kClassName;
  RegisterClassExW(&description);
}

void WindowView::UnregisterNativeClass() {
  UnregisterClassW(kClassName, OwnModule());
}

WindowView* WindowView::Around(HWND handle) {
  const HWND root = handle == nullptr ? nullptr : GetAncestor(handle, GA_ROOT);
  wchar_t name[32] = {};
  if (root == nullptr || GetClassNameW(root, name, static_cast<int>(std::size(name))) == 0) return nullptr;
  const bool own =
      GetWindowThreadProcessId(root, nullptr) == GetCurrentThreadId() && wcscmp(name, kClassName) == 0;
  return own ? reinterpret_cast<WindowView*>(GetWindowLongPtrW(root, GWLP_USERDATA)) : nullptr;
}

ControlView* WindowView::ViewOf(const Control& control) const {
  const auto found = views_.find(&control);
  return found == views_.end() ? nullptr : found->second.get();
}

HWND WindowView::HandleOf(const Control& control) const {
  const ControlView* view = ViewOf(control);
  return view == nullptr ? nullptr : view->Handle();
}

void WindowView::ControlAdded(Control& control) {
  const Ground ground{handle_, &units_, events_.queue};
  ControlView& view = *views_.emplace(&control, MakeControlView(control, ground)).first->second;
  view.SetFont(font_.get());
  EnableWindow(view.Handle(), EnabledOnWindow(control));
  Place(control);
  view.Take(Change::kCaption);
  ShowWindow(view.Handle(), control.ShownOnWindow() ? SW_SHOWNA : SW_HIDE);
  FitLater();
}

void WindowView::ControlChanged(Control& control, Change change) {
  const bool frame = control.Kind() == ControlKind::kFrame;
  switch (change) {
    case Change::kGeometry:
      frame ? PlaceAll() : Place(control);
      break;
    case Change::kVisible:
      ShowOrHide();
      break;
    case Change::kEnabled:
      for (const auto& [model, view] : views_)
        EnableWindow(view->Handle(), EnabledOnWindow(*model));
      KeepFocusUsable();
      return;
    default:
      ViewOf(control)->Take(change);
      if (change != Change::kCaption) return;
  }
  FitLater();
}

void WindowView::Place(const Control& control) {
  ControlView& view = *ViewOf(control);
  const PixelRect pixels = units_.Pixels(OnWindow(control));
  SetWindowPos(view.Handle(), nullptr, pixels.left, pixels.top, pixels.width, pixels.height,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  view.Resized();
}

void WindowView::PlaceAll() {
  for (const auto& control : window_->Controls())
    Place(*control);
}

void WindowView::ShowOrHide() {
  for (const auto& [model, view] : views_)
    ShowWindow(view->Handle(), model->ShownOnWindow() ? SW_SHOWNA : SW_HIDE);
  KeepFocusUsable();
}

void WindowView::FitLater() {
  if (std::exchange(fitting_, true)) return;
  PostMessageW(handle_, kFit, 0, 0);
}

void WindowView::FitCaptions() {
  fitting_ = false;
  const auto captions = CaptionsWithAltLetters(*window_);
  for (const auto& [control, view] : views_) {
    const auto marked = captions.find(control);
    if (marked != captions.end()) view->TakeMarkedCaption(marked->second);
    const std::string spoken = SpokenName(*control);
    if (std::exchange(spoken_[control], spoken) != spoken) Announce(view->Handle(), control->Id(), spoken);
    const int wanted = view->CaptionWidth();
    if (wanted == 0) continue;
    const Rect bounds = OnWindow(*control);
    const PixelRect pixels = units_.Pixels(bounds);
    const int room = units_.Pixels(bounds.left + RoomToTheRight(*control)) - pixels.left;
    const int width = std::clamp(wanted, pixels.width, std::max(room, pixels.width));
    SetWindowPos(view->Handle(), nullptr, pixels.left, pixels.top, width, pixels.height,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

double WindowView::RoomToTheRight(const Control& control) const {
  const Rect& bounds = control.Bounds();
  double end = control.Parent() == nullptr ? window_->Bounds().width - Window::kBorderWidth
                                           : control.Parent()->Bounds().width - kCaptionGap;
  for (const auto& other : window_->Controls()) {
    if (other.get() == &control || other->Parent() != control.Parent() || !other->Visible()) continue;
    const Rect& taken = other->Bounds();
    if (taken.left >= bounds.left + bounds.width && SameRows(taken, bounds)) {
      end = std::min(end, taken.left - kCaptionGap);
    }
  }
  return end - bounds.left;
}

void WindowView::Redraw() {
  if (!IsWindowVisible(handle_)) return;
  Settle();
  RedrawWindow(handle_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

void WindowView::Settle() {
  for (const auto& [control, view] : views_)
    view->Settle();
  if (fitting_) FitCaptions();
}

LRESULT CALLBACK WindowView::Procedure(HWND window, UINT message, WPARAM wide, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    auto* view = static_cast<WindowView*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
    view->handle_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(view));
  }
  auto* view = reinterpret_cast<WindowView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  return view == nullptr ? DefWindowProcW(window, message, wide, lParam)
                         : view->Handle(message, wide, lParam);
}

LRESULT WindowView::Handle(UINT message, WPARAM wide, LPARAM lParam) {
  switch (message) {
    case kFit:
      if (fitting_) FitCaptions();
      return 0;
    case WM_COMMAND:
      if (lParam == 0) break;
      if (ControlView* view = ControlView::Of(reinterpret_cast<HWND>(lParam))) view->Notified(HIWORD(wide));
      return 0;
    case WM_NOTIFY: {
      const NMHDR& header = *reinterpret_cast<const NMHDR*>(lParam);
      ControlView* view = GetParent(header.hwndFrom) == handle_ ? ControlView::Of(header.hwndFrom) : nullptr;
      return view == nullptr ? 0 : view->Asked(header);
    }
    case WM_DRAWITEM: {
      const auto& request = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      if (ControlView* view = ControlView::Of(request.hwndItem)) view->Draw(request);
      return TRUE;
    }
    case DM_GETDEFID:
      return ButtonFor(&Button::IsDefault) == nullptr ? 0 : MAKELRESULT(kDefaultButton, DC_HASDEFID);
    case WM_MOVE:
    case WM_SIZE:
      FollowUser();
      return 0;
    case WM_DPICHANGED:
      TakeScale(LOWORD(wide));
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wide) == WA_INACTIVE) lastFocus_ = GetFocus();
      break;
    case WM_SETFOCUS:
      if (Usable(lastFocus_)) {
        SetFocus(lastFocus_);
      } else {
        FocusFirst();
      }
      return 0;
    case WM_SYSCOMMAND:
      if ((wide & 0xFFF0) != SC_MINIMIZE || owner_ == nullptr) break;
      Minimise();
      return 0;
    case WM_CLOSE:
      events_.queue([this] { events_.close(CloseReason::kUserCommand); });
      return 0;
    case WM_QUERYENDSESSION:
      return TRUE;
    case WM_ENDSESSION:
      if (wide != FALSE) events_.now([this] { events_.close(CloseReason::kSystemShutdown); });
      return 0;
    default:
      break;
  }
  return DefWindowProcW(handle_, message, wide, lParam);
}

}  // namespace tessel::win32
