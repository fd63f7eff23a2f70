#include "automation/standin/application.h"

#include "automation/host/remote_runtime.h"
#include "automation/standin/running_entry.h"
#include "embedded/client/object_rows.h"
#include "embedded/store/memory_record_list.h"
#include "embedded/store/new_database.h"

namespace tessel::automation {
namespace {

// A client that lives as long as its automation object, and its places in the library and among the running
// objects.
struct Running {
  explicit Running(Library& itsLibrary) : library(itsLibrary), application(itsLibrary.module) {
    library.applications.push_back(&application);
  }
  ~Running() { std::erase(library.applications, &application); }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

  Library& library;
  Application application;
  std::unique_ptr<RunningEntry> entry;
};

// A record list of nobody's, with the file system that it writes itself to.
struct OwnRecordList {
  Win32Platform platform;
  embedded::MemoryRecordList list{platform.Services().files};
};

// A record list with the client's ground under it, which it writes itself with.
struct GroundedRecordList {
  std::shared_ptr<ClientGround> ground;
  PcRecordListPtr list;
};

void CallLfcStage2(Module& module, const std::string& hookClass, const std::shared_ptr<MemberIds>& ids,
                   const PcSessionPtr& session, const std::string& operation,
                   const std::vector<PcRecordListPtr>& lists) {
  if (hookClass.empty()) return;
  const LateBound hook(CreateByProgId(hookClass), "StartApplication", ids);
  (void)hook.Get("LFCStage2", Wrap(module, session), operation, Wrap(module, lists[0]),
                 Wrap(module, lists[1]), Wrap(module, lists[2]));
}

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
  options.files = &ground_->platform.Services().files;
  options.dialogs = &ground_->dialogs;
  // Keeps the ground as long as a session needs it.
  options.lfcStage2 = [&module = module_, ground = ground_, ids = std::make_shared<MemberIds>()](
                          const PcSessionPtr& session, const std::string& operation,
                          const PcRecordListPtr& first, const PcRecordListPtr& second,
                          const PcRecordListPtr& third) {
    CallLfcStage2(module, ground->hookClass, ids, session, operation, {first, second, third});
  };
  auto host = std::make_unique<embedded::EmbeddedHost>(path, std::move(options));
  PcSessionPtr session = host->OpenSession(user, password, language);
  host_ = std::move(host);
  return session;
}

void Application::CreateDatabase(const std::string& path, const std::string& model) {
  embedded::CreateDatabase(ground_->platform.Services().files, path, model);
}

PcRecordListPtr Application::NewRecordList() {
  const auto grounded = std::make_shared<GroundedRecordList>();
  grounded->ground = ground_;
  grounded->list = Host().CreateRecordList();
  return {grounded, grounded->list.get()};
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

IUnknown* NewApplicationObject(Library& library, REFCLSID classId) {
  const auto running = std::make_shared<Running>(library);
  Module& module = library.module;
  Application* const part = &running->application;
  ClientGround* const ground = &part->Ground();
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
       {"HookClass", [ground](const Arguments&) { return Variant(ground->hookClass); },
        [ground](const Arguments& a) { ground->hookClass = a.Text(0); }},
       {"ShownObjects", [ground](const Arguments&) { return Variant(ground->dialogs.shownObjects); }},
       {"SystemMessage", [ground](const Arguments&) { return Variant(ground->dialogs.message); }}});
  running->entry = std::make_unique<RunningEntry>(module, classId, *object.Get());
  return object.Detach();
}

IUnknown* NewEngineObject(Library& library) {
  if (library.applications.empty())
    throw HostError("No client is running", error_number::kObjectNotCreatable);
  return ToObject(Wrap(library.module, library.applications.back()->NewEngine()).Raw()).Detach();
}

IUnknown* NewRecordListObject(Library& library) {
  const auto own = std::make_shared<OwnRecordList>();
  return ToObject(Wrap(library.module, PcRecordListPtr(own, &own->list)).Raw()).Detach();
}

}  // namespace tessel::automation
