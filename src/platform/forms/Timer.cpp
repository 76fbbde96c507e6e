#include "platform/forms/Timer.h"

#include "platform/Services.h"
#include "platform/forms/GuardedCall.h"

#include <algorithm>

namespace platform {

Timer::Timer(std::function<void()> tick) : m_tick(std::move(tick)), m_alive(std::make_shared<bool>(true)) {}

Timer::~Timer()
{
    *m_alive = false;
}

void Timer::SetInterval(int milliseconds)
{
    m_interval = std::max(milliseconds, 0);
    m_next.reset();
    if (m_interval > 0)
        Arm();
}

void Timer::Arm()
{
    m_next = The().events.After(std::chrono::milliseconds(m_interval), [this] { Tick(); });
}

void Timer::Tick()
{
    // A timer whose screen was unloaded stops by itself.
    const auto *guarded = m_tick.target<GuardedCall>();
    if (guarded && !guarded->IsAlive()) {
        SetInterval(0);
        return;
    }
    Arm();
    if (m_running)
        return;
    // The handler may unload the screen and load it anew, which replaces this timer.
    const auto alive = m_alive;
    const auto tick = m_tick;
    m_running = true;
    try {
        tick();
    } catch (...) {
        if (*alive)
            m_running = false;
        throw;
    }
    if (*alive)
        m_running = false;
}

} // namespace platform
