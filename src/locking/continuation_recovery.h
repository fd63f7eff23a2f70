// Finishes continuations of stopped exchanges that were cut off behind the renaming of the folder.
#pragma once

#include <string>
#include <vector>

#include "host/session.h"
#include "messages/trace.h"
#include "platform/file_system.h"

namespace tessel::CommonXFunctions {

// The exchanges, "class:object", that got the status which their folder's name says. A dry run changes
// nothing. Errors end the exchange in hand alone, and are traced.
std::vector<std::string> RecoverContinuations(Trace& trace, FileSystem& files, PcSession& session,
                                              bool dryRun);

}  // namespace tessel::CommonXFunctions
