#include "locking/unlock_right.h"

#include <algorithm>

#include "host/error.h"
#include "messages/guard.h"

namespace tessel::CommonXFunctions {
namespace {

// The current user's entry among the users of the session; nothing when he has none.
PcUserPtr CurrentEntry(PcSession& session) {
  const int id = Required(session.CurrentUser(), "current user")->Id();
  const std::vector<PcUserPtr> users = session.Users();
  const auto entry =
      std::find_if(users.begin(), users.end(), [id](const PcUserPtr& user) { return user->Id() == id; });
  return entry == users.end() ? nullptr : *entry;
}

}  // namespace

bool HasUnlockRight(Services& services, PcSession& session) {
  return Guarded(services.trace, "Fehler beim Pruefen der Rechte(HasUnlockRight/CommonXFunctions)", false,
                 [&] {
                   const std::string& role = services.Settings().UnLockRole;
                   const PcUserPtr user = CurrentEntry(session);
                   if (role.empty()) return true;
                   if (!user) return false;
                   if (user->IsAdministrator()) return true;
                   const std::vector<std::string> roles = user->Roles();
                   return std::find(roles.begin(), roles.end(), role) != roles.end();
                 });
}

}  // namespace tessel::CommonXFunctions
