// What the client tells about errors.
#pragma once

#include <QColor>
#include <QStringList>
#include <exception>

#include "common/outcome_words.h"
#include "qt/language.h"

class QWidget;

namespace tessel::client {

// A box with the text, or the error's description, as it is.
void Tell(const QString& text, qt::Language language, QWidget* parent);
void Tell(const std::exception& error, qt::Language language, QWidget* parent);

// One box for many: the head and as many of the lines as fit on a screen, and how many more there are.
// Nothing without lines.
void TellAll(const QString& head, const QStringList& lines, qt::Language language, QWidget* parent);

// Asks; true for yes.
[[nodiscard]] bool Confirm(const QString& text, qt::Language language, QWidget* parent);

// The language of what the apps say in common.
[[nodiscard]] inline Speech SpeechOf(qt::Language language) {
  return language == qt::Language::kGerman ? Speech::kGerman : Speech::kEnglish;
}

// What somebody has to look after stands out in it.
[[nodiscard]] inline QColor WarningColour() {
  return {0xb0, 0x20, 0x10};
}

}  // namespace tessel::client
