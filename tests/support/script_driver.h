// A driver for tests: performs queued actions, gives queued answers, and records what a person would have
// seen.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "headless/driver.h"
#include "headless/headless_toolkit.h"
#include "headless/user_actions.h"

namespace tessel::test {

// An action without a step left for it, a refused action, a box without an answer and an answer that the box
// does not offer each fail the test; from then on every window is closed and boxes get their safe answer, so
// that the code under test comes to its end. Steps left over fail the test when the driver goes.
class ScriptDriver : public Driver {
 public:
  using Step = std::function<void(UserActions& user)>;
  using Action = std::function<Refusal(UserActions& user)>;

  ScriptDriver() = default;
  ~ScriptDriver() override;
  ScriptDriver(const ScriptDriver&) = delete;
  ScriptDriver& operator=(const ScriptDriver&) = delete;

  // Steps, performed one after the other while a window is open. A step may also look at the window.
  ScriptDriver& Do(Step step) { return Queue(steps_, std::move(step)); }
  ScriptDriver& Click(const std::string& control);
  ScriptDriver& Check(const std::string& control, CheckWish wish = CheckWish::kChecked);
  ScriptDriver& ClickNode(const std::string& control, const NodeChoice& node,
                          MouseButton button = MouseButton::kLeft);
  ScriptDriver& ClickNodeBox(const std::string& control, const NodeChoice& node);
  ScriptDriver& PressKey(const std::string& control, char32_t key);
  ScriptDriver& Type(const std::string& control, const std::string& text);
  ScriptDriver& Resize(const Rect& bounds);
  ScriptDriver& CloseWindow();
  // The action must be refused for this reason.
  ScriptDriver& Refused(const Action& action, const std::string& reason);
  // A step performed when the program pumps events in the middle of its work, one a pump.
  ScriptDriver& WhenBusy(Step step) { return Queue(busySteps_, std::move(step)); }

  // Answers, used in the order in which they are queued, one queue for each kind of question.
  ScriptDriver& AnswerBox(MessageAnswer answer = MessageAnswer::kOk) { return Queue(boxAnswers_, answer); }
  // By item name; empty closes the menu.
  ScriptDriver& ChooseItem(const std::string& itemName) { return Queue(menuChoices_, itemName); }
  // Without a queued answer operations run (1), object dialogs close with OK (1), nothing is picked and
  // nobody logs in.
  ScriptDriver& AnswerLifeCycle(int answer) { return Queue(lifeCycleAnswers_, answer); }
  ScriptDriver& AnswerObject(int answer) { return Queue(objectAnswers_, answer); }
  ScriptDriver& Pick(std::vector<std::size_t> positions) { return Queue(picks_, std::move(positions)); }
  ScriptDriver& AnswerLogin(const embedded::LoginAnswer& answer) { return Queue(logins_, answer); }

  // One line for each thing seen, each ended by a line feed:
  //   show Tessel_1
  //   hide Tessel_1
  //   box "Kestrix" information "text" [ok]
  //   menu mnuKontext [mnuAddValues]
  //   life cycle COPYFILE "/directory" 1201:1 1201:2 [1]     the objects asked for
  //   object dialog mode 3 "title" 1201:1 [1]                 "modeless" before mode when it is
  //   select "title" 1201:1 1201:2 [0 1]
  //   login [name]
  //   system message "text" "text"
  //   refresh 1201:1 mode 2
  //   start "program" "argument" [4711]
  [[nodiscard]] const std::string& Transcript() const { return transcript_; }
  // What was seen since the last call.
  [[nodiscard]] std::string TakeTranscript();

  // The pauses that the pages made, in milliseconds.
  std::vector<int> pauses;

  void Act(HeadlessToolkit& toolkit) override;
  [[nodiscard]] MessageAnswer Answer(const MessageRequest& request) override;
  [[nodiscard]] int ChooseMenuItem(const Window& window, const PopupMenu& menu) override;
  void WindowShown(const Window& window) override;
  void WindowHidden(const Window& window) override;
  void EventsPumped(HeadlessToolkit& toolkit) override;
  void Paused(std::chrono::milliseconds atMost) override {
    pauses.push_back(static_cast<int>(atMost.count()));
  }
  void ProcessStarted(const std::string& program, const std::vector<std::string>& arguments,
                      std::int32_t processId) override;
  int ConfirmLifeCycle(const embedded::LifeCycleRequest& request) override;
  int ShowObject(const embedded::ObjectDialogRequest& request) override;
  std::vector<std::size_t> SelectObjects(const embedded::SelectionDialogRequest& request) override;
  embedded::LoginAnswer Login() override;
  void ShowSystemMessage(const std::vector<std::string>& texts) override;
  void RefreshObject(const ObjectKey& key, int mode) override;

 private:
  template <class Item>
  ScriptDriver& Queue(std::deque<Item>& queue, Item item) {
    queue.push_back(std::move(item));
    return *this;
  }
  ScriptDriver& Perform(Action action);
  void Fail(const std::string& what);
  void Record(const std::string& line) { transcript_ += line + "\n"; }

  std::deque<Step> steps_;
  std::deque<Step> busySteps_;
  std::deque<MessageAnswer> boxAnswers_;
  std::deque<std::string> menuChoices_;
  std::deque<int> lifeCycleAnswers_;
  std::deque<int> objectAnswers_;
  std::deque<std::vector<std::size_t>> picks_;
  std::deque<embedded::LoginAnswer> logins_;
  std::string transcript_;
  bool failed_ = false;
};

// Comes before a hosted machine among the bases of a world in which a script acts.
struct Scripted {
  ScriptDriver driver;
};

}  // namespace tessel::test
