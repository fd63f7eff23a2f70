// Sits in front of a hook that shows no pages: keeps and prints what the user would have been told.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "headless/driver.h"

namespace tessel::cli {

class MessageDriver : public Driver {
 public:
  // Messages go to `messages` at once.
  explicit MessageDriver(std::ostream& messages) : messages_(messages) {}

  // Texts of the message boxes so far; every one of these hooks is silent when all went well.
  [[nodiscard]] const std::vector<std::string>& Messages() const { return texts_; }
  // Object dialogs so far.
  [[nodiscard]] const std::vector<embedded::ObjectDialogRequest>& Objects() const { return objects_; }

  void Act(HeadlessToolkit& toolkit) override;
  [[nodiscard]] MessageAnswer Answer(const MessageRequest& request) override;
  int ShowObject(const embedded::ObjectDialogRequest& request) override;
  void ShowSystemMessage(const std::vector<std::string>& texts) override;

 private:
  std::ostream& messages_;
  std::vector<std::string> texts_;
  std::vector<embedded::ObjectDialogRequest> objects_;
};

}  // namespace tessel::cli
