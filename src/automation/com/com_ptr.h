// Counted references to automation objects, and texts as they pass them.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "automation/com/ole_api.h"

namespace tessel::automation {

template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  // Takes a reference of its own.
  explicit ComPtr(Interface* pointer) : pointer_(pointer) {
    if (pointer_ != nullptr) pointer_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.pointer_) {}
  ComPtr(ComPtr&& other) noexcept : pointer_(std::exchange(other.pointer_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(pointer_, other.pointer_);
    return *this;
  }
  ~ComPtr() {
    if (pointer_ != nullptr) pointer_->Release();
  }
  // Takes over a reference that the caller has.
  [[nodiscard]] static ComPtr Owning(Interface* pointer) {
    ComPtr result;
    result.pointer_ = pointer;
    return result;
  }

  [[nodiscard]] Interface* Get() const { return pointer_; }
  Interface* operator->() const { return pointer_; }
  explicit operator bool() const { return pointer_ != nullptr; }
  // For calls that give a reference back.
  [[nodiscard]] Interface** Out() {
    *this = ComPtr();
    return &pointer_;
  }
  [[nodiscard]] Interface* Detach() { return std::exchange(pointer_, nullptr); }

 private:
  Interface* pointer_ = nullptr;
};

using DispatchPtr = ComPtr<IDispatch>;

class Bstr {
 public:
  explicit Bstr(std::wstring_view text)
      : text_(::SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  ~Bstr() { ::SysFreeString(text_); }
  Bstr(const Bstr&) = delete;
  Bstr& operator=(const Bstr&) = delete;
  [[nodiscard]] BSTR Get() const { return text_; }
  [[nodiscard]] BSTR Detach() { return std::exchange(text_, nullptr); }

 private:
  BSTR text_;
};

}  // namespace tessel::automation
