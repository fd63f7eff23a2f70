// A person who looks at the program and at the client, answers every box with OK and every dialog as told.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "embedded/dialogs/host_dialogs.h"
#include "toolkit/toolkit.h"

namespace tessel::test {

class Onlooker : public Toolkit, public embedded::HostDialogs {
 public:
  void ShowModal(const std::shared_ptr<Window>&) override {}
  bool CanShowMore() const override { return true; }
  void Hide(Window&) override {}
  bool Unload(Window&, CloseReason) override { return true; }
  void BringToTop(Window&) override { ++broughtToTop; }
  void OpenPopupMenu(Window&, const PopupMenu&) override {}
  MessageAnswer ShowMessage(const MessageRequest& request) override {
    constexpr const char* kIcons[] = {"none", "information", "exclamation", "critical"};
    seen.push_back(kIcons[static_cast<int>(request.icon)] + ("|" + request.title + "|" + request.text));
    return MessageAnswer::kOk;
  }
  void PumpEvents() override {}
  void Redraw(Window&) override {}
  void Pause(std::chrono::milliseconds) override {}

  int ConfirmLifeCycle(const embedded::LifeCycleRequest& request) override {
    lifeCycle = request;
    return lifeCycleAnswer;
  }
  int ShowObject(const embedded::ObjectDialogRequest& request) override {
    shownAttributes = request.attributes;
    seen.push_back("object dialog mode " + std::to_string(request.displayMode) + " \"" + request.title +
                   "\" page " + std::to_string(request.page) + (request.modal ? " modal" : " modeless"));
    for (const ObjectKey& key : request.objects)
      seen.back() += " " + ObjectKeyText(key, ':');
    return 1;
  }
  std::vector<std::size_t> SelectObjects(const embedded::SelectionDialogRequest&) override { return picks; }
  embedded::LoginAnswer Login() override { return login; }
  void ShowSystemMessage(const std::vector<std::string>& texts) override {
    seen.push_back("system message");
    for (const std::string& text : texts)
      seen.back() += " " + text;
  }
  void RefreshObject(const ObjectKey& key, int mode) override {
    seen.push_back("refresh " + ObjectKeyText(key, ':') + " mode " + std::to_string(mode));
  }

  // One line each, and forgets them.
  [[nodiscard]] std::string Take() {
    std::string text;
    for (const std::string& line : std::exchange(seen, {}))
      text += line + "\n";
    return text;
  }

  // What he sees:
  //   information|title|text                                              a message box, its icon first
  //   object dialog mode 1 "title" page 1 modal 900:42
  //   system message text text
  //   refresh 1201:1 mode 1
  std::vector<std::string> seen;
  int broughtToTop = 0;
  embedded::LifeCycleRequest lifeCycle;                              // the last one
  std::vector<std::pair<std::string, std::string>> shownAttributes;  // of the last object dialog

  // What he answers.
  int lifeCycleAnswer = 1;
  std::vector<std::size_t> picks;
  embedded::LoginAnswer login;
};

// Comes before a hosted machine among the bases of a world that an onlooker watches.
struct Watched {
  Onlooker user;
};

}  // namespace tessel::test
