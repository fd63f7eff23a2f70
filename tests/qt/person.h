// A person in front of Qt windows: clicks and types on the real widgets, answers boxes, menus and dialogs,
// and writes down what is seen in the words of the scripted driver.
#pragma once

#include <QObject>
#include <functional>
#include <string>

#include "embedded/dialogs/host_dialogs.h"
#include "qt/host_dialogs.h"
#include "qt/qt_toolkit.h"
#include "qt/walk.h"
#include "support/script_driver.h"

class QDialog;
class QMenu;

namespace tessel::test {

class Person;

// Reports what it shows to the person.
class WatchedToolkit : public qt::QtToolkit {
 public:
  explicit WatchedToolkit(Person& person) : person_(person) {}
  void ShowModal(const std::shared_ptr<Window>& window) override;
  void Hide(Window& window) override;
  void OpenPopupMenu(Window& window, const PopupMenu& menu) override;
  MessageAnswer ShowMessage(const MessageRequest& request) override;
  void PumpEvents() override;

 private:
  Person& person_;
};

class WatchedDialogs : public qt::QtHostDialogs {
 public:
  WatchedDialogs(const qt::QtToolkit& toolkit, Person& person) : QtHostDialogs(toolkit), person_(person) {}
  int ConfirmLifeCycle(const embedded::LifeCycleRequest& request) override;
  int ShowObject(const embedded::ObjectDialogRequest& request) override;
  void RefreshObject(const ObjectKey& key, int mode) override;

 private:
  Person& person_;
};

class Person {
 public:
  explicit Person(Walk walk) : walk_(std::move(walk)) {}
  ~Person();

  // From here on windows are acted on as soon as they wait for the user.
  void SitDown(qt::QtToolkit& toolkit);
  void GetUp() { toolkit_ = nullptr; }

  // Looks at a window or dialog that waits, before anything is done to it.
  std::function<void(QWidget& shown)> OnLook;
  // Called when the program lets events run in the middle of its work.
  std::function<void()> OnBusy;

  [[nodiscard]] std::string TakeTranscript() { return std::exchange(seen_, {}) + scribe_.TakeTranscript(); }
  [[nodiscard]] ScriptDriver& Scribe() { return scribe_; }

 private:
  friend class WatchedToolkit;
  friend class WatchedDialogs;

  void Tick();
  void NextTick();
  void ActOnPage(const std::shared_ptr<Window>& window);
  void ActOnDialog(QDialog& dialog);
  void ActOnMenu(QMenu& menu);
  void Perform(const Step& step, Window& window);
  void GiveUp(const std::string& reason, QWidget* shown);
  void PressEnd(QDialog& dialog, int answer);
  // The program waits for the user anew, inside of what the last action set off.
  void Waiting() { acting_ = false; }

  Walk walk_;
  ScriptDriver scribe_;  // finds the words, does nothing itself
  qt::QtToolkit* toolkit_ = nullptr;
  QObject context_;
  std::string seen_;
  bool acting_ = false;
  bool busy_ = false;
  bool gaveUp_ = false;
};

}  // namespace tessel::test
