#include "automation/standin/scripted_object.h"

#include <new>

#include "platform/win32/wide_text.h"

namespace tessel::automation {
namespace {

// {5B0E4C1F-8D27-4A56-93FB-C60D1E7A2B48}: asks an object whether it is one of this library.
constexpr IID kOwnObject = {0x5b0e4c1f, 0x8d27, 0x4a56, {0x93, 0xfb, 0xc6, 0x0d, 0x1e, 0x7a, 0x2b, 0x48}};
constexpr int kWrongArgumentCount = 450;
constexpr HRESULT kClassicErrors = static_cast<HRESULT>(0x800A0000);

class ScriptedObject final : public IDispatch {
 public:
  ScriptedObject(Module& module, const char* kind, std::shared_ptr<void> behindIt,
                 std::vector<Member> members)
      : behind(std::move(behindIt)), kind_(kind), use_(module), members_(std::move(members)) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    const bool isOwn =
        IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch) || IsEqualIID(id, kOwnObject);
    *result = isOwn ? this : nullptr;
    if (!isOwn) return E_NOINTERFACE;
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
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    if (names == nullptr || ids == nullptr || count != 1) return DISP_E_UNKNOWNNAME;
    ids[0] = DISPID_UNKNOWN;
    for (std::size_t i = 0; i < members_.size(); ++i) {
      if (::lstrcmpiW(names[0], windows::ToWide(members_[i].name).c_str()) == 0)
        ids[0] = static_cast<DISPID>(i + 1);
    }
    return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* exception, UINT*) override {
    if (parameters == nullptr) return E_INVALIDARG;
    if (id < 1 || static_cast<std::size_t>(id) > members_.size()) return DISP_E_MEMBERNOTFOUND;
    const Member& member = members_[static_cast<std::size_t>(id - 1)];
    const bool isPut = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    if (isPut ? !member.write : !member.read) return DISP_E_MEMBERNOTFOUND;
    // The call may let the last reference go.
    const DispatchPtr kept(this);
    try {
      const Arguments arguments(*parameters);
      Variant answer;
      if (isPut) {
        member.write(arguments);
      } else {
        answer = member.read(arguments);
      }
      if (result != nullptr) answer.MoveTo(result);
      return S_OK;
    } catch (const RuntimeError& error) {
      return Raised(exception, error.Number(), error.what(), member.name);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    } catch (const std::exception& error) {
      return Raised(exception, error_number::kAutomation, error.what(), member.name);
    } catch (...) {
      return E_FAIL;
    }
  }

  const std::shared_ptr<void> behind;
  [[nodiscard]] bool Is(const char* kind) const { return std::string_view(kind_) == kind; }

 private:
  HRESULT Raised(EXCEPINFO* exception, int number, const std::string& text, const char* member) const {
    const HRESULT code = kClassicErrors + (number & 0xFFFF);
    if (exception == nullptr) return code;
    *exception = EXCEPINFO{};
    exception->scode = code;
    exception->bstrSource = Bstr(windows::ToWide(std::string(kind_) + "." + member)).Detach();
    exception->bstrDescription = Bstr(windows::ToWide(text)).Detach();
    return DISP_E_EXCEPTION;
  }

  const char* kind_;
  ModuleUse use_;
  std::vector<Member> members_;
  LONG references_ = 1;
};

}  // namespace

const VARIANT& Arguments::At(std::size_t index) const {
  if (index >= parameters_.cArgs) throw RuntimeError(kWrongArgumentCount, "Wrong number of arguments");
  return parameters_.rgvarg[parameters_.cArgs - 1 - index];
}

DispatchPtr NewScriptedObject(Module& module, const char* kind, std::shared_ptr<void> behind,
                              std::vector<Member> members) {
  return DispatchPtr::Owning(new ScriptedObject(module, kind, std::move(behind), std::move(members)));
}

std::shared_ptr<void> Behind(IDispatch& object, const char* kind) {
  ComPtr<IDispatch> own;
  if (FAILED(object.QueryInterface(kOwnObject, reinterpret_cast<void**>(own.Out())))) return nullptr;
  const auto& scripted = static_cast<const ScriptedObject&>(*own.Get());
  return scripted.Is(kind) ? scripted.behind : nullptr;
}

}  // namespace tessel::automation
