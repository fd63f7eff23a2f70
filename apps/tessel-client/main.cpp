#include <QApplication>
#include <QCommandLineParser>

#include "desktop.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setOrganizationName("tessel");
  QApplication::setApplicationName("tessel-client");
  QApplication::setApplicationVersion(TESSEL_VERSION);

  QCommandLineParser parser;
  parser.setApplicationDescription("Desktop client of the product data management stand-in.");
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument("DB", "Database to open; without it the client asks.", "[DB]");
  parser.addOption({"user", "Login name.", "LOGIN"});
  parser.addOption({"language", "Language of the session, GER or ENG.", "LANGUAGE"});
  parser.process(application);

  const QStringList arguments = parser.positionalArguments();
  tessel::client::Desktop desktop;
  const bool opened = desktop.Open(
      {arguments.isEmpty() ? QString() : arguments.front(), parser.value("user"), parser.value("language")});
  return opened ? QApplication::exec() : 1;
}
