// Who may unlock what others locked.
#pragma once

#include "config/services.h"
#include "host/session.h"

namespace tessel::CommonXFunctions {

// True with an empty `UnLockRole`, for users who may administer everybody's data, and for users with a role
// of that exact name. False after an error, which is traced.
[[nodiscard]] bool HasUnlockRight(Services& services, PcSession& session);

}  // namespace tessel::CommonXFunctions
