#pragma once

#include "platform/system/Events.h"

#include <functional>
#include <memory>

namespace platform {

// A screen's timer: ticks again and again while its interval is not 0. It belongs to the window of its screen
// and is made anew with it. A tick that comes while the handler of the last one still runs is left out.
class Timer {
public:
    // `tick` is called by the event loop; a screen passes Guarded(handler).
    explicit Timer(std::function<void()> tick);
    ~Timer();

    // In milliseconds; 0 stops. Begins a new interval, also with the value it has.
    void SetInterval(int milliseconds);

private:
    void Arm();
    void Tick();

    std::function<void()> m_tick;
    std::unique_ptr<PendingCall> m_next;
    std::shared_ptr<bool> m_alive;
    int m_interval = 0;
    bool m_running = false;
};

} // namespace platform
