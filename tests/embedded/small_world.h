// A small database for the tests of the embedded host: documents in a structure, companies, users, a vault.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "embedded/embedded_host.h"
#include "embedded/model_file.h"
#include "host/services.h"
#include "platform/posix/posix_file_system.h"
#include "support/temporary_folder.h"

namespace tessel::test {

// Classes: 10 USERS, 11 State, 30 Object Locking, 900 Data Exchange, 1201 Assembly, 1202 Part; link classes
// 2000 General Link, 2001 Structure. Objects get the ids 100 (anna), 101 (ben); documents are added by
// `objects` and `links`, lists of JSON objects.
std::string SmallModel(const std::string& objects = "", const std::string& links = "");

// A document of SmallModel with a file of its own name in the model's directory.
std::string Document(const std::string& className, int id, const std::string& file = "",
                     const std::string& moreValues = "");
std::string Link(const std::string& className, int from, int to);

// Records what the host asks a person, and answers as told.
class RecordingDialogs : public embedded::UnattendedDialogs {
 public:
  int ConfirmLifeCycle(const embedded::LifeCycleRequest& request) override {
    lifeCycle.push_back(request);
    return lifeCycleAnswer;
  }
  int ShowObject(const embedded::ObjectDialogRequest& request) override {
    objects.push_back(request);
    return 1;
  }
  std::vector<std::size_t> SelectObjects(const embedded::SelectionDialogRequest& request) override {
    selections.push_back(request);
    return picks;
  }
  embedded::LoginAnswer Login() override { return login; }
  void ShowSystemMessage(const std::vector<std::string>& texts) override { systemMessages.push_back(texts); }
  void RefreshObject(const ObjectKey& key, int mode) override { refreshed.emplace_back(key, mode); }

  int lifeCycleAnswer = 1;
  std::vector<std::size_t> picks;
  embedded::LoginAnswer login;
  std::vector<embedded::LifeCycleRequest> lifeCycle;
  std::vector<embedded::ObjectDialogRequest> objects;
  std::vector<embedded::SelectionDialogRequest> selections;
  std::vector<std::vector<std::string>> systemMessages;
  std::vector<std::pair<ObjectKey, int>> refreshed;
};

class SmallWorld {
 public:
  // In memory, with a vault of real files.
  explicit SmallWorld(const std::string& objects = "", const std::string& links = "");

  [[nodiscard]] embedded::HostOptions Options();
  [[nodiscard]] PcObjectPtr Object(ClassId classId, ObjectId id) const {
    return session->ObjectStore()->Object({classId, id});
  }
  [[nodiscard]] PcObjectPtr NewObject(ClassId classId) const {
    return session->ObjectStore()->NewObject(classId);
  }
  // Rows of a free query as text: cells separated by "|", rows by "; ".
  [[nodiscard]] std::string Select(const std::string& sql) const;

  TemporaryFolder folder;
  posix::PosixFileSystem files;
  RecordingDialogs dialogs;
  std::unique_ptr<embedded::EmbeddedHost> host;
  PcSessionPtr session;  // anna
  PcBehaviorPtr behavior;
};

// Rows of a list as text: cells of the named columns separated by "|", rows by "; ".
std::string RowsText(const PcRecordList& list, const std::vector<std::string>& columns);

// Number and text of the error that the call throws; "" when it throws none.
template <class Call>
std::string ErrorOf(Call call) {
  try {
    call();
  } catch (const RuntimeError& error) {
    return std::to_string(error.Number()) + " " + error.what();
  }
  return {};
}

}  // namespace tessel::test
