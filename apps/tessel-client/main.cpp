#include <QApplication>
#include <QCommandLineParser>
#include <exception>
#include <memory>
#include <set>
#include <string_view>

#include "desktop.h"
#include "tell.h"

namespace {

// Tells an error that reached the event loop, for example a database that can no longer be read, instead of
// ending the program with it.
class Application : public QApplication {
 public:
  using QApplication::QApplication;
  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
      tessel::client::Tell(error, tessel::qt::Language::kEnglish, activeWindow());
    }
    return true;
  }
};

// Help and version alone are shown where there is no display, too.
bool OnlyAsks(int argc, char** argv) {
  const std::set<std::string_view> questions{"-h", "--help", "--help-all", "-v", "--version"};
  return argc == 2 && questions.contains(argv[1]);
}

}  // namespace

int main(int argc, char** argv) {
  const std::unique_ptr<QCoreApplication> application(OnlyAsks(argc, argv) ? new QCoreApplication(argc, argv)
                                                                           : new Application(argc, argv));
  QApplication::setOrganizationName("tessel");
  QApplication::setApplicationName("tessel-client");
  QApplication::setApplicationVersion(TESSEL_VERSION);

  QCommandLineParser parser;
  parser.setApplicationDescription("Desktop client of the product data management stand-in.");
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument(
      "DB", "Database to open, or its address on a server; without it the client asks.", "[DB]");
  parser.addOption({"user", "Login name.", "LOGIN"});
  parser.addOption({"language", "Language of the session, GER or ENG.", "LANGUAGE"});
  parser.process(*application);

  const QStringList arguments = parser.positionalArguments();
  tessel::client::Desktop desktop;
  const bool opened = desktop.Open(
      {arguments.isEmpty() ? QString() : arguments.front(), parser.value("user"), parser.value("language")});
  return opened ? QApplication::exec() : 1;
}
