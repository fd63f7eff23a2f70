// Watches a toolkit while a walk is made in its windows, and writes down what is seen in the words of the
// scripted driver.
#pragma once

#include <functional>
#include <string>

#include "support/script_driver.h"

namespace tessel::test {

struct Watcher {
  ScriptDriver scribe;  // finds the words, does nothing itself
  // Called when the program lets events run in the middle of its work.
  std::function<void()> OnBusy;
  const PopupMenu* openMenu = nullptr;  // the one that is open
  bool acting = false;
  bool busy = false;

  // The program waits for the user anew, inside of what the last action set off.
  void Waiting() { acting = false; }
};

// A toolkit that reports what it shows.
template <class Drawn>
class Watched : public Drawn {
 public:
  explicit Watched(Watcher& watcher) : watcher_(watcher) {}

  void ShowModal(const std::shared_ptr<Window>& window) override {
    if (!window->Visible() && !window->Unloaded()) watcher_.scribe.WindowShown(*window);
    watcher_.Waiting();
    Drawn::ShowModal(window);
  }
  void Hide(Window& window) override {
    if (window.Visible()) watcher_.scribe.WindowHidden(window);
    Drawn::Hide(window);
  }
  void OpenPopupMenu(Window& window, const PopupMenu& menu) override {
    PopupMenu watched = menu;
    bool chosen = false;
    for (MenuItem& item : watched.items) {
      item.OnClick = [this, &window, &menu, &chosen, item] {
        chosen = true;
        watcher_.scribe.ChooseItem(item.name);
        static_cast<void>(watcher_.scribe.ChooseMenuItem(window, menu));
        if (item.OnClick) item.OnClick();
      };
    }
    watcher_.Waiting();
    watcher_.openMenu = &menu;
    Drawn::OpenPopupMenu(window, watched);
    watcher_.openMenu = nullptr;
    if (chosen) return;
    watcher_.scribe.ChooseItem("");
    static_cast<void>(watcher_.scribe.ChooseMenuItem(window, menu));
  }
  MessageAnswer ShowMessage(const MessageRequest& request) override {
    watcher_.Waiting();
    const MessageAnswer answer = Drawn::ShowMessage(request);
    watcher_.scribe.AnswerBox(answer);
    return watcher_.scribe.Answer(request);
  }
  void PumpEvents() override {
    watcher_.busy = true;
    if (watcher_.OnBusy) watcher_.OnBusy();
    Drawn::PumpEvents();
    watcher_.busy = false;
  }

 private:
  Watcher& watcher_;
};

}  // namespace tessel::test
