#include "platform/posix/posix_system_information.h"

#include <algorithm>
#include <string_view>

#include "platform/paths.h"

namespace tessel::posix {
namespace {

struct RegionName {
  std::string_view language;
  std::string_view region;
  std::string_view languageName;
  std::string_view regionName;
};

// The first row of a language is its region of origin, which a locale without region gets.
constexpr RegionName kRegions[] = {
    {"en", "US", "English", "United States"}, {"en", "GB", "English", "United Kingdom"},
    {"en", "CA", "English", "Canada"},        {"en", "AU", "English", "Australia"},
    {"en", "IE", "English", "Ireland"},       {"de", "DE", "Deutsch", "Deutschland"},
    {"de", "AT", "Deutsch", "Österreich"},    {"de", "CH", "Deutsch", "Schweiz"},
    {"de", "LU", "Deutsch", "Luxemburg"},     {"fr", "FR", "Français", "France"},
    {"fr", "BE", "Français", "Belgique"},     {"fr", "CH", "Français", "Suisse"},
    {"fr", "CA", "Français", "Canada"},       {"it", "IT", "Italiano", "Italia"},
    {"it", "CH", "Italiano", "Svizzera"},     {"es", "ES", "Español", "España"},
    {"es", "MX", "Español", "México"},        {"pt", "PT", "Português", "Portugal"},
    {"pt", "BR", "Português", "Brasil"},      {"nl", "NL", "Nederlands", "Nederland"},
    {"nl", "BE", "Nederlands", "België"},     {"sv", "SE", "Svenska", "Sverige"},
    {"da", "DK", "Dansk", "Danmark"},         {"nb", "NO", "Norsk bokmål", "Norge"},
    {"fi", "FI", "Suomi", "Suomi"},           {"pl", "PL", "Polski", "Polska"},
    {"cs", "CZ", "Čeština", "Česko"},         {"sk", "SK", "Slovenčina", "Slovensko"},
    {"hu", "HU", "Magyar", "Magyarország"},   {"ro", "RO", "Română", "România"},
    {"tr", "TR", "Türkçe", "Türkiye"},        {"ru", "RU", "Русский", "Россия"},
    {"ja", "JP", "日本語", "日本"},           {"zh", "CN", "中文", "中国"},
    {"ko", "KR", "한국어", "대한민국"},
};

}  // namespace

std::string LanguageNameOfLocale(const std::string& locale) {
  const std::string name = locale.substr(0, locale.find_first_of(".@"));
  const auto separator = std::min(name.find('_'), name.size());
  const std::string language = name.substr(0, separator);
  const std::string region = separator == name.size() ? std::string() : name.substr(separator + 1);
  if (language.empty() || language == "C" || language == "POSIX") return LanguageNameOfLocale("en_US");

  const RegionName* found = nullptr;
  for (const RegionName& row : kRegions) {
    if (row.language != language) continue;
    if (found == nullptr || row.region == region) found = &row;
  }
  if (found == nullptr) return language + " (" + (region.empty() ? language : region) + ")";
  const bool isKnownRegion = region.empty() || found->region == region;
  return std::string(found->languageName) + " (" + (isKnownRegion ? std::string(found->regionName) : region) +
         ")";
}

std::string PosixSystemInformation::DisplayedIconFile(const std::string& path) const {
  return icons_.IconFile(paths::FileName(path));
}

}  // namespace tessel::posix
