// The stand-in client: databases opened by a script, and the hooks that the client calls by itself.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "automation/standin/wrap_host.h"
#include "embedded/embedded_host.h"
#include "platform/win32/win32_platform.h"

namespace tessel::automation {

// Remembers what would have been shown, and answers as nobody would be there.
class RememberingDialogs : public embedded::UnattendedDialogs {
 public:
  int ShowObject(const embedded::ObjectDialogRequest& request) override;
  void ShowSystemMessage(const std::vector<std::string>& texts) override;
  // "CLASS:OBJECT" of the objects last shown, separated by commas.
  std::string shownObjects;
  std::string message;
};

// What sessions need of the client; they may outlive it.
struct ClientGround {
  Win32Platform platform;
  RememberingDialogs dialogs;
  // ProgID of the class whose LFCStage2 is called during a copy; empty: none.
  std::string hookClass = "prjTessel.StartApplication";
};

class Application {
 public:
  explicit Application(Module& module) : module_(module) {}

  [[nodiscard]] PcSessionPtr OpenDatabase(const std::string& path, const std::string& user,
                                          const std::string& password, const std::string& language);
  // Makes a database from a model file.
  void CreateDatabase(const std::string& path, const std::string& model);
  // These are of the database opened last; error 91 before one was opened.
  [[nodiscard]] PcRecordListPtr NewRecordList();
  [[nodiscard]] PcEnginePtr Engine() { return Host().RunningApplication()->Engine(); }
  [[nodiscard]] PcEnginePtr NewEngine() { return Host().CreateEngine(); }
  // One row an object of "CLASS:OBJECT,...", as hooks are given them. The class by number or name.
  [[nodiscard]] PcRecordListPtr ObjectRows(PcSession& session, const std::string& objects);
  [[nodiscard]] ClientGround& Ground() { return *ground_; }

 private:
  [[nodiscard]] embedded::EmbeddedHost& Host();

  Module& module_;
  std::shared_ptr<ClientGround> ground_ = std::make_shared<ClientGround>();
  std::unique_ptr<embedded::EmbeddedHost> host_;
};

// The loaded library: its use, and the clients that are alive, the newest last.
struct Library {
  Module module;
  std::vector<Application*> applications;
};

// Registers itself as the running client as long as somebody holds it.
[[nodiscard]] IUnknown* NewApplicationObject(Library& library, REFCLSID classId);
// An engine of the newest client, as the class "Pelicore.PcEngine" gives it. Error 429 when there is none.
[[nodiscard]] IUnknown* NewEngineObject(Library& library);
// A record list of its own, as the class "PcRecList.PcRecordList" gives it.
[[nodiscard]] IUnknown* NewRecordListObject(Library& library);

}  // namespace tessel::automation
