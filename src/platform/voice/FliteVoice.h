#pragma once

#include "platform/voice/SpokenWords.h"

#include <atomic>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace platform {

// A stretch of one sound of speech, in seconds from the first sample.
struct SpokenSound {
    double begins = 0;
    double ends = 0;
    std::string phone; // "pau" for silence
};

// A word as it was said. `ends` is `begins` for a word that made no sound.
struct SaidWord {
    double begins = 0;
    double ends = 0;
    bool accented = false;
};

// A phrase as it was said, one channel, with one SaidWord for each word that went in.
struct SaidPhrase {
    std::vector<float> samples; // -1 to 1
    std::vector<SpokenSound> sounds;
    std::vector<SaidWord> words;
};

// One of the recorded voices. The library behind it keeps its state for the whole process, so calls from
// several threads follow one another.
class FliteVoice {
public:
    static constexpr int kSampleRate = 16000;

    // "cmu_us_awb", "cmu_us_rms" or "cmu_us_slt"; null for any other name. Voices live as long as the
    // process.
    static const FliteVoice *Find(const QString &name);

    // Says up to some dozens of words as one phrase. `stretch` lengthens every sound, `pitch` moves the
    // melody; cmu_us_rms has a melody of its own and ignores it. Empty when the words cannot be said.
    SaidPhrase Say(std::span<const SpokenWord> words, double stretch, double pitch) const;

private:
    explicit FliteVoice(void *voice) : m_voice(voice) {}
    void *m_voice;
};

} // namespace platform
