#include "desktop.h"

#include <QApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>

#include "database_choice.h"
#include "embedded/store/database_place.h"
#include "qt/text.h"
#include "tell.h"

namespace tessel::client {
namespace {

constexpr const char* kLastDatabase = "last/database";
constexpr const char* kLastUser = "last/user";
constexpr const char* kSampleDatabase = "last/sample";  // the newest that this client has created
constexpr const char* kSampleUser = "anna";

// A path from everywhere, or the address of a database on a server as it is.
QString PlaceOf(const QString& database) {
  return embedded::IsOnServer(qt::FromQt(database)) ? database : QFileInfo(database).absoluteFilePath();
}

// The same for the next start, without the password of an address, which the server's own files may keep.
QString PlaceToKeep(const QString& database) {
  return qt::ToQt(embedded::ShownPlace(qt::FromQt(PlaceOf(database))));
}

// Until somebody has logged in.
qt::Language SystemLanguage() {
  return QLocale::system().language() == QLocale::German ? qt::Language::kGerman : qt::Language::kEnglish;
}

}  // namespace

Desktop::Desktop() : platform_(WithServices(system_.Services(), pauser_, system_.Services().processes)) {
  Speak(SystemLanguage());
}

Desktop::~Desktop() {
  QCoreApplication::removeTranslator(&translator_);
}

// Qt's own texts, in file dialogs and the names of keys, are English where its translations are not
// installed.
void Desktop::Speak(qt::Language language) {
  language_ = language;
  QCoreApplication::removeTranslator(&translator_);
  const QLocale locale(language == qt::Language::kGerman ? QLocale::German : QLocale::English);
  if (translator_.load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&translator_);
  }
}

QWidget* Desktop::Parent() const {
  return opened_ ? opened_->window.get() : nullptr;
}

bool Desktop::Open(const StartOptions& options) {
  StartOptions chosen = options;
  if (chosen.database.isEmpty()) {
    const DatabaseChoice choice =
        ChooseDatabase(settings_.value(kLastDatabase).toString(), platform_.files, language_);
    chosen.database = choice.path;
    if (choice.created) settings_.setValue(kSampleDatabase, PlaceOf(chosen.database));
  }
  if (chosen.database.isEmpty()) return false;
  auto next = std::make_unique<Opened>();
  const qt::Language before = language_;
  try {
    if (!LogIn(*next, chosen)) return false;
    Speak(qt::LanguageOf(next->hosted->Session()->Language()));
    ShowWindow(*next, chosen.database);
  } catch (const std::exception& error) {
    Speak(before);
    Tell(error, language_, Parent());
    return false;
  }
  sessionLanguage_ = options.language;
  settings_.setValue(kLastDatabase, PlaceToKeep(chosen.database));
  settings_.setValue(kLastUser, qt::ToQt(next->hosted->Session()->CurrentUser()->LoginName()));
  next->window->show();
  opened_ = std::move(next);
  return true;
}

bool Desktop::LogIn(Opened& next, const StartOptions& options) {
  HostedLogin login{qt::FromQt(PlaceOf(options.database)), qt::FromQt(options.user), "",
                    qt::FromQt(options.language)};
  next.dialogs.SetLanguage(language_);
  const bool sample = qt::ToQt(login.database) == settings_.value(kSampleDatabase).toString();
  if (sample) next.dialogs.SetLoginHint(texts::kExampleUsers.In(language_));
  const bool first = sample && settings_.value(kLastDatabase) != settings_.value(kSampleDatabase);
  const QString offered = first ? kSampleUser : settings_.value(kLastUser).toString();
  next.dialogs.SetUser(login.user.empty() ? offered : options.user);
  // The first refusal only says that somebody has to be asked.
  for (bool asked = false;; asked = true) {
    try {
      next.hosted = std::make_unique<HostedProgram>(login, platform_, next.toolkit, next.dialogs);
      return true;
    } catch (const embedded::LoginRefused&) {
      if (asked) Tell(texts::kLoginRefused.In(language_), language_, Parent());
    }
    const embedded::LoginAnswer answer = next.dialogs.Login();
    if (!answer.accepted) return false;
    login.user = answer.loginName;
    login.password = answer.password;
    next.dialogs.SetUser(qt::ToQt(login.user));
  }
}

void Desktop::ShowWindow(Opened& next, const QString& database) {
  next.toolkit.SetLanguage(language_);
  next.dialogs.SetLanguage(language_);
  if (opened_) opened_->window->SavePlace();
  next.window = std::make_unique<MainWindow>(
      *next.hosted, language_, settings_,
      QFileInfo(PlaceToKeep(database).section(QLatin1Char('?'), 0, 0)).fileName(), [this] { Reopen(); });
  MainWindow& window = *next.window;
  next.hosted->LoadedProgram().wizard.tell = [this, &next](const CopyFailure& failure) {
    next.toolkit.ShowMessage({WordsOf(failure, SpeechOf(language_)), "Kestrix", MessageIcon::kExclamation});
  };
  next.dialogs.OnRefresh = [&window](const ObjectKey&) { window.RefreshSoon(); };
  next.dialogs.IconOf = [&window](ClassId classId) { return window.Contents().IconOf(classId); };
}

// Outside the menu of the window that is going to be replaced.
void Desktop::Reopen() {
  QTimer::singleShot(0, qApp, [this] {
    StartOptions options;
    options.language = sessionLanguage_;
    options.database = AskForDatabase(settings_.value(kLastDatabase).toString(), language_);
    if (options.database.isEmpty() || !Open(options)) opened_->window->Resume();
  });
}

}  // namespace tessel::client
