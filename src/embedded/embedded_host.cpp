#include "embedded/embedded_host.h"

#include "embedded/client/object_store.h"
#include "embedded/client/services.h"
#include "embedded/session/client_work.h"
#include "embedded/session/engine.h"
#include "embedded/session/host_core.h"
#include "embedded/store/new_database.h"
#include "embedded/store/schema.h"
#include "host/error.h"

namespace tessel::embedded {
namespace {

class Client final : public ClientWork {
 public:
  [[nodiscard]] PcObjectStorePtr NewObjectStore(EmbeddedSessionPtr session) const override {
    return embedded::NewObjectStore(std::move(session));
  }
  [[nodiscard]] std::shared_ptr<PcService> NewService(EmbeddedSessionPtr session,
                                                      std::string_view progId) const override {
    return embedded::NewService(std::move(session), progId);
  }
};

class Application final : public PcApplication {
 public:
  Application(std::shared_ptr<HostCore> core, PcEnginePtr engine)
      : core_(std::move(core)), engine_(std::move(engine)) {}
  [[nodiscard]] PcRecordListPtr NewRecordList() override { return core_->NewRecordList(); }
  [[nodiscard]] PcEnginePtr Engine() override { return engine_; }

 private:
  std::shared_ptr<HostCore> core_;
  PcEnginePtr engine_;
};

}  // namespace

LoginRefused::LoginRefused(const std::string& loginName)
    : HostError("The login name \"" + loginName + "\" is unknown or the password is wrong") {}

EmbeddedHost::EmbeddedHost(const std::string& databasePath, HostOptions options)
    : core_(std::make_shared<HostCore>()) {
  core_->options = std::move(options);
  core_->databasePath = databasePath;
  const auto database = core_->Connect();
  core_->metadata = LoadMetadata(*database);
  core_->vaultPath = VaultPath(*database, databasePath);
  Start();
}

EmbeddedHost::EmbeddedHost(const std::string& modelText, const std::string& modelDirectory,
                           HostOptions options)
    : core_(std::make_shared<HostCore>()) {
  core_->options = std::move(options);
  core_->databasePath = kInMemory;
  core_->vaultPath = core_->options.vaultPath;
  core_->memory = std::make_shared<Database>(
      kInMemory, DatabaseOptions{core_->options.busyTimeout, core_->options.statementWatch});
  core_->metadata =
      FillDatabase(*core_->memory, {modelText, "model", modelDirectory}, core_->Files(), core_->vaultPath);
  Start();
}

EmbeddedHost::~EmbeddedHost() = default;

void EmbeddedHost::Start() {
  core_->client = std::make_shared<Client>();
  engine_ = CreateEngine();
  application_ = std::make_shared<Application>(core_, engine_);
}

PcSessionPtr EmbeddedHost::OpenSession(const std::string& loginName, const std::string& password,
                                       const std::string& language) {
  const auto session = std::static_pointer_cast<EmbeddedSession>(engine_->NewSession(core_->metadata->alias));
  try {
    session->Connect();
    if (session->Login(loginName, password, language)) return session;
  } catch (const RuntimeError&) {
    session->Close();
    throw;
  }
  session->Close();
  throw LoginRefused(loginName);
}

void EmbeddedHost::SetLfcStage2(LifeCycleHook hook) {
  core_->options.lfcStage2 = std::move(hook);
}

void EmbeddedHost::SetCopyWatch(CopyWatch watch) {
  core_->options.copyWatch = std::move(watch);
}

void EmbeddedHost::FailNext(const PlannedFailure& failure) {
  core_->failures.Add(failure);
}

void EmbeddedHost::ClearFailures() {
  core_->failures.Clear();
}

std::string EmbeddedHost::Alias() const {
  return core_->metadata->alias;
}

PcMetaDataPtr EmbeddedHost::MetaData() const {
  return core_->metadata;
}

PcApplicationPtr EmbeddedHost::RunningApplication() {
  return core_->options.clientRuns ? application_ : nullptr;
}

PcRecordListPtr EmbeddedHost::CreateRecordList() {
  return core_->NewRecordList();
}

PcEnginePtr EmbeddedHost::CreateEngine() {
  return std::make_shared<EmbeddedEngine>(core_);
}

}  // namespace tessel::embedded
