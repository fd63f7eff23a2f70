#include "automation/automation_world.h"

#include "platform/win32/wide_text.h"

namespace tessel::test {

AutomationWorld::AutomationWorld() {
  const std::string drives = company.Folder().Path("drives");
  ::SetEnvironmentVariableW(L"TESSEL_DRIVES", windows::ToWide(drives).c_str());
  client = Make("Pelicore.PcApplication");
  session = client.Get("OpenDatabase", company.Database(), std::string("ben"));
  addOn = Make("prjTessel.StartApplication");
}

AutomationWorld::~AutomationWorld() {
  ticks_.reset();
  addOn = LateBound();
  (void)IsLoaded(L"prjTessel.dll");
  session = Variant();
  client = LateBound();
  (void)IsLoaded(L"pelicore.dll");
}

Value AutomationWorld::Global(const std::string& name) const {
  return runtime.Session(automation::ToObject(session.Raw()))->GlobalData().Get(name);
}

short AutomationWorld::Call(const char* hook, const Variant& first, const std::string& operation) const {
  const Variant nothing{DispatchPtr()};
  const bool three = std::string(hook) == "GetLatestDataExObj";
  const Variant answer = three ? addOn.Get(hook, session, operation, first)
                               : addOn.Get(hook, session, operation, first, nothing, nothing);
  return answer.Raw().vt == VT_I2 ? answer.Raw().iVal : static_cast<short>(-1);
}

void AutomationWorld::WorkPages(std::deque<std::wstring> steps) {
  hand_.emplace(std::move(steps), Reach::kThisThread);
  ticks_.emplace([this] { hand_->Try(); });
}

bool AutomationWorld::PagesAreWorked() {
  hand_->Try();
  return hand_->IsDone();
}

bool IsLoaded(const wchar_t* library) {
  ::CoFreeUnusedLibrariesEx(0, 0);
  return ::GetModuleHandleW(library) != nullptr;
}

}  // namespace tessel::test
