#include "app/pause.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

namespace porvane {

void EventLoopPause::wait(double seconds) {
    if (seconds <= 0)
        return;
    QElapsedTimer elapsed;
    elapsed.start();
    const qint64 wanted = qint64(seconds * 1000.0 + 0.5);
    // A nested loop ended by a timer: events keep flowing and the CPU stays idle.
    while (elapsed.elapsed() < wanted) {
        QEventLoop loop;
        QTimer::singleShot(int(wanted - elapsed.elapsed()), &loop, &QEventLoop::quit);
        loop.exec();
    }
}

} // namespace porvane
