#include "automation/server/components.h"

#include "automation/host/remote.h"
#include "automation/host/remote_runtime.h"

namespace tessel::automation {
namespace {

class OutsideTraceWriter : public TraceWriter, public Remote {
 public:
  using Remote::Remote;
  void WriteEntry(const std::string& text, std::int16_t number, const std::string& description,
                  const std::string& directory, const std::string& name, bool on) override {
    try {
      self.Call("WriteEntry", text, number, description, directory, name, on);
    } catch (const RuntimeError&) {
      // No export fails because a line is missing in the trace.
    }
  }
};

class OutsideReader : public ConfigurationReader, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] std::string ReadValue(const PcSessionPtr& session, const std::string& section,
                                      const std::string& key, const std::string& defaultText,
                                      const SettingsSource& source) override {
    return TextOf("ReadValue", ObjectOf(session), section, key, defaultText, source.setName, source.className,
                  source.attributeName, ObjectOf(source.object));
  }
  [[nodiscard]] std::vector<std::string> SectionEntries(const PcSessionPtr& session,
                                                        const std::string& section) override {
    return ToTexts(self.Get("SectionEntries", ObjectOf(session), section).Raw());
  }
  [[nodiscard]] std::vector<std::string> SectionLines(const PcSessionPtr& session, const std::string& section,
                                                      const SettingsSource& source) override {
    return ToTexts(self.Get("SectionLines", ObjectOf(session), section, source.setName, source.className,
                            source.attributeName, ObjectOf(source.object))
                       .Raw());
  }
};

class OutsideAdditionalValues : public AdditionalValues, public Remote {
 public:
  using Remote::Remote;
  int Edit(const AdditionalValuesRequest& request) override { return Run("Edit", request); }
  int Apply(const AdditionalValuesRequest& request) override { return Run("Apply", request); }

 private:
  int Run(const char* operation, const AdditionalValuesRequest& request) const {
    // A built-in trace writer is no automation object: the component gets nothing then.
    const auto* writer = dynamic_cast<const Remote*>(request.traceWriter.get());
    self.Call(operation, ObjectOf(request.session), request.customer.classId, request.customer.objectId,
              request.contact.classId, request.contact.objectId, request.directory,
              writer != nullptr ? writer->self.Object() : DispatchPtr());
    return 0;
  }
};

}  // namespace

std::shared_ptr<TraceWriter> NewOutsideTraceWriter(const std::string& progId,
                                                   std::shared_ptr<MemberIds> ids) {
  return std::make_shared<OutsideTraceWriter>(
      LateBound(CreateByProgId(progId), "TraceWriter", std::move(ids)));
}

std::shared_ptr<ConfigurationReader> NewOutsideReader(const std::string& progId,
                                                      std::shared_ptr<MemberIds> ids) {
  return std::make_shared<OutsideReader>(
      LateBound(CreateByProgId(progId), "ConfigurationReader", std::move(ids)));
}

std::unique_ptr<AdditionalValues> NewOutsideAdditionalValues(const std::string& progId,
                                                             std::shared_ptr<MemberIds> ids) {
  return std::make_unique<OutsideAdditionalValues>(
      LateBound(CreateByProgId(progId), "AdditionalValues", std::move(ids)));
}

}  // namespace tessel::automation
