#pragma once

#include "support/FakeTime.h"

#include <functional>

namespace support {

// What a contract test runs its event loop with, so that the same test waits for a real service and for a
// fake one.
class Loop {
public:
    virtual ~Loop() = default;
    // Delivers events until `done` holds; false when it does not within `limit`.
    [[nodiscard]] virtual bool Until(const std::function<bool()> &done,
                                     std::chrono::milliseconds limit = std::chrono::seconds(20)) = 0;
    // Delivers events for `span`, for tests that something does not come.
    virtual void For(std::chrono::milliseconds span) = 0;
};

// Qt's own event loop and the time of the day.
class RealLoop : public Loop {
public:
    [[nodiscard]] bool Until(const std::function<bool()> &done, std::chrono::milliseconds limit) override;
    void For(std::chrono::milliseconds span) override;
};

// A fake time that stands still but for what is awaited.
class FakeLoop : public Loop {
public:
    FakeTime time;
    [[nodiscard]] bool Until(const std::function<bool()> &done, std::chrono::milliseconds limit) override;
    void For(std::chrono::milliseconds span) override { time.Run(span); }
};

} // namespace support
