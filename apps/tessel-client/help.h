// Help: the keys of the window, the documentation, and what program this is.
#pragma once

#include <QList>
#include <QUrl>
#include <functional>

#include "qt/language.h"

class QAction;
class QWidget;

namespace tessel::client {

// Lists the actions with their keys, and offers the documentation where it is installed.
void ShowHelp(const QList<QAction*>& actions, const std::function<bool(const QUrl&)>& openUrl,
              qt::Language language, QWidget* parent);

// The program's name and version, and the database that is open.
void ShowAbout(const QString& database, qt::Language language, QWidget* parent);

}  // namespace tessel::client
