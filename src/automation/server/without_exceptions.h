// What the operating system calls lets no exception out.
#pragma once

#include <new>

#include "platform/win32/windows_api.h"

namespace tessel::automation {

// The result of the work; E_OUTOFMEMORY or E_FAIL when it throws.
template <class Work>
[[nodiscard]] HRESULT WithoutExceptions(Work&& work) noexcept {
  try {
    return work();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

}  // namespace tessel::automation
