#include "support/script_driver.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace tessel::test {

namespace {

std::string Quoted(const std::string& text) {
  return "\"" + text + "\"";
}

std::string Bracketed(const std::string& text) {
  return " [" + text + "]";
}

std::string KeyText(const ObjectKey& key) {
  return " " + ObjectKeyText(key, ':');
}

const char* IconName(MessageIcon icon) {
  constexpr std::array kNames{"none", "information", "exclamation", "critical"};
  return kNames.at(static_cast<std::size_t>(icon));
}

const char* AnswerName(MessageAnswer answer) {
  constexpr std::array kNames{"ok", "yes", "no"};
  return kNames.at(static_cast<std::size_t>(answer));
}

bool IsOffered(MessageAnswer answer, MessageButtons buttons) {
  return (answer == MessageAnswer::kOk) == (buttons == MessageButtons::kOk);
}

std::string BoxText(const MessageRequest& request) {
  return "box " + Quoted(request.title) + " " + IconName(request.icon) + " " + Quoted(request.text);
}

template <class Item>
Item Next(std::deque<Item>& queue, Item fallback = {}) {
  if (queue.empty()) return fallback;
  Item item = std::move(queue.front());
  queue.pop_front();
  return item;
}

}  // namespace

ScriptDriver::~ScriptDriver() {
  if (failed_) return;
  EXPECT_TRUE(steps_.empty()) << steps_.size() << " steps of the script were not reached";
  EXPECT_TRUE(busySteps_.empty()) << busySteps_.size() << " steps for a busy program were not reached";
  EXPECT_TRUE(boxAnswers_.empty()) << boxAnswers_.size() << " message boxes did not come";
  EXPECT_TRUE(menuChoices_.empty()) << menuChoices_.size() << " menus did not open";
  EXPECT_TRUE(lifeCycleAnswers_.empty() && objectAnswers_.empty() && picks_.empty() && logins_.empty())
      << "some host dialogs did not come";
}

ScriptDriver& ScriptDriver::Perform(Action action) {
  return Do([this, action = std::move(action)](UserActions& user) {
    const Refusal refusal = action(user);
    if (!refusal.empty()) Fail("refused: " + refusal);
  });
}

ScriptDriver& ScriptDriver::Click(const std::string& control) {
  return Perform([=](UserActions& user) { return user.Click(control); });
}

ScriptDriver& ScriptDriver::Check(const std::string& control, CheckWish wish) {
  return Perform([=](UserActions& user) { return user.Check(control, wish); });
}

ScriptDriver& ScriptDriver::ClickNode(const std::string& control, const NodeChoice& node,
                                      MouseButton button) {
  return Perform([=](UserActions& user) { return user.ClickNode(control, node, button); });
}

ScriptDriver& ScriptDriver::ClickNodeBox(const std::string& control, const NodeChoice& node) {
  return Perform([=](UserActions& user) { return user.CheckNode(control, node, CheckWish::kToggled); });
}

ScriptDriver& ScriptDriver::PressKey(const std::string& control, char32_t key) {
  return Perform([=](UserActions& user) { return user.PressKey(control, key); });
}

ScriptDriver& ScriptDriver::Type(const std::string& control, const std::string& text) {
  return Perform([=](UserActions& user) { return user.Type(control, text); });
}

ScriptDriver& ScriptDriver::Resize(const Rect& bounds) {
  return Perform([=](UserActions& user) { return user.SetBounds(bounds); });
}

ScriptDriver& ScriptDriver::CloseWindow() {
  return Perform([](UserActions& user) { return user.CloseWindow(); });
}

ScriptDriver& ScriptDriver::Refused(const Action& action, const std::string& reason) {
  return Do([=](UserActions& user) { EXPECT_EQ(action(user), reason); });
}

std::string ScriptDriver::TakeTranscript() {
  return std::exchange(transcript_, {});
}

void ScriptDriver::Fail(const std::string& what) {
  failed_ = true;
  ADD_FAILURE() << what << "\nseen so far:\n" << transcript_;
}

void ScriptDriver::Act(HeadlessToolkit& toolkit) {
  if (!failed_ && steps_.empty()) Fail("the script has no step for " + toolkit.TopWindow()->Name());
  if (failed_) return toolkit.CloseForShutdown();
  UserActions user(toolkit);
  Next(steps_)(user);
}

MessageAnswer ScriptDriver::Answer(const MessageRequest& request) {
  MessageAnswer answer = SafeAnswer(request);
  if (!failed_) {
    if (boxAnswers_.empty()) {
      Fail("no answer for " + BoxText(request));
    } else if (const auto queued = Next(boxAnswers_); IsOffered(queued, request.buttons)) {
      answer = queued;
    } else {
      Fail(BoxText(request) + " offers no " + AnswerName(queued));
    }
  }
  Record(BoxText(request) + Bracketed(AnswerName(answer)));
  return answer;
}

int ScriptDriver::ChooseMenuItem(const Window&, const PopupMenu& menu) {
  if (menuChoices_.empty() && !failed_) Fail("no choice for the menu " + menu.name);
  const std::string choice = Next(menuChoices_);
  Record("menu " + menu.name + Bracketed(choice));
  if (failed_ || choice.empty()) return -1;
  for (std::size_t item = 0; item < menu.items.size(); ++item) {
    if (menu.items[item].name == choice) return static_cast<int>(item);
  }
  Fail("menu " + menu.name + " has no item " + choice);
  return -1;
}

void ScriptDriver::WindowShown(const Window& window) {
  Record("show " + window.Name());
}

void ScriptDriver::WindowHidden(const Window& window) {
  Record("hide " + window.Name());
}

void ScriptDriver::EventsPumped(HeadlessToolkit& toolkit) {
  if (busySteps_.empty() || failed_) return;
  UserActions user(toolkit);
  Next(busySteps_)(user);
}

void ScriptDriver::ProcessStarted(const std::string& program, const std::vector<std::string>& arguments,
                                  std::int32_t processId) {
  std::string line = "start " + Quoted(program);
  for (const auto& argument : arguments)
    line += " " + Quoted(argument);
  Record(line + Bracketed(std::to_string(processId)));
}

int ScriptDriver::ConfirmLifeCycle(const embedded::LifeCycleRequest& request) {
  const int answer = Next(lifeCycleAnswers_, 1);
  std::string line = "life cycle " + request.operation + " " + Quoted(request.directory);
  for (const auto& object : request.objects)
    line += KeyText(object.key);
  Record(line + Bracketed(std::to_string(answer)));
  return answer;
}

int ScriptDriver::ShowObject(const embedded::ObjectDialogRequest& request) {
  const int answer = Next(objectAnswers_, 1);
  std::string line = std::string("object dialog ") + (request.modal ? "" : "modeless ") + "mode " +
                     std::to_string(request.displayMode) + " " + Quoted(request.title);
  for (const auto& key : request.objects)
    line += KeyText(key);
  Record(line + Bracketed(std::to_string(answer)));
  return answer;
}

std::vector<std::size_t> ScriptDriver::SelectObjects(const embedded::SelectionDialogRequest& request) {
  auto positions = Next(picks_);
  std::string line = "select " + Quoted(request.title);
  for (const auto& candidate : request.candidates)
    line += KeyText(candidate.key);
  std::string picked;
  for (const auto position : positions)
    picked += (picked.empty() ? "" : " ") + std::to_string(position);
  Record(line + Bracketed(picked));
  return positions;
}

embedded::LoginAnswer ScriptDriver::Login() {
  auto answer = Next(logins_);
  Record("login" + Bracketed(answer.loginName));
  return answer;
}

void ScriptDriver::ShowSystemMessage(const std::vector<std::string>& texts) {
  std::string line = "system message";
  for (const auto& text : texts)
    line += " " + Quoted(text);
  Record(line);
}

void ScriptDriver::RefreshObject(const ObjectKey& key, int mode) {
  Record("refresh" + KeyText(key) + " mode " + std::to_string(mode));
}

}  // namespace tessel::test
