#include "automation/server/class_factory.h"

#include <new>

#include "automation/server/without_exceptions.h"

namespace tessel::automation {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  ClassFactory(Module& module, ObjectMaker make) : use_(module), make_(std::move(make)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory) ? this : nullptr;
    if (*result == nullptr) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override {
    return static_cast<ULONG>(::InterlockedIncrement(&references_));
  }
  ULONG STDMETHODCALLTYPE Release() override {
    const LONG left = ::InterlockedDecrement(&references_);
    if (left == 0) delete this;
    return static_cast<ULONG>(left);
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return WithoutExceptions([&] {
      const auto object = ComPtr<IUnknown>::Owning(make_());
      return object->QueryInterface(id, result);
    });
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    if (lock != 0) {
      use_.Of().AddUse();
    } else {
      use_.Of().RemoveUse();
    }
    return S_OK;
  }

 private:
  ModuleUse use_;
  ObjectMaker make_;
  LONG references_ = 1;
};

}  // namespace

HRESULT NewClassFactory(Module& module, ObjectMaker make, REFIID interfaceId, void** result) {
  const auto factory =
      ComPtr<IClassFactory>::Owning(new (std::nothrow) ClassFactory(module, std::move(make)));
  return factory ? factory->QueryInterface(interfaceId, result) : E_OUTOFMEMORY;
}

}  // namespace tessel::automation
