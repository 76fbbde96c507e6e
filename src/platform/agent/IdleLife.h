#pragma once

#include "platform/agent/CharacterData.h"

#include <random>

namespace platform {

// What a figure does by itself: when it blinks, and with which motion it passes the time when nobody wants
// anything.
class IdleLife {
public:
    IdleLife(const CharacterData &character, std::uint32_t seed);

    // Whether it is time to blink, after that many seconds more.
    bool BlinkIsDue(double seconds);

    // The wait begins anew, as after any work.
    void BeginWaiting();
    // The motion to play now, after `seconds` more of rest; null while none is due.
    const Motion *MotionDue(double seconds);
    // `seconds` more have passed with an idle motion; true when a looping one has gone on for long enough.
    bool LoopIsOver(double seconds);

    // One of `count` at random, another one than `before` when there is a choice.
    std::size_t Another(std::size_t count, std::size_t before);

private:
    double Between(double least, double most);

    const CharacterData &m_character;
    std::mt19937 m_random;
    double m_toBlink = 0;
    double m_sinceBegin = 0;
    double m_toNext = 0;
    double m_looped = 0;
    QString m_last;
};

} // namespace platform
