// Selection of objects by a person.
#pragma once

#include "embedded/session/session.h"
#include "host/services.h"

namespace tessel::embedded {

// Offers the objects of a class, for a composite selection also what hangs below them. The picked ones with
// "OBJECT_ID" and "CLASS_ID"; nothing when nothing was picked. Error: HostError for an unknown class.
[[nodiscard]] PcRecordListPtr PickObjects(EmbeddedSession& session, const SelectionRequest& request);

// Offers all objects of all classes, links apart. Nothing when nothing was picked.
[[nodiscard]] PcObjectPtr PickFromAll(const EmbeddedSessionPtr& session);

}  // namespace tessel::embedded
