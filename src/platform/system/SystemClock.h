#pragma once

#include "platform/system/Clock.h"

namespace platform {

// The computer's clock.
class SystemClock : public Clock {
public:
    SystemClock();
    double SecondsSinceMidnight() const override;
    std::chrono::milliseconds Elapsed() const override; // since this object was made

private:
    std::chrono::steady_clock::time_point m_start;
};

} // namespace platform
