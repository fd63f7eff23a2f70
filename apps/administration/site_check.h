// A whole site looked at as the hooks would: what a person will meet, and how to mend it.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "host/session.h"
#include "platform/file_system.h"
#include "platform/operating_system.h"

namespace tessel::administration {

struct Finding {
  enum class Weight {
    kError,   // a hook stops, or does something else than what was meant
    kWarning  // something is missing that a person will see
  };
  Weight weight = Weight::kError;
  std::string where;  // "settings INI-001", "user anna", "database"
  std::string what;   // what a person meets, and why
  std::string mend;   // what to do
};

struct Site {
  PcSessionPtr session;
  Platform& platform;
  // Language of each user by login name; a user without one is not in it.
  std::map<std::string, std::string> languages;
  std::string defaultLanguage;
  // Attributes that a class allows only once together, by class; empty sets when the host tells none.
  std::map<ClassId, std::vector<std::vector<std::string>>> uniqueSets;
};

// In the order database, settings, users, partners. Looks at folders by making a file in them that goes again
// at once. Errors as the host raises them.
[[nodiscard]] std::vector<Finding> CheckSite(const Site& site);

// The parts of it.
class Findings {
 public:
  void Error(const std::string& where, const std::string& what, const std::string& mend) {
    list.push_back({Finding::Weight::kError, where, what, mend});
  }
  void Warning(const std::string& where, const std::string& what, const std::string& mend) {
    list.push_back({Finding::Weight::kWarning, where, what, mend});
  }
  std::vector<Finding> list;
};
void CheckDatabase(const Site& site, Findings& findings);
void CheckSettings(const Site& site, Findings& findings);
void CheckCatalogues(const Site& site, const std::string& folder, const std::set<std::string>& languages,
                     int customFields, Findings& findings);
void CheckPartners(const Site& site, Findings& findings);

}  // namespace tessel::administration
