// CommonXFunctions: showing the newest data exchange object of a document.
#pragma once

#include "config/services.h"
#include "host/record_list.h"
#include "selection/start_up.h"

namespace tessel::CommonXFunctions {

// Shows the newest data exchange object that is linked to the document in row 0 in the client's object
// dialog, or a message box when there is none. Always 0.
int GetLatestDataExObj(Services& services, const PcSessionPtr& session, const PcRecordListPtr& first);

}  // namespace tessel::CommonXFunctions
