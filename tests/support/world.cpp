#include "support/world.h"

namespace tessel::test {
namespace {

class RecordingAdditionalValues : public AdditionalValues {
 public:
  explicit RecordingAdditionalValues(AdditionalValuesCalls& calls) : calls_(calls) {}
  int Edit(const AdditionalValuesRequest& request) override { return Record("edit", request); }
  int Apply(const AdditionalValuesRequest& request) override { return Record("apply", request); }

 private:
  int Record(const std::string& operation, const AdditionalValuesRequest& request) {
    calls_.push_back(operation + " " + ObjectKeyText(request.customer, ':') + " " +
                     ObjectKeyText(request.contact, ':') + " " + request.directory);
    return 0;
  }
  AdditionalValuesCalls& calls_;
};

}  // namespace

World::World(const SettingLines& settings, bool folderStructures)
    : Company(driver, {.settings = settings, .folderStructures = folderStructures}),
      program(
          platform, toolkit, host, [this] { return trace; },
          [this] { return std::make_unique<RecordingAdditionalValues>(additionalValues); }) {
  host.SetLfcStage2(
      [this](const PcSessionPtr& caller, const std::string& operation, const PcRecordListPtr& first,
             const PcRecordListPtr& second,
             PcRecordListPtr third) { application.LFCStage2(caller, operation, first, second, third); });
}

void World::Select(const std::vector<ObjectKey>& keys) {
  PcRecordListPtr third;
  const std::vector<Value> released(keys.size(), Value(std::int16_t{3}));
  application.CollectSelObjs(session, "", ObjectList(keys, released), nullptr, third);
}

std::int16_t World::Export(const std::string& operation) {
  PcRecordListPtr third;
  return application.StartExport(session, operation, nullptr, nullptr, third);
}

Window& World::PageWindow(const std::string& name) const {
  return *Required(toolkit.FindWindow(name), name.c_str());
}

}  // namespace tessel::test
