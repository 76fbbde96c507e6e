#pragma once

#include "platform/agent/MotionPlayer.h"
#include "platform/voice/SoundEffects.h"

#include <memory>
#include <vector>

namespace platform {

// What is heard of a figure's motions. Effects are asked for a little ahead, so that a device that is late by
// its buffer still sounds with the picture.
class FigureEffects {
public:
    // The length of this look ahead, in seconds.
    static constexpr double kAhead = 0.12;

    // Without a device, null, the figure is silent. It must outlive this.
    explicit FigureEffects(SoundEffects *out) : m_out(out) {}

    // Begins what the motion of `player` cues next. `now` is in seconds and never goes back.
    void Follow(MotionPlayer &player, double now);
    // Whether nothing is heard any more, nor about to be. A device that never comes to the end is not waited
    // for.
    bool AreOver(double now);
    // Lets everything fade out; AreOver tells when it has.
    void FadeOut();

private:
    void DropWhatIsOver(double now);

    struct Effect {
        std::unique_ptr<SoundEffects::Playing> playing;
        double latest; // when it is taken as over, whatever the device says
    };
    SoundEffects *m_out;
    std::vector<Effect> m_effects;
};

} // namespace platform
