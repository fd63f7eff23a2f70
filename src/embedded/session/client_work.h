// What a session hands out of the client's work, which stands above it.
#pragma once

#include <memory>
#include <string_view>

#include "host/object_store.h"
#include "host/session.h"

namespace tessel::embedded {

class EmbeddedSession;

class ClientWork {
 public:
  virtual ~ClientWork() = default;
  [[nodiscard]] virtual PcObjectStorePtr NewObjectStore(std::shared_ptr<EmbeddedSession> session) const = 0;
  // Error 429 when there is no service of that ProgID.
  [[nodiscard]] virtual std::shared_ptr<PcService> NewService(std::shared_ptr<EmbeddedSession> session,
                                                              std::string_view progId) const = 0;
};

}  // namespace tessel::embedded
