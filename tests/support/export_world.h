// A small database in memory and the services of one program, for tests of what an export does below its
// pages.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "config/services.h"
#include "embedded/embedded_host.h"
#include "platform/posix/posix_platform.h"
#include "support/recording_trace.h"
#include "support/temporary_folder.h"

namespace tessel::test {

// Records what it is asked to show: "icon|title|text". Boxes are answered with OK.
class RecordingToolkit : public Toolkit {
 public:
  void ShowModal(const std::shared_ptr<Window>&) override {}
  void Hide(Window&) override {}
  bool Unload(Window&, CloseReason) override { return true; }
  void BringToTop(Window&) override {}
  void OpenPopupMenu(Window&, const PopupMenu&) override {}
  MessageAnswer ShowMessage(const MessageRequest& request) override;
  void PumpEvents() override {}
  void Redraw(Window&) override {}

  std::vector<std::string> boxes;
};

class FixedClock : public Clock {
 public:
  [[nodiscard]] LocalTime Now() const override { return {2024, 1, 31, 15, 45, 2}; }
};

class RecordingPauser : public Pauser {
 public:
  void Sleep(std::chrono::milliseconds time) override { pauses.push_back(static_cast<int>(time.count())); }
  std::vector<int> pauses;
};

class RecordingLauncher : public ProcessLauncher {
 public:
  std::int32_t Start(const std::string& program, const std::vector<std::string>& arguments) override;
  // The program and its arguments, one line a start.
  std::vector<std::string> starts;
  std::int32_t processId = 4711;
};

// Answers the life-cycle view as it is told, all else as nobody would.
class AnsweringDialogs : public embedded::UnattendedDialogs {
 public:
  int ConfirmLifeCycle(const embedded::LifeCycleRequest&) override { return lifeCycleAnswer; }
  int lifeCycleAnswer = 1;
};

// Lines of the INI texts; without lines the settings object is left out.
struct WorldSettings {
  std::vector<std::string> initialization = {};
  std::vector<std::string> company = {};  // "DRAXASettings" of Acme
  std::vector<std::string> contact = {};  // "DRAXASettings" of Smith
};

// The database: documents 1201:1 (assembly "A-1", Gearbox), 1202:2 ("P-2", Shaft) and 1202:3 ("P-3", no
// file), 1203:4 (a note, no exchange document), 1204:5 (no file class); companies 901:11 (Acme) and 901:12
// (Bolt) with contact persons 902:21 (Smith) and 902:22 (Jones). 900 is the data exchange class. User "anna".
class ExportWorld {
 public:
  explicit ExportWorld(const WorldSettings& settings = {});

  // A list with "OBJECT_ID", "CLASS_ID" and, when states are given, "STATE".
  [[nodiscard]] PcRecordListPtr ObjectList(const std::vector<ObjectKey>& keys,
                                           const std::vector<Value>& states = {});
  // Value of an attribute of an object as it stands in the database.
  [[nodiscard]] std::string Stored(const ObjectKey& key, const std::string& attribute);
  // Second ends of the links that lead from an object through the general link class, "class:object".
  [[nodiscard]] std::vector<std::string> LinkedTo(const ObjectKey& key);
  [[nodiscard]] bool Traced(const std::string& text) const { return trace.writer->Has(text); }

  TemporaryFolder folder;
  RecordingTrace trace;
  RecordingToolkit toolkit;
  FixedClock clock;
  RecordingPauser pauser;
  RecordingLauncher launcher;
  PosixPlatform posix;
  Platform platform;
  AnsweringDialogs dialogs;
  embedded::EmbeddedHost host;
  Deklarationen declarations;
  std::shared_ptr<const TextEncoding> ansi;
  ErrorHandling errors;
  Services services;
  PcSessionPtr session;
};

}  // namespace tessel::test
