#pragma once

#include "platform/voice/SpeechText.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace platform {

// The mouth shapes, in the names that character files use.
enum class Mouth { Rest, MBP, FV, ThL, Cons, AA, EH, EE, OH, OO };
QString MouthName(Mouth mouth);

// How a character speaks the languages for which it has no recorded voice.
struct ForeignVoice {
    QString variant;      // the engine's name of a speaker, such as "m3"; empty for its plain one
    double stretch = 1.0; // the others as in VoiceSettings
    double pitch = 1.0;
    double rate = 1.0;
    double treble = 6.0;
};

// How one character speaks.
struct VoiceSettings {
    QString voice;        // the engine's name of the voice, such as "cmu_us_awb"
    double stretch = 1.0; // length of sounds; more is slower
    double pitch = 1.0;   // factor on the voice's own pitch
    double rate = 1.0;    // plays the samples this much faster, pitch and formants with them
    double treble = 0.0;  // dB added above 2 kHz
    ForeignVoice foreign = {};
    QString speaker = {}; // the character's name, for what the user has chosen for it
};

struct MouthCue {
    std::chrono::microseconds at;
    Mouth mouth;
};

struct UnitCue {
    std::chrono::microseconds begins;
    std::chrono::microseconds ends;
    bool stressed = false;
};

// A line ready to be heard. Times count from the first sample.
struct Utterance {
    QByteArray samples; // 16-bit signed; of two channels, left and right in turn
    int sampleRate = 48000;
    int channels = 1;
    std::vector<UnitCue> units;   // one for each unit of the text, in order; never going back
    std::vector<MouthCue> mouths; // in order; begins with Rest at 0 and ends with Rest
    std::chrono::microseconds Length() const;
};

// Turns text into sound. To be used by the program's one thread; the work is done on another.
class SpeechEngine {
public:
    virtual ~SpeechEngine() = default;

    // Whether the engine could be started and knows the voice.
    virtual bool Speaks(const VoiceSettings &settings) const = 0;

    using Ready = std::function<void(std::shared_ptr<const Utterance>)>; // null when it failed
    // Calls `ready` once from the event loop when the line has been made, never inside the call. Destroying
    // the result cancels: `ready` is then not called. What is ordered first is made first.
    class Order {
    public:
        virtual ~Order() = default;
    };
    [[nodiscard]] virtual std::unique_ptr<Order> Synthesise(const SpeechText &text,
                                                            const VoiceSettings &settings, Ready ready) = 0;
};

// Plays utterances, one at a time. To be used by the program's one thread; no member runs events.
class AudioOut {
public:
    virtual ~AudioOut() = default;

    // Whether there is a device now. A sound server's dummy output is a device.
    virtual bool Usable() const = 0;

    // Begins to play, cutting off what played before. `ended` is called once from the event loop when the
    // last sample has been heard (true) or the device failed on the way (false); not after Stop. False when
    // it cannot begin.
    [[nodiscard]] virtual bool Play(std::shared_ptr<const Utterance> utterance,
                                    std::function<void(bool)> ended) = 0;
    virtual void Stop() = 0;

    // How much of the utterance has been heard; smooth, never going back, 0 when nothing plays.
    virtual std::chrono::microseconds Heard() const = 0;
};

} // namespace platform
