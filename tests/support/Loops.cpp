#include "support/Loops.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace support {

bool RealLoop::Until(const std::function<bool()> &done, std::chrono::milliseconds limit)
{
    const QDeadlineTimer deadline(limit);
    QEventLoop loop;
    QTimer wake; // so that a wait for nothing ends, too
    wake.start(5);
    while (!done()) {
        if (deadline.hasExpired())
            return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void RealLoop::For(std::chrono::milliseconds span)
{
    static_cast<void>(Until([] { return false; }, span));
}

bool FakeLoop::Until(const std::function<bool()> &done, std::chrono::milliseconds limit)
{
    constexpr std::chrono::milliseconds kStep{ 1 };
    for (std::chrono::milliseconds passed{ 0 }; !done(); passed += kStep) {
        if (passed > limit)
            return false;
        time.Run(kStep);
    }
    return true;
}

} // namespace support
