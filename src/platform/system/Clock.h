#pragma once

#include <chrono>

namespace platform {

class Clock {
public:
    virtual ~Clock() = default;

    // Seconds since local midnight, with fraction; goes back to 0 at midnight.
    virtual double SecondsSinceMidnight() const = 0;

    // Time since some fixed moment, never going back.
    virtual std::chrono::milliseconds Elapsed() const = 0;
};

} // namespace platform
