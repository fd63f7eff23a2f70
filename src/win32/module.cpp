#include "win32/module.h"

#include <iterator>

namespace tessel::win32 {
namespace {

constexpr WORD kManifestResource = 2;

}  // namespace

HINSTANCE OwnModule() {
  HMODULE module = nullptr;
  static const int kOwnAddress = 0;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&kOwnAddress), &module);
  return module;
}

ControlStyle::ControlStyle() {
  wchar_t file[MAX_PATH * 4] = {};
  GetModuleFileNameW(OwnModule(), file, static_cast<DWORD>(std::size(file) - 1));
  ACTCTXW wanted{};
  wanted.cbSize = sizeof wanted;
  wanted.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
  wanted.lpSource = file;
  wanted.lpResourceName = MAKEINTRESOURCEW(kManifestResource);
  wanted.hModule = OwnModule();
  context_ = CreateActCtxW(&wanted);
}

ControlStyle::~ControlStyle() {
  if (context_ != INVALID_HANDLE_VALUE) ReleaseActCtx(context_);
}

ControlStyle::Scope::Scope(const ControlStyle& style)
    : active_(style.context_ != INVALID_HANDLE_VALUE && ActivateActCtx(style.context_, &cookie_) != FALSE) {}

ControlStyle::Scope::~Scope() {
  if (active_) DeactivateActCtx(0, cookie_);
}

}  // namespace tessel::win32
