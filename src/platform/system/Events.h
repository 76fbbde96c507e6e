#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace platform {

// A call that is still to come. Destroying it cancels the call; so does the call's own start.
class PendingCall {
public:
    virtual ~PendingCall() = default;
};

// The event loop. All members are for the program's one thread. No error is raised.
class Events {
public:
    virtual ~Events() = default;

    // One pass of a wait: blocks until something happens, then delivers everything that is pending.
    // Handlers of every kind run inside, further waits among them.
    virtual void Pump() = 0;

    // Delivers what is pending now and returns at once.
    virtual void PumpPending() = 0;

    // Calls `work` from the event loop, after the handler that is running now has let go or pumped.
    virtual void Post(std::function<void()> work) = 0;

    // Calls `work` once from the event loop, `delay` from now, unless the result is destroyed before.
    [[nodiscard]] virtual std::unique_ptr<PendingCall> After(std::chrono::milliseconds delay,
                                                             std::function<void()> work) = 0;
};

} // namespace platform
