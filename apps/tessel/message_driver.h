// Sits in front of a hook that shows no pages: prints what the user would have been told.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "headless/driver.h"

namespace tessel::cli {

class MessageDriver : public Driver {
 public:
  // Messages go to `messages`, the content of object dialogs to `content`.
  MessageDriver(std::ostream& messages, std::ostream& content) : messages_(messages), content_(content) {}

  // Message boxes shown so far; every one of these hooks is silent when all went well.
  [[nodiscard]] int Messages() const { return messageCount_; }
  // Object dialogs shown so far.
  [[nodiscard]] int Dialogs() const { return dialogCount_; }

  void Act(HeadlessToolkit& toolkit) override;
  [[nodiscard]] MessageAnswer Answer(const MessageRequest& request) override;
  int ShowObject(const embedded::ObjectDialogRequest& request) override;
  void ShowSystemMessage(const std::vector<std::string>& texts) override;

 private:
  std::ostream& messages_;
  std::ostream& content_;
  int messageCount_ = 0;
  int dialogCount_ = 0;
};

}  // namespace tessel::cli
