// The exported procedures of pelicore.dll, the stand-in client.
#include "automation/server/class_factory.h"
#include "automation/server/registration.h"
#include "automation/standin/application.h"
#include "platform/win32/wide_text.h"

namespace tessel::automation {
namespace {

// {7C3E9B52-1D84-4F6A-A0C7-58B2E6D91F03} and {D10F6A83-94B5-4C27-8E6B-3A7C02F5E914}
constexpr CLSID kApplication = {0x7c3e9b52, 0x1d84, 0x4f6a, {0xa0, 0xc7, 0x58, 0xb2, 0xe6, 0xd9, 0x1f, 0x03}};
constexpr CLSID kRecordList = {0xd10f6a83, 0x94b5, 0x4c27, {0x8e, 0x6b, 0x3a, 0x7c, 0x02, 0xf5, 0xe9, 0x14}};

Module& LoadedModule() {
  static Module module;
  return module;
}

std::wstring TextOf(REFGUID id) {
  wchar_t text[40];
  (void)::StringFromGUID2(id, text, 40);
  return text;
}

std::vector<RegisteredClass> OwnClasses() {
  return {{TextOf(kApplication), L"Pelicore.PcApplication", L"Stand-in for the Pelicore client", L""},
          {TextOf(kRecordList), L"PcRecList.PcRecordList", L"Record list of the stand-in client", L""}};
}

}  // namespace

std::wstring ModulePath() {
  const ProgramLocation location = RunningProgram();
  return windows::ToWide(location.directory + "\\" + location.name + ".dll");
}

}  // namespace tessel::automation

using namespace tessel::automation;

extern "C" HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  Module& module = LoadedModule();
  if (IsEqualCLSID(classId, kApplication))
    return NewClassFactory(
        module, [&module] { return NewApplicationObject(module, kApplication); }, interfaceId, result);
  if (IsEqualCLSID(classId, kRecordList))
    return NewClassFactory(
        module, [&module] { return NewRecordListObject(module); }, interfaceId, result);
  return CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" HRESULT STDAPICALLTYPE DllCanUnloadNow() {
  return LoadedModule().IsUsed() ? S_FALSE : S_OK;
}

extern "C" HRESULT STDAPICALLTYPE DllRegisterServer() {
  return RegisterClasses(OwnClasses(), ModulePath(), Scope::kMachine);
}

extern "C" HRESULT STDAPICALLTYPE DllUnregisterServer() {
  return UnregisterClasses(OwnClasses(), Scope::kMachine);
}

extern "C" HRESULT STDAPICALLTYPE DllInstall(BOOL install, const wchar_t* commandLine) {
  const bool forUser = commandLine != nullptr && ::lstrcmpiW(commandLine, L"user") == 0;
  const Scope scope = forUser ? Scope::kUser : Scope::kMachine;
  return install != 0 ? RegisterClasses(OwnClasses(), ModulePath(), scope)
                      : UnregisterClasses(OwnClasses(), scope);
}
