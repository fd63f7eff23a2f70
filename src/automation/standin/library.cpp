// The exported procedures of pelicore.dll, the stand-in client.
#include "automation/server/class_factory.h"
#include "automation/server/registration.h"
#include "automation/server/without_exceptions.h"
#include "automation/standin/application.h"

namespace tessel::automation {
namespace {

// {7C3E9B52-1D84-4F6A-A0C7-58B2E6D91F03}, {D10F6A83-94B5-4C27-8E6B-3A7C02F5E914} and
// {2B94D7E1-63FA-4D08-95C2-E87F10A46B3D}
constexpr CLSID kApplication = {0x7c3e9b52, 0x1d84, 0x4f6a, {0xa0, 0xc7, 0x58, 0xb2, 0xe6, 0xd9, 0x1f, 0x03}};
constexpr CLSID kRecordList = {0xd10f6a83, 0x94b5, 0x4c27, {0x8e, 0x6b, 0x3a, 0x7c, 0x02, 0xf5, 0xe9, 0x14}};

constexpr CLSID kEngine = {0x2b94d7e1, 0x63fa, 0x4d08, {0x95, 0xc2, 0xe8, 0x7f, 0x10, 0xa4, 0x6b, 0x3d}};

// Never destroyed, as objects may outlive the end of the program.
Library& LoadedLibrary() {
  static Library& library = *new Library;
  return library;
}

std::wstring TextOf(REFGUID id) {
  wchar_t text[40];
  (void)::StringFromGUID2(id, text, 40);
  return text;
}

std::vector<RegisteredClass> OwnClasses() {
  return {{TextOf(kApplication), L"Pelicore.PcApplication", L"Stand-in for the Pelicore client", L""},
          {TextOf(kEngine), L"Pelicore.PcEngine", L"Engine of the stand-in client", L""},
          {TextOf(kRecordList), L"PcRecList.PcRecordList", L"Record list of the stand-in client", L""}};
}

HRESULT Register(Scope scope) {
  return WithoutExceptions([=] { return RegisterClasses(OwnClasses(), ModulePath(), scope); });
}

HRESULT Unregister(Scope scope) {
  return WithoutExceptions([=] { return UnregisterClasses(OwnClasses(), scope); });
}

// Null for a class that the library does not have.
ObjectMaker MakerOf(REFCLSID classId, Library& library) {
  if (IsEqualCLSID(classId, kApplication))
    return [&library] { return NewApplicationObject(library, kApplication); };
  if (IsEqualCLSID(classId, kEngine)) return [&library] { return NewEngineObject(library); };
  if (IsEqualCLSID(classId, kRecordList)) return [&library] { return NewRecordListObject(library); };
  return nullptr;
}

}  // namespace
}  // namespace tessel::automation

using namespace tessel::automation;

extern "C" HRESULT STDAPICALLTYPE DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return WithoutExceptions([&] {
    Library& library = LoadedLibrary();
    const ObjectMaker make = MakerOf(classId, library);
    return make ? NewClassFactory(library.module, make, interfaceId, result) : CLASS_E_CLASSNOTAVAILABLE;
  });
}

extern "C" HRESULT STDAPICALLTYPE DllCanUnloadNow() {
  return LoadedLibrary().module.IsUsed() ? S_FALSE : S_OK;
}

extern "C" HRESULT STDAPICALLTYPE DllRegisterServer() {
  return Register(Scope::kMachine);
}

extern "C" HRESULT STDAPICALLTYPE DllUnregisterServer() {
  return Unregister(Scope::kMachine);
}

extern "C" HRESULT STDAPICALLTYPE DllInstall(BOOL install, const wchar_t* commandLine) {
  const bool forUser = commandLine != nullptr && ::lstrcmpiW(commandLine, L"user") == 0;
  const Scope scope = forUser ? Scope::kUser : Scope::kMachine;
  return install != 0 ? Register(scope) : Unregister(scope);
}
