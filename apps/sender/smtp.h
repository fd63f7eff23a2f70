// One mail to one server: connection, encryption, authentication and the transfer, behind the mail library.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "sender/mail.h"
#include "sender/settings.h"
#include "sender/transfer.h"

namespace tessel::sender {

struct MailServer {
  std::string host;
  int port = 0;
  [[nodiscard]] std::string Text() const { return host + ":" + std::to_string(port); }
};

// "host", "host:port" or "[address]:port". Raises a Reason for anything else.
[[nodiscard]] MailServer ParseServer(const std::string& text, int defaultPort);

// The envelope is the head's; the outcome's text is in the language. `begin` as in TransferJob. Nothing is
// raised but what `begin` raises.
[[nodiscard]] Outcome TransferMail(const Settings& settings, const MailServer& server, const MailHead& head,
                                   MailSource& source, const std::string& language,
                                   const std::function<void()>& begin);

// Connects, encrypts and authenticates, and sends nothing. The empty text when the server lets us in, else
// why not.
[[nodiscard]] std::string TryServer(const Settings& settings, const MailServer& server,
                                    const std::string& authFile);

}  // namespace tessel::sender
