#include "win32/person.h"

#include <gtest/gtest.h>

#include "toolkit/units.h"
#include "win32/screen.h"
#include "win32/text.h"
#include "win32/tree_list_view.h"

namespace tessel::test {
namespace {

int RowOf(const TreeList& list, const NodeChoice& choice) {
  if (const int* position = std::get_if<int>(&choice)) return *position;
  for (int node = 0; node < list.NodeCount(); ++node) {
    if (list.NodeAt(node).text == std::get<std::string>(choice)) return node;
  }
  return list.FindTag(std::get<std::string>(choice));
}

void ResizeTo(HWND window, const Rect& bounds) {
  const Units units(win32::DotsPerInch(window));
  RECT area{0, 0, units.Pixels(bounds.width - Window::kBorderWidth),
            units.Pixels(bounds.height - Window::kBorderHeight)};
  win32::AdjustFrame(area, window);
  MoveWindow(window, units.Pixels(bounds.left), units.Pixels(bounds.top), area.right - area.left,
             area.bottom - area.top, TRUE);
}

std::string DifferenceOf(const TreeList& list, HWND tree) {
  const auto shown = static_cast<int>(SendMessageW(tree, TVM_GETCOUNT, 0, 0));
  if (shown != list.NodeCount()) return std::to_string(shown) + " nodes";
  for (int node = 0; node < shown; ++node) {
    if (TextOfNode(tree, node) != win32::FromWide(win32::OnOneLine(list.NodeAt(node).text)))
      return "node " + std::to_string(node) + " reads " + TextOfNode(tree, node);
    if (list.HasCheckBoxes() && NodeIsMarked(tree, node) != list.NodeAt(node).checked)
      return "the mark of node " + std::to_string(node);
  }
  const LRESULT selected = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_CARET, 0);
  const bool same = list.Selected() < 0
                        ? selected == 0
                        : selected == reinterpret_cast<LRESULT>(win32::ItemOfNode(tree, list.Selected()));
  return same ? std::string() : "another node is selected";
}

std::string DifferenceOf(const Control& control, HWND shown) {
  if ((IsWindowVisible(shown) != 0) != control.ShownOnWindow()) return "visible";
  if (!control.ShownOnWindow()) return {};
  if (const auto* list = dynamic_cast<const TreeList*>(&control)) return DifferenceOf(*list, shown);
  if (const auto* box = dynamic_cast<const CheckBox*>(&control)) {
    const bool checked = SendMessageW(shown, BM_GETCHECK, 0, 0) == BST_CHECKED;
    if (checked != box->Checked()) return "checked";
  }
  if (const auto* text = dynamic_cast<const TextBox*>(&control)) {
    const std::string read = win32::WithoutEditBreaks(win32::ToWide(ShownText(shown)));
    return read == text->Text() ? std::string() : "reads " + read;
  }
  if (const auto* bar = dynamic_cast<const ProgressBar*>(&control)) {
    if (SendMessageW(shown, PBM_GETPOS, 0, 0) != bar->Value()) return "value";
  }
  return {};
}

}  // namespace

std::string DifferencesOf(const win32::Win32Toolkit& toolkit, const Window& window) {
  std::string differences;
  for (const auto& control : window.Controls()) {
    const std::string difference = DifferenceOf(*control, toolkit.HandleOf(*control));
    if (!difference.empty()) differences += control->Id() + ": " + difference + "\n";
  }
  return differences;
}

Person::Person(Walk walk) : walk_(std::move(walk)), ticks_([this] { Tick(); }) {}

Person::~Person() {
  if (gaveUp_) return;
  EXPECT_TRUE(walk_.steps.empty()) << walk_.steps.size() << " steps were not reached\n"
                                   << seen_ << scribe.Transcript();
  EXPECT_TRUE(walk_.boxes.empty() && walk_.menus.empty()) << "some questions did not come";
}

void Person::Tick() {
  if (toolkit_ == nullptr || acting || busy) return;
  acting = true;
  if (MenuOfThread() != nullptr) {
    ActOnMenu();
  } else if (const HWND box = DialogOfThread(); box != nullptr) {
    ActOnBox(box);
  } else if (const auto window = toolkit_->TopWindow()) {
    ActOnPage(window);
  }
  acting = false;
}

void Person::ActOnPage(const std::shared_ptr<Window>& window) {
  const HWND shown = toolkit_->HandleOf(*window);
  if (shown == nullptr || !IsWindowVisible(shown)) return;
  seen_ += scribe.TakeTranscript() + DumpOf(*window);
  EXPECT_EQ(DifferencesOf(*toolkit_, *window), "") << window->Name();
  if (!gaveUp_ && walk_.steps.empty()) GiveUp("no step left for " + window->Name());
  if (gaveUp_) {
    window->OnQueryClose = nullptr;
    toolkit_->Unload(*window, CloseReason::kSystemShutdown);
    return;
  }
  const Step step = walk_.steps.front();
  walk_.steps.pop_front();
  Perform(step, *window);
}

void Person::Perform(const Step& step, Window& window) {
  Control* control = step.control.empty() ? nullptr : window.FindById(step.control);
  const HWND hit = control == nullptr ? nullptr : toolkit_->HandleOf(*control);
  if (!step.control.empty() && (hit == nullptr || !IsWindowVisible(hit) || !IsWindowEnabled(hit)))
    return GiveUp(step.control + " cannot be used");
  RECT area{};
  if (hit != nullptr) GetClientRect(hit, &area);
  const auto place = [&](bool box) {
    return PlaceOfNode(hit, RowOf(static_cast<TreeList&>(*control), step.node), box);
  };
  switch (step.kind) {
    case Step::Kind::kClick:
      return ClickAt(hit, {9, area.bottom / 2});
    case Step::Kind::kClickNode:
      return ClickAt(hit, place(false), step.button == MouseButton::kRight);
    case Step::Kind::kClickNodeBox:
      return ClickAt(hit, place(true));
    case Step::Kind::kKey:
      SetFocus(hit);
      return PressKey(static_cast<WPARAM>(step.key));
    case Step::Kind::kEnter:
      return PressKey(VK_RETURN);
    case Step::Kind::kEscape:
      return PressKey(VK_ESCAPE);
    case Step::Kind::kType:
      SetFocus(hit);
      SendMessageW(hit, EM_SETSEL, 0, -1);
      return TypeText(hit, step.text);
    case Step::Kind::kResize:
      return ResizeTo(toolkit_->HandleOf(window), step.bounds);
    case Step::Kind::kClose:
      PostMessageW(toolkit_->HandleOf(window), WM_CLOSE, 0, 0);
      return;
  }
}

void Person::ActOnBox(HWND box) {
  const bool asks = GetDlgItem(box, IDNO) != nullptr;
  MessageAnswer answer = asks ? MessageAnswer::kNo : MessageAnswer::kOk;
  if (!gaveUp_ && walk_.boxes.empty()) GiveUp("no answer for the box " + ShownText(GetDlgItem(box, 0xFFFF)));
  if (!gaveUp_) {
    answer = walk_.boxes.front();
    walk_.boxes.pop_front();
  }
  const WPARAM id = answer == MessageAnswer::kYes ? IDYES : answer == MessageAnswer::kNo ? IDNO : IDOK;
  if (GetDlgItem(box, static_cast<int>(id)) == nullptr && answer != MessageAnswer::kOk)
    return GiveUp("the box offers no such answer");
  PostMessageW(box, WM_COMMAND, id, 0);
}

void Person::ActOnMenu() {
  const std::string choice = walk_.menus.empty() ? std::string() : walk_.menus.front();
  if (!walk_.menus.empty()) walk_.menus.pop_front();
  // The menu takes the keys of its thread, whatever window they are for.
  const HWND owner = GetFocus();
  for (std::size_t item = 0; openMenu != nullptr && item < openMenu->items.size(); ++item) {
    PostMessageW(owner, WM_KEYDOWN, VK_DOWN, 1);
    if (openMenu->items[item].name != choice) continue;
    PostMessageW(owner, WM_KEYDOWN, VK_RETURN, 1);
    return;
  }
  PostMessageW(owner, WM_KEYDOWN, VK_ESCAPE, 1);
}

void Person::GiveUp(const std::string& reason) {
  gaveUp_ = true;
  ADD_FAILURE() << reason << "\nseen so far:\n" << seen_ << scribe.Transcript();
}

}  // namespace tessel::test
