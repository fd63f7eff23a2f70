// What the embedded client asks of a person: the port behind its own dialogs. The headless driver and the Qt
// windows implement it.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/object_key.h"

namespace tessel::embedded {

struct DialogObject {
  ObjectKey key;
  std::string description;
};

struct LifeCycleRequest {
  std::string operation;               // name as its class has it: "CopyFile", "CheckIn", ...
  std::string directory;               // target of a copy, empty otherwise
  std::vector<DialogObject> objects;   // the objects the operation was asked for
  std::vector<DialogObject> affected;  // all that it will touch, the objects themselves first
};

struct ObjectDialogRequest {
  int displayMode = 1;
  std::string title;
  int page = 0;
  bool modal = true;
  std::vector<ObjectKey> objects;
  // Attribute names and display texts of the first object, in class order.
  std::vector<std::pair<std::string, std::string>> attributes;
};

struct SelectionDialogRequest {
  std::string title;
  bool multiple = false;
  std::vector<DialogObject> candidates;
};

struct LoginAnswer {
  bool accepted = false;
  std::string loginName;
  std::string password;
};

// Host dialogs. Each call returns when the person has answered.
class HostDialogs {
 public:
  virtual ~HostDialogs() = default;
  // 1 run the operation, 2 cancel, 7 closed through the window frame.
  [[nodiscard]] virtual int ConfirmLifeCycle(const LifeCycleRequest& request) = 0;
  // 1 OK, 2 cancel. Called for modeless dialogs too; their answer is not looked at.
  [[nodiscard]] virtual int ShowObject(const ObjectDialogRequest& request) = 0;
  // Positions of the picked candidates; empty after cancel.
  [[nodiscard]] virtual std::vector<std::size_t> SelectObjects(const SelectionDialogRequest& request) = 0;
  [[nodiscard]] virtual LoginAnswer Login() = 0;
  virtual void ShowSystemMessage(const std::vector<std::string>& texts) = 0;
  // The client's windows are to show an object's new state.
  virtual void RefreshObject(const ObjectKey& key, int mode) = 0;
};

// Answers as nobody would be there to see them: operations run, dialogs close with OK, nothing is picked.
class UnattendedDialogs : public HostDialogs {
 public:
  int ConfirmLifeCycle(const LifeCycleRequest&) override { return 1; }
  int ShowObject(const ObjectDialogRequest&) override { return 1; }
  std::vector<std::size_t> SelectObjects(const SelectionDialogRequest&) override { return {}; }
  LoginAnswer Login() override { return {}; }
  void ShowSystemMessage(const std::vector<std::string>&) override {}
  void RefreshObject(const ObjectKey&, int) override {}
};

}  // namespace tessel::embedded
