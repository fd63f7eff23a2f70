// What the client asks when it was started without a database.
#pragma once

#include <QString>

#include "platform/file_system.h"
#include "qt/language.h"

namespace tessel::client {

// Lets the user open a database or create the sample company. Empty when the user wants none.
[[nodiscard]] QString ChooseDatabase(const QString& last, FileSystem& files, qt::Language language);

// A database of the user's choice; empty after cancel.
[[nodiscard]] QString AskForDatabase(const QString& last, qt::Language language);

}  // namespace tessel::client
