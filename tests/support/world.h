// A small company in a database in memory, the whole program on top of it, and a scripted person in front:
// for tests of the wizard and of whole hooks.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "embedded/embedded_host.h"
#include "entry/program.h"
#include "entry/start_application.h"
#include "headless/headless_toolkit.h"
#include "headless/reporting_launcher.h"
#include "host/error.h"
#include "platform/posix/posix_platform.h"
#include "support/recording_trace.h"
#include "support/script_driver.h"
#include "support/temporary_folder.h"

namespace tessel::test {

// Lines of an INI text by section.
using SettingLines = std::map<std::string, std::vector<std::string>>;

struct WorldOptions {
  // Of the settings "Initialization"; they win over the world's own, which name the exchange directory
  // "exchange" and the catalogue folder "catalogue" of the world's folder.
  SettingLines settings = {};
  // Of the settings "DRAXASettings" of Acme and of Smith; without lines there are none.
  SettingLines companySettings = {};
  SettingLines contactSettings = {};
  // Off: the database has no class mechanism for folder structures.
  bool folderStructures = true;
  // Released documents 1202:1001 and following, without files' content of interest.
  int moreParts = 0;
};

// What the additional-values component was asked: "edit" or "apply", customer, contact and directory.
using AdditionalValuesCalls = std::vector<std::string>;

// Documents: 1201:1 (assembly "A-1", Gearbox, over 1202:2), 1202:2 ("P-2", Shaft), 1202:3 ("P-3", Bolt),
// 1202:4
// ("P-4", no description). Companies: 901:11 Acme, Hull; 901:12 Bolt; 901:13 Closed (inactive). Contact
// persons: 902:21 Smith, Jo, of Acme, and below him 902:22 Jones, Al, who leads back to him; 902:23 Old
// (inactive) of Acme; 902:24 Brown of Bolt, without mail address. Folder structures of 1201:1: 910:41
// Standard, 910:42 Flat. 900 is the data exchange class. User "anna", time 2024-01-31 15:45:02.
class World {
 public:
  explicit World(const WorldOptions& options = {});
  // A world with settings "Initialization" of its own.
  explicit World(const SettingLines& settings) : World(WorldOptions{settings}) {}

  static constexpr ObjectKey kGearbox{1201, 1};
  static constexpr ObjectKey kShaft{1202, 2};
  static constexpr ObjectKey kBolt{1202, 3};
  static constexpr ObjectKey kNameless{1202, 4};

  // Selects released objects through the hook.
  void Select(const std::vector<ObjectKey>& keys);
  // Runs the hook StartExport; the script must bring the wizard to its end.
  std::int16_t Export(const std::string& operation = {});

  // A list with "OBJECT_ID", "CLASS_ID" and "STATE" (released).
  [[nodiscard]] PcRecordListPtr ObjectList(const std::vector<ObjectKey>& keys);
  // The newest window of a page; the test ends when it was never shown.
  [[nodiscard]] Window& PageWindow(const std::string& name) const;
  template <class ControlType>
  [[nodiscard]] ControlType& ControlOf(const std::string& page, const std::string& id) const {
    return dynamic_cast<ControlType&>(*Required(PageWindow(page).FindById(id), id.c_str()));
  }
  // Text of a value of the session's global data; "Null" when it is not there.
  [[nodiscard]] std::string GlobalText(const std::string& name) const;
  [[nodiscard]] bool Traced(const std::string& text) const { return trace->Has(text); }
  [[nodiscard]] WizardState& Wizard() { return program.wizard.state; }
  [[nodiscard]] std::string ExchangePath() const { return folder.Path("exchange"); }

  class FixedClock : public Clock {
   public:
    [[nodiscard]] LocalTime Now() const override { return {2024, 1, 31, 15, 45, 2}; }
  };
  class CountingPauser : public Pauser {
   public:
    void Sleep(std::chrono::milliseconds time) override { total += time; }
    std::chrono::milliseconds total{0};
  };
  class FakeLauncher : public ProcessLauncher {
   public:
    std::int32_t Start(const std::string&, const std::vector<std::string>&) override { return processId; }
    std::int32_t processId = 4711;  // 0: programs do not start
  };

  TemporaryFolder folder;
  ScriptDriver driver;
  HeadlessToolkit toolkit{driver};
  std::shared_ptr<RecordingTraceWriter> trace = std::make_shared<RecordingTraceWriter>();
  AdditionalValuesCalls additionalValues;
  FixedClock clock;
  CountingPauser pauser;
  FakeLauncher launcher;
  ReportingLauncher reportingLauncher{launcher, driver};
  PosixPlatform posix;
  Platform platform;
  embedded::EmbeddedHost host;
  Program program;
  StartApplication application{program};
  PcSessionPtr session;
};

}  // namespace tessel::test
