// The stand-in client: databases opened by a script, and the hooks that the client calls by itself.
#pragma once

#include <map>
#include <memory>
#include <string>

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

class Application {
 public:
  explicit Application(Module& module) : module_(module) {}

  [[nodiscard]] PcSessionPtr OpenDatabase(const std::string& path, const std::string& user,
                                          const std::string& password, const std::string& language);
  // Makes a database from a model file.
  void CreateDatabase(const std::string& path, const std::string& model);
  [[nodiscard]] PcRecordListPtr NewRecordList() { return Host().CreateRecordList(); }
  [[nodiscard]] PcEnginePtr Engine() { return Host().RunningApplication()->Engine(); }
  // One row an object of "CLASS:OBJECT,...", as hooks are given them. The class by number or name.
  [[nodiscard]] PcRecordListPtr ObjectRows(PcSession& session, const std::string& objects);

  RememberingDialogs dialogs;
  // ProgID of the class whose LFCStage2 is called during a copy; empty: none.
  std::string hookClass = "prjTessel.StartApplication";

 private:
  // Error 91 before a database was opened.
  [[nodiscard]] embedded::EmbeddedHost& Host();
  void CallLfcStage2(const PcSessionPtr& session, const std::string& operation, const PcRecordListPtr& first,
                     const PcRecordListPtr& second, const PcRecordListPtr& third);

  Module& module_;
  Win32Platform platform_;
  std::unique_ptr<embedded::EmbeddedHost> host_;
  std::shared_ptr<MemberIds> ids_ = std::make_shared<MemberIds>();
};

// Registers itself as the running client as long as somebody holds it.
[[nodiscard]] IUnknown* NewApplicationObject(Module& module, REFCLSID classId);
// A record list of its own, as the class "PcRecList.PcRecordList" gives it.
[[nodiscard]] IUnknown* NewRecordListObject(Module& module);

}  // namespace tessel::automation
