#include "automation/standin/application.h"

#include "automation/host/remote_runtime.h"
#include "embedded/client/object_rows.h"
#include "embedded/store/memory_record_list.h"
#include "embedded/store/new_database.h"

namespace tessel::automation {
namespace {

// Entry of the table of running objects, for the life of the application.
struct Running {
  explicit Running(REFCLSID classId) : id(classId) {}
  ~Running() {
    if (entry != 0) ::RevokeActiveObject(entry, nullptr);
  }
  CLSID id;
  DWORD entry = 0;
  std::unique_ptr<Application> application;
};

// A record list of nobody's, with the file system that it writes itself to.
struct OwnRecordList {
  Win32Platform platform;
  embedded::MemoryRecordList list{platform.Services().files};
};

ObjectKey KeyOf(const PcMetaData& metaData, const std::string& text) {
  const auto colon = text.rfind(':');
  if (colon == std::string::npos) throw HostError("\"" + text + "\" is no CLASS:OBJECT");
  const std::string name = text.substr(0, colon);
  const ClassId byName = metaData.ClassIdByName(name);
  return {byName != 0 ? byName : ParseInt16(name), ParseInt32(text.substr(colon + 1))};
}

}  // namespace

int RememberingDialogs::ShowObject(const embedded::ObjectDialogRequest& request) {
  shownObjects.clear();
  for (const ObjectKey& key : request.objects)
    shownObjects += (shownObjects.empty() ? "" : ",") + ObjectKeyText(key, ':');
  return 1;
}

void RememberingDialogs::ShowSystemMessage(const std::vector<std::string>& texts) {
  message.clear();
  for (const std::string& text : texts)
    message += text;
}

embedded::EmbeddedHost& Application::Host() {
  return *Required(host_.get(), "database");
}

PcSessionPtr Application::OpenDatabase(const std::string& path, const std::string& user,
                                       const std::string& password, const std::string& language) {
  embedded::HostOptions options;
  options.files = &platform_.Services().files;
  options.dialogs = &dialogs;
  options.lfcStage2 = [this](const PcSessionPtr& session, const std::string& operation,
                             const PcRecordListPtr& first, const PcRecordListPtr& second,
                             const PcRecordListPtr& third) {
    CallLfcStage2(session, operation, first, second, third);
  };
  auto host = std::make_unique<embedded::EmbeddedHost>(path, std::move(options));
  PcSessionPtr session = host->OpenSession(user, password, language);
  host_ = std::move(host);
  return session;
}

void Application::CreateDatabase(const std::string& path, const std::string& model) {
  embedded::CreateDatabase(platform_.Services().files, path, model);
}

PcRecordListPtr Application::ObjectRows(PcSession& session, const std::string& objects) {
  std::vector<ObjectKey> keys;
  const PcMetaDataPtr metaData = session.MetaData();
  for (const std::string& object : SplitText(objects, ","))
    keys.push_back(KeyOf(*metaData, object));
  PcRecordListPtr list = NewRecordList();
  embedded::FillObjectRows(session, keys, *list);
  return list;
}

void Application::CallLfcStage2(const PcSessionPtr& session, const std::string& operation,
                                const PcRecordListPtr& first, const PcRecordListPtr& second,
                                const PcRecordListPtr& third) {
  if (hookClass.empty()) return;
  const LateBound hook(CreateByProgId(hookClass), "StartApplication", ids_);
  (void)hook.Get("LFCStage2", Wrap(module_, session), operation, Wrap(module_, first), Wrap(module_, second),
                 Wrap(module_, third));
}

IUnknown* NewApplicationObject(Module& module, REFCLSID classId) {
  const auto running = std::make_shared<Running>(classId);
  running->application = std::make_unique<Application>(module);
  Application* const part = running->application.get();
  DispatchPtr object = NewScriptedObject(
      module, "PcApplication", running,
      {{"NewRecordList", [&module, part](const Arguments&) { return Wrap(module, part->NewRecordList()); }},
       {"Engine", [&module, part](const Arguments&) { return Wrap(module, part->Engine()); }},
       {"OpenDatabase",
        [&module, part](const Arguments& a) {
          return Wrap(module, part->OpenDatabase(a.Text(0), a.Text(1), a.OptionalText(2), a.OptionalText(3)));
        }},
       {"CreateDatabase",
        [part](const Arguments& a) { return part->CreateDatabase(a.Text(0), a.Text(1)), Variant(); }},
       {"ObjectRows",
        [&module, part](const Arguments& a) {
          return Wrap(module, part->ObjectRows(*Required(a.Object<PcSession>(0), "session"), a.Text(1)));
        }},
       {"HookClass", [part](const Arguments&) { return Variant(part->hookClass); },
        [part](const Arguments& a) { part->hookClass = a.Text(0); }},
       {"ShownObjects", [part](const Arguments&) { return Variant(part->dialogs.shownObjects); }},
       {"SystemMessage", [part](const Arguments&) { return Variant(part->dialogs.message); }}});
  // Weak: being listed keeps nobody alive.
  (void)::RegisterActiveObject(object.Get(), classId, ACTIVEOBJECT_WEAK, &running->entry);
  return object.Detach();
}

IUnknown* NewRecordListObject(Module& module) {
  const auto own = std::make_shared<OwnRecordList>();
  return ToObject(Wrap(module, PcRecordListPtr(own, &own->list)).Raw()).Detach();
}

}  // namespace tessel::automation
