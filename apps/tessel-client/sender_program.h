// The sender as a program of its own, used through its command line (docs/sender.md).
#pragma once

#include <QString>
#include <QStringList>

namespace tessel::client {

struct SenderAnswer {
  bool done = false;
  QString text;  // what it said when it refused, or why it could not be asked
};

// Runs a program with an argument vector and waits for its end, a minute at most.
[[nodiscard]] SenderAnswer AskSender(const QString& program, const QStringList& arguments);

}  // namespace tessel::client
