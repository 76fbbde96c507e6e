#include "platform/agent/FigureEffects.h"

#include <algorithm>

namespace platform {

namespace {

constexpr double kPatience = 0.4; // seconds behind the end of an effect

} // namespace

void FigureEffects::Follow(MotionPlayer &player, double now)
{
    DropWhatIsOver(now);
    for (const MotionPlayer::DueCue &due : player.TakeCues(kAhead)) {
        if (!m_out || !due.cue->sound)
            continue;
        const double delay = std::max(due.delay, 0.0);
        auto playing = m_out->Play(due.cue->sound, std::chrono::microseconds(qint64(delay * 1e6)));
        if (!playing)
            continue;
        const double length = double(due.cue->sound->Length().count()) / 1e6;
        m_effects.push_back({ std::move(playing), now + delay + length + kPatience });
    }
}

bool FigureEffects::AreOver(double now)
{
    DropWhatIsOver(now);
    return m_effects.empty();
}

void FigureEffects::DropWhatIsOver(double now)
{
    std::erase_if(m_effects,
                  [now](const Effect &effect) { return effect.playing->IsOver() || now >= effect.latest; });
}

void FigureEffects::FadeOut()
{
    for (const Effect &effect : m_effects)
        effect.playing->FadeOut();
}

} // namespace platform
