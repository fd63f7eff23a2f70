#include "tessel/message_driver.h"

#include <ostream>

#include "headless/headless_toolkit.h"

namespace tessel::cli {

void MessageDriver::Act(HeadlessToolkit& toolkit) {
  toolkit.CloseForShutdown();
}

MessageAnswer MessageDriver::Answer(const MessageRequest& request) {
  ++messageCount_;
  messages_ << (request.title.empty() ? kDefaultMessageTitle : request.title) << ": " << request.text << "\n";
  return SafeAnswer(request);
}

int MessageDriver::ShowObject(const embedded::ObjectDialogRequest& request) {
  ++dialogCount_;
  content_ << request.title << "\n";
  for (const auto& [name, value] : request.attributes)
    content_ << name << ": " << value << "\n";
  return 1;
}

void MessageDriver::ShowSystemMessage(const std::vector<std::string>& texts) {
  for (const std::string& text : texts)
    messages_ << text << "\n";
}

}  // namespace tessel::cli
