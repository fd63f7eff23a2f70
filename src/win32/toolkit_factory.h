// Makes the native toolkit for those who need not know how it draws: a DLL in the client's process, a
// program.
#pragma once

#include <memory>

#include "toolkit/toolkit.h"

namespace tessel::win32 {

// To be called, used and let go on the thread that the client's windows are on. It initialises no COM: a
// thread that has done so itself gets names for screen readers that go beyond the captions.
[[nodiscard]] std::unique_ptr<Toolkit> MakeToolkit();

}  // namespace tessel::win32
