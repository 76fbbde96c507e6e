#include "platform/voice/HeardClock.h"

#include <algorithm>

namespace platform {

namespace {

using namespace std::chrono_literals;

// Devices report in steps of some 20 ms, so that what they say is this much older at most.
constexpr HeardClock::Duration kLongestStep = 40ms;
// A device that tells the same for longer has stopped.
constexpr HeardClock::Duration kRest = 100ms;
// A difference is made up for in this time, so slowly that no mouth jumps.
constexpr HeardClock::Duration kSettling = 200ms;
// With a difference like this the sound itself has jumped or stopped.
constexpr HeardClock::Duration kJump = 150ms;

} // namespace

void HeardClock::Start(Duration now)
{
    *this = {};
    m_now = m_steppedAt = now;
}

HeardClock::Duration HeardClock::At(Duration now, Duration played)
{
    const auto passed = now - m_now;
    m_now = now;
    const bool begins = m_played <= Duration::zero() && played > Duration::zero();
    if (played > m_played) {
        m_played = played;
        m_steppedAt = now;
    }
    if (m_played <= Duration::zero())
        return m_heard;
    if (begins)
        return m_heard = m_played;
    const auto stands = StandsStillFor(now);
    const auto estimate = m_played + std::min(stands, kLongestStep);
    const auto ahead = estimate - (m_heard + passed);
    if (stands > kRest || -ahead > kJump)
        m_waits = true;
    if (m_waits && m_played < m_heard)
        return m_heard;
    m_waits = false;
    if (ahead > kJump)
        return m_heard = estimate;
    m_heard += passed;
    if (ahead > Duration::zero())
        m_heard += ahead * std::min(passed, kSettling).count() / kSettling.count();
    return m_heard;
}

} // namespace platform
