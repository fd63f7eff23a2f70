// The start of the server monitor, the outside program that does the sending.
#pragma once

#include <string>

#include "config/services.h"
#include "host/session.h"

namespace tessel {

inline constexpr const char* kServerMonitorProgram = "KestrixServMon.exe";

// Starts the monitor in a directory for a data exchange object and checks that the process came up; a failed
// start is known after 50 waits of 100 ms.
bool StartServerMon(Services& services, const std::string& directory, PcSession& session, ObjectId objectId,
                    ClassId classId, const std::string& idValue);

}  // namespace tessel
