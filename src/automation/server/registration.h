// Entries of automation classes in the registry, for the machine or for the user.
#pragma once

#include <string>
#include <vector>

#include "automation/com/com_ptr.h"

namespace tessel::automation {

enum class Scope { kMachine, kUser };

struct RegisteredClass {
  std::wstring classId;  // in braces
  std::wstring progId;
  std::wstring description;
  std::wstring typeLibraryId;  // in braces; empty: none
};

// The classes of the library at `path`, in apartment threading, and its type library when it holds one.
[[nodiscard]] HRESULT RegisterClasses(const std::vector<RegisteredClass>& classes, const std::wstring& path,
                                      Scope scope);
// Removes what RegisterClasses wrote. The names that both widths share stay as long as the other width is
// registered.
[[nodiscard]] HRESULT UnregisterClasses(const std::vector<RegisteredClass>& classes, Scope scope);

// Type library in the file at `path`.
[[nodiscard]] HRESULT RegisterTypes(const std::wstring& path, Scope scope);
[[nodiscard]] HRESULT UnregisterTypes(REFGUID libraryId, Scope scope);

}  // namespace tessel::automation
