// Showing an object anew in the client's active window.
#pragma once

#include "host/session.h"

namespace tessel {

// Nothing happens when the client has no window open. Errors as the host raises them.
void RefreshActiveWindow(PcSession& session, const ObjectKey& key, int mode);

}  // namespace tessel
