#include "dispatch/additional_values.h"

namespace tessel {
namespace {

class TracingAdditionalValues : public AdditionalValues {
 public:
  int Edit(const AdditionalValuesRequest& request) override { return TraceCall("Edit", request); }
  int Apply(const AdditionalValuesRequest& request) override { return TraceCall("Apply", request); }

 private:
  static int TraceCall(const std::string& operation, const AdditionalValuesRequest& request) {
    if (!request.traceWriter) return 0;
    request.traceWriter->WriteEntry(
        "Additional values (" + operation + "/AdditionalValues): " + ObjectKeyText(request.customer, '_') +
            " ; " + ObjectKeyText(request.contact, '_') + " ; " + request.directory,
        0, "", "C:", "Trace", false);
    return 0;
  }
};

}  // namespace

std::unique_ptr<AdditionalValues> MakeTracingAdditionalValues() {
  return std::make_unique<TracingAdditionalValues>();
}

}  // namespace tessel
