#include "platform/agent/IdleLife.h"

#include <algorithm>

namespace platform {

namespace {

// Seconds.
constexpr double kFirstIdle = 10;
constexpr double kShortestPause = 4;
constexpr double kLongestPause = 8;
constexpr double kLevelTime = 30;
constexpr double kLongestLoop = 24;
constexpr double kShortestBlinkPause = 2.5;
constexpr double kLongestBlinkPause = 6;

} // namespace

IdleLife::IdleLife(const CharacterData &character, std::uint32_t seed)
    : m_character(character), m_random(seed)
{
    m_toBlink = Between(kShortestBlinkPause, kLongestBlinkPause);
    BeginWaiting();
}

double IdleLife::Between(double least, double most)
{
    return std::uniform_real_distribution<double>(least, most)(m_random);
}

std::size_t IdleLife::Another(std::size_t count, std::size_t before)
{
    if (count < 2)
        return 0;
    if (before >= count)
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random);
    const auto drawn = std::uniform_int_distribution<std::size_t>(0, count - 2)(m_random);
    return drawn < before ? drawn : drawn + 1;
}

bool IdleLife::BlinkIsDue(double seconds)
{
    m_toBlink -= seconds;
    if (m_toBlink > 0)
        return false;
    m_toBlink = Between(kShortestBlinkPause, kLongestBlinkPause);
    return true;
}

void IdleLife::BeginWaiting()
{
    m_sinceBegin = 0;
    m_toNext = kFirstIdle;
    m_looped = 0;
}

const Motion *IdleLife::MotionDue(double seconds)
{
    m_sinceBegin += seconds;
    m_toNext -= seconds;
    if (m_toNext > 0)
        return nullptr;
    m_toNext = Between(kShortestPause, kLongestPause);
    m_looped = 0;
    const double idleTime = std::max(0.0, m_sinceBegin - kFirstIdle);
    const std::size_t level = std::min(std::size_t(idleTime / kLevelTime), kIdleLevels - 1);
    const std::vector<QString> &names = m_character.idle[level];
    if (names.empty())
        return nullptr;
    const auto last = std::find(names.begin(), names.end(), m_last);
    const std::size_t which = Another(names.size(), std::size_t(last - names.begin()));
    m_last = names[which];
    return m_character.FindMotion(m_last);
}

bool IdleLife::LoopIsOver(double seconds)
{
    m_sinceBegin += seconds;
    m_looped += seconds;
    return m_looped > kLongestLoop;
}

} // namespace platform
