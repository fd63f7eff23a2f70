// Outside components in place of those built in, and clients that answer what none should.
#include <gtest/gtest.h>

#include <fstream>

#include "automation/automation_world.h"
#include "automation/server/class_factory.h"
#include "automation/standin/scripted_object.h"
#include "platform/native/native_platform.h"
#include "platform/win32/wide_text.h"
#include "support/expect_error.h"

namespace tessel::test {
namespace {

using automation::Arguments;
using automation::ComPtr;
using automation::Member;

// {6A0D3F5E-91B2-4C78-A4E3-0B5C7D92E1F8}
constexpr CLSID kTracer = {0x6a0d3f5e, 0x91b2, 0x4c78, {0xa4, 0xe3, 0x0b, 0x5c, 0x7d, 0x92, 0xe1, 0xf8}};
constexpr const wchar_t* kKey = L"Software\\Classes\\TesselTest.Tracer";

// A class of this process under a ProgID of the machine, as long as it lives.
class OwnClass {
 public:
  OwnClass(automation::Module& module, std::vector<Member> members) {
    wchar_t id[40];
    (void)::StringFromGUID2(kTracer, id, 40);
    ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, (std::wstring(kKey) + L"\\CLSID").c_str(), nullptr, REG_SZ, id,
                      static_cast<DWORD>((wcslen(id) + 1) * sizeof(wchar_t)));
    ComPtr<IUnknown> factory;
    (void)automation::NewClassFactory(
        module,
        [&module, members] {
          return automation::NewScriptedObject(module, "Tracer", nullptr, members).Detach();
        },
        IID_IUnknown, reinterpret_cast<void**>(factory.Out()));
    (void)::CoRegisterClassObject(kTracer, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &entry_);
  }
  ~OwnClass() {
    ::CoRevokeClassObject(entry_);
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, kKey);
  }
  OwnClass(const OwnClass&) = delete;
  OwnClass& operator=(const OwnClass&) = delete;

 private:
  DWORD entry_ = 0;
};

// The settings file beside the add-on, which is built into the folder of the tests.
struct LocalSettings {
  explicit LocalSettings(const std::string& text)
      : path(windows::ToWide(RunningProgram().directory + "\\prjTessel.ini")) {
    std::ofstream(std::filesystem::path(path), std::ios::binary) << text;
  }
  ~LocalSettings() { ::DeleteFileW(path.c_str()); }
  std::wstring path;
};

TEST(Components, ATraceWriterOfTheSiteIsCalled) {
  const Apartment apartment;
  automation::Module module;
  std::vector<std::string> written;
  const OwnClass tracer(module, {{"WriteEntry", [&written](const Arguments& a) {
                                    written.push_back(a.Text(0) + "|" + a.Text(4));
                                    return Variant();
                                  }}});
  const LocalSettings settings(
      "[Trace]\r\nTraceOn=True\r\n[Components]\r\nTraceWriter=TesselTest.Tracer\r\n"
      "ConfigurationReader=TesselTest.None\r\n");
  {
    const AutomationWorld world;
    EXPECT_EQ(world.Call("CollectSelObjs", world.Rows("1202:4721")), 0);
    EXPECT_EQ(world.Global("ExportObjCount"), Value("1"));
  }
  const auto found = [&](const char* text) {
    return std::any_of(written.begin(), written.end(),
                       [&](const std::string& line) { return line.find(text) != std::string::npos; });
  };
  EXPECT_TRUE(found("the status is correct"));
  EXPECT_TRUE(found("_Client_SelectObjects"));
}

TEST(Components, AClientWithoutAMemberIsToldInTheTrace) {
  const Apartment apartment;
  automation::Module module;
  std::vector<std::string> written;
  const OwnClass tracer(
      module, {{"WriteEntry", [&written](const Arguments& a) {
                  written.push_back(a.Text(0) + " " + std::to_string(a.Number(1)) + " " + a.Text(2));
                  return Variant();
                }}});
  const LocalSettings settings(
      "[Trace]\r\nTraceOn=True\r\n[Components]\r\nTraceWriter=TesselTest.Tracer\r\n");
  const AutomationWorld world;
  const Ticks boxes([] {
    if (const HWND box = DialogOfThread()) PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  // A session that has global data and nothing else, and fails even in that.
  const DispatchPtr poor = automation::NewScriptedObject(
      module, "PcSession", nullptr,
      {{"GlobalData", [](const Arguments&) -> Variant { throw HostError("the database is gone", 3456); }}});
  const Variant nothing{DispatchPtr()};
  const Variant status = world.addOn.Get("CollectSelObjs", Variant(poor), std::string(),
                                         world.Rows("1202:4721"), nothing, nothing);
  EXPECT_EQ(automation::ToValue(status.Raw()), Value(std::int16_t{0}));
  const bool told = std::any_of(written.begin(), written.end(), [](const std::string& line) {
    return line.find(" 3456 the database is gone (PcSession.GlobalData)") != std::string::npos;
  });
  EXPECT_TRUE(told) << (written.empty() ? "nothing was written" : written.back());
}

}  // namespace
}  // namespace tessel::test
