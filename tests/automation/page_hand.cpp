#include "automation/page_hand.h"

#include <algorithm>

namespace tessel::test {
namespace {

struct Search {
  const wchar_t* windowClass;
  std::wstring text;
  HWND found = nullptr;
};

bool IsUsable(HWND window) {
  return IsWindowVisible(window) != 0 && IsWindowEnabled(window) != 0;
}

BOOL CALLBACK FindClass(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  wchar_t name[64] = {};
  GetClassNameW(window, name, 63);
  if (IsUsable(window) && wcscmp(name, search.windowClass) == 0) search.found = window;
  return search.found == nullptr;
}

// As it is read: without the mark of the Alt letter.
std::wstring CaptionOf(HWND window) {
  std::wstring text(256, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), 256)));
  text.erase(std::remove(text.begin(), text.end(), L'&'), text.end());
  return text;
}

BOOL CALLBACK FindCaption(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  wchar_t name[64] = {};
  GetClassNameW(window, name, 63);
  if (IsUsable(window) && _wcsicmp(name, L"Button") == 0 && CaptionOf(window) == search.text)
    search.found = window;
  return search.found == nullptr;
}

bool IsCheckBox(HWND button) {
  const LONG_PTR kind = GetWindowLongPtrW(button, GWL_STYLE) & BS_TYPEMASK;
  return kind == BS_CHECKBOX || kind == BS_AUTOCHECKBOX;
}

HWND TopWindow(const wchar_t* windowClass, Reach reach) {
  Search search{windowClass, {}};
  const auto parameter = reinterpret_cast<LPARAM>(&search);
  if (reach == Reach::kThisThread) {
    EnumThreadWindows(GetCurrentThreadId(), &FindClass, parameter);
  } else {
    EnumWindows(&FindClass, parameter);
  }
  return search.found;
}

// What was pressed for a step; null when its window is not there yet.
HWND Press(const std::wstring& step, Reach reach) {
  if (step == L"{BOX}" || step == L"{BOXES}") {
    const HWND box = TopWindow(L"#32770", reach);
    if (box != nullptr) PostMessageW(box, WM_COMMAND, GetDlgItem(box, IDYES) != nullptr ? IDYES : IDOK, 0);
    return box;
  }
  // A page below a message box is not for use.
  const HWND page = TopWindow(L"#32770", reach) != nullptr ? nullptr : TopWindow(L"prjTesselPage", reach);
  if (page == nullptr) return nullptr;
  if (step == L"{ENTER}") {
    PostMessageW(page, WM_KEYDOWN, VK_RETURN, 1);
    return page;
  }
  Search search{nullptr, step};
  EnumChildWindows(page, &FindCaption, reinterpret_cast<LPARAM>(&search));
  if (search.found != nullptr) PostMessageW(search.found, BM_CLICK, 0, 0);
  return search.found;
}

}  // namespace

bool PageHand::HasWorked() const {
  if (IsCheckBox(pressed_)) return SendMessageW(pressed_, BM_GETCHECK, 0, 0) == BST_CHECKED;
  return !IsUsable(pressed_) || (steps_.front().front() != L'{' && CaptionOf(pressed_) != steps_.front());
}

void PageHand::Try() {
  constexpr ULONGLONG kPatience = 1000;
  if (steps_.empty()) return;
  if (pressed_ != nullptr && HasWorked()) {
    pressed_ = nullptr;
    if (steps_.front() != L"{BOXES}") steps_.pop_front();
    return;
  }
  if (pressed_ != nullptr && GetTickCount64() - pressedAt_ < kPatience) return;
  pressed_ = Press(steps_.front(), reach_);
  pressedAt_ = GetTickCount64();
}

}  // namespace tessel::test
