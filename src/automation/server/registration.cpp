#include "automation/server/registration.h"

// The import library has them, the headers of mingw-w64 do not.
extern "C" {
HRESULT STDAPICALLTYPE RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* helpFolder);
HRESULT STDAPICALLTYPE UnRegisterTypeLibForUser(REFGUID library, WORD major, WORD minor, LCID locale,
                                                SYSKIND kind);
}

namespace tessel::automation {
namespace {

constexpr const wchar_t* kClasses = L"Software\\Classes\\";
constexpr SYSKIND kOwnKind = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;
// The part of the registry that the other width sees.
constexpr REGSAM kOtherView = sizeof(void*) == 8 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

HKEY RootOf(Scope scope) {
  return scope == Scope::kMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

HRESULT SetText(Scope scope, const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  HKEY opened = nullptr;
  LSTATUS status = ::RegCreateKeyExW(RootOf(scope), (kClasses + key).c_str(), 0, nullptr, 0, KEY_WRITE,
                                     nullptr, &opened, nullptr);
  if (status == ERROR_SUCCESS) {
    const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    status = ::RegSetValueExW(opened, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), size);
    ::RegCloseKey(opened);
  }
  return HRESULT_FROM_WIN32(static_cast<unsigned long>(status));
}

HRESULT Remove(Scope scope, const std::wstring& key) {
  const LSTATUS status = ::RegDeleteTreeW(RootOf(scope), (kClasses + key).c_str());
  return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(static_cast<unsigned long>(status));
}

std::wstring ClassKey(const RegisteredClass& each) {
  return L"CLSID\\" + each.classId;
}

bool OtherWidthHas(const RegisteredClass& each, Scope scope) {
  HKEY opened = nullptr;
  if (::RegOpenKeyExW(RootOf(scope), (kClasses + ClassKey(each) + L"\\InprocServer32").c_str(), 0,
                      KEY_READ | kOtherView, &opened) != ERROR_SUCCESS)
    return false;
  ::RegCloseKey(opened);
  return true;
}

HRESULT RegisterClass(const RegisteredClass& each, const std::wstring& path, Scope scope) {
  const std::wstring key = ClassKey(each);
  struct Entry {
    std::wstring key;
    const wchar_t* name;
    std::wstring text;
  };
  std::vector<Entry> entries = {{each.progId, nullptr, each.description},
                                {each.progId + L"\\CLSID", nullptr, each.classId},
                                {key, nullptr, each.description},
                                {key + L"\\ProgID", nullptr, each.progId},
                                {key + L"\\InprocServer32", nullptr, path},
                                {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"}};
  if (!each.typeLibraryId.empty()) entries.push_back({key + L"\\TypeLib", nullptr, each.typeLibraryId});
  for (const Entry& entry : entries) {
    if (const HRESULT result = SetText(scope, entry.key, entry.name, entry.text); FAILED(result))
      return result;
  }
  return S_OK;
}

}  // namespace

HRESULT RegisterClasses(const std::vector<RegisteredClass>& classes, const std::wstring& path, Scope scope) {
  for (const RegisteredClass& each : classes) {
    if (const HRESULT result = RegisterClass(each, path, scope); FAILED(result)) return result;
  }
  return S_OK;
}

HRESULT UnregisterClasses(const std::vector<RegisteredClass>& classes, Scope scope) {
  HRESULT result = S_OK;
  for (const RegisteredClass& each : classes) {
    if (const HRESULT done = Remove(scope, ClassKey(each)); FAILED(done)) result = done;
    if (OtherWidthHas(each, scope)) continue;
    if (const HRESULT done = Remove(scope, each.progId); FAILED(done)) result = done;
  }
  return result;
}

HRESULT RegisterTypes(const std::wstring& path, Scope scope) {
  ComPtr<ITypeLib> library;
  const HRESULT loaded = ::LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Out());
  if (FAILED(loaded)) return loaded;
  auto* text = const_cast<wchar_t*>(path.c_str());
  return scope == Scope::kMachine ? ::RegisterTypeLib(library.Get(), text, nullptr)
                                  : ::RegisterTypeLibForUser(library.Get(), text, nullptr);
}

HRESULT UnregisterTypes(REFGUID libraryId, Scope scope) {
  const HRESULT result = scope == Scope::kMachine
                             ? ::UnRegisterTypeLib(libraryId, 1, 0, LOCALE_NEUTRAL, kOwnKind)
                             : ::UnRegisterTypeLibForUser(libraryId, 1, 0, LOCALE_NEUTRAL, kOwnKind);
  return result == TYPE_E_REGISTRYACCESS ? S_OK : result;
}

}  // namespace tessel::automation
