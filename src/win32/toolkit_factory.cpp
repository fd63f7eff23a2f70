#include "win32/toolkit_factory.h"

#include "win32/win32_toolkit.h"

namespace tessel::win32 {

std::unique_ptr<Toolkit> MakeToolkit() {
  return std::make_unique<Win32Toolkit>();
}

}  // namespace tessel::win32
