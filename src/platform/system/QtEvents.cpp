#include "platform/system/QtEvents.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <utility>

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

    TimedCall(const TimedCall &) = delete;
    TimedCall &operator=(const TimedCall &) = delete;
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

QtEvents::QtEvents()
{
    auto *const dispatcher = QCoreApplication::eventDispatcher();
    // With each pass of any loop a new handler may begin.
    QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &m_receiver, [this] {
        m_isDrained = false;
        ++m_passes;
    });
    QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &m_receiver, [this, dispatcher] {
        m_isDrained = false;
        // Some dispatchers deliver what is posted and then sleep all the same when a handler's own loop has
        // used up the wake-up call.
        if (QThread::currentThread()->loopLevel() == m_pump.loopLevel && m_passes > m_pump.firstPass + 1)
            dispatcher->wakeUp();
    });
}

void QtEvents::Pump()
{
    // A handler that was posted runs in the midst of a batch. What stands behind it in the batch does not
    // wake the dispatcher any more, so a pump from within would sleep on it. Hence no pump blocks before one
    // has drained.
    if (!m_isDrained) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        m_isDrained = true;
        return;
    }
    const Blocking outer = std::exchange(m_pump, { m_passes, QThread::currentThread()->loopLevel() });
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    m_pump = outer;
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
