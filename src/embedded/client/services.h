// Service objects of a session: life cycle, dialogs, window refresh, messages.
#pragma once

#include "embedded/session/session.h"

namespace tessel::embedded {

// Error 429 when there is no service of that ProgID.
[[nodiscard]] std::shared_ptr<PcService> NewService(EmbeddedSessionPtr session, std::string_view progId);

}  // namespace tessel::embedded
