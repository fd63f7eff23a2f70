// Port of the additional-values component, which lies outside the system.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "host/object_key.h"
#include "host/session.h"
#include "messages/trace.h"

namespace tessel {

struct AdditionalValuesRequest {
  PcSessionPtr session;
  ObjectKey customer;
  ObjectKey contact;
  std::string directory;  // the recipient's exchange directory
  std::shared_ptr<TraceWriter> traceWriter;
};

class AdditionalValues {
 public:
  virtual ~AdditionalValues() = default;
  // Called from the recipient page's menu; the result is not used.
  virtual int Edit(const AdditionalValuesRequest& request) = 0;
  // Called by the dispatch for each recipient; the result is not used.
  virtual int Apply(const AdditionalValuesRequest& request) = 0;
};
// A new instance for every use.
using AdditionalValuesFactory = std::function<std::unique_ptr<AdditionalValues>()>;

// Writes nothing and traces the call.
[[nodiscard]] std::unique_ptr<AdditionalValues> MakeTracingAdditionalValues();

}  // namespace tessel
