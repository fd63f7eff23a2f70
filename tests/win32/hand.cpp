#include "win32/hand.h"

#include <cstring>

#include "win32/text.h"
#include "win32/tree_list_view.h"

namespace tessel::test {
namespace {

constexpr const wchar_t* kTicks = L"prjTesselTicks";
constexpr UINT_PTR kTimer = 1;

LRESULT CALLBACK OnTick(HWND window, UINT message, WPARAM wide, LPARAM lParam) {
  auto* action = reinterpret_cast<std::function<void()>*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (message == WM_TIMER && action != nullptr) {
    (*action)();
    return 0;
  }
  return DefWindowProcW(window, message, wide, lParam);
}

HWND WindowOfClass(const wchar_t* name) {
  struct Search {
    const wchar_t* name;
    HWND found = nullptr;
  } search{name};
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM parameter) -> BOOL {
        auto& wanted = *reinterpret_cast<Search*>(parameter);
        wchar_t shown[64] = {};
        GetClassNameW(window, shown, 63);
        if (IsWindowVisible(window) && wcscmp(shown, wanted.name) == 0) wanted.found = window;
        return wanted.found == nullptr;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace

Ticks::Ticks(std::function<void()> action) : action_(std::move(action)) {
  WNDCLASSW description{};
  description.lpfnWndProc = &OnTick;
  description.lpszClassName = kTicks;
  RegisterClassW(&description);
  window_ = CreateWindowW(kTicks, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&action_));
  SetTimer(window_, kTimer, USER_TIMER_MINIMUM, nullptr);
}

Ticks::~Ticks() {
  DestroyWindow(window_);
}

void ClickAt(HWND control, POINT point, bool right) {
  const LPARAM place = MAKELPARAM(point.x, point.y);
  SendMessageW(control, right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN, right ? MK_RBUTTON : MK_LBUTTON, place);
  SendMessageW(control, right ? WM_RBUTTONUP : WM_LBUTTONUP, 0, place);
}

void PressKey(WPARAM key) {
  const HWND focus = GetFocus();
  PostMessageW(focus, WM_KEYDOWN, key, 1);
  PostMessageW(focus, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
}

void PressAlt(char letter) {
  constexpr LPARAM kAltIsDown = 0x20000001;
  PostMessageW(GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(letter), kAltIsDown);
}

void TypeText(HWND edit, const std::string& text) {
  SetFocus(edit);
  for (const wchar_t character : win32::ToWide(text))
    SendMessageW(edit, WM_CHAR, character == L'\n' ? L'\r' : character, 1);
}

std::string ShownText(HWND window) {
  std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return win32::FromWide(text);
}

POINT PlaceOfNode(HWND tree, int node, bool box) {
  const HTREEITEM item = win32::ItemOfNode(tree, node);
  SendMessageW(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item));
  RECT area{};
  std::memcpy(&area, &item, sizeof item);
  SendMessageW(tree, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&area));
  POINT place{area.left + 3, (area.top + area.bottom) / 2};
  TVHITTESTINFO hit{};
  for (hit.pt = place; box && hit.pt.x > 0; --hit.pt.x) {
    SendMessageW(tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
    if ((hit.flags & TVHT_ONITEMSTATEICON) != 0) return {hit.pt.x - 2, hit.pt.y};
  }
  return place;
}

bool NodeIsMarked(HWND tree, int node) {
  const auto item = reinterpret_cast<WPARAM>(win32::ItemOfNode(tree, node));
  constexpr UINT kChecked = 2;
  return static_cast<UINT>(SendMessageW(tree, TVM_GETITEMSTATE, item, TVIS_STATEIMAGEMASK)) >> 12 == kChecked;
}

std::string TextOfNode(HWND tree, int node) {
  std::vector<wchar_t> text(4096);
  TVITEMW item{};
  item.mask = TVIF_TEXT | TVIF_HANDLE;
  item.hItem = win32::ItemOfNode(tree, node);
  item.pszText = text.data();
  item.cchTextMax = static_cast<int>(text.size());
  SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  return win32::FromWide(text.data());
}

HWND DialogOfThread() {
  return WindowOfClass(L"#32770");
}

HWND MenuOfThread() {
  return WindowOfClass(L"#32768");
}

}  // namespace tessel::test
