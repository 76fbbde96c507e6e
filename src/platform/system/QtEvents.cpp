#include "platform/system/QtEvents.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>

namespace platform {

namespace {

class TimedCall : public PendingCall {
public:
    TimedCall(std::chrono::milliseconds delay, std::function<void()> work)
        : m_timer(new QTimer), m_work(std::move(work))
    {
        m_timer->setSingleShot(true);
        m_timer->setTimerType(Qt::PreciseTimer);
        QObject::connect(m_timer, &QTimer::timeout, m_timer, [this] {
            // The work may destroy this call, so nothing of it is touched once the work has begun.
            const auto taken = std::move(m_work);
            taken();
        });
        m_timer->start(std::max(delay, std::chrono::milliseconds(0)));
    }

    ~TimedCall() override
    {
        m_timer->stop();
        m_timer->disconnect();
        m_timer->deleteLater(); // it may be the timer whose timeout is running
    }

private:
    QTimer *m_timer;
    std::function<void()> m_work;
};

} // namespace

void QtEvents::Pump()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void QtEvents::PumpPending()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void QtEvents::Post(std::function<void()> work)
{
    // A posted event wakes the dispatcher, so a pump that is about to block goes on.
    QMetaObject::invokeMethod(&m_receiver, std::move(work), Qt::QueuedConnection);
}

std::unique_ptr<PendingCall> QtEvents::After(std::chrono::milliseconds delay, std::function<void()> work)
{
    return std::make_unique<TimedCall>(delay, std::move(work));
}

} // namespace platform
