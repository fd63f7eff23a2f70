// The program file (DLL or EXE) that this code was loaded with, and its look: controls of version 6.
#pragma once

#include "win32/api.h"

namespace tessel::win32 {

[[nodiscard]] HINSTANCE OwnModule();

// While it lives, windows of this thread get the common controls that the module's manifest (resource 2) asks
// for, whatever the process around it asks for. Without that resource the process's own are used.
class ControlStyle {
 public:
  ControlStyle();
  ~ControlStyle();
  ControlStyle(const ControlStyle&) = delete;
  ControlStyle& operator=(const ControlStyle&) = delete;

  class Scope {
   public:
    explicit Scope(const ControlStyle& style);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    ULONG_PTR cookie_ = 0;
    bool active_;  // behind the cookie, which is set while this is
  };

 private:
  HANDLE context_;
};

}  // namespace tessel::win32
