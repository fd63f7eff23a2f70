#include "automation/standin/running_entry.h"

namespace tessel::automation {

// The table holds this object in place of the real one.
class RunningEntry::Listed final : public IDispatch {
 public:
  Listed(Module& module, IDispatch& object) : use_(module), object_(&object) {}
  void Forget() { object_ = nullptr; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch) ? this : nullptr;
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
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    return object_ == nullptr ? CO_E_OBJNOTCONNECTED : object_->GetTypeInfoCount(count);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
    return object_ == nullptr ? CO_E_OBJNOTCONNECTED : object_->GetTypeInfo(index, locale, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) override {
    return object_ == nullptr ? CO_E_OBJNOTCONNECTED
                              : object_->GetIDsOfNames(reserved, names, count, locale, ids);
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT* wrongArgument) override {
    if (object_ == nullptr) return CO_E_OBJNOTCONNECTED;
    return object_->Invoke(id, reserved, locale, flags, parameters, result, exception, wrongArgument);
  }

 private:
  ModuleUse use_;
  IDispatch* object_;
  LONG references_ = 1;
};

RunningEntry::RunningEntry(Module& module, REFCLSID classId, IDispatch& object)
    : listed_(ComPtr<Listed>::Owning(new Listed(module, object))) {
  (void)::RegisterActiveObject(listed_.Get(), classId, ACTIVEOBJECT_STRONG, &entry_);
}

RunningEntry::~RunningEntry() {
  listed_->Forget();
  if (entry_ != 0) ::RevokeActiveObject(entry_, nullptr);
  (void)::CoDisconnectObject(listed_.Get(), 0);
}

}  // namespace tessel::automation
