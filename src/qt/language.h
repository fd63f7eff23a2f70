// Texts of the desktop itself; the pages' texts come from the message catalogue.
#pragma once

#include <QString>
#include <string>

namespace tessel::qt {

enum class Language { kEnglish, kGerman };

// "GER" is German; every other language is served in English.
[[nodiscard]] inline Language LanguageOf(const std::string& sessionLanguage) {
  return sessionLanguage == "GER" ? Language::kGerman : Language::kEnglish;
}

// A text in both languages.
struct BothTexts {
  const char* english;
  const char* german;
  [[nodiscard]] QString In(Language language) const {
    return QString::fromUtf8(language == Language::kGerman ? german : english);
  }
};

}  // namespace tessel::qt
