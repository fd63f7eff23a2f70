// Engine and session, messages, settings.
#include "hostlib/qel_function_pool.h"

#include "host/error.h"
#include "host/services.h"
#include "messages/guard.h"

namespace tessel {
namespace {

constexpr const char* kClientIniFile = "Pelicore32.ini";
constexpr const char* kViewDirKey = "$Local\\Directory Structure\\ReadOnlyDir";
constexpr const char* kWorkDirKey = "$Local\\Directory Structure\\USER_DIR";
constexpr int kSwitchedOn = -1;
constexpr int kRecipientAddress = 1;
constexpr int kSenderAddress = 2;
constexpr std::size_t kSettingBufferSize = 256;

// The engine of the running client, or a new one.
PcEnginePtr AttachOrStart(HostRuntime& runtime) {
  PcApplicationPtr application;
  IgnoringErrors([&] { application = runtime.RunningApplication(); });
  if (application) return Required(application->Engine(), "engine of the running client");
  PcEnginePtr engine = Required(runtime.CreateEngine(), "new engine");
  engine->Initialize(kClientIniFile);
  engine->SetOption(kSwitchedOn);
  return engine;
}

PcSessionPtr OpenSession(PcEngine& engine) {
  const std::string database = engine.DefaultDatabaseName();
  PcSessionPtr session = Required(engine.NewSession(database), "new session");
  const DatabaseEntry entry = engine.Database(database);
  engine.OpenConnection(*session, entry.connectionText, entry.password, kSwitchedOn);
  return session;
}

bool LogIn(PcEngine& engine, PcSession& session, const std::string& userName, const std::string& password,
           bool useCurrentLogin) {
  if (!userName.empty() || !password.empty()) return engine.Login(session, userName, password);
  if (useCurrentLogin) {
    const auto [currentName, currentPassword] = engine.FirstSessionLogin();
    return engine.Login(session, currentName, currentPassword);
  }
  return Required(CreateService<PcCommonGUI>(session)->NewLoginDialog(), "login dialog")->ShowModal() == 1;
}

}  // namespace

ClassId ClassArgument::Resolve(PcSession& session) const {
  if (object) return object->Id();
  if (id >= 1) return id;
  if (name.empty()) return 0;
  return session.MetaData()->ClassIdByName(name);
}

PcClassPtr ClassArgument::ResolveClass(PcSession& session) const {
  if (object) return object;
  const ClassId resolved = Resolve(session);
  return resolved == 0 ? nullptr : session.MetaData()->ClassById(resolved);
}

QelFunctionPool::QelFunctionPool(const Platform& platform, HostRuntime& runtime)
    : runtime_(runtime),
      profiles_(platform.profiles),
      ansi_(platform.encodings.Open(platform.ansiCodePage)),
      trace_(platform.files, *ansi_) {}

bool QelFunctionPool::StartPelicore(PcEnginePtr& engine, PcSessionPtr& session, const std::string& userName,
                                    const std::string& password, std::int16_t useCurrentLogin) {
  engine = AttachOrStart(runtime_);
  session = OpenSession(*engine);
  const bool loggedIn = LogIn(*engine, *session, userName, password, useCurrentLogin != 0);
  if (!loggedIn) StopPelicore(engine, session);
  return loggedIn;
}

void QelFunctionPool::StopPelicore(const PcEnginePtr& engine, const PcSessionPtr& session) {
  if (session) session->Close();
  PcEngine& running = *Required(engine.get(), "engine");
  if (running.SessionCount() == 0) running.Shutdown();
}

PcBehaviorPtr QelFunctionPool::Behavior(PcSession& session, int first, int second, int third,
                                        int fourth) const {
  PcBehaviorPtr behavior = Required(session.NewBehavior(), "behaviour");
  behavior->Set(1, first);
  behavior->Set(2, second);
  behavior->Set(3, third);
  behavior->Set(4, fourth);
  return behavior;
}

ClassId QelFunctionPool::GetClassId(PcSession& session, const std::string& className) const {
  return session.MetaData()->ClassIdByName(className);
}

std::string QelFunctionPool::GetViewDir(PcSession& session) const {
  return session.ConfigurationValue(kViewDirKey);
}

std::string QelFunctionPool::GetWorkDir(PcSession& session) const {
  return session.ConfigurationValue(kWorkDirKey);
}

void QelFunctionPool::SetViewDir(PcSession& session, const std::string& path) const {
  session.SetConfigurationValue(kViewDirKey, path);
}

void QelFunctionPool::SetWorkDir(PcSession& session, const std::string& path) const {
  session.SetConfigurationValue(kWorkDirKey, path);
}

void QelFunctionPool::SendExternalMessage(PcSession& session, const std::string& firstAddress,
                                          const std::string& secondAddress, const std::string& subject,
                                          const std::string& text, int sendOption) const {
  const auto message = Required(CreateService<PcMessageStore>(session)->NewMessage(), "message");
  message->SetAddress(firstAddress, kRecipientAddress);
  message->SetAddress(secondAddress, kSenderAddress);
  message->SetSubject(subject);
  message->SetText(text);
  message->Submit(sendOption);
}

std::string QelFunctionPool::ReadSetting(const std::string& section, const std::string& key,
                                         const std::string& defaultText) const {
  return profiles_.Get(iniFile_, section, key, defaultText, kSettingBufferSize);
}

void QelFunctionPool::WriteSetting(const std::string& section, const std::string& key,
                                   const std::string& value) const {
  profiles_.Write(iniFile_, section, key, value);
}

void QelFunctionPool::PutTraceObject(const PcObjectPtr& object, const std::string& title) const {
  trace_.PutTraceObject(object, title);
}

void QelFunctionPool::PutTraceRecList(const PcRecordListPtr& records, const std::string& title) const {
  trace_.PutTraceRecList(records, title);
}

}  // namespace tessel
