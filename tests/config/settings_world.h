// A database in memory with a user, admin settings linked to it, and classes behind the mechanisms.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "config/admin_configuration_reader.h"
#include "config/deklarationen.h"
#include "embedded/embedded_host.h"
#include "embedded/host_dialogs.h"
#include "platform/posix/iconv_encodings.h"
#include "platform/posix/posix_file_system.h"
#include "support/recording_trace.h"
#include "support/temporary_folder.h"

namespace tessel::test {

// Shows nothing and keeps the message boxes.
class BoxToolkit : public Toolkit {
 public:
  void ShowModal(const std::shared_ptr<Window>&) override {}
  void Hide(Window&) override {}
  bool Unload(Window&, CloseReason) override { return true; }
  void BringToTop(Window&) override { ++broughtToTop; }
  void OpenPopupMenu(Window&, const PopupMenu&) override {}
  MessageAnswer ShowMessage(const MessageRequest& request) override {
    boxes.push_back(request);
    return MessageAnswer::kOk;
  }
  void PumpEvents() override {}
  void Redraw(Window&) override {}

  std::vector<MessageRequest> boxes;
  int broughtToTop = 0;
};

// "VRKX_VALUE_1" and the lines of "VRKX_VALUE_LONG" of one settings object.
struct Settings {
  std::string name;
  std::string text;
};

struct SettingsWorldOptions {
  std::vector<Settings> settings = {{"Initialization", ""}};
  // Mechanisms that the database knows, and how many classes support each.
  std::vector<std::pair<std::string, int>> mechanisms = {{"VRKX_DX_SUPPLIER_EXCH_DOC", 2},
                                                         {"VRKX_DX_TRANSMITTAL", 1},
                                                         {"VRKX_DX_SUPPLIER_COMPANY", 1},
                                                         {"VRKX_DX_SUPPLIER_CONT_PERSON", 1}};
  bool generalLink = true;
};

// Class ids: 10 users, 20 admin settings, then the mechanisms' classes from 100 on in steps of 100 for each
// mechanism. Object ids: 1 the user, from 11 on the settings.
class SettingsWorld {
 public:
  explicit SettingsWorld(const SettingsWorldOptions& options = {});

  TemporaryFolder folder;
  posix::PosixFileSystem files{folder.Path("drives")};
  posix::IconvEncodings encodings;
  embedded::UnattendedDialogs dialogs;
  std::unique_ptr<embedded::EmbeddedHost> host;
  PcSessionPtr session;
  RecordingTrace recording;
  BoxToolkit toolkit;
  Deklarationen declarations{recording.trace, toolkit, "/program",
                             [this] { return std::make_shared<AdminConfigurationReader>(recording.trace); }};
  std::shared_ptr<const TextEncoding> ansi = encodings.Open("windows-1252");
  ErrorHandling errors{files, *ansi, declarations};
};

}  // namespace tessel::test
