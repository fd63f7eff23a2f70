#include "desktop.h"

#include <QApplication>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QTimer>

#include "database_choice.h"
#include "qt/text.h"

namespace tessel::client {
namespace {

constexpr const char* kLastDatabase = "last/database";
constexpr const char* kLastUser = "last/user";

// Until somebody has logged in.
qt::Language SystemLanguage() {
  return QLocale::system().language() == QLocale::German ? qt::Language::kGerman : qt::Language::kEnglish;
}

}  // namespace

Desktop::Desktop()
    : platform_(WithServices(system_.Services(), pauser_, system_.Services().processes)),
      language_(SystemLanguage()),
      toolkit_(language_),
      dialogs_(toolkit_) {
  dialogs_.SetLanguage(language_);
}

bool Desktop::Open(const StartOptions& options) {
  StartOptions chosen = options;
  if (chosen.database.isEmpty()) {
    chosen.database = ChooseDatabase(settings_.value(kLastDatabase).toString(), platform_.files, language_);
  }
  if (chosen.database.isEmpty()) return false;
  std::unique_ptr<HostedProgram> hosted = LogIn(chosen);
  if (!hosted || !ShowWindow(std::move(hosted), chosen.database)) return false;
  settings_.setValue(kLastDatabase, QFileInfo(chosen.database).absoluteFilePath());
  settings_.setValue(kLastUser, qt::ToQt(hosted_->Session()->CurrentUser()->LoginName()));
  return true;
}

void Desktop::Tell(const std::exception& error) const {
  QMessageBox::critical(window_.get(), texts::kError.In(language_), qt::ToQt(error.what()).toHtmlEscaped());
}

std::unique_ptr<HostedProgram> Desktop::TryLogIn(const HostedLogin& login) {
  try {
    return std::make_unique<HostedProgram>(login, platform_, toolkit_, dialogs_);
  } catch (const std::exception& error) {
    Tell(error);
    return nullptr;
  }
}

std::unique_ptr<HostedProgram> Desktop::LogIn(const StartOptions& options) {
  HostedLogin login{qt::FromQt(QFileInfo(options.database).absoluteFilePath()), qt::FromQt(options.user), "",
                    qt::FromQt(options.language)};
  dialogs_.SetUser(settings_.value(kLastUser).toString());
  if (!login.user.empty()) {
    if (auto hosted = TryLogIn(login)) return hosted;
    dialogs_.SetUser(options.user);
  }
  if (!QFileInfo::exists(options.database)) return login.user.empty() ? TryLogIn(login) : nullptr;
  while (true) {
    const embedded::LoginAnswer answer = dialogs_.Login();
    if (!answer.accepted) return nullptr;
    login.user = answer.loginName;
    login.password = answer.password;
    if (auto hosted = TryLogIn(login)) return hosted;
    dialogs_.SetUser(qt::ToQt(login.user));
  }
}

bool Desktop::ShowWindow(std::unique_ptr<HostedProgram> hosted, const QString& database) {
  const qt::Language language = qt::LanguageOf(hosted->Session()->Language());
  if (window_) window_->SavePlace();
  std::unique_ptr<MainWindow> window;
  try {
    window = std::make_unique<MainWindow>(*hosted, language, settings_, QFileInfo(database).fileName(),
                                          [this] { Reopen(); });
  } catch (const std::exception& error) {
    Tell(error);
    return false;
  }
  language_ = language;
  toolkit_.SetLanguage(language_);
  dialogs_.SetLanguage(language_);
  dialogs_.OnRefresh = [this](const ObjectKey&) { window_->RefreshSoon(); };
  dialogs_.IconOf = [this](ClassId classId) { return window_->Contents().IconOf(classId); };
  window->show();
  // The old window goes before the program that it shows.
  window_ = std::move(window);
  hosted_ = std::move(hosted);
  return true;
}

// Outside the menu of the window that is going to be replaced.
void Desktop::Reopen() {
  QTimer::singleShot(0, qApp, [this] {
    StartOptions options;
    options.database = AskForDatabase(settings_.value(kLastDatabase).toString(), language_);
    if (!options.database.isEmpty()) static_cast<void>(Open(options));
  });
}

}  // namespace tessel::client
