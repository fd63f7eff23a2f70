#include "win32/win32_toolkit.h"

#include <cstring>
#include <utility>

#include "win32/handles.h"
#include "win32/text.h"
#include "win32/window_view.h"

namespace tessel::win32 {
namespace {

// The client's window that a page shown now belongs to; null when the thread has none on the screen.
HWND ClientWindow() {
  HWND root = GetAncestor(GetActiveWindow(), GA_ROOTOWNER);
  if (root != nullptr && WindowView::Around(root) != nullptr) root = GetWindow(root, GW_OWNER);
  return root != nullptr && IsWindowVisible(root) ? root : nullptr;
}

UINT StyleOf(const MessageRequest& request) {
  UINT style = MB_TOPMOST | MB_SETFOREGROUND;
  style |= request.buttons == MessageButtons::kYesNo ? MB_YESNO : MB_OK;
  switch (request.icon) {
    case MessageIcon::kInformation:
      return style | MB_ICONINFORMATION;
    case MessageIcon::kExclamation:
      return style | MB_ICONEXCLAMATION;
    case MessageIcon::kCritical:
      return style | MB_ICONERROR;
    case MessageIcon::kNone:
      break;
  }
  return style;
}

// At the pointer, or at the selected row when the keyboard asked for the menu.
POINT MenuPlace(HWND window) {
  POINT place{};
  GetCursorPos(&place);
  const HWND focus = GetFocus();
  RECT list{};
  if (focus == nullptr || !IsChild(window, focus) || !GetWindowRect(focus, &list)) return place;
  RECT row{};
  const LRESULT selected = SendMessageW(focus, TVM_GETNEXTITEM, TVGN_CARET, 0);
  std::memcpy(&row, &selected, sizeof selected);  // where the message looks for the item
  const bool hasRow = SendMessageW(focus, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&row)) != 0;
  if (PtInRect(&list, place) || !hasRow) return place;
  place = {(row.left + row.right) / 2, (row.top + row.bottom) / 2};
  ClientToScreen(focus, &place);
  return place;
}

}  // namespace

// One gesture that runs; views that it retired go with the outermost.
class Win32Toolkit::GestureScope {
 public:
  explicit GestureScope(Win32Toolkit& toolkit) : toolkit_(toolkit) { ++toolkit_.running_; }
  ~GestureScope() {
    if (--toolkit_.running_ == 0) toolkit_.retired_.clear();
  }
  GestureScope(const GestureScope&) = delete;
  GestureScope& operator=(const GestureScope&) = delete;

 private:
  Win32Toolkit& toolkit_;
};

Win32Toolkit::Win32Toolkit() : ModalToolkit(kDeepestNesting) {
  const ControlStyle::Scope style(style_);
  INITCOMMONCONTROLSEX wanted{sizeof(INITCOMMONCONTROLSEX),
                              ICC_STANDARD_CLASSES | ICC_TREEVIEW_CLASSES | ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&wanted);
  WindowView::RegisterNativeClass();
}

Win32Toolkit::~Win32Toolkit() {
  retired_.clear();
  views_.clear();
  WindowView::UnregisterNativeClass();
}

void Win32Toolkit::Prepare(const std::shared_ptr<Window>& window) {
  std::unique_ptr<WindowView>& view = views_[window.get()];
  if (!view) view = MakeView(window);
  view->PlaceOnScreen();
}

std::unique_ptr<WindowView> Win32Toolkit::MakeView(const std::shared_ptr<Window>& window) {
  const ControlStyle::Scope style(style_);
  Window& model = *window;
  WindowEvents events;
  events.queue = [this, &model](std::function<void()> event) {
    gestures_.push_back({&model, std::move(event)});
  };
  events.now = [this](const std::function<void()>& event) {
    try {
      event();
    } catch (...) {
      if (!error_) error_ = std::current_exception();
      PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);  // whoever waits has to look
    }
  };
  events.close = [this, &model](CloseReason reason) {
    if (reason == CloseReason::kSystemShutdown) return CloseForShutdown(model);
    Unload(model, reason);
  };
  return std::make_unique<WindowView>(window, ClientWindow(), std::move(events));
}

// The window appears when the activation has given it its place, not before.
void Win32Toolkit::Appear(Window& window) {
  const ControlStyle::Scope style(style_);
  WindowView& view = *FindView(window);
  LetOnly(view.Handle());
  view.PutOnTop();
}

void Win32Toolkit::Wait(Window& window) {
  if (SomethingWaits()) return RunNext();
  MSG message{};
  if (GetMessageW(&message, nullptr, 0, 0) > 0) return Dispatch(message);
  // Whoever waits around this window has to hear it, too.
  PostQuitMessage(static_cast<int>(message.wParam));
  CloseForShutdown(window);
}

void Win32Toolkit::PumpEvents() {
  MSG message{};
  while (SomethingWaits() || PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (SomethingWaits()) {
      RunNext();
    } else if (message.message == WM_QUIT) {
      return PostQuitMessage(static_cast<int>(message.wParam));
    } else {
      Dispatch(message);
    }
  }
}

void Win32Toolkit::Dispatch(MSG& message) {
  const ControlStyle::Scope style(style_);
  WindowView* view = WindowView::Around(message.hwnd);
  if (view != nullptr && view->TakesKey(message)) return;
  TranslateMessage(&message);
  DispatchMessageW(&message);
}

void Win32Toolkit::RunNext() {
  if (error_) std::rethrow_exception(std::exchange(error_, nullptr));
  const Gesture gesture = std::move(gestures_.front());
  gestures_.pop_front();
  if (TopWindow().get() != gesture.window) return;
  const std::shared_ptr<Window> kept = TopWindow();
  const GestureScope scope(*this);
  gesture.event();
}

void Win32Toolkit::Conceal(Window& window) {
  WindowView* view = FindView(window);
  if (view == nullptr) return;
  const std::shared_ptr<Window> top = TopWindow();
  const WindowView* next = top ? FindView(*top) : nullptr;
  const bool active = GetActiveWindow() == view->Handle();
  // First the window that is used next, else Windows looks for one in another program.
  if (next != nullptr && next->Model()->Visible()) {
    LetOnly(next->Handle());
  } else if (!top) {
    LetClient();
  }
  const HWND client = GetWindow(view->Handle(), GW_OWNER);
  view->Conceal();
  if (!active) return;
  const HWND successor = next != nullptr && next->Model()->Visible() ? next->Handle() : client;
  if (successor != nullptr) SetForegroundWindow(successor);
}

void Win32Toolkit::Release(Window& window) {
  std::erase_if(gestures_, [&](const Gesture& gesture) { return gesture.window == &window; });
  const auto found = views_.find(&window);
  if (found == views_.end()) return;
  retired_.push_back(std::move(found->second));
  views_.erase(found);
  if (running_ == 0) retired_.clear();
}

void Win32Toolkit::LetOnly(HWND window) {
  struct Search {
    Win32Toolkit* toolkit;
    HWND usable;
  } search{this, window};
  EnableWindow(window, TRUE);
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND other, LPARAM parameter) -> BOOL {
        const auto& [toolkit, usable] = *reinterpret_cast<Search*>(parameter);
        if (other == usable || !IsWindowVisible(other) || !IsWindowEnabled(other)) return TRUE;
        EnableWindow(other, FALSE);
        if (WindowView::Around(other) == nullptr) toolkit->disabled_.push_back(other);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&search));
}

void Win32Toolkit::LetClient() {
  for (const HWND window : std::exchange(disabled_, {}))
    if (IsWindow(window)) EnableWindow(window, TRUE);
}

void Win32Toolkit::BringToTop(Window& window) {
  if (WindowView* view = FindView(window)) view->PutOnTop();
}

void Win32Toolkit::OpenPopupMenu(Window& window, const PopupMenu& menu) {
  const HWND owner = HandleOf(window);
  if (owner == nullptr) return;
  const MenuHandle popup(CreatePopupMenu());
  for (std::size_t item = 0; item < menu.items.size(); ++item)
    AppendMenuW(popup.get(), MF_STRING, item + 1, Literal(menu.items[item].caption).c_str());
  const POINT place = MenuPlace(owner);
  const int chosen = TrackPopupMenuEx(popup.get(), TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON, place.x,
                                      place.y, owner, nullptr);
  PostMessageW(owner, WM_NULL, 0, 0);  // else the next menu closes at once
  if (chosen <= 0 || static_cast<std::size_t>(chosen) > menu.items.size()) return;
  const MenuItem& item = menu.items[static_cast<std::size_t>(chosen) - 1];
  if (item.OnClick) item.OnClick();
}

HWND Win32Toolkit::MessageOwner() const {
  const std::shared_ptr<Window> top = TopWindow();
  const HWND page = top ? HandleOf(*top) : nullptr;
  return page != nullptr && IsWindowVisible(page) ? page : ClientWindow();
}

MessageAnswer Win32Toolkit::ShowMessage(const MessageRequest& request) {
  const ControlStyle::Scope style(style_);
  const std::wstring title = ToWide(request.title.empty() ? kDefaultMessageTitle : request.title);
  const int answer =
      MessageBoxW(MessageOwner(), ToWide(request.text).c_str(), title.c_str(), StyleOf(request));
  if (request.buttons == MessageButtons::kOk) return MessageAnswer::kOk;
  return answer == IDYES ? MessageAnswer::kYes : MessageAnswer::kNo;
}

void Win32Toolkit::Redraw(Window& window) {
  if (WindowView* view = FindView(window)) view->Redraw();
}

void Win32Toolkit::Pause(std::chrono::milliseconds) {
  for (const auto& [window, view] : views_)
    view->Redraw();
}

WindowView* Win32Toolkit::FindView(const ControlOwner& window) const {
  const auto found = views_.find(&window);
  return found == views_.end() ? nullptr : found->second.get();
}

HWND Win32Toolkit::HandleOf(const Window& window) const {
  const WindowView* view = FindView(window);
  return view == nullptr ? nullptr : view->Handle();
}

HWND Win32Toolkit::HandleOf(const Control& control) const {
  WindowView* view = FindView(control.Owner());
  if (view == nullptr) return nullptr;
  view->Settle();
  return view->HandleOf(control);
}

}  // namespace tessel::win32
