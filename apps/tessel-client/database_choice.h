// What the client asks when it was started without a database.
#pragma once

#include <QString>

#include "platform/file_system.h"
#include "qt/language.h"

namespace tessel::client {

struct DatabaseChoice {
  QString path;          // empty when the user wants none
  bool created = false;  // it is a new database of the sample company
};

// Lets the user open a database or create the sample company.
[[nodiscard]] DatabaseChoice ChooseDatabase(const QString& last, FileSystem& files, qt::Language language);

// A database of the user's choice; empty after cancel.
[[nodiscard]] QString AskForDatabase(const QString& last, qt::Language language);

}  // namespace tessel::client
