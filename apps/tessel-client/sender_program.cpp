#include "sender_program.h"

#include <QProcess>
#include <memory>

namespace tessel::client {

SenderAnswer AskSender(const QString& program, const QStringList& arguments) {
  // It may have to wait until another machine's lease of a minute has run out, twice.
  constexpr int kLongestMs = 180'000;
  auto process = std::make_unique<QProcess>();
  process->setProcessChannelMode(QProcess::MergedChannels);
  process->start(program, arguments, QIODevice::ReadOnly);
  if (!process->waitForStarted() || !process->waitForFinished(kLongestMs)) {
    const SenderAnswer failed{false, program + QLatin1String(": ") + process->errorString()};
    // One that still runs is not to be killed between the record and the directory's name.
    if (process->state() != QProcess::NotRunning) {
      QProcess* running = process.release();
      QObject::connect(running, &QProcess::finished, running, &QObject::deleteLater);
    }
    return failed;
  }
  const QString said = QString::fromUtf8(process->readAll()).trimmed();
  return {process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0, said};
}

}  // namespace tessel::client
