// The client from start to end: opens a database, logs in, shows the window.
#pragma once

#include <QSettings>
#include <exception>
#include <memory>
#include <optional>

#include "common/hosted_program.h"
#include "main_window.h"
#include "platform/posix/posix_platform.h"
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

  // Opens a database in a window. False, with a window that is open already left as it is, when the user
  // wants no database or cannot log in, or when the database cannot be read.
  [[nodiscard]] bool Open(const StartOptions& options);
  [[nodiscard]] MainWindow& Window() { return *window_; }

 private:
  // Opens the database with a user that is given or asked for. Nothing after a cancel.
  [[nodiscard]] std::unique_ptr<HostedProgram> LogIn(const StartOptions& options);
  [[nodiscard]] std::unique_ptr<HostedProgram> TryLogIn(const HostedLogin& login);
  // False, and all as before, when the database cannot be listed.
  [[nodiscard]] bool ShowWindow(std::unique_ptr<HostedProgram> hosted, const QString& database);
  void Tell(const std::exception& error) const;
  void Reopen();

  PosixPlatform system_;
  qt::QtPauser pauser_;
  Platform platform_;
  qt::Language language_;
  qt::QtToolkit toolkit_;
  qt::QtHostDialogs dialogs_;
  QSettings settings_;
  std::unique_ptr<HostedProgram> hosted_;
  std::unique_ptr<MainWindow> window_;
};

}  // namespace tessel::client
