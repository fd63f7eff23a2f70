// Language and icons of a POSIX desktop.
#pragma once

#include "platform/operating_system.h"
#include "platform/posix/icon_theme.h"

namespace tessel::posix {

// The name of a locale ("de_DE.UTF-8") in its own language: "Deutsch (Deutschland)". A region that is not
// known by name stands as its code; an empty, "C" or "POSIX" locale is English of the United States.
[[nodiscard]] std::string LanguageNameOfLocale(const std::string& locale);

class PosixSystemInformation : public SystemInformation {
 public:
  PosixSystemInformation(std::string locale, std::vector<std::string> dataFolders)
      : locale_(std::move(locale)), icons_(std::move(dataFolders)) {}

  [[nodiscard]] std::string LanguageName() const override { return LanguageNameOfLocale(locale_); }
  [[nodiscard]] std::string DisplayedIconFile(const std::string& path) const override;

 private:
  std::string locale_;
  IconTheme icons_;
};

}  // namespace tessel::posix
