// Objects by key, new objects, lists and queries of a session.
#pragma once

#include "embedded/session/session.h"
#include "host/object_store.h"

namespace tessel::embedded {

[[nodiscard]] PcObjectStorePtr NewObjectStore(EmbeddedSessionPtr session);

}  // namespace tessel::embedded
