#pragma once

#include <QElapsedTimer>
#include <QTimer>

#include <functional>

namespace platform {

// Calls somebody again and again, as often as he wants to draw. For the program's one thread.
class Ticker {
public:
    virtual ~Ticker() = default;

    // About that many calls of `tick` a second, by the event loop; 0 stops them. The first one comes a whole
    // interval later.
    virtual void SetRate(int callsPerSecond) = 0;
    // Seconds since some fixed moment, never going back.
    virtual double Now() const = 0;

    std::function<void()> tick;
};

class QtTicker final : public Ticker {
public:
    QtTicker()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { tick(); });
        m_elapsed.start();
    }
    void SetRate(int callsPerSecond) override
    {
        if (callsPerSecond == m_rate)
            return;
        m_rate = callsPerSecond;
        if (callsPerSecond > 0)
            m_timer.start(1000 / callsPerSecond);
        else
            m_timer.stop();
    }
    double Now() const override { return double(m_elapsed.nsecsElapsed()) / 1e9; }

private:
    QTimer m_timer;
    QElapsedTimer m_elapsed;
    int m_rate = 0;
};

} // namespace platform
