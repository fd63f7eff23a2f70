// The add-on and the stand-in client as automation servers: values, hooks by script and by compiled callers,
// what no hook expects, whole exports, and what is left behind.
#include <gtest/gtest.h>
#include <prjTessel.h>
#include <winternl.h>

#include <filesystem>

#include "automation/automation_world.h"
#include "embedded/client/object_rows.h"
#include "embedded/embedded_host.h"
#include "support/expect_error.h"

namespace tessel::test {
namespace {

using automation::ComPtr;
using automation::ToObject;
using automation::ToValue;

constexpr const char* kHousing = "1202:4721";

// Steps of an export that is sent to nobody.
std::deque<std::wstring> ExportSteps() {
  return {L"{ENTER}", L"No sending", L"Next >>", L"Copy all", L"Process", L"Send"};
}

class AutomationTest : public testing::Test {
 protected:
  [[nodiscard]] PcSessionPtr Session() const {
    return world_.runtime.Session(ToObject(world_.session.Raw()));
  }

  Apartment apartment_;
  AutomationWorld world_;
};

TEST_F(AutomationTest, ValuesKeepTheirKindAndTheirCharacters) {
  const Value values[] = {Value(),
                          Value(std::int16_t{-32768}),
                          Value(std::int32_t{40000}),
                          Value(std::int32_t{7}),
                          Value(true),
                          Value(0.25),
                          Value(Date{45322.5}),
                          Value("Gr\xC3\xBC\xC3\x9F"
                                "e \xE2\x82\xAC \xF0\x9F\x98\x80"),
                          Value("")};
  const PcSessionPtr session = Session();
  PcGlobalData& data = session->GlobalData();
  for (const Value& value : values) {
    data.Set("x", value);
    const Value read = data.Get("x");
    EXPECT_EQ(read, value) << value.AsText();
    EXPECT_EQ(read.IsInt16(), value.IsInt16()) << value.AsText();
  }
  EXPECT_EQ(data.Position("x"), 1);
  data.Remove("x");
  EXPECT_TRUE(data.Get("x").IsNull());
  EXPECT_EQ(data.Position("x"), 0);
}

// Everything that can be read, as one text.
std::string Described(PcSession& session) {
  std::string text = session.CurrentUser()->LoginName() + session.DatabaseAlias() + session.Language() + "\n";
  const PcMetaDataPtr metaData = session.MetaData();
  for (int at = 0; at < metaData->ClassCount(); ++at) {
    const PcClassPtr each = metaData->ClassAt(at);
    text += std::to_string(each->Id()) + " " + each->Name() + " " + each->TableName() + " " +
            std::to_string(each->DefaultHierarchicalLinkClassId()) + BooleanText(each->IsFileBased());
    for (int attribute = 0; attribute < each->AttributeCount(); ++attribute)
      text += " " + each->Attribute(attribute)->Name();
    const PcLifeCycleOperationsPtr operations = each->LifeCycleOperations();
    text +=
        " " +
        ErrorOf([&] { text += operations ? " " + operations->Item("COPYFILE")->Name() : ""; }).substr(0, 4) +
        "\n";
  }
  const PcClassMechanismPtr documents = metaData->ClassMechanism("VRKX_DX_SUPPLIER_EXCH_DOC");
  text += std::to_string(documents->SupportedClassCount()) + BooleanText(documents->Supports(1201));
  text += BooleanText(metaData->ClassMechanism("none") == nullptr);
  const PcQueryPtr query = session.ObjectStore()->NewQuery();
  query->SetSql("SELECT * FROM " + metaData->ClassById(1202)->TableName() + " ORDER BY 1");
  const PcRecordListPtr rows = query->Run();
  for (int row = 0; row < rows->RowCount(); ++row) {
    for (int column = 0; column < rows->ColumnCount(); ++column)
      text += rows->ColumnName(column) + "=" + rows->GetValue(column, row).AsText() + ";";
  }
  const PcObjectPtr housing = session.ObjectStore()->Object({1202, 4721});
  housing->ReadData();
  text += housing->GetValue("VRK_DESCRIPTION").AsText() + housing->Class()->Name();
  text += BooleanText(housing->HasAttribute("none"));
  text += BooleanText(session.ObjectStore()->Object({1202, 1}) == nullptr);
  return text;
}

TEST_F(AutomationTest, TheClientReadsAlikeThroughAutomation) {
  NativePlatform platform;
  embedded::UnattendedDialogs dialogs;
  embedded::HostOptions options;
  options.files = &platform.Services().files;
  options.dialogs = &dialogs;
  embedded::EmbeddedHost host(world_.company.Database(), options);
  EXPECT_EQ(Described(*Session()), Described(*host.OpenSession("ben")));
}

TEST_F(AutomationTest, AFailingCallIsAnErrorWithNumberAndText) {
  const PcSessionPtr session = Session();
  const std::string error = ErrorOf([&] { (void)session->ObjectStore()->NewObject(12345); });
  EXPECT_NE(error.find("(PcObjectStore.NewObject)"), std::string::npos) << error;
  EXPECT_EQ(ErrorNumberOf([&] { world_.client.Call("NoSuchMember"); }), 438);
  EXPECT_EQ(ErrorNumberOf([&] { world_.client.Call("OpenDatabase"); }), 450);
  EXPECT_EQ(ErrorNumberOf([&] { (void)world_.Make("prjTessel.NoSuchClass"); }), 429);
  EXPECT_EQ(ErrorNumberOf([&] { (void)world_.runtime.Session(ToObject(world_.Rows(kHousing).Raw())); }), 438)
      << "a record list is no session";
}

TEST_F(AutomationTest, TheRunningClientIsFoundUntilItIsGone) {
  const PcApplicationPtr running = world_.runtime.RunningApplication();
  ASSERT_NE(running, nullptr);
  EXPECT_EQ(running->NewRecordList()->RowCount(), 0);
  EXPECT_EQ(running->Engine()->SessionCount(), 1);
  EXPECT_EQ(world_.runtime.CreateRecordList()->ColumnCount(), 0);
  EXPECT_EQ(world_.runtime.CreateEngine()->SessionCount(), 0);
  world_.client = LateBound();
  EXPECT_EQ(ErrorNumberOf([&] { (void)running->NewRecordList(); }), 462);
  EXPECT_EQ(world_.runtime.RunningApplication(), nullptr);
}

TEST_F(AutomationTest, ScriptsAndCompiledCallersAreServed) {
  EXPECT_EQ(world_.Call("collectselobjs", world_.Rows(kHousing)), 0);
  EXPECT_EQ(world_.Global("ExportObject1"), Value(kHousing));

  ComPtr<_StartApplication> compiled;
  ASSERT_EQ(
      world_.addOn.Object()->QueryInterface(IID__StartApplication, reinterpret_cast<void**>(compiled.Out())),
      S_OK);
  const DispatchPtr rows = ToObject(world_.Rows("1201:4711,1202:4723").Raw());
  const DispatchPtr session = ToObject(world_.session.Raw());
  IDispatch* third = rows.Get();
  short status = -1;
  EXPECT_EQ(compiled->CollectSelObjs(session.Get(), nullptr, rows.Get(), nullptr, &third, &status), S_OK);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(third, rows.Get()) << "the third list comes back untouched";
  EXPECT_EQ(world_.Global("ExportObjCount"), Value("3"));

  // A script's variables come by reference, in a variant.
  Variant first = world_.Rows("1202:4724");
  Variant none;
  VARIANT arguments[5] = {};
  Variant operation(std::string{});
  for (auto [position, value] : {std::pair(0, &none), std::pair(1, &none), std::pair(2, &first),
                                 std::pair(3, &operation), std::pair(4, &world_.session)}) {
    arguments[position].vt = VT_BYREF | VT_VARIANT;
    arguments[position].pvarVal = &value->Raw();
  }
  DISPPARAMS parameters{arguments, nullptr, 5, 0};
  Variant answer;
  EXPECT_EQ(compiled->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, &parameters, &answer.Raw(), nullptr, nullptr),
            S_OK);
  EXPECT_EQ(ToValue(answer.Raw()), Value(std::int16_t{0}));
  EXPECT_EQ(world_.Global("ExportObjCount"), Value("4"));
}

TEST_F(AutomationTest, TypesAreDescribedInTheFile) {
  ComPtr<ITypeInfo> info;
  ASSERT_EQ(world_.addOn.Object()->GetTypeInfo(0, 0, info.Out()), S_OK);
  const wchar_t* names[] = {L"StartExport",  L"CollectSelObjs",     L"LFCStage2",         L"LockObject",
                            L"UnlockObject", L"GetLatestDataExObj", L"ContinueBatchMode", L"StartServerMon"};
  DISPID expected = 0;
  for (const wchar_t* name : names) {
    MEMBERID id = 0;
    auto* text = const_cast<wchar_t*>(name);
    EXPECT_EQ(info->GetIDsOfNames(&text, 1, &id), S_OK);
    EXPECT_EQ(id, ++expected);
  }
}

TEST_F(AutomationTest, RubbishGivesStatusesAndNoErrors) {
  world_.WorkPages({});
  Ticks boxes([] {
    if (const HWND box = DialogOfThread()) PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  Variant wrong = world_.Rows(kHousing);
  const Variant anything[] = {Variant(),
                              Variant(Value()),
                              Variant(DispatchPtr()),
                              Variant(std::int32_t{5}),
                              Variant(Value(1e300)),
                              Variant(std::string("text")),
                              Variant(true),
                              Variant(Value(Date{1e9})),
                              automation::TextArray({"a"}),
                              wrong};
  for (const char* hook :
       {"StartExport", "CollectSelObjs", "LFCStage2", "LockObject", "UnlockObject", "ContinueBatchMode"}) {
    for (const Variant& each : anything) {
      const Variant answer = world_.addOn.Get(hook, each, each, each, each, each);
      EXPECT_EQ(answer.Raw().vt, VT_I2) << hook;
      EXPECT_EQ(answer.Raw().iVal, std::string(hook) == "StartExport" ? 1 : 0) << hook;
      EXPECT_EQ(world_.addOn.Get(hook, world_.session, each, each, each, each).Raw().vt, VT_I2) << hook;
    }
  }
  for (const Variant& each : anything) {
    EXPECT_EQ(world_.addOn.Get("GetLatestDataExObj", each, each, each).Raw().vt, VT_I2);
    EXPECT_EQ(world_.addOn.Get("StartServerMon", each, each, std::string("x"), each, each).Raw().vt, VT_BOOL);
  }
  EXPECT_EQ(ErrorNumberOf([&] { world_.addOn.Call("LockObject"); }), 450);
  EXPECT_EQ(world_.Call("CollectSelObjs", world_.Rows(kHousing)), 0) << "and then it works as ever";
}

TEST_F(AutomationTest, AnExportIsClickedThrough) {
  EXPECT_EQ(world_.Call("CollectSelObjs", world_.Rows("1201:4711")), 0);
  world_.WorkPages(ExportSteps());
  EXPECT_EQ(world_.Call("StartExport", Variant(DispatchPtr())), 0);
  EXPECT_TRUE(world_.PagesAreWorked());
  const std::vector<std::string> files = world_.company.Exchanged();
  EXPECT_EQ(std::count_if(files.begin(), files.end(),
                          [](const std::string& name) { return name.ends_with("Kestrix_Structure.xml"); }),
            1);
  EXPECT_TRUE(world_.Global("ExportObjCount").IsNull());
}

TEST_F(AutomationTest, LocksAreSetAndLifted) {
  const auto lockedBy = [&] {
    const PcObjectPtr document = Session()->ObjectStore()->Object({1202, 4721});
    document->ReadData();
    return document->GetValue("VRKX_DX_LOCK_STATE").AsText();
  };
  const std::string before = lockedBy();
  EXPECT_EQ(world_.Call("LockObject", world_.Rows(kHousing)), 0);
  const std::string locked = lockedBy();
  EXPECT_NE(locked, before);
  EXPECT_EQ(world_.Call("UnlockObject", world_.Rows(kHousing)), 0);
  EXPECT_EQ(lockedBy(), before);
}

// Handles of this process, and bytes of its heaps that are taken; asked for in the ways that Wine answers,
// too.
struct Use {
  ULONG handles = 0;
  std::size_t memory = 0;
};

ULONG HandlesOfProcess() {
  std::vector<BYTE> buffer(1 << 20);
  ULONG size = 0;
  if (NtQuerySystemInformation(SystemProcessInformation, buffer.data(), static_cast<ULONG>(buffer.size()),
                               &size) != 0)
    return 0;
  for (std::size_t at = 0;;) {
    const auto& process = *reinterpret_cast<const SYSTEM_PROCESS_INFORMATION*>(buffer.data() + at);
    if (process.UniqueProcessId == ULongToHandle(::GetCurrentProcessId())) return process.HandleCount;
    if (process.NextEntryOffset == 0) return 0;
    at += process.NextEntryOffset;
  }
}

Use UseOfProcess() {
  Use use;
  HANDLE heaps[64];
  const DWORD count = ::GetProcessHeaps(64, heaps);
  for (DWORD i = 0; i < count && i < 64; ++i) {
    PROCESS_HEAP_ENTRY entry{};
    ::HeapLock(heaps[i]);
    while (::HeapWalk(heaps[i], &entry) != 0) {
      if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) use.memory += entry.cbData;
    }
    ::HeapUnlock(heaps[i]);
  }
  use.handles = HandlesOfProcess();
  return use;
}

TEST_F(AutomationTest, ManyExportsLeaveNothingBehind) {
  const char* const wanted = std::getenv("TESSEL_MANY_EXPORTS");
  const int exports = wanted == nullptr ? 10 : std::atoi(wanted);
  constexpr int kWarm = 5;
  Use before;
  for (int i = 0; i < exports + kWarm; ++i) {
    if (i == kWarm) before = UseOfProcess();
    ASSERT_EQ(world_.Call("CollectSelObjs", world_.Rows(kHousing)), 0);
    world_.WorkPages(ExportSteps());
    ASSERT_EQ(world_.Call("StartExport", Variant(DispatchPtr())), 0);
  }
  const Use after = UseOfProcess();
  std::printf("%d exports: handles %lu to %lu, memory %zu to %zu KB\n", exports, before.handles,
              after.handles, before.memory / 1024, after.memory / 1024);
  EXPECT_GT(before.handles, 0U) << "not counted";
  EXPECT_GT(before.memory, 0U) << "not counted";
  EXPECT_LE(after.handles, before.handles + 3);
  // What grows with the database, at most.
  EXPECT_LE(after.memory, before.memory + static_cast<std::size_t>(exports) * 4 * 1024 + 64 * 1024);
}

TEST(Unloading, TheLibrariesGoWhenNothingUsesThem) {
  const Apartment apartment;
  for (int round = 0; round < 2; ++round) {
    {
      const AutomationWorld world;
      EXPECT_EQ(world.Call("CollectSelObjs", world.Rows(kHousing)), 0);
      EXPECT_TRUE(IsLoaded(L"prjTessel.dll") && IsLoaded(L"pelicore.dll"));
    }
    EXPECT_FALSE(IsLoaded(L"prjTessel.dll"));
    EXPECT_FALSE(IsLoaded(L"pelicore.dll"));
  }
}

}  // namespace
}  // namespace tessel::test
