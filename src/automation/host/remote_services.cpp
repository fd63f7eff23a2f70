#include "automation/host/remote_parts.h"
namespace tessel::automation {
namespace {

class RemoteSessionUtil : public PcSessionUtil, public Remote {
 public:
  using Remote::Remote;
  void RunOperation(PcObject& object, const PcLifeCycleOperation& operation, bool silent,
                    const PcRecordListPtr& records, const PcRecordListPtr& parameters) override {
    self.Call("RunOperation", ObjectOf(object), ObjectOf(operation), silent, ObjectOf(records),
              ObjectOf(parameters));
  }
};

class RemoteLifeCycleView : public PcLifeCycleView, public Remote {
 public:
  using Remote::Remote;
  void SetObjects(PcObjectListPtr objects) override { self.Call("SetObjects", ObjectOf(objects)); }
  void SetOperation(PcLifeCycleOperationPtr operation) override {
    self.Call("SetOperation", ObjectOf(operation));
  }
  void SetFlag(bool flag) override { self.Call("SetFlag", flag); }
  void SetComment(const std::string& comment) override { self.Call("SetComment", comment); }
  void Show() override { self.Call("Show"); }
  [[nodiscard]] std::int16_t Result() const override { return ValueOf("Result").AsInt16(); }
};

class RemoteLoginDialog : public PcLoginDialog, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] std::int16_t ShowModal() override { return ValueOf("ShowModal").AsInt16(); }
};

class RemoteCommonGUI : public PcCommonGUI, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] std::shared_ptr<PcLifeCycleView> NewLifeCycleView() override {
    return Wrapped<RemoteLifeCycleView>(Under(self.Get("NewLifeCycleView"), "PcLifeCycleView"));
  }
  [[nodiscard]] std::shared_ptr<PcLoginDialog> NewLoginDialog() override {
    return Wrapped<RemoteLoginDialog>(Under(self.Get("NewLoginDialog"), "PcLoginDialog"));
  }
  [[nodiscard]] PcRecordListPtr SelectObjects(const SelectionRequest& request) override {
    return WrapRecordList(Under(self.Get("SelectObjects", request.code, request.classId, request.title,
                                         request.multiple, request.composite),
                                "PcRecordList"));
  }
  [[nodiscard]] PcObjectPtr SelectFromQuery() override {
    return WrapObject(Under(self.Get("SelectFromQuery"), "PcObject"));
  }
};

class RemoteObjectDialog : public PcObjectDialog, public Remote {
 public:
  using Remote::Remote;
  void SetObject(PcObjectPtr object) override { self.Call("SetObject", ObjectOf(object)); }
  void SetObjects(PcObjectListPtr objects) override { self.Call("SetObjects", ObjectOf(objects)); }
  void SetModeValue(int value) override { self.Call("SetModeValue", value); }
  void SetTitle(const std::string& title) override { self.Call("SetTitle", title); }
  [[nodiscard]] int PageCount() const override { return NumberOf("PageCount"); }
  void SelectPage(int page) override { self.Call("SelectPage", page); }
  void ShowModeless() override { self.Call("ShowModeless"); }
  [[nodiscard]] std::int16_t ShowModal() override { return ValueOf("ShowModal").AsInt16(); }
  [[nodiscard]] PcObjectPtr Object() const override {
    return WrapObject(Under(self.Get("Object"), "PcObject"));
  }
};

class RemoteActiveWindow : public PcActiveWindow, public Remote {
 public:
  using Remote::Remote;
  void RefreshObject(const ObjectKey& key, int mode) override {
    self.Call("RefreshObject", key.classId, key.objectId, mode);
  }
};

class RemoteGUIServices : public PcGUIServices, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] std::shared_ptr<PcObjectDialog> NewObjectDialog(int displayMode) override {
    return Wrapped<RemoteObjectDialog>(Under(self.Get("NewObjectDialog", displayMode), "PcObjectDialog"));
  }
  [[nodiscard]] std::shared_ptr<PcActiveWindow> ActiveWindow() override {
    return Wrapped<RemoteActiveWindow>(Under(self.Get("ActiveWindow"), "PcActiveWindow"));
  }
  void ShowSystemMessage(int first, int second, const std::vector<std::string>& texts) override {
    self.Call("ShowSystemMessage", first, second, TextArray(texts));
  }
};

class RemoteMessage : public PcMessage, public Remote {
 public:
  using Remote::Remote;
  void SetAddress(const std::string& address, int kind) override { self.Call("SetAddress", address, kind); }
  void SetSubject(const std::string& subject) override { self.Put("Subject", subject); }
  void SetText(const std::string& text) override { self.Put("Text", text); }
  void Submit(int sendOption) override { self.Call("Submit", sendOption); }
};

class RemoteMessageStore : public PcMessageStore, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] std::shared_ptr<PcMessage> NewMessage() override {
    return Wrapped<RemoteMessage>(Under(self.Get("NewMessage"), "PcMessage"));
  }
};

}  // namespace

std::shared_ptr<PcService> WrapService(std::string_view progId, const LateBound& object) {
  if (progId == PcSessionUtil::kProgId) return Wrapped<RemoteSessionUtil>(object);
  if (progId == PcCommonGUI::kProgId) return Wrapped<RemoteCommonGUI>(object);
  if (progId == PcGUIServices::kProgId) return Wrapped<RemoteGUIServices>(object);
  if (progId == PcMessageStore::kProgId) return Wrapped<RemoteMessageStore>(object);
  throw HostError("There is no service \"" + std::string(progId) + "\"", error_number::kObjectNotCreatable);
}

}  // namespace tessel::automation
