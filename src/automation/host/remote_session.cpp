#include "automation/host/remote_parts.h"
namespace tessel::automation {
namespace {

class RemoteGlobalData : public PcGlobalData, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] Value Get(std::string_view name) const override {
    return ValueOf("Value", std::string(name));
  }
  void Set(const std::string& name, const Value& value) override { self.Put("Value", name, value); }
  [[nodiscard]] int Position(std::string_view name) const override {
    return NumberOf("Position", std::string(name));
  }
  void Remove(std::string_view name) override { self.Call("Remove", std::string(name)); }
};

class RemoteUser : public PcUser, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] int Id() const override { return NumberOf("Id"); }
  [[nodiscard]] std::string LoginName() const override { return TextOf("LoginName"); }
  [[nodiscard]] PcObjectPtr UserObject() const override {
    return WrapObject(Under(self.Get("UserObject"), "PcObject"));
  }
  [[nodiscard]] std::vector<std::string> Roles() const override {
    std::vector<std::string> roles;
    const int count = NumberOf("RoleCount");
    for (int index = 0; index < count; ++index)
      roles.push_back(TextOf("Role", index));
    return roles;
  }
  [[nodiscard]] bool IsAdministrator() const override { return FlagOf("IsAdministrator"); }
};

class RemoteSequence : public PcSequence, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] std::string AttributeName() const override { return TextOf("AttributeName"); }
};

class RemoteUnitOfWork : public PcUnitOfWork, public Remote {
 public:
  using Remote::Remote;
  ~RemoteUnitOfWork() override {
    try {
      if (!ended_) self.Call("RollBack");
    } catch (const RuntimeError&) {
      // A client that is gone has rolled back.
    }
  }
  void Commit() override {
    self.Call("Commit");
    ended_ = true;
  }

 private:
  bool ended_ = false;
};

class RemoteSession : public PcSession, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] PcUserPtr CurrentUser() const override {
    return Wrapped<RemoteUser>(Under(self.Get("CurrentUser"), "PcUser"));
  }
  [[nodiscard]] std::vector<PcUserPtr> Users() const override {
    std::vector<PcUserPtr> users;
    const int count = NumberOf("UserCount");
    for (int index = 0; index < count; ++index)
      users.push_back(Wrapped<RemoteUser>(Under(self.Get("User", index), "PcUser")));
    return users;
  }
  [[nodiscard]] std::string DatabaseAlias() const override { return TextOf("DatabaseAlias"); }
  [[nodiscard]] std::string Identifier() const override { return TextOf("Identifier"); }
  [[nodiscard]] std::string Language() const override { return TextOf("Language"); }
  [[nodiscard]] std::string ConfigurationValue(const std::string& key) const override {
    return TextOf("ConfigurationValue", key);
  }
  void SetConfigurationValue(const std::string& key, const std::string& value) override {
    self.Put("ConfigurationValue", key, value);
  }
  [[nodiscard]] PcBehaviorPtr NewBehavior() override {
    return WrapBehavior(Under(self.Get("NewBehavior"), "PcBehavior"));
  }
  [[nodiscard]] PcGlobalData& GlobalData() override {
    if (!globalData_)
      globalData_ = std::make_unique<RemoteGlobalData>(Under(self.Get("GlobalData"), "PcGlobalData"));
    return *globalData_;
  }
  [[nodiscard]] PcMetaDataPtr MetaData() const override {
    return WrapMetaData(Under(self.Get("MetaData"), "PcMetaData"));
  }
  [[nodiscard]] PcObjectStorePtr ObjectStore() override {
    return WrapObjectStore(Under(self.Get("ObjectStore"), "PcObjectStore"));
  }
  [[nodiscard]] PcSequencePtr RelatedObject(const PcAttribute& attribute) const override {
    return Wrapped<RemoteSequence>(Under(self.Get("RelatedObject", ObjectOf(attribute)), "PcSequence"));
  }
  [[nodiscard]] std::shared_ptr<PcService> CreateService(std::string_view progId) override {
    const LateBound service =
        Under(self.Get("CreateService", std::string(progId)), std::string(progId).c_str());
    if (!service)
      throw HostError("The session has no service \"" + std::string(progId) + "\"",
                      error_number::kObjectNotCreatable);
    return WrapService(progId, service);
  }
  [[nodiscard]] std::shared_ptr<PcEngine> Engine() const override {
    return WrapEngine(Under(self.Get("Engine"), "PcEngine"));
  }
  void Close() override { self.Call("Close"); }

  // Members that a client need not have.
  [[nodiscard]] PcUnitOfWorkPtr BeginUnitOfWork(const std::string& mark) override {
    if (!self.Has("BeginUnitOfWork")) return nullptr;
    const LateBound unit = Under(self.Get("BeginUnitOfWork", mark), "PcUnitOfWork");
    if (!unit) return nullptr;
    return std::make_unique<RemoteUnitOfWork>(unit);
  }
  [[nodiscard]] bool WasCommitted(const std::string& mark) override {
    return self.Has("WasCommitted") && FlagOf("WasCommitted", mark);
  }
  void ForgetMark(const std::string& mark) override {
    if (self.Has("ForgetMark")) self.Call("ForgetMark", mark);
  }
  [[nodiscard]] std::string ErrorText(int code) const override {
    return self.Has("ErrorText") ? TextOf("ErrorText", code) : std::string();
  }

 private:
  std::unique_ptr<RemoteGlobalData> globalData_;
};

class RemoteEngine : public PcEngine, public Remote {
 public:
  using Remote::Remote;
  void Initialize(const std::string& iniFileName) override { self.Call("Initialize", iniFileName); }
  void SetOption(int value) override { self.Put("Option", value); }
  [[nodiscard]] std::string DefaultDatabaseName() const override { return TextOf("DefaultDatabaseName"); }
  [[nodiscard]] DatabaseEntry Database(const std::string& name) const override {
    const LateBound entry = Under(self.Get("Database", name), "PcDatabase");
    const auto text = [&entry](const char* member) { return ToValue(entry.Get(member).Raw()).AsText(); };
    return {text("Name"), text("ConnectionText"), text("Password")};
  }
  [[nodiscard]] PcSessionPtr NewSession(const std::string& databaseName) override {
    return WrapSession(Under(self.Get("NewSession", databaseName), "PcSession"));
  }
  void OpenConnection(PcSession& session, const std::string& connectionText, const std::string& password,
                      int option) override {
    self.Call("OpenConnection", ObjectOf(session), connectionText, password, option);
  }
  [[nodiscard]] bool Login(PcSession& session, const std::string& loginName,
                           const std::string& password) override {
    return FlagOf("Login", ObjectOf(session), loginName, password);
  }
  [[nodiscard]] std::pair<std::string, std::string> FirstSessionLogin() const override {
    return {TextOf("FirstSessionLoginName"), TextOf("FirstSessionPassword")};
  }
  [[nodiscard]] int SessionCount() const override { return NumberOf("SessionCount"); }
  [[nodiscard]] PcSessionPtr Session(int index) const override {
    return WrapSession(Under(self.Get("Session", index), "PcSession"));
  }
  void Shutdown() override { self.Call("Shutdown"); }
};

}  // namespace

PcSessionPtr WrapSession(const LateBound& object) {
  return Wrapped<RemoteSession>(object);
}

PcEnginePtr WrapEngine(const LateBound& object) {
  return Wrapped<RemoteEngine>(object);
}

}  // namespace tessel::automation
