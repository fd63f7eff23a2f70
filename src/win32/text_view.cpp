#include "win32/text_view.h"

#include <algorithm>

#include "win32/text.h"

namespace tessel::win32 {
namespace {

constexpr wchar_t kCtrlA = 1;

DWORD StyleOf(const TextBox& box) {
  constexpr DWORD kCommon = WS_TABSTOP;
  if (!box.MultiLine()) return kCommon | ES_AUTOHSCROLL;
  return kCommon | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL;
}

class TextView : public ControlView {
 public:
  TextView(TextBox& box, const Ground& ground)
      : ControlView(box, ground, WC_EDITW, StyleOf(box), WS_EX_CLIENTEDGE), box_(box) {
    SendMessageW(Handle(), EM_SETLIMITTEXT, 0, 0);  // as long as it gets
    SetWindowSubclass(Handle(), &TextView::Procedure, 0, 0);
  }
  // What stands behind the cursor stays behind it where the control allows less than was typed.
  void Take(Change) override {
    const std::wstring text = WithEditBreaks(box_.Text());
    const std::wstring shown = ShownText();
    if (shown == text) return;
    DWORD end = 0;
    SendMessageW(Handle(), EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
    const auto behind = shown.size() - std::min<std::size_t>(end, shown.size());
    const bool quiet = std::exchange(taking_, true);
    SetWindowTextW(Handle(), text.c_str());
    taking_ = quiet;
    const auto cursor = static_cast<LPARAM>(typing_ ? text.size() - std::min(behind, text.size()) : 0);
    SendMessageW(Handle(), EM_SETSEL, static_cast<WPARAM>(cursor), cursor);
  }
  [[nodiscard]] bool TakesFocus() const override { return true; }
  [[nodiscard]] bool WantsEnter() const override { return box_.MultiLine(); }
  void Notified(WORD code) override {
    if (code != EN_CHANGE || taking_) return;
    On().queue([this] {
      typing_ = true;
      box_.UserType(WithoutEditBreaks(ShownText()));
      Take(Change::kValue);
      typing_ = false;
    });
  }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wide, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR) {
    if (message == WM_CHAR && wide == kCtrlA) {
      SendMessageW(window, EM_SETSEL, 0, -1);
      return 0;
    }
    if (message == WM_NCDESTROY) RemoveWindowSubclass(window, &TextView::Procedure, 0);
    return DefSubclassProc(window, message, wide, lParam);
  }

  TextBox& box_;
  bool taking_ = false;
  bool typing_ = false;
};

}  // namespace

std::unique_ptr<ControlView> MakeTextView(TextBox& box, const Ground& ground) {
  return std::make_unique<TextView>(box, ground);
}

}  // namespace tessel::win32
