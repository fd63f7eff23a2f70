// What the native windows add to the model: controls, place and size, keys, the client's own window, boxes.
#include "win32/win32_toolkit.h"

#include <gtest/gtest.h>

#include <deque>

#include "toolkit/modal_contract.h"
#include "toolkit/units.h"
#include "win32/hand.h"
#include "win32/screen.h"
#include "win32/text.h"
#include "win32/tree_list_view.h"

namespace tessel::test {
namespace {

using win32::Win32Toolkit;

// Actions come from a timer of the thread, whatever loop runs.
class NativeWorld {
 public:
  NativeWorld() : ticks_([this] { Tick(); }) {}
  Win32Toolkit& Get() { return toolkit_; }
  void Then(std::function<void()> action) { actions_.push_back(std::move(action)); }

 private:
  void Tick() {
    if (actions_.empty() || !toolkit_.TopWindow() || !toolkit_.TopWindow()->Visible()) return;
    const auto action = actions_.front();
    actions_.pop_front();
    action();
  }

  Win32Toolkit toolkit_;
  std::deque<std::function<void()>> actions_;
  Ticks ticks_;
};

// Seconds that this thread has worked, whatever else the machine does.
double ThreadTime() {
  FILETIME made{};
  FILETIME ended{};
  FILETIME system{};
  FILETIME user{};
  GetThreadTimes(GetCurrentThread(), &made, &ended, &system, &user);
  constexpr double kPerSecond = 1e7;
  return (static_cast<double>(system.dwLowDateTime) + static_cast<double>(user.dwLowDateTime)) / kPerSecond;
}

INSTANTIATE_TYPED_TEST_SUITE_P(Native, ModalContract, NativeWorld);

class Win32ToolkitTest : public ::testing::Test {
 protected:
  // Performs actions one after the other, the events of each in between, then hides the window.
  void WhileShown(std::initializer_list<std::function<void()>> actions) {
    for (const auto& action : actions)
      world_.Then(action);
    world_.Then([this] { toolkit_.Hide(*window_); });
    toolkit_.ShowModal(window_);
  }
  HWND HandleOf(const Control& control) { return toolkit_.HandleOf(control); }

  std::vector<std::unique_ptr<Ticks>> ticks_;
  NativeWorld world_;
  Win32Toolkit& toolkit_ = world_.Get();
  std::shared_ptr<Window> window_ = std::make_shared<Window>("Tessel_0", "Kestrix", Size{6990, 5070});
};

TEST_F(Win32ToolkitTest, PlacesWindowsAndFollowsTheUser) {
  const Units units(win32::DotsPerInch(nullptr));
  int resizes = 0;
  window_->OnResize = [&] { ++resizes; };
  const auto client = [&] {
    RECT area{};
    GetClientRect(toolkit_.HandleOf(*window_), &area);
    return std::pair<int, int>(area.right, area.bottom);
  };
  WhileShown({[&] {
                EXPECT_EQ(client(), std::pair(units.Pixels(6990), units.Pixels(5070)));
                window_->SetBounds({1501, 752, 9007, 6001});
                EXPECT_EQ(window_->Bounds(), (Rect{1501, 752, 9007, 6001})) << "rounding is no user's doing";
              },
              [&] {
                RECT frame{};
                GetWindowRect(toolkit_.HandleOf(*window_), &frame);
                EXPECT_EQ(frame.left, units.Pixels(1501));
                MoveWindow(toolkit_.HandleOf(*window_), 30, 40, frame.right - frame.left + 10,
                           frame.bottom - frame.top, TRUE);
              },
              [&] {
                EXPECT_EQ(window_->Bounds().left, units.Twips(30));
                EXPECT_EQ(window_->Bounds().width,
                          units.Twips(units.Pixels(8887) + 10) + Window::kBorderWidth);
              }});
  EXPECT_EQ(resizes, 2);
}

TEST_F(Win32ToolkitTest, KeysReachEverything) {
  std::string pressed;
  for (const char* name : {"Command1", "Command2", "Command3"}) {
    auto& button = window_->Add<Button>(name, -1, nullptr, Rect{0, 0, 1500, 375});
    button.SetCaption(name[7] == '3' ? "R&D" : "Next >>");
    button.OnClick = [&pressed, name] { pressed += std::string(name) + " "; };
    button.IsDefault = std::string(name) == "Command2";
    button.IsCancel = std::string(name) == "Command3";
  }
  auto& list = window_->Add<TreeList>("TreeView1", -1, nullptr, Rect{0, 600, 3000, 2000}, true);
  for (const char* text : {"Anchor", "Bolt", "Bracket", "Cover"})
    list.AddNode(text, text);
  list.OnNodeClick = [&](int node) { pressed += list.NodeAt(node).text + " "; };
  list.OnKeyDown = [&](char32_t key) { pressed += key == U' ' ? "space " : ""; };
  auto& box = window_->Add<CheckBox>("Check1", -1, nullptr, Rect{0, 3000, 3000, 255});
  const auto press = [](WPARAM key) { return [key] { PressKey(key); }; };
  WhileShown({press(VK_RETURN), [&] { SetFocus(HandleOf(list)); }, press(VK_DOWN), press(VK_DOWN),
              press(VK_SPACE), press('B'), press(VK_END), press(VK_RETURN), press(VK_ESCAPE), press(VK_TAB),
              press(VK_SPACE), [&] { PressAlt('R'); },
              [&] {
                EXPECT_TRUE(box.Checked());
                EXPECT_TRUE(list.NodeAt(1).checked);
                EXPECT_EQ(ShownText(HandleOf(*window_->Find("Command3"))), "&R&&D");
              }});
  EXPECT_EQ(pressed, "Command1 Anchor Bolt space Bracket Cover Command2 Command3 Command3 ");
}

TEST_F(Win32ToolkitTest, TextKeepsWhatTheModelAllows) {
  auto& line = window_->Add<TextBox>("Text1", -1, nullptr, Rect{0, 0, 3000, 315}, false);
  auto& lines = window_->Add<TextBox>("Text2", -1, nullptr, Rect{0, 600, 3000, 900}, true);
  WhileShown({[&] { TypeText(HandleOf(line), "ab"); }, [&] { line.SetText("from the program"); },
              [&] { TypeText(HandleOf(line), ">"); },
              [&] { SendMessageW(HandleOf(line), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"a\1b")); },
              [&] { TypeText(HandleOf(line), "-"); }, [&] { lines.SetText("first\nsecond \xE2\x82\xAC"); },
              [&] { TypeText(HandleOf(lines), "\r\xC3\xA4"); }});
  EXPECT_EQ(line.Text(),
            ">a\xEF\xBF\xBD"
            "b-from the program")
      << "control characters are shown as such, and typing goes on behind what was pasted";
  EXPECT_EQ(lines.Text(),
            "\n\xC3\xA4"
            "first\nsecond \xE2\x82\xAC");
}

TEST_F(Win32ToolkitTest, TheClientsWindowWaits) {
  const HWND client = CreateWindowW(L"STATIC", L"client", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                                    nullptr, nullptr, nullptr, nullptr);
  SetActiveWindow(client);
  WhileShown({[&] {
    EXPECT_FALSE(IsWindowEnabled(client));
    EXPECT_EQ(GetWindow(toolkit_.HandleOf(*window_), GW_OWNER), client);
  }});
  EXPECT_TRUE(IsWindowEnabled(client));
  DestroyWindow(client);
}

TEST_F(Win32ToolkitTest, ErrorsOfEventsGoToWhoeverRunsThem) {
  auto& button = window_->Add<Button>("Command1", -1, nullptr, Rect{0, 0, 1500, 375});
  button.OnClick = [] { throw RuntimeError(error_number::kTypeMismatch, "Type mismatch"); };
  world_.Then([&] {
    ClickAt(HandleOf(button), {5, 5});
    EXPECT_THROW(toolkit_.PumpEvents(), RuntimeError);
    EXPECT_TRUE(window_->Visible()) << "the error is that of the pump, the page stays";
    ClickAt(HandleOf(button), {5, 5});
  });
  EXPECT_THROW(toolkit_.ShowModal(window_), RuntimeError);
  EXPECT_FALSE(window_->Visible());
}

TEST_F(Win32ToolkitTest, TheFrameAsksTheModel) {
  std::vector<CloseReason> reasons;
  window_->OnQueryClose = [&](CloseReason reason) {
    reasons.push_back(reason);
    return reasons.size() > 1;
  };
  const auto close = [&] { SendMessageW(toolkit_.HandleOf(*window_), WM_CLOSE, 0, 0); };
  world_.Then(close);
  world_.Then(close);
  toolkit_.ShowModal(window_);
  EXPECT_TRUE(window_->Unloaded());
  EXPECT_EQ(reasons, (std::vector{CloseReason::kUserCommand, CloseReason::kUserCommand}));
}

TEST_F(Win32ToolkitTest, QuittingTheThreadClosesAllWindows) {
  window_->OnQueryClose = [](CloseReason) { return false; };
  world_.Then([] { PostQuitMessage(7); });
  toolkit_.ShowModal(window_);
  EXPECT_TRUE(window_->Unloaded());
  MSG message{};
  EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U) << "whoever waits outside hears it, too";
}

TEST_F(Win32ToolkitTest, AThousandNodesAreShownAndMarkedAtOnce) {
  auto& list = window_->Add<TreeList>("TreeView1", -1, nullptr, Rect{0, 600, 3000, 2000}, true);
  constexpr int kNodes = 1000;
  for (int node = 0; node < kNodes; ++node)
    list.AddNode("Node " + std::to_string(node), std::to_string(node));
  const auto start = ThreadTime();
  WhileShown({[&] {
    for (int node = 0; node < kNodes; ++node)
      list.SetChecked(node, true);
    EXPECT_EQ(SendMessageW(HandleOf(list), TVM_GETCOUNT, 0, 0), kNodes);
    EXPECT_TRUE(NodeIsMarked(HandleOf(list), kNodes - 1));
  }});
  EXPECT_LT(ThreadTime() - start, 3.0);
}

TEST_F(Win32ToolkitTest, BoxesHaveTheirTextsAndAnswers) {
  std::string seen;
  const auto answerNext = [&](int button) {
    auto done = std::make_shared<bool>(false);
    ticks_.push_back(std::make_unique<Ticks>([&seen, button, done] {
      const HWND box = DialogOfThread();
      if (box == nullptr || std::exchange(*done, true)) return;
      seen += ShownText(box) + "|" + ShownText(GetDlgItem(box, 0xFFFF)) + "\n";
      PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    }));
  };
  answerNext(IDYES);
  EXPECT_EQ(toolkit_.ShowMessage({"<b>R&D</b>", "", MessageIcon::kNone, MessageButtons::kYesNo}),
            MessageAnswer::kYes);
  ticks_.clear();
  answerNext(IDOK);
  EXPECT_EQ(toolkit_.ShowMessage({"Gr\xC3\xBC\xC3\x9F"
                                  "e",
                                  "Kestrix", MessageIcon::kCritical}),
            MessageAnswer::kOk);
  EXPECT_EQ(seen,
            "prjTessel|<b>R&D</b>\nKestrix|Gr\xC3\xBC\xC3\x9F"
            "e\n");
}

}  // namespace
}  // namespace tessel::test
