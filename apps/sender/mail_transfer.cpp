// Send modes 1 and 2: the package by mail.
#include <ctime>

#include "sender/mail.h"
#include "sender/smtp.h"
#include "sender/status_texts.h"
#include "sender/transfer.h"

namespace tessel::sender {
namespace {

MailHead HeadOf(const TransferJob& job) {
  MailHead head;
  const std::vector<Address> senders = ParseAddresses(job.data.mailSender);
  if (senders.size() != 1) throw Reason(StatusText::kSeveralSenders, {job.data.mailSender});
  head.sender = senders.front();
  head.recipients = ParseAddresses(job.data.mailRecipient);
  head.subject = job.data.mailSubject;
  head.content = job.data.mailContent;
  head.date = MailDate(std::time(nullptr));
  head.exchange = job.identifier;
  head.messageId = MessageIdOf(job.data.databaseAlias, job.data.stamp, ObjectKeyText(job.data.exchange, '.'),
                               job.journal.issue, head.sender.mailbox);
  head.attachmentName = job.data.zipFileName;
  return head;
}

std::string RecipientTexts(const MailHead& head) {
  std::string text;
  for (const Address& address : head.recipients)
    text += (text.empty() ? "" : ", ") + address.mailbox;
  return text;
}

Outcome Send(const TransferJob& job) {
  const std::string serverText = job.data.mailServer.empty() ? job.settings.mailServer : job.data.mailServer;
  if (serverText.empty()) throw Reason(StatusText::kNoMailServer);
  const MailServer server = ParseServer(serverText, job.settings.mailPort);
  const MailHead head = HeadOf(job);
  MailSource source(head, job.files.NativePath(job.package));
  if (source.Size() > job.settings.mailMaxSize) {
    throw Reason(StatusText::kMailTooLarge,
                 {std::to_string(source.Size()), std::to_string(job.settings.mailMaxSize)});
  }
  Outcome outcome = TransferMail(job.settings, server, head, source, job.language, job.begin);
  if (outcome.kind == Outcome::Kind::kSent) {
    const std::string how = TextOf(job.language, StatusText::kByMail, {server.Text()});
    outcome.text = TextOf(job.language, StatusText::kSent, {how, RecipientTexts(head)});
    outcome.receipt = head.messageId + ": " + outcome.receipt;
  }
  return outcome;
}

}  // namespace

Outcome SendMail(const TransferJob& job) {
  bool begun = false;
  try {
    TransferJob own = job;
    own.begin = [&] {
      begun = true;
      job.begin();
    };
    return Send(own);
  } catch (const HostError&) {
    throw;
  } catch (const std::exception& error) {
    if (begun) throw;
    return {Outcome::Kind::kRefused, ReasonText(job.language, error), {}};
  }
}

}  // namespace tessel::sender
