// Place, size and scale of a native window.
#include <algorithm>
#include <cmath>

#include "win32/screen.h"
#include "win32/window_view.h"

namespace tessel::win32 {
namespace {

// The pages are designed for small print: 8.25 points.
constexpr double kFontTwips = 165;
constexpr int kTitleHeight = 24;  // pixels that have to be seen of a window

}  // namespace

void WindowView::MakeFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  LOGFONTW look = metrics.lfMessageFont;
  look.lfHeight = -units_.Pixels(kFontTwips);
  look.lfWidth = 0;
  FontHandle font(CreateFontIndirectW(&look));
  for (const auto& [control, view] : views_)
    view->SetFont(font.get());
  font_.swap(font);
}

void WindowView::TakeScale(UINT dotsPerInch) {
  units_ = Units(dotsPerInch);
  MakeFont();
  for (const auto& [control, view] : views_)
    view->Take(Change::kImages);
  PlaceAll();
  GeometryChanged();
}

PixelRect WindowView::ModelPixels() const {
  const Rect& outer = window_->Bounds();
  return {units_.Pixels(outer.left), units_.Pixels(outer.top),
          units_.Pixels(outer.width - Window::kBorderWidth),
          units_.Pixels(outer.height - Window::kBorderHeight)};
}

PixelRect WindowView::ShownPixels() const {
  RECT frame{};
  RECT client{};
  GetWindowRect(handle_, &frame);
  GetClientRect(handle_, &client);
  return {frame.left, frame.top, client.right, client.bottom};
}

SIZE WindowView::OuterSize(const PixelRect& pixels) const {
  RECT outer{0, 0, pixels.width, pixels.height};
  AdjustFrame(outer, handle_);
  return {outer.right - outer.left, outer.bottom - outer.top};
}

bool WindowView::OnSomeScreen() const {
  const PixelRect pixels = ModelPixels();
  const RECT title{pixels.left, pixels.top, pixels.left + pixels.width, pixels.top + kTitleHeight};
  return MonitorFromRect(&title, MONITOR_DEFAULTTONULL) != nullptr;
}

void WindowView::PlaceOnScreen() {
  if (window_->Placed() && OnSomeScreen()) return;
  const RECT screen = WorkAreaAround(owner_);
  const SIZE outer = OuterSize(ModelPixels());
  window_->MoveTo(units_.Twips(screen.left + std::max<int>(0, (screen.right - screen.left - outer.cx) / 2)),
                  units_.Twips(screen.top + std::max<int>(0, (screen.bottom - screen.top - outer.cy) / 2)));
}

void WindowView::GeometryChanged() {
  const PixelRect pixels = ModelPixels();
  placing_ = true;
  // A size that the program sets ends what the user made of the window.
  if (IsZoomed(handle_)) ShowWindow(handle_, SW_RESTORE);
  const SIZE outer = OuterSize(pixels);
  SetWindowPos(handle_, nullptr, pixels.left, pixels.top, outer.cx, outer.cy,
               SWP_NOZORDER | SWP_NOACTIVATE | (window_->Placed() ? 0U : SWP_NOMOVE));
  placing_ = false;
  FitLater();
}

// What the window system reports is the user's doing when it differs from what the model would look like.
void WindowView::FollowUser() {
  if (placing_ || !IsWindowVisible(handle_) || IsIconic(handle_) || !window_->Visible()) return;
  const PixelRect model = ModelPixels();
  const PixelRect shown = ShownPixels();
  if (shown == model) return;
  Rect outer = window_->Bounds();
  if (shown.left != model.left || shown.top != model.top) {
    outer.left = units_.Twips(shown.left);
    outer.top = units_.Twips(shown.top);
  }
  if (shown.width != model.width) outer.width = units_.Twips(shown.width) + Window::kBorderWidth;
  if (shown.height != model.height) outer.height = units_.Twips(shown.height) + Window::kBorderHeight;
  events_.now([this, outer] { window_->UserSetBounds(outer); });
}

// Minimised alone it would block the client's window, which then looks dead: the two go together.
void WindowView::Minimise() {
  ShowWindow(owner_, SW_SHOWMINIMIZED);
}

void WindowView::PutOnTop() {
  if (!window_->Visible()) return;
  PlaceOnScreen();
  Settle();
  const bool shown = IsWindowVisible(handle_) != FALSE;
  placing_ = true;
  if (IsIconic(handle_)) ShowWindow(handle_, SW_RESTORE);
  SetWindowPos(handle_, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
  placing_ = false;
  SetForegroundWindow(handle_);
  if (!shown) FocusFirst();
}

void WindowView::Conceal() {
  lastFocus_ = nullptr;
  ShowWindow(handle_, SW_HIDE);
}

}  // namespace tessel::win32
