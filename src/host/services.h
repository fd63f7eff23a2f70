// Service objects that a session creates by ProgID: life cycle, dialogs, window refresh, messages.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/error.h"
#include "host/metadata.h"
#include "host/object.h"
#include "host/object_store.h"
#include "host/record_list.h"
#include "host/session.h"

namespace tessel {

// Runs life-cycle operations without a window.
class PcSessionUtil : public PcService {
 public:
  static constexpr const char* kProgId = "PcUtil.PcSessionUtil";
  // Runs an operation on one object. `records` may be nothing; `parameters` holds the operation's settings
  // in row 0 ("DIRECTORY", "OPERATION_ID", "FILE_OVERWRITE" for a copy). During "COPYFILE" the client calls
  // the hook LFCStage2 before this returns. Error: HostError when the operation fails.
  virtual void RunOperation(PcObject& object, const PcLifeCycleOperation& operation, bool silent,
                            const PcRecordListPtr& records, const PcRecordListPtr& parameters) = 0;
};

// What LifeCycleView::Result gives; kNone before the window was shown.
enum class LifeCycleViewResult : std::int16_t { kNone = 0, kDone = 1, kCancelled = 2, kClosed = 7 };

// The client's window for a life-cycle operation.
class PcLifeCycleView {
 public:
  virtual ~PcLifeCycleView() = default;
  // What the window works on and does; set before Show. The flag is the client's own option.
  virtual void SetObjects(PcObjectListPtr objects) = 0;
  virtual void SetOperation(PcLifeCycleOperationPtr operation) = 0;
  virtual void SetFlag(bool flag) = 0;
  virtual void SetComment(const std::string& comment) = 0;
  // Modal. A copy takes its directory from the session's global data value "ExDir".
  virtual void Show() = 0;
  // 1 done, 2 or 7 cancelled, other values as the client reports them.
  [[nodiscard]] virtual std::int16_t Result() const = 0;
};

class PcLoginDialog {
 public:
  virtual ~PcLoginDialog() = default;
  // 1 when somebody logged in.
  [[nodiscard]] virtual std::int16_t ShowModal() = 0;
};

struct SelectionRequest {
  std::string code;  // "F"
  ClassId classId = 0;
  std::string title;
  bool multiple = false;
  bool composite = false;  // offer the class and what hangs below it
};

class PcCommonGUI : public PcService {
 public:
  static constexpr const char* kProgId = "PcGUISrv.PcCommonGUI";
  [[nodiscard]] virtual std::shared_ptr<PcLifeCycleView> NewLifeCycleView() = 0;
  [[nodiscard]] virtual std::shared_ptr<PcLoginDialog> NewLoginDialog() = 0;
  // Objects that the user picked, one row each; nothing when the dialog was cancelled.
  [[nodiscard]] virtual PcRecordListPtr SelectObjects(const SelectionRequest& request) = 0;
  // The object that the user picked from a saved or free query; nothing when cancelled.
  [[nodiscard]] virtual PcObjectPtr SelectFromQuery() = 0;
};

// The client's object dialog.
class PcObjectDialog {
 public:
  virtual ~PcObjectDialog() = default;
  // One object, or several to leaf through; set before the dialog is shown.
  virtual void SetObject(PcObjectPtr object) = 0;
  virtual void SetObjects(PcObjectListPtr objects) = 0;
  virtual void SetModeValue(int value) = 0;
  virtual void SetTitle(const std::string& title) = 0;
  // Pages are numbered from 1.
  [[nodiscard]] virtual int PageCount() const = 0;
  virtual void SelectPage(int page) = 0;
  virtual void ShowModeless() = 0;
  // 1 when the user left the dialog with OK.
  [[nodiscard]] virtual std::int16_t ShowModal() = 0;
  // The object as the user left it; nothing before one was set.
  [[nodiscard]] virtual PcObjectPtr Object() const = 0;
};

class PcActiveWindow {
 public:
  virtual ~PcActiveWindow() = default;
  // Draws the object anew where the window shows it; the mode is the client's own.
  virtual void RefreshObject(const ObjectKey& key, int mode) = 0;
};

class PcGUIServices : public PcService {
 public:
  static constexpr const char* kProgId = "PcGUISrv.PcGUIServices";
  // A dialog built for a display mode from 0 to 10.
  [[nodiscard]] virtual std::shared_ptr<PcObjectDialog> NewObjectDialog(int displayMode) = 0;
  // Nothing when the client has no window open.
  [[nodiscard]] virtual std::shared_ptr<PcActiveWindow> ActiveWindow() = 0;
  // A box of the client with a message of its catalogue, by its two numbers, and texts to fill in.
  virtual void ShowSystemMessage(int first, int second, const std::vector<std::string>& texts) = 0;
};

class PcMessage {
 public:
  virtual ~PcMessage() = default;
  // Kind 1 is the recipient, kind 2 the sender.
  virtual void SetAddress(const std::string& address, int kind) = 0;
  virtual void SetSubject(const std::string& subject) = 0;
  virtual void SetText(const std::string& text) = 0;
  // Hands the message to the host's mail. Error: HostError when it takes none.
  virtual void Submit(int sendOption) = 0;
};

class PcMessageStore : public PcService {
 public:
  static constexpr const char* kProgId = "PelicoreMessages.PcMessageStore";
  [[nodiscard]] virtual std::shared_ptr<PcMessage> NewMessage() = 0;
};

// The service of a type. Error 429 when the session has none, 13 when it is of another kind.
template <class Service>
std::shared_ptr<Service> CreateService(PcSession& session) {
  auto service = std::dynamic_pointer_cast<Service>(session.CreateService(Service::kProgId));
  if (!service) {
    throw RuntimeError(error_number::kTypeMismatch,
                       std::string("Type mismatch: ") + Service::kProgId + " has another interface");
  }
  return service;
}

}  // namespace tessel
