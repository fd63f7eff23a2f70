// The client from start to end: opens a database, logs in, shows the window.
#pragma once

#include <QSettings>
#include <QTranslator>
#include <memory>

#include "common/hosted_program.h"
#include "main_window.h"
#include "platform/native/native_platform.h"
#include "qt/host_dialogs.h"
#include "qt/qt_pauser.h"
#include "qt/qt_toolkit.h"

namespace tessel::client {

struct StartOptions {
  QString database;  // empty: ask
  QString user;      // empty: ask
  QString language;  // empty: the user's own
};

class Desktop {
 public:
  Desktop();
  ~Desktop();

  // Opens a database in a window. False, with a window that is open already left as it is, when the user
  // wants no database or cannot log in, or when the database cannot be read.
  [[nodiscard]] bool Open(const StartOptions& options);
  [[nodiscard]] MainWindow& Window() { return *opened_->window; }

 private:
  // A database with its user and its windows; they go in the opposite order.
  struct Opened {
    qt::QtToolkit toolkit;
    qt::QtHostDialogs dialogs{toolkit};
    std::unique_ptr<HostedProgram> hosted;
    std::unique_ptr<MainWindow> window;
  };

  // Logs in with a user that is given or asked for. False after a cancel, or when the database cannot be
  // opened, which has been told.
  [[nodiscard]] bool LogIn(Opened& next, const StartOptions& options);
  void ShowWindow(Opened& next, const QString& database);
  void Speak(qt::Language language);
  [[nodiscard]] QWidget* Parent() const;
  void Reopen();

  NativePlatform system_;
  qt::QtPauser pauser_;
  Platform platform_;
  qt::Language language_;
  QTranslator translator_;  // of Qt's own dialogs
  QSettings settings_;
  QString sessionLanguage_;  // as asked for at the start
  std::unique_ptr<Opened> opened_;
};

}  // namespace tessel::client
