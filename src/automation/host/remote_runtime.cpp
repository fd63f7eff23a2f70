#include "automation/host/remote_runtime.h"

#include "automation/host/remote_parts.h"
#include "platform/win32/wide_text.h"

namespace tessel::automation {
namespace {

class RemoteApplication : public PcApplication, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] PcRecordListPtr NewRecordList() override {
    return WrapRecordList(Under(self.Get("NewRecordList"), "PcRecordList"));
  }
  [[nodiscard]] PcEnginePtr Engine() override { return WrapEngine(Under(self.Get("Engine"), "PcEngine")); }
};

}  // namespace

DispatchPtr CreateByProgId(const std::string& progId) {
  CLSID id{};
  DispatchPtr object;
  HRESULT result = ::CLSIDFromProgID(windows::ToWide(progId).c_str(), &id);
  if (SUCCEEDED(result))
    result =
        ::CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IDispatch, reinterpret_cast<void**>(object.Out()));
  if (FAILED(result))
    throw HostError("Cannot create an object of the class \"" + progId + "\": " + ResultText(result),
                    error_number::kObjectNotCreatable);
  return object;
}

PcApplicationPtr RemoteRuntime::RunningApplication() {
  CLSID id{};
  ComPtr<IUnknown> unknown;
  DispatchPtr object;
  if (FAILED(::CLSIDFromProgID(L"Pelicore.PcApplication", &id)) ||
      FAILED(::GetActiveObject(id, nullptr, unknown.Out())) ||
      FAILED(unknown->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(object.Out()))))
    return nullptr;
  return std::make_shared<RemoteApplication>(LateBound(object, "PcApplication", ids_));
}

PcRecordListPtr RemoteRuntime::CreateRecordList() {
  return RecordList(CreateByProgId("PcRecList.PcRecordList"));
}

PcEnginePtr RemoteRuntime::CreateEngine() {
  return WrapEngine(LateBound(CreateByProgId("Pelicore.PcEngine"), "PcEngine", ids_));
}

// What a caller hands over may be anything; all objects of a client may be of one class.
PcSessionPtr RemoteRuntime::Session(const DispatchPtr& object) const {
  if (object) RequireMember(object, "PcSession", "GlobalData");
  return WrapSession(LateBound(object, "PcSession", ids_));
}

PcRecordListPtr RemoteRuntime::RecordList(const DispatchPtr& object) const {
  if (object) RequireMember(object, "PcRecordList", "RowCount");
  return WrapRecordList(LateBound(object, "PcRecordList", ids_));
}

}  // namespace tessel::automation
