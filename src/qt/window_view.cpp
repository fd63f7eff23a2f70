#include "qt/window_view.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <cmath>
#include <utility>

#include "qt/control_views.h"
#include "qt/logo.h"
#include "qt/text.h"
#include "toolkit/access.h"

namespace tessel::qt {
namespace {

// The pages are designed for small print: 8.25 points.
constexpr double kFontTwips = 165;
constexpr int kTitleHeight = 24;    // pixels that have to be seen of a window
constexpr double kCaptionGap = 60;  // between a widened caption and what stands beside it

QFont PageFont(const Units& units) {
  QFont font = QApplication::font();
  font.setPixelSize(units.Pixels(kFontTwips));
  return font;
}

// Pixels an inch: those of the screen, fewer where the window would not fit on it.
double Resolution(const Window& window, double dotsPerInch) {
  const QWidget* active = QApplication::activeWindow();
  const QScreen* screen = active != nullptr ? active->screen() : QGuiApplication::primaryScreen();
  if (screen == nullptr) return dotsPerInch;
  const Units units(dotsPerInch);
  const QSize room = screen->availableSize();
  const double fits = std::min(room.width() / std::max(window.Bounds().width * 1.0, 1.0),
                               room.height() / std::max(window.Bounds().height * 1.0, 1.0)) *
                      units.Twips(1);
  return dotsPerInch * std::min(fits, 1.0);
}

bool SameRows(const Rect& first, const Rect& second) {
  return first.top < second.top + second.height && second.top < first.top + first.height;
}

}  // namespace

WindowView::WindowView(std::shared_ptr<Window> window, EventRunner run, std::function<void()> close)
    : QWidget(nullptr, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      window_(std::move(window)),
      run_(std::move(run)),
      close_(std::move(close)),
      units_(Resolution(*window_, logicalDpiX())) {
  setWindowModality(Qt::ApplicationModal);
  setWindowTitle(ToQt(window_->Title()));
  setWindowIcon(LogoIcon());
  setAccessibleName(ToQt(window_->Title()));
  setObjectName(ToQt(window_->Name()));
  setFont(PageFont(units_));
  for (const auto& control : window_->Controls())
    ControlAdded(*control);
  GeometryChanged();
  FitControls();
  window_->SetListener(this);
}

WindowView::~WindowView() {
  window_->SetListener(nullptr);
}

QWidget* WindowView::WidgetOf(const Control& control) const {
  const auto found = views_.find(&control);
  return found == views_.end() ? nullptr : &found->second->Widget();
}

void WindowView::ControlAdded(Control& control) {
  QWidget* parent = control.Parent() == nullptr ? this : WidgetOf(*control.Parent());
  std::unique_ptr<ControlView> made = MakeControlView(control, *parent, units_, run_);
  ControlView& view = *views_.emplace(&control, std::move(made)).first->second;
  QWidget& widget = view.Widget();
  widget.setObjectName(ToQt(control.Id()));
  widget.setAccessibleDescription(ToQt(control.Id()));
  widget.setEnabled(control.Enabled());
  Place(control, view);
  view.Take(Change::kCaption);
  widget.setVisible(control.Visible());
  FitLater();
}

void WindowView::ControlChanged(Control& control, Change change) {
  ControlView& view = *views_.at(&control);
  switch (change) {
    case Change::kGeometry:
      Place(control, view);
      break;
    case Change::kVisible:
      view.Widget().setVisible(control.Visible());
      break;
    case Change::kEnabled:
      view.Widget().setEnabled(control.Enabled());
      break;
    case Change::kCaption:
      view.Take(change);
      break;
    default:
      view.Take(change);
      return;
  }
  FitLater();
}

void WindowView::Place(Control& control, ControlView& view) {
  const QRect pixels = PixelsOf(units_, control.Bounds());
  if (view.Widget().geometry() == pixels) return;
  view.Widget().setGeometry(pixels);
  view.Resized();
}

void WindowView::FitLater() {
  if (fitting_) return;
  fitting_ = true;
  QCoreApplication::postEvent(this, new QEvent(QEvent::LayoutRequest));
}

void WindowView::FitControls() {
  fitting_ = false;
  NameControls();
  FitCaptions();
  MakeWayForCounters();
  KeepFocus();
}

void WindowView::NameControls() {
  const auto marked = CaptionsWithAltLetters(*window_);
  for (const auto& [control, view] : views_) {
    const auto found = marked.find(control);
    view->ShowCaption(found == marked.end() ? Literal(control->Caption()) : ToQt(found->second));
    view->Widget().setAccessibleName(ToQt(SpokenName(*control)));
  }
}

void WindowView::FitCaptions() {
  for (const auto& [control, view] : views_) {
    const int wanted = view->CaptionWidth();
    if (wanted == 0) continue;
    const Rect& bounds = control->Bounds();
    QRect pixels = PixelsOf(units_, bounds);
    const int room = units_.Pixels(bounds.left + RoomToTheRight(*control)) - pixels.left();
    pixels.setWidth(std::clamp(wanted, pixels.width(), std::max(room, pixels.width())));
    view->Widget().setGeometry(pixels);
  }
}

void WindowView::MakeWayForCounters() {
  for (const auto& [yielding, view] : views_) {
    const bool bar = yielding->Kind() == ControlKind::kProgressBar;
    if (!bar && yielding->Kind() != ControlKind::kLabel) continue;
    QRect pixels = PixelsOf(units_, yielding->Bounds());
    if (!bar) pixels.setWidth(view->Widget().width());
    for (const auto& [label, labelView] : views_) {
      if (label->Kind() != ControlKind::kLabel || !label->Visible() ||
          label->Parent() != yielding->Parent() || label->Bounds().left >= yielding->Bounds().left ||
          !SameRows(label->Bounds(), yielding->Bounds()))
        continue;
      const QRect place = labelView->Widget().geometry();
      const int written = bar ? place.width() : std::min(place.width(), labelView->CaptionWidth());
      const int end = place.left() + written - 1 + units_.Pixels(kCaptionGap);
      pixels.setLeft(std::clamp(end, pixels.left(), pixels.right()));
    }
    view->Widget().setGeometry(pixels);
  }
}

double WindowView::RoomToTheRight(const Control& control) const {
  const Rect& bounds = control.Bounds();
  double end = control.Parent() == nullptr ? window_->Bounds().width - Window::kBorderWidth
                                           : control.Parent()->Bounds().width - kCaptionGap;
  for (const auto& other : window_->Controls()) {
    if (other.get() == &control || other->Parent() != control.Parent() || !other->Visible()) continue;
    if (other->Kind() == ControlKind::kProgressBar) continue;  // it makes way
    const Rect& taken = other->Bounds();
    if (taken.left >= bounds.left + bounds.width && SameRows(taken, bounds)) {
      end = std::min(end, taken.left + SpareWidth(*other, bounds.height) - kCaptionGap);
    }
  }
  return end - bounds.left;
}

double WindowView::SpareWidth(const Control& control, double height) const {
  const Rect& bounds = control.Bounds();
  if (control.Kind() != ControlKind::kLabel || bounds.height > height) return 0;
  return std::max(0.0, bounds.width - units_.Twips(views_.at(&control)->CaptionWidth()));
}

QRect WindowView::ModelPixels() const {
  const Rect& outer = window_->Bounds();
  return {units_.Pixels(outer.left), units_.Pixels(outer.top),
          units_.Pixels(outer.width - Window::kBorderWidth),
          units_.Pixels(outer.height - Window::kBorderHeight)};
}

bool WindowView::OnSomeScreen() const {
  const QRect title(ModelPixels().topLeft(), QSize(ModelPixels().width(), kTitleHeight));
  const QList<QScreen*> screens = QGuiApplication::screens();
  return std::any_of(screens.begin(), screens.end(),
                     [&](const QScreen* screen) { return screen->geometry().intersects(title); });
}

void WindowView::PlaceOnScreen() {
  if (window_->Placed() && OnSomeScreen()) return;
  const QWidget* active = QApplication::activeWindow();
  const QScreen* shownOn = active != nullptr ? active->screen() : QGuiApplication::primaryScreen();
  const QRect screen = shownOn->availableGeometry();
  const Rect& outer = window_->Bounds();
  window_->MoveTo(units_.Twips(screen.left()) + (units_.Twips(screen.width()) - outer.width) / 2,
                  units_.Twips(screen.top()) + (units_.Twips(screen.height()) - outer.height) / 2);
}

void WindowView::GeometryChanged() {
  const QRect pixels = ModelPixels();
  placing_ = true;
  // A size that the program sets ends what the user made of the window.
  if (isMaximized() && size() != pixels.size()) setWindowState(windowState() & ~Qt::WindowMaximized);
  resize(pixels.size());
  if (window_->Placed()) move(pixels.topLeft());
  placing_ = false;
  FitLater();
}

// What the window system reports is the user's doing when it differs from what the model would look like.
void WindowView::FollowUser() {
  if (placing_ || !isVisible() || isMinimized() || !window_->Visible()) return;
  const QRect model = ModelPixels();
  if (pos() == model.topLeft() && size() == model.size()) return;
  Rect outer = window_->Bounds();
  if (pos() != model.topLeft()) {
    outer.left = units_.Twips(x());
    outer.top = units_.Twips(y());
  }
  if (width() != model.width()) outer.width = units_.Twips(width()) + Window::kBorderWidth;
  if (height() != model.height()) outer.height = units_.Twips(height()) + Window::kBorderHeight;
  run_([this, outer] { window_->UserSetBounds(outer); });
}

void WindowView::moveEvent(QMoveEvent*) {
  FollowUser();
}

void WindowView::resizeEvent(QResizeEvent*) {
  FollowUser();
}

// Minimised alone it would block the program's own window, which then looks dead: the two go together.
void WindowView::BelongToProgram() {
  winId();  // makes the native window
  const QWidgetList windows = QApplication::topLevelWidgets();
  const auto program = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
    return window->windowType() == Qt::Window && window->isVisible();
  });
  if (program != windows.end()) windowHandle()->setTransientParent((*program)->windowHandle());
}

void WindowView::PutOnTop() {
  if (!window_->Visible()) return;
  // Screens may have gone since the window was placed.
  PlaceOnScreen();
  BelongToProgram();
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  // A window that another modal one blocks comes above it by being shown anew.
  if (isVisible() && QApplication::activeModalWidget() != this) hide();
  show();
  // Through the native window: setting the flag on the widget would hide and show it.
  if (!windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint)) {
    windowHandle()->setFlag(Qt::WindowStaysOnTopHint);
  }
  raise();
  activateWindow();
}

void WindowView::Redraw() {
  if (!isVisible()) return;
  Settle();
  repaint();
}

void WindowView::Settle() {
  for (const auto& [control, view] : views_)
    view->Settle();
  if (fitting_) FitControls();
}

bool WindowView::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest && fitting_) FitControls();
  if (event->type() == QEvent::WindowActivate) KeepFocus();
  return QWidget::event(event);
}

void WindowView::showEvent(QShowEvent*) {
  FocusFirst();
}

// In the order of the controls, at each showing, so that Enter means the same each time.
void WindowView::FocusFirst() {
  for (const auto& control : window_->Controls()) {
    QWidget* widget = WidgetOf(*control);
    const bool reachable = (widget->focusPolicy() & Qt::TabFocus) != 0;
    if (!reachable || !widget->isEnabled() || !control->ShownOnWindow()) continue;
    widget->setFocus(Qt::OtherFocusReason);
    return;
  }
}

void WindowView::KeepFocus() {
  const QWidget* focused = focusWidget();
  if (!isVisible() || (focused != nullptr && focused->isEnabled() && focused->isVisible())) return;
  FocusFirst();
}

// The model decides whether the window closes.
void WindowView::closeEvent(QCloseEvent* event) {
  event->ignore();
  close_();
}

Button* WindowView::ButtonFor(bool Button::*role) const {
  for (const auto& control : window_->Controls()) {
    auto* button = dynamic_cast<Button*>(control.get());
    if (button != nullptr && button->*role && button->ShownOnWindow() && button->Enabled()) return button;
  }
  return nullptr;
}

// Enter presses the button that has the focus, else the default button.
void WindowView::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  auto* focused = qobject_cast<QPushButton*>(focusWidget());
  if (enter && focused != nullptr) return focused->click();
  Button* button = enter                            ? ButtonFor(&Button::IsDefault)
                   : event->key() == Qt::Key_Escape ? ButtonFor(&Button::IsCancel)
                                                    : nullptr;
  if (button == nullptr) return QWidget::keyPressEvent(event);
  static_cast<QPushButton*>(WidgetOf(*button))->click();
}

}  // namespace tessel::qt
