#include "win32/accessibility.h"

#include <objbase.h>
// behind it
#include <initguid.h>
// behind it
#include <oleacc.h>

#include "win32/text.h"

namespace tessel::win32 {
namespace {

// AutomationId_Property_GUID of UI Automation.
constexpr GUID kAutomationId = {0xC82C0500, 0xB60E, 0x4310, {0xA2, 0x67, 0x30, 0x3C, 0x53, 0x1F, 0x8E, 0xE5}};

void Tell(IAccPropServices& services, HWND control, const GUID& property, const std::string& text) {
  services.SetHwndPropStr(control, static_cast<DWORD>(OBJID_CLIENT), CHILDID_SELF, property,
                          ToWide(text).c_str());
}

}  // namespace

// A system without these services, or a thread without COM, reads the captions that the controls show.
void Announce(HWND control, const std::string& id, const std::string& spoken) {
  IAccPropServices* services = nullptr;
  const HRESULT made = CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER,
                                        IID_IAccPropServices, reinterpret_cast<void**>(&services));
  if (FAILED(made)) return;
  Tell(*services, control, PROPID_ACC_NAME, spoken);
  Tell(*services, control, kAutomationId, id);
  services->Release();
}

}  // namespace tessel::win32
