#include "common/checksum_recorder.h"

#include "common/checksum_setting.h"
#include "config/admin_configuration_reader.h"
#include "embedded/session/session.h"
#include "embedded/store/exchange_sums.h"
#include "host/error.h"
#include "host/value.h"
#include "received/checksums.h"

namespace tessel {
namespace {

bool Wanted(const AdditionalValuesRequest& request) {
  Trace trace([&request] { return request.traceWriter; });
  AdminConfigurationReader reader(trace);
  return ParseBoolean(reader.ReadValue(request.session, checksum_setting::kSection, checksum_setting::kKey,
                                       checksum_setting::kDefault, {}));
}

class RecordingComponent final : public AdditionalValues {
 public:
  RecordingComponent(const FileSystem& files, std::unique_ptr<AdditionalValues> component)
      : files_(files), component_(std::move(component)) {}

  int Edit(const AdditionalValuesRequest& request) override { return component_->Edit(request); }

  // The component may still write into the directory, so it comes first.
  int Apply(const AdditionalValuesRequest& request) override {
    const int result = component_->Apply(request);
    if (Wanted(request)) Record(*request.session, request.directory);
    return result;
  }

 private:
  void Record(PcSession& session, const std::string& directory) const {
    auto* own = dynamic_cast<embedded::EmbeddedSession*>(&session);
    if (!own) throw HostError("This host keeps no check sums");
    const auto source = received::OpenSource(files_.NativePath(directory));
    std::vector<received::Problem> problems;
    const ObjectKey exchange = received::ReadExchange(*source, problems).Record();
    if (exchange.objectId == 0) throw HostError("No exchange object to keep check sums for: " + directory);
    embedded::StoreExchangeSums(own->Sql(), exchange, received::SumsText(received::SumsOf(*source)));
  }

  const FileSystem& files_;
  std::unique_ptr<AdditionalValues> component_;
};

}  // namespace

AdditionalValuesFactory RecordingChecksums(const FileSystem& files, AdditionalValuesFactory component) {
  return [&files, component = std::move(component)] {
    return std::make_unique<RecordingComponent>(files, component());
  };
}

}  // namespace tessel
