#include "headless/drive_protocol.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>

#include "headless/drive_actions.h"
#include "headless/drive_json.h"
#include "headless/drive_lines.h"
#include "headless/headless_toolkit.h"
#include "host/error.h"

namespace tessel {

namespace {

bool IsKnown(const std::string& verb) {
  return IsUserAction(verb) || verb == "call" || verb == "answer" || verb == "menu";
}

}  // namespace

// Reads commands and answers questions until the one comes that the program waits for.
class DriveProtocol::Conversation {
 public:
  // Takes a command when it is of a kind that is awaited; false otherwise. May throw CommandError.
  using Take = std::function<bool(const std::string& verb, const Json& command)>;

  Conversation(std::istream& input, std::ostream& output, std::function<bool()> endAsked)
      : lines_(input, output), endAsked_(std::move(endAsked)) {}

  void Begin(DrivenHooks& hooks, HeadlessToolkit& toolkit) {
    hooks_ = &hooks;
    toolkit_ = &toolkit;
  }
  void Write(const Json& event) { lines_.Write(event); }
  [[nodiscard]] int ErrorCount() const { return lines_.ErrorCount(); }

  // False when the input ended before a command was taken.
  bool Await(const Json& waiting, const Take& take);
  // The answer to a box or dialog that was written; `atEnd` when the input has ended.
  template <class Result>
  Result AwaitAnswer(const char* verb, const char* waitingFor, Result atEnd,
                     const std::function<Result(const Json&)>& read);
  bool TakeHookCall(const std::string& verb, const Json& command);
  bool TakeUserAction(const std::string& verb, const Json& command);
  void PerformHeldAction();
  void ReportProgress(const Window& window);

 private:
  struct HeldAction {
    Json command;
    int line;
  };

  bool TakeLine(const Take& take);
  [[nodiscard]] std::optional<Json> NextCommand();
  bool Hold(const std::string& verb, const Json& command);
  bool AnswerQuestion(const std::string& verb, const Json& command);
  [[nodiscard]] Json GlobalValue(const std::string& name) const;
  [[nodiscard]] Json AskedWindow(const Json& command) const;
  void CallHook(const HookCall& call);
  void DropHeldActions();

  DriveLines lines_;
  std::function<bool()> endAsked_;
  DrivenHooks* hooks_ = nullptr;
  HeadlessToolkit* toolkit_ = nullptr;
  bool ended_ = false;
  std::deque<HeldAction> held_;
  std::map<std::string, int> reportedProgress_;  // by window and control
};

bool DriveProtocol::Conversation::Await(const Json& waiting, const Take& take) {
  while (!ended_) {
    Write(waiting);
    if (TakeLine(take)) return true;
  }
  return false;
}

bool DriveProtocol::Conversation::TakeLine(const Take& take) {
  int line = 0;
  try {
    const auto command = NextCommand();
    line = lines_.LineNumber();
    if (!command) {
      ended_ = true;
      Write({{"event", "end-of-input"}});
      return false;
    }
    const std::string verb = TextMember(*command, "do");
    if (AnswerQuestion(verb, *command)) return false;
    if (take(verb, *command)) return true;
    throw CommandError(IsKnown(verb) ? "\"" + verb + "\" is not possible now"
                                     : "there is no command " + verb);
  } catch (const CommandError& error) {
    lines_.WriteError(line > 0 ? line : lines_.LineNumber(), error.what());
    return false;
  }
}

std::optional<Json> DriveProtocol::Conversation::NextCommand() {
  const auto asked = [this] { return endAsked_ && endAsked_(); };
  if (asked()) return std::nullopt;
  auto command = lines_.Read();
  return asked() ? std::nullopt : std::move(command);
}

template <class Result>
Result DriveProtocol::Conversation::AwaitAnswer(const char* verb, const char* waitingFor, Result atEnd,
                                                const std::function<Result(const Json&)>& read) {
  Result answer = std::move(atEnd);
  Await({{"event", "waiting"}, {"for", waitingFor}}, [&](const std::string& given, const Json& command) {
    if (given != verb) return false;
    answer = read(command);
    return true;
  });
  return answer;
}

bool DriveProtocol::Conversation::AnswerQuestion(const std::string& verb, const Json& command) {
  if (hooks_ == nullptr) return false;
  if (verb == "hooks") {
    Write({{"event", "hooks"}, {"hooks", hooks_->HookNames()}});
  } else if (verb == "global") {
    const std::string name = TextMember(command, "name");
    Write({{"event", "global"}, {"name", name}, {"value", GlobalValue(name)}});
  } else if (verb == "window") {
    Write(AskedWindow(command));
  } else if (verb == "windows") {
    Json names = Json::array();
    for (const auto& window : toolkit_->VisibleWindows())
      names.push_back(window->Name());
    Write({{"event", "windows"}, {"windows", std::move(names)}});
  } else {
    return false;
  }
  return true;
}

Json DriveProtocol::Conversation::GlobalValue(const std::string& name) const {
  try {
    return ValueJson(hooks_->GlobalValue(name));
  } catch (const RuntimeError& error) {
    throw CommandError(name + " cannot be read: " + error.what());
  }
}

Json DriveProtocol::Conversation::AskedWindow(const Json& command) const {
  const std::string name = TextMember(command, "window", "");
  const auto window = name.empty() ? toolkit_->TopWindow() : toolkit_->FindWindow(name);
  if (!window) throw CommandError(name.empty() ? "no window is open" : "there is no window " + name);
  return WindowJson(*window);
}

bool DriveProtocol::Conversation::TakeHookCall(const std::string& verb, const Json& command) {
  if (Hold(verb, command)) return true;
  if (IsUserAction(verb)) throw CommandError("no window is open");
  if (verb != "call") return false;
  HookCall call{TextMember(command, "hook"), TextMember(command, "operation", ""),
                RecordsMember(command, "first"), RecordsMember(command, "second"),
                RecordsMember(command, "third")};
  const auto hooks = hooks_->HookNames();
  if (std::ranges::find(hooks, call.hook) == hooks.end()) throw CommandError("there is no hook " + call.hook);
  CallHook(call);
  return true;
}

void DriveProtocol::Conversation::CallHook(const HookCall& call) {
  const int line = lines_.LineNumber();
  try {
    const int status = hooks_->Call(call);
    DropHeldActions();
    Write({{"event", "result"}, {"hook", call.hook}, {"result", status}});
  } catch (const RuntimeError& error) {
    lines_.WriteError(
        line, call.hook + " failed with error " + std::to_string(error.Number()) + ": " + error.what());
  } catch (const std::exception& error) {
    lines_.WriteError(line, call.hook + " failed: " + error.what());
  }
  DropHeldActions();
}

bool DriveProtocol::Conversation::TakeUserAction(const std::string& verb, const Json& command) {
  if (Hold(verb, command)) return true;
  if (!IsUserAction(verb)) return false;
  PerformUserAction(command, *toolkit_);
  return true;
}

bool DriveProtocol::Conversation::Hold(const std::string& verb, const Json& command) {
  if (!command.contains("when")) return false;
  if (TextMember(command, "when") != "busy") throw CommandError("\"when\" must be \"busy\"");
  if (!IsUserAction(verb)) throw CommandError("\"" + verb + "\" cannot wait until the program is busy");
  held_.push_back({command, lines_.LineNumber()});
  return true;
}

void DriveProtocol::Conversation::PerformHeldAction() {
  if (held_.empty()) return;
  const HeldAction action = std::move(held_.front());
  held_.pop_front();
  try {
    PerformUserAction(action.command, *toolkit_);
  } catch (const CommandError& error) {
    lines_.WriteError(action.line, error.what());
  }
}

void DriveProtocol::Conversation::DropHeldActions() {
  for (const auto& action : held_)
    lines_.WriteError(action.line, "the program was not busy any more");
  held_.clear();
}

void DriveProtocol::Conversation::ReportProgress(const Window& window) {
  for (const auto& control : window.Controls()) {
    const auto* bar = dynamic_cast<const ProgressBar*>(control.get());
    if (bar == nullptr || !bar->ShownOnWindow()) continue;
    int& reported = reportedProgress_.try_emplace(window.Name() + "." + bar->Id(), 0).first->second;
    if (reported == bar->Value()) continue;
    reported = bar->Value();
    Write({{"event", "progress"},
           {"window", window.Name()},
           {"control", bar->Id()},
           {"value", bar->Value()},
           {"maximum", bar->Maximum()}});
  }
}

DriveProtocol::DriveProtocol(std::istream& input, std::ostream& output, std::function<bool()> ended)
    : conversation_(std::make_unique<Conversation>(input, output, std::move(ended))) {}

DriveProtocol::~DriveProtocol() = default;

int DriveProtocol::Run(DrivenHooks& hooks, HeadlessToolkit& toolkit) {
  conversation_->Begin(hooks, toolkit);
  const auto take = [this](const std::string& verb, const Json& command) {
    return conversation_->TakeHookCall(verb, command);
  };
  while (conversation_->Await({{"event", "waiting"}, {"for", "call"}}, take)) {
  }
  return conversation_->ErrorCount();
}

void DriveProtocol::Act(HeadlessToolkit& toolkit) {
  const Json waiting{{"event", "waiting"}, {"for", "action"}, {"window", toolkit.TopWindow()->Name()}};
  const bool acted = conversation_->Await(waiting, [this](const std::string& verb, const Json& command) {
    return conversation_->TakeUserAction(verb, command);
  });
  if (!acted) toolkit.CloseForShutdown();
}

MessageAnswer DriveProtocol::Answer(const MessageRequest& request) {
  conversation_->Write(BoxJson(request));
  return conversation_->AwaitAnswer<MessageAnswer>(
      "answer", "box", SafeAnswer(request),
      [&](const Json& command) { return ReadBoxAnswer(command, request.buttons); });
}

int DriveProtocol::ChooseMenuItem(const Window& window, const PopupMenu& menu) {
  conversation_->Write(MenuJson(window, menu));
  return conversation_->AwaitAnswer<int>("menu", "menu", -1,
                                         [&](const Json& command) { return ReadMenuChoice(command, menu); });
}

void DriveProtocol::WindowShown(const Window& window) {
  conversation_->Write({{"event", "shown"}, {"window", window.Name()}, {"title", window.Title()}});
}

void DriveProtocol::WindowHidden(const Window& window) {
  conversation_->Write({{"event", "hidden"}, {"window", window.Name()}});
}

void DriveProtocol::WindowRedrawn(const Window& window) {
  conversation_->ReportProgress(window);
}

void DriveProtocol::EventsPumped(HeadlessToolkit&) {
  conversation_->PerformHeldAction();
}

void DriveProtocol::ProcessStarted(const std::string& program, const std::vector<std::string>& arguments,
                                   std::int32_t processId) {
  conversation_->Write(
      {{"event", "process"}, {"program", program}, {"arguments", arguments}, {"id", processId}});
}

int DriveProtocol::ConfirmLifeCycle(const embedded::LifeCycleRequest& request) {
  conversation_->Write(LifeCycleJson(request));
  return conversation_->AwaitAnswer<int>("answer", "dialog", 2, ReadLifeCycleAnswer);
}

// Nobody waits for the answer to a modeless dialog.
int DriveProtocol::ShowObject(const embedded::ObjectDialogRequest& request) {
  conversation_->Write(ObjectDialogJson(request));
  if (!request.modal) return 1;
  return conversation_->AwaitAnswer<int>("answer", "dialog", 2, ReadObjectAnswer);
}

std::vector<std::size_t> DriveProtocol::SelectObjects(const embedded::SelectionDialogRequest& request) {
  conversation_->Write(SelectionJson(request));
  return conversation_->AwaitAnswer<std::vector<std::size_t>>(
      "answer", "dialog", {}, [&](const Json& command) { return ReadPositions(command, request); });
}

embedded::LoginAnswer DriveProtocol::Login() {
  conversation_->Write({{"event", "dialog"}, {"dialog", "login"}});
  return conversation_->AwaitAnswer<embedded::LoginAnswer>("answer", "dialog", {}, ReadLoginAnswer);
}

void DriveProtocol::ShowSystemMessage(const std::vector<std::string>& texts) {
  conversation_->Write({{"event", "system-message"}, {"texts", texts}});
}

void DriveProtocol::RefreshObject(const ObjectKey& key, int mode) {
  conversation_->Write({{"event", "refresh"}, {"object", ObjectKeyText(key, ':')}, {"mode", mode}});
}

}  // namespace tessel
