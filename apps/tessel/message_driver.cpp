#include "tessel/message_driver.h"

#include <ostream>

#include "headless/headless_toolkit.h"

namespace tessel::cli {

void MessageDriver::Act(HeadlessToolkit& toolkit) {
  toolkit.CloseForShutdown();
}

MessageAnswer MessageDriver::Answer(const MessageRequest& request) {
  texts_.push_back(request.text);
  messages_ << (request.title.empty() ? kDefaultMessageTitle : request.title) << ": " << request.text << "\n";
  return SafeAnswer(request);
}

int MessageDriver::ShowObject(const embedded::ObjectDialogRequest& request) {
  objects_.push_back(request);
  return 1;
}

void MessageDriver::ShowSystemMessage(const std::vector<std::string>& texts) {
  for (const std::string& text : texts)
    messages_ << text << "\n";
}

}  // namespace tessel::cli
