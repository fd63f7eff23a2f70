// CommonXFunctions: locking documents for an exchange, and unlocking them.
#pragma once

#include "config/services.h"
#include "host/record_list.h"
#include "locking/lock_outcome.h"
#include "selection/start_up.h"

namespace tessel::CommonXFunctions {

// Locks each document of the first list ("CLASS_ID", "OBJECT_ID", "STATE" and the identifying attribute).
// Rows that do not qualify are skipped; a document that is locked already is told in a message box. A
// document is either locked as a whole, record and attributes, or not at all.
LockOutcome LockObject(Services& services, const PcSessionPtr& session, const PcRecordListPtr& first,
                       const PcRecordListPtr& second, const PcRecordListPtr& third);

// Unlocks each document of the first list that has a lock record of this system, when the user locked it
// himself or has the unlock right; refusals and failures are told in message boxes. A
// document whose attributes say that it is locked although it has no record is unlocked for the same users.
LockOutcome UnlockObject(Services& services, const PcSessionPtr& session, const PcRecordListPtr& first,
                         const PcRecordListPtr& second, const PcRecordListPtr& third);

}  // namespace tessel::CommonXFunctions
