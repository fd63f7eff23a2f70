// A small database with lockable documents, and programs of several users on it.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "config/services.h"
#include "embedded/embedded_host.h"
#include "platform/posix/posix_platform.h"
#include "selection/start_up.h"
#include "support/recording_trace.h"
#include "support/temporary_folder.h"

namespace tessel::test {

// A person who answers every box with OK and every dialog with its default. What he sees, one line each:
//   box "title" information "text"
//   refresh 1201:1 mode 1
//   object dialog mode 1 "title" page 1 modal 900:42
class Onlooker : public Toolkit, public embedded::UnattendedDialogs {
 public:
  void ShowModal(const std::shared_ptr<Window>&) override {}
  void Hide(Window&) override {}
  bool Unload(Window&, CloseReason) override { return true; }
  void BringToTop(Window&) override {}
  void OpenPopupMenu(Window&, const PopupMenu&) override {}
  MessageAnswer ShowMessage(const MessageRequest& request) override;
  void PumpEvents() override {}
  void Redraw(Window&) override {}
  int ShowObject(const embedded::ObjectDialogRequest& request) override;
  void RefreshObject(const ObjectKey& key, int mode) override;

  [[nodiscard]] std::string Take() { return std::exchange(seen_, {}); }

 private:
  std::string seen_;
};

struct WorldOptions {
  std::string lockDescription = "VRK_DESCRIPTION";  // the description attribute of lock records
  std::string settings = "\"[Lock]\"";              // lines of the admin setting object, as JSON texts
};

// The model's text. Documents 1201:1 "A-1", 1201:2 "A-2" (identified by VRK_ID) and 1202:3 "P-3" (by CN_ID);
// exchanges 900:17, 900:42 and 900:30 of 1201:1, the second linked the other way round. Users anna, bert,
// rolf (role "Unlock"), ruth (role "unlock") and admin (an administrator), user objects 51 to 55.
[[nodiscard]] std::string LockingModel(const WorldOptions& options = {});

// The rows of documents as a hook gets them: ids, the life-cycle state, and "row 0", "row 1" ... in "VRK_ID".
[[nodiscard]] PcRecordListPtr DocumentRows(HostRuntime& runtime, const std::vector<ObjectKey>& keys,
                                           const Value& state);

// What every program on one machine shares.
class Machine {
 public:
  Machine();
  TemporaryFolder folder;
  Onlooker user;
  PosixPlatform posix;
  [[nodiscard]] Platform& Services() { return posix.Services(); }
  [[nodiscard]] embedded::HostOptions HostOptions();
};

// One loaded program of a logged-in user.
class LoadedProgram {
 public:
  LoadedProgram(Machine& machine, embedded::EmbeddedHost& host, const std::string& login,
                std::shared_ptr<RecordingTraceWriter> traceWriter = std::make_shared<RecordingTraceWriter>());

  bool Lock(const PcRecordListPtr& rows);
  bool Unlock(const PcRecordListPtr& rows);

  RecordingTrace trace;
  PcSessionPtr session;
  Deklarationen declarations;
  std::shared_ptr<const TextEncoding> ansi;
  ErrorHandling errors;
  Services services;
  StartUpState startUp;
};

class LockingWorld {
 public:
  explicit LockingWorld(const WorldOptions& options = {});

  // The program of a user; made at the first call.
  LoadedProgram& Program(const std::string& login);
  [[nodiscard]] PcObjectPtr Object(ClassId classId, ObjectId id);
  // Writes attributes of an object.
  void Set(ClassId classId, ObjectId id, const std::vector<std::pair<std::string, Value>>& values);
  [[nodiscard]] PcRecordListPtr Rows(const std::vector<ObjectKey>& keys,
                                     const Value& state = std::int16_t{1}) {
    return DocumentRows(host, keys, state);
  }

  // Every row of every table: "TABLE OBJECT_ID=1 ...", empty values left out.
  using Snapshot = std::set<std::string>;
  [[nodiscard]] Snapshot Database();
  // What changed since a snapshot, "- row" for what went and "+ row" for what came, one line each.
  [[nodiscard]] std::string Changes(const Snapshot& before);
  [[nodiscard]] std::string Seen() { return machine.user.Take(); }

  Machine machine;
  embedded::EmbeddedHost host;

 private:
  std::map<std::string, std::unique_ptr<LoadedProgram>> programs_;
};

}  // namespace tessel::test
