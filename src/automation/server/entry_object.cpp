#include "automation/server/entry_object.h"

#include <array>

#include "messages/guard.h"
#include "platform/win32/wide_text.h"

namespace tessel::automation {
namespace {

constexpr short kRefused = 1;
constexpr const wchar_t* kHookNames[] = {L"StartExport",       L"CollectSelObjs", L"LFCStage2",
                                         L"LockObject",        L"UnlockObject",   L"GetLatestDataExObj",
                                         L"ContinueBatchMode", L"StartServerMon"};
constexpr DISPID kLatest = 6;
constexpr DISPID kServerMonitor = 8;

using Hook = std::int16_t (StartApplication::*)(const PcSessionPtr&, const std::string&,
                                                const PcRecordListPtr&, const PcRecordListPtr&,
                                                PcRecordListPtr&);

std::string TextOf(BSTR text) {
  return text == nullptr ? std::string() : windows::ToUtf8({text, ::SysStringLen(text)});
}

UINT ArgumentCount(DISPID id) {
  return id == kLatest ? 3 : 5;
}

// Positional and named arguments of a call, by their position from 0.
class CallArguments {
 public:
  explicit CallArguments(const DISPPARAMS& parameters) : parameters_(parameters) {}
  [[nodiscard]] UINT Count() const { return parameters_.cArgs; }
  // Null when the call does not give it.
  [[nodiscard]] VARIANT* At(UINT position) const {
    for (UINT i = 0; i < parameters_.cNamedArgs; ++i) {
      if (parameters_.rgdispidNamedArgs[i] == static_cast<DISPID>(position)) return &parameters_.rgvarg[i];
    }
    const UINT positional = parameters_.cArgs - parameters_.cNamedArgs;
    return position < positional ? &parameters_.rgvarg[parameters_.cArgs - 1 - position] : nullptr;
  }

 private:
  const DISPPARAMS& parameters_;
};

class EntryObject final : public _StartApplication, public ISupportErrorInfo {
 public:
  EntryObject(Module& module, std::shared_ptr<LoadedProgram> program)
      : use_(module), program_(std::move(program)) {}

  // IUnknown
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch) ||
        IsEqualIID(id, IID__StartApplication))
      *result = static_cast<_StartApplication*>(this);
    if (IsEqualIID(id, IID_ISupportErrorInfo)) *result = static_cast<ISupportErrorInfo*>(this);
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
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override {
    return IsEqualIID(id, IID__StartApplication) ? S_OK : S_FALSE;
  }

  // IDispatch. Arguments are taken by hand: a script passes variables by reference, in which the type
  // library's own dispatch sees no object, and what is no object must end in a status, not in a refused call.
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    ComPtr<ITypeLib> library;
    const HRESULT result = ::LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Out());
    return FAILED(result) ? result : library->GetTypeInfoOfGuid(IID__StartApplication, info);
  }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override {
    if (names == nullptr || ids == nullptr || count == 0) return E_INVALIDARG;
    ComPtr<ITypeInfo> info;
    if (count > 1 && SUCCEEDED(GetTypeInfo(0, 0, info.Out())))
      return ::DispGetIDsOfNames(info.Get(), names, count, ids);
    ids[0] = DISPID_UNKNOWN;
    for (std::size_t i = 0; i < std::size(kHookNames); ++i) {
      if (::lstrcmpiW(names[0], kHookNames[i]) == 0) ids[0] = static_cast<DISPID>(i + 1);
    }
    return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO*, UINT*) override {
    if (parameters == nullptr) return E_INVALIDARG;
    if (id < 1 || id > kServerMonitor || (flags & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
    const CallArguments arguments(*parameters);
    if (arguments.Count() != ArgumentCount(id)) return DISP_E_BADPARAMCOUNT;
    Variant answer =
        id == kServerMonitor ? Variant(InvokeMonitor(arguments)) : Variant(InvokeHook(id, arguments));
    if (result != nullptr) answer.MoveTo(result);
    return S_OK;
  }

  // _StartApplication
  HRESULT STDMETHODCALLTYPE StartExport(IDispatch* session, BSTR operation, IDispatch* first,
                                        IDispatch* second, IDispatch** third, short* status) override {
    return Compiled(1, session, operation, first, second, third, status);
  }
  HRESULT STDMETHODCALLTYPE CollectSelObjs(IDispatch* session, BSTR operation, IDispatch* first,
                                           IDispatch* second, IDispatch** third, short* status) override {
    return Compiled(2, session, operation, first, second, third, status);
  }
  HRESULT STDMETHODCALLTYPE LFCStage2(IDispatch* session, BSTR operation, IDispatch* first, IDispatch* second,
                                      IDispatch** third, short* status) override {
    return Compiled(3, session, operation, first, second, third, status);
  }
  HRESULT STDMETHODCALLTYPE LockObject(IDispatch* session, BSTR operation, IDispatch* first,
                                       IDispatch* second, IDispatch** third, short* status) override {
    return Compiled(4, session, operation, first, second, third, status);
  }
  HRESULT STDMETHODCALLTYPE UnlockObject(IDispatch* session, BSTR operation, IDispatch* first,
                                         IDispatch* second, IDispatch** third, short* status) override {
    return Compiled(5, session, operation, first, second, third, status);
  }
  HRESULT STDMETHODCALLTYPE GetLatestDataExObj(IDispatch* session, BSTR operation, IDispatch* first,
                                               short* status) override {
    return Compiled(kLatest, session, operation, first, nullptr, nullptr, status);
  }
  HRESULT STDMETHODCALLTYPE ContinueBatchMode(IDispatch* session, BSTR operation, IDispatch* first,
                                              IDispatch* second, IDispatch** third, short* status) override {
    return Compiled(7, session, operation, first, second, third, status);
  }
  HRESULT STDMETHODCALLTYPE StartServerMon(BSTR directory, IDispatch* session, LONG objectId, short classId,
                                           BSTR idValue, VARIANT_BOOL* started) override {
    if (started == nullptr) return E_POINTER;
    *started = Monitor(TextOf(directory), DispatchPtr(session), objectId, classId, TextOf(idValue))
                   ? VARIANT_TRUE
                   : VARIANT_FALSE;
    return S_OK;
  }

 private:
  // The answer when a hook could not even be called: of an export that it failed, of the others nothing.
  static std::int16_t FailureOf(DISPID id) { return id == 1 ? kRefused : 0; }

  std::int16_t CallHook(DISPID id, const DispatchPtr& session, const std::string& operation,
                        const DispatchPtr& first, const DispatchPtr& second, const DispatchPtr& third) {
    static constexpr std::array<Hook, 7> kHooks{
        &StartApplication::StartExport,      &StartApplication::CollectSelObjs, &StartApplication::LFCStage2,
        &StartApplication::LockObject,       &StartApplication::UnlockObject,   nullptr,
        &StartApplication::ContinueBatchMode};
    // A hook may end with the last reference of its caller gone.
    const auto kept = ComPtr<IUnknown>(static_cast<_StartApplication*>(this));
    return Guarded(program_->ProgramTrace(), "Cannot call the hook (Invoke/StartApplication)", FailureOf(id),
                   [&] {
                     const RemoteRuntime& runtime = program_->Runtime();
                     StartApplication& entry = program_->Entry();
                     const PcSessionPtr hostSession = runtime.Session(session);
                     const PcRecordListPtr firstRows = runtime.RecordList(first);
                     if (id == kLatest) return entry.GetLatestDataExObj(hostSession, operation, firstRows);
                     // The third list is passed on untouched, so the caller's own object stays where it is.
                     PcRecordListPtr thirdRows = runtime.RecordList(third);
                     return (entry.*kHooks[static_cast<std::size_t>(id - 1)])(
                         hostSession, operation, firstRows, runtime.RecordList(second), thirdRows);
                   });
  }

  bool Monitor(const std::string& directory, const DispatchPtr& session, LONG objectId, short classId,
               const std::string& idValue) {
    return Guarded(program_->ProgramTrace(), "Cannot call the hook (StartServerMon/StartApplication)", false,
                   [&] {
                     return program_->Entry().StartServerMon(directory, program_->Runtime().Session(session),
                                                             objectId, classId, idValue);
                   });
  }

  HRESULT Compiled(DISPID id, IDispatch* session, BSTR operation, IDispatch* first, IDispatch* second,
                   IDispatch** third, short* status) {
    if (status == nullptr) return E_POINTER;
    *status = CallHook(id, DispatchPtr(session), TextOf(operation), DispatchPtr(first), DispatchPtr(second),
                       DispatchPtr(third == nullptr ? nullptr : *third));
    return S_OK;
  }

  std::int16_t InvokeHook(DISPID id, const CallArguments& arguments) {
    return CallHook(id, ObjectAt(arguments, 0, "PcSession"), TextAt(arguments, 1),
                    ObjectAt(arguments, 2, "FirstRec"), ObjectAt(arguments, 3, "SecondRec"),
                    ObjectAt(arguments, 4, "thirdRec"));
  }

  bool InvokeMonitor(const CallArguments& arguments) {
    return Guarded(program_->ProgramTrace(), "Wrong arguments (StartServerMon/StartApplication)", false, [&] {
      const auto number = [&](UINT at) { return ToValue(*Required(arguments.At(at), "argument")); };
      return Monitor(TextAt(arguments, 0), ObjectAt(arguments, 1, "PcSession"), number(2).AsInt32(),
                     number(3).AsInt16(), TextAt(arguments, 4));
    });
  }

  // What is no object is told in the trace and counts as nothing, which the hook then refuses.
  DispatchPtr ObjectAt(const CallArguments& arguments, UINT position, const char* name) {
    return Guarded(program_->ProgramTrace(),
                   std::string("No object in ") + name + " (Invoke/StartApplication)", DispatchPtr(), [&] {
                     const VARIANT* const argument = arguments.At(position);
                     return argument == nullptr ? DispatchPtr() : ToObject(*argument);
                   });
  }
  std::string TextAt(const CallArguments& arguments, UINT position) {
    return Guarded(program_->ProgramTrace(), "No text in an argument (Invoke/StartApplication)",
                   std::string(), [&] {
                     const VARIANT* const argument = arguments.At(position);
                     return argument == nullptr ? std::string() : ToValue(*argument).AsText();
                   });
  }

  ModuleUse use_;
  std::shared_ptr<LoadedProgram> program_;
  LONG references_ = 1;
};

}  // namespace

IUnknown* NewEntryObject(Module& module, const ProgramSource& program) {
  return static_cast<_StartApplication*>(new EntryObject(module, program()));
}

}  // namespace tessel::automation
