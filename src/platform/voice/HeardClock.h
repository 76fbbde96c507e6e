#pragma once

#include <chrono>

namespace platform {

// Makes a smooth clock of what a sound device tells about how far it has played. Devices tell it in steps,
// with short rests, and often later than it is true, but hardly ever earlier. So this runs with the monotonic
// clock, follows the device when that is ahead, stands still when the sound has stopped, and never goes back.
class HeardClock {
public:
    using Duration = std::chrono::microseconds;

    void Start(Duration now);
    // What has been heard at `now`, when the device says `played`. `now` does not go back from call to call.
    Duration At(Duration now, Duration played);
    // For how long the device has told the same.
    Duration StandsStillFor(Duration now) const { return now - m_steppedAt; }

private:
    Duration m_heard{ 0 };
    Duration m_now{ 0 };
    Duration m_played{ 0 };
    Duration m_steppedAt{ 0 };
    bool m_waits = false; // for the device, which has fallen behind
};

} // namespace platform
