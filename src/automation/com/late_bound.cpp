#include "automation/com/late_bound.h"

#include <algorithm>

#include "host/error.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_error.h"

namespace tessel::automation {
namespace {

constexpr int kNoSuchMember = 438;
constexpr int kServerGone = 462;
// IID_IDispatchEx, which no library of mingw-w64 defines.
constexpr IID kDispatchEx = {0xa6ef9860, 0xc720, 0x11d0, {0x93, 0x37, 0x00, 0xa0, 0xc9, 0x0d, 0xca, 0xa9}};
constexpr HRESULT kClassicErrors = static_cast<HRESULT>(0x800A0000);

// An EXCEPINFO whose texts are freed.
struct Exception : EXCEPINFO {
  Exception() : EXCEPINFO{} {}
  ~Exception() {
    ::SysFreeString(bstrSource);
    ::SysFreeString(bstrDescription);
    ::SysFreeString(bstrHelpFile);
  }
  Exception(const Exception&) = delete;
  Exception& operator=(const Exception&) = delete;
};

[[noreturn]] void ThrowException(const std::string& where, Exception& exception) {
  if (exception.pfnDeferredFillIn != nullptr) (void)exception.pfnDeferredFillIn(&exception);
  const int number = exception.wCode != 0 ? exception.wCode : ClassicNumber(exception.scode);
  const std::string text =
      exception.bstrDescription == nullptr
          ? ResultText(exception.scode)
          : windows::ToUtf8({exception.bstrDescription, ::SysStringLen(exception.bstrDescription)});
  throw HostError(text + " (" + where + ")", number);
}

HRESULT AskForId(IDispatch& object, const std::wstring& name, DISPID& id) {
  ComPtr<IDispatchEx> dynamic;
  // Some script objects answer only through their own interface.
  if (SUCCEEDED(object.QueryInterface(kDispatchEx, reinterpret_cast<void**>(dynamic.Out()))))
    return dynamic->GetDispID(Bstr(name).Get(), fdexNameCaseInsensitive, &id);
  auto* text = const_cast<wchar_t*>(name.c_str());
  return object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id);
}

DISPID IdOf(IDispatch& object, const std::string& kind, const std::string& member) {
  DISPID id = DISPID_UNKNOWN;
  const HRESULT result = AskForId(object, windows::ToWide(member), id);
  if (SUCCEEDED(result)) return id;
  throw HostError("The client's " + kind + " has no member \"" + member + "\": " + ResultText(result),
                  ClassicNumber(result));
}

bool CanChangeMembers(IDispatch& object) {
  ComPtr<IDispatchEx> dynamic;
  return SUCCEEDED(object.QueryInterface(kDispatchEx, reinterpret_cast<void**>(dynamic.Out())));
}

}  // namespace

int ClassicNumber(HRESULT result) {
  const auto code = static_cast<unsigned long>(result);
  if ((code & 0xFFFF0000UL) == static_cast<unsigned long>(kClassicErrors))
    return static_cast<int>(code & 0xFFFF);
  switch (result) {
    case DISP_E_MEMBERNOTFOUND:
    case DISP_E_UNKNOWNNAME:
      return kNoSuchMember;
    case DISP_E_TYPEMISMATCH:
      return error_number::kTypeMismatch;
    case DISP_E_OVERFLOW:
      return error_number::kOverflow;
    case DISP_E_BADINDEX:
      return error_number::kSubscriptOutOfRange;
    case DISP_E_BADPARAMCOUNT:
    case DISP_E_PARAMNOTOPTIONAL:
      return 450;
    case E_OUTOFMEMORY:
      return error_number::kOutOfMemory;
    case E_INVALIDARG:
      return error_number::kInvalidCall;
    case REGDB_E_CLASSNOTREG:
    case MK_E_UNAVAILABLE:
    case CO_E_CLASSSTRING:
      return error_number::kObjectNotCreatable;
    default:
      break;
  }
  const bool gone = result == RPC_E_DISCONNECTED || result == RPC_E_SERVER_DIED ||
                    result == RPC_E_SERVER_DIED_DNE || result == CO_E_OBJNOTCONNECTED ||
                    code == (0x80070000UL | RPC_S_SERVER_UNAVAILABLE) ||
                    code == (0x80070000UL | RPC_S_CALL_FAILED);
  return gone ? kServerGone : error_number::kAutomation;
}

std::string ResultText(HRESULT result) {
  const auto code = static_cast<unsigned long>(result);
  if ((code & 0xFFFF0000UL) == static_cast<unsigned long>(kClassicErrors))
    return "Run-time error " + std::to_string(code & 0xFFFF);
  return windows::ErrorText(code);
}

void RequireMember(const DispatchPtr& object, const std::string& kind, const std::string& member) {
  (void)IdOf(*object.Get(), kind, member);
}

DISPID MemberIds::Of(IDispatch& object, const std::string& kind, const std::string& member) {
  const void* const implementation = *reinterpret_cast<void* const*>(&object);
  auto& known = ids_[{implementation, kind}];
  if (const auto found = known.find(member); found != known.end()) return found->second;
  const DISPID id = IdOf(object, kind, member);
  if (!CanChangeMembers(object)) known.emplace(member, id);
  return id;
}

bool LateBound::Has(const char* member) const {
  try {
    return object_ && ids_->Of(*object_.Get(), kind_, member) != DISPID_UNKNOWN;
  } catch (const HostError& error) {
    if (error.Number() != kNoSuchMember) throw;
    return false;
  }
}

Variant LateBound::Invoke(const char* member, WORD flags, std::vector<Variant> arguments) const {
  if (!object_) ThrowObjectNotSet(kind_ + " for " + member);
  const DISPID id = ids_->Of(*object_.Get(), kind_, member);
  // Automation passes the last argument first.
  std::reverse(arguments.begin(), arguments.end());
  std::vector<VARIANT> raw;
  raw.reserve(arguments.size());
  for (const Variant& argument : arguments)
    raw.push_back(argument.Raw());
  DISPID putId = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{raw.data(), nullptr, static_cast<UINT>(raw.size()), 0};
  if ((flags & DISPATCH_PROPERTYPUT) != 0) {
    parameters.rgdispidNamedArgs = &putId;
    parameters.cNamedArgs = 1;
  }
  Variant result;
  Exception exception;
  UINT wrongArgument = 0;
  const HRESULT done = object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, &result.Raw(),
                                       &exception, &wrongArgument);
  const std::string where = kind_ + "." + member;
  if (done == DISP_E_EXCEPTION) ThrowException(where, exception);
  if (FAILED(done)) throw HostError(ResultText(done) + " (" + where + ")", ClassicNumber(done));
  return result;
}

}  // namespace tessel::automation
