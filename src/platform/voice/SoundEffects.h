#pragma once

#include <QByteArray>

#include <chrono>
#include <memory>

namespace platform {

// How many samples of an effect are played in a second.
constexpr int kSoundRate = 24000;

// A sound effect, ready to be heard.
struct Sound {
    QByteArray samples; // 16-bit signed little-endian, one channel, at kSoundRate
    std::chrono::microseconds Length() const
    {
        return std::chrono::microseconds(samples.size() / 2 * 1'000'000 / kSoundRate);
    }
};

// Plays sound effects, any number at a time, beside the voice. That nothing can be heard is no failure: an
// effect is then over at once. To be used by the program's one thread.
class SoundEffects {
public:
    virtual ~SoundEffects() = default;

    // One effect on its way. Destroying it lets it fade out too.
    class Playing {
    public:
        virtual ~Playing() = default;
        // Whether the last of it has been heard, or nothing of it can be heard any more.
        virtual bool IsOver() const = 0;
        // Ends it softly, within some 30 ms and what the device already has; before its begin it is never
        // heard.
        virtual void FadeOut() = 0;
    };
    // Has the first sample heard in `delay`, or as soon as may be. Takes no time. Null when no effects are to
    // be heard or there is no device.
    [[nodiscard]] virtual std::unique_ptr<Playing> Play(std::shared_ptr<const Sound> sound,
                                                        std::chrono::microseconds delay) = 0;

    // What the user has chosen; at first effects are on. False fades out what plays.
    virtual void SetOn(bool on) = 0;
};

} // namespace platform
