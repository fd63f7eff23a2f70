// What the subsystems above the configuration share: references that the composition root hands down.
#pragma once

#include "config/deklarationen.h"
#include "host/application.h"
#include "host/error.h"
#include "messages/error_handling.h"
#include "messages/trace.h"
#include "platform/file_system.h"
#include "platform/operating_system.h"
#include "platform/text_encoding.h"
#include "toolkit/toolkit.h"

namespace tessel {

struct Services {
  Trace& trace;
  ErrorHandling& errors;
  Toolkit& toolkit;
  Deklarationen& declarations;
  Platform& platform;
  HostRuntime& runtime;

  // The stored session. Error 91 before the first start-up.
  [[nodiscard]] PcSession& Session() const {
    return *Required(declarations.startup.session.get(), "stored session");
  }
  [[nodiscard]] const Configuration& Settings() const { return declarations.configuration; }
};

}  // namespace tessel
