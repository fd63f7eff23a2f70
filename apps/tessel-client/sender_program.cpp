#include "sender_program.h"

#include <QProcess>

namespace tessel::client {

SenderAnswer AskSender(const QString& program, const QStringList& arguments) {
  constexpr int kLongestMs = 60'000;
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, arguments, QIODevice::ReadOnly);
  if (!process.waitForStarted() || !process.waitForFinished(kLongestMs))
    return {false, program + QLatin1String(": ") + process.errorString()};
  const QString said = QString::fromUtf8(process.readAll()).trimmed();
  return {process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, said};
}

}  // namespace tessel::client
