// A person in front of Qt windows: clicks and types on the real widgets, answers boxes, menus and dialogs,
// and writes down what is seen in the words of the scripted driver.
#pragma once

#include <QObject>
#include <functional>
#include <string>

#include "embedded/dialogs/host_dialogs.h"
#include "qt/host_dialogs.h"
#include "qt/qt_toolkit.h"
#include "walks/walk.h"
#include "walks/watcher.h"

class QDialog;
class QMenu;

namespace tessel::test {

class Person;

using WatchedToolkit = Watched<qt::QtToolkit>;

class WatchedDialogs : public qt::QtHostDialogs {
 public:
  WatchedDialogs(const qt::QtToolkit& toolkit, Person& person) : QtHostDialogs(toolkit), person_(person) {}
  int ConfirmLifeCycle(const embedded::LifeCycleRequest& request) override;
  int ShowObject(const embedded::ObjectDialogRequest& request) override;
  void RefreshObject(const ObjectKey& key, int mode) override;

 private:
  Person& person_;
};

class Person : public Watcher {
 public:
  explicit Person(Walk walk) : walk_(std::move(walk)) {}
  ~Person();

  // From here on windows are acted on as soon as they wait for the user.
  void SitDown(qt::QtToolkit& toolkit);
  void GetUp() { toolkit_ = nullptr; }

  // Looks at a window or dialog that waits, before anything is done to it.
  std::function<void(QWidget& shown)> OnLook;

  [[nodiscard]] std::string TakeTranscript() { return std::exchange(seen_, {}) + scribe.TakeTranscript(); }

 private:
  friend class WatchedDialogs;

  void Tick();
  void NextTick();
  void ActOnPage(const std::shared_ptr<Window>& window);
  void ActOnDialog(QDialog& dialog);
  void ActOnMenu(QMenu& menu);
  void Perform(const Step& step, Window& window);
  void GiveUp(const std::string& reason, QWidget* shown);
  void PressEnd(QDialog& dialog, int answer);

  Walk walk_;
  qt::QtToolkit* toolkit_ = nullptr;
  QObject context_;
  std::string seen_;
  bool gaveUp_ = false;
};

}  // namespace tessel::test
