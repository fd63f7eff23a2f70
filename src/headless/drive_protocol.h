// The drive protocol: one JSON object a line in for what a person does, one JSON object a line out for what a
// person would see. docs/drive-protocol.md describes the lines.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "headless/driven_hooks.h"
#include "headless/driver.h"

namespace tessel {

class DriveProtocol : public Driver {
 public:
  // When `ended` says so, the input counts as ended.
  DriveProtocol(std::istream& input, std::ostream& output, std::function<bool()> ended = nullptr);
  ~DriveProtocol() override;

  // Performs commands until the input ends; then open windows are closed as at a system shutdown, boxes get
  // their safe answer and dialogs are cancelled. A bad line is answered by an error and passed over. Returns
  // the number of errors written.
  int Run(DrivenHooks& hooks, HeadlessToolkit& toolkit);

  void Act(HeadlessToolkit& toolkit) override;
  [[nodiscard]] MessageAnswer Answer(const MessageRequest& request) override;
  [[nodiscard]] int ChooseMenuItem(const Window& window, const PopupMenu& menu) override;
  void WindowShown(const Window& window) override;
  void WindowHidden(const Window& window) override;
  void WindowRedrawn(const Window& window) override;
  void EventsPumped(HeadlessToolkit& toolkit) override;
  void ProcessStarted(const std::string& program, const std::vector<std::string>& arguments,
                      std::int32_t processId) override;
  int ConfirmLifeCycle(const embedded::LifeCycleRequest& request) override;
  int ShowObject(const embedded::ObjectDialogRequest& request) override;
  std::vector<std::size_t> SelectObjects(const embedded::SelectionDialogRequest& request) override;
  embedded::LoginAnswer Login() override;
  void ShowSystemMessage(const std::vector<std::string>& texts) override;
  void RefreshObject(const ObjectKey& key, int mode) override;

 private:
  class Conversation;
  std::unique_ptr<Conversation> conversation_;
};

}  // namespace tessel
