// What the client tells about errors.
#pragma once

#include <exception>

#include "qt/language.h"

class QWidget;

namespace tessel::client {

// A box with the text, or the error's description, as it is.
void Tell(const QString& text, qt::Language language, QWidget* parent);
void Tell(const std::exception& error, qt::Language language, QWidget* parent);

}  // namespace tessel::client
