// The loaded library: how much of it is in use, and where its file lies.
#pragma once

#include <atomic>
#include <string>

#include "platform/win32/windows_api.h"

namespace tessel::automation {

class Module {
 public:
  // Counts objects and locks of the class factory; at 0 the library can be unloaded.
  void AddUse() { ++uses_; }
  void RemoveUse() { --uses_; }
  [[nodiscard]] bool IsUsed() const { return uses_ != 0; }

 private:
  std::atomic<long> uses_{0};
};

// One use, for the life of an object.
class ModuleUse {
 public:
  explicit ModuleUse(Module& module) : module_(module) { module_.AddUse(); }
  ~ModuleUse() { module_.RemoveUse(); }
  ModuleUse(const ModuleUse&) = delete;
  ModuleUse& operator=(const ModuleUse&) = delete;
  [[nodiscard]] Module& Of() const { return module_; }

 private:
  Module& module_;
};

// Full path of the file that this code was loaded from.
[[nodiscard]] std::wstring ModulePath();

}  // namespace tessel::automation
