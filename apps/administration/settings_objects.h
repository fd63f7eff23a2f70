// The settings objects of a site and the users whom they steer.
#pragma once

#include <string>
#include <vector>

#include "host/object.h"
#include "host/session.h"

namespace tessel::administration {

// How a user's settings object was found.
enum class Found {
  kByName,   // the one named "Initialization"
  kLastOne,  // none has the name: the last one linked is taken
  kNothing   // no settings object is linked
};

struct UserSettings {
  std::string login;
  Found found = Found::kNothing;
};

// One settings object with its users; without object, the users who have none.
struct SettingsObject {
  PcObjectPtr object;
  std::vector<UserSettings> users;

  // "INI-001 (Settings of the data exchange)".
  [[nodiscard]] std::string Title() const;
  // "anna, ben".
  [[nodiscard]] std::string Logins() const;
  [[nodiscard]] std::string Text() const;
};

// In the order of the users, each found as a start-up finds it. Errors as the host raises them.
[[nodiscard]] std::vector<SettingsObject> FindSettingsObjects(const PcSessionPtr& session);

// The one of a user; without login, the only one of the site. Errors: HostError when there is no such user,
// when he has none, or when there are several to choose from.
[[nodiscard]] SettingsObject RequireSettings(const PcSessionPtr& session, const std::string& login);

// Replaces the text. Error: HostError when the database refuses, or when the text is no longer `before`.
void WriteSettings(const PcSessionPtr& session, const SettingsObject& settings, const std::string& before,
                   const std::string& text);

}  // namespace tessel::administration
