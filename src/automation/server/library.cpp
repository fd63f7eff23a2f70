// The exported procedures of prjTessel.dll and the one loaded program behind them.
#include "automation/server/class_factory.h"
#include "automation/server/entry_object.h"
#include "automation/server/registration.h"
#include "automation/server/without_exceptions.h"
#include "entry/start_application.h"
#include "platform/win32/wide_text.h"
#include "win32/toolkit_factory.h"

namespace tessel::automation {
namespace {

// Of the loaded library; the operating system's interface leaves no other place. It is never destroyed: when
// the library is unloaded, the client's objects that it knows may be gone already.
struct Library {
  Module module;
  std::unique_ptr<Toolkit> toolkit;
  std::shared_ptr<LoadedProgram> program;
};

Library& LoadedLibrary() {
  static Library& library = *new Library;
  return library;
}

std::shared_ptr<LoadedProgram> SharedProgram() {
  Library& library = LoadedLibrary();
  if (!library.program) {
    if (!library.toolkit) library.toolkit = win32::MakeToolkit();
    library.program = std::make_shared<LoadedProgram>(*library.toolkit);
  }
  return library.program;
}

std::vector<RegisteredClass> OwnClasses() {
  using namespace registration;
  wchar_t libraryId[40];
  (void)::StringFromGUID2(LIBID_prjTessel, libraryId, 40);
  return {{windows::ToWide(kClassId), windows::ToWide(std::string(kProject) + "." + kClassName),
           L"Entry object of prjTessel", libraryId}};
}

HRESULT Register(Scope scope) {
  const std::wstring path = ModulePath();
  if (const HRESULT result = RegisterTypes(path, scope); FAILED(result)) return result;
  return RegisterClasses(OwnClasses(), path, scope);
}

HRESULT Unregister(Scope scope) {
  const HRESULT classes = UnregisterClasses(OwnClasses(), scope);
  const HRESULT types = UnregisterTypes(LIBID_prjTessel, scope);
  return FAILED(classes) ? classes : types;
}

}  // namespace
}  // namespace tessel::automation

using namespace tessel::automation;

extern "C" HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  if (!IsEqualCLSID(classId, CLSID_StartApplication)) return CLASS_E_CLASSNOTAVAILABLE;
  return WithoutExceptions([&] {
    Module& module = LoadedLibrary().module;
    return NewClassFactory(
        module, [&module] { return NewEntryObject(module, SharedProgram); }, interfaceId, result);
  });
}

// The state ends here, while the client's objects can still be let go and windows still be closed.
extern "C" HRESULT STDAPICALLTYPE DllCanUnloadNow() {
  Library& library = LoadedLibrary();
  if (library.module.IsUsed()) return S_FALSE;
  return WithoutExceptions([&library] {
    library.program.reset();
    library.toolkit.reset();
    return S_OK;
  });
}

extern "C" HRESULT STDAPICALLTYPE DllRegisterServer() {
  return WithoutExceptions([] { return Register(Scope::kMachine); });
}

extern "C" HRESULT STDAPICALLTYPE DllUnregisterServer() {
  return WithoutExceptions([] { return Unregister(Scope::kMachine); });
}

// "user" as the command line registers for the current user.
extern "C" HRESULT STDAPICALLTYPE DllInstall(BOOL install, const wchar_t* commandLine) {
  const bool forUser = commandLine != nullptr && ::lstrcmpiW(commandLine, L"user") == 0;
  const Scope scope = forUser ? Scope::kUser : Scope::kMachine;
  return WithoutExceptions([=] { return install != 0 ? Register(scope) : Unregister(scope); });
}
