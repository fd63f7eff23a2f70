#include "qt/qt_pauser.h"

#include <QEventLoop>
#include <QTimer>

namespace tessel::qt {

void QtPauser::Sleep(std::chrono::milliseconds time) {
  QEventLoop loop;
  QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

}  // namespace tessel::qt
