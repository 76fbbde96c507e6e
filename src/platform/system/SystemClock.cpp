#include "platform/system/SystemClock.h"

#include <QTime>

namespace platform {

SystemClock::SystemClock() : m_start(std::chrono::steady_clock::now()) {}

double SystemClock::SecondsSinceMidnight() const
{
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

std::chrono::milliseconds SystemClock::Elapsed() const
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - m_start);
}

} // namespace platform
