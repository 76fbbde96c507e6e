#pragma once

#include "platform/system/Clock.h"
#include "platform/system/Events.h"

#include <deque>
#include <map>

namespace support {

// Time and event loop for tests. Time stands still but for Pump, which delivers what is pending or, when
// nothing is, goes on to the next moment at which something is due. So a whole game runs in no time.
class FakeTime : public platform::Events, public platform::Clock {
public:
    FakeTime();
    ~FakeTime() override;

    // A wait that pumps with nothing left to come polls idly: for this many polls, then the program is taken
    // to hang, which ends it with `Hung()` set.
    static constexpr int kIdlePolls = 2000;

    void Pump() override;
    void PumpPending() override;
    void Post(std::function<void()> work) override;
    [[nodiscard]] std::unique_ptr<platform::PendingCall> After(std::chrono::milliseconds delay,
                                                               std::function<void()> work) override;

    double SecondsSinceMidnight() const override;
    std::chrono::milliseconds Elapsed() const override { return m_now; }

    // The time of day at Elapsed() 0; noon unless set.
    void SetStartOfClock(double secondsSinceMidnight) { m_start = secondsSinceMidnight; }
    // Calls `work` at the idle poll of that number, counted from now.
    void AfterIdlePolls(int polls, std::function<void()> work);

    // Delivers everything that becomes due within `span`, and what that brings about.
    void Run(std::chrono::milliseconds span);
    // Pumps until nothing is left to come. Raises nothing; ends after `limit` of time, giving false.
    bool RunUntilIdle(std::chrono::milliseconds limit = std::chrono::hours(24));

    bool Hung() const { return m_hung; }
    // Set when the program has ended: Pump then unwinds every suspended wait.
    void SetEnded() { m_ended = true; }

private:
    struct Due {
        std::weak_ptr<std::function<void()>> work;
    };
    class Handle;
    bool DeliverPending();
    bool DeliverNext(std::chrono::milliseconds until);

    std::chrono::milliseconds m_now{ 0 };
    double m_start = 12 * 3600.0;
    std::deque<std::function<void()>> m_posted;
    std::multimap<std::chrono::milliseconds, Due> m_due;
    std::multimap<int, std::function<void()>> m_idleWork;
    int m_idlePolls = 0;
    bool m_hung = false;
    bool m_ended = false;
};

} // namespace support
