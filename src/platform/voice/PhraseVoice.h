#pragma once

#include "platform/voice/SpokenWords.h"

#include <span>
#include <string>
#include <vector>

namespace platform {

// A stretch of one sound of speech, in seconds from the first sample.
struct SpokenSound {
    double begins = 0;
    double ends = 0;
    std::string phone; // in the names of the voice; "pau" for silence
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

// The names in which a voice tells its sounds.
enum class Alphabet { Recorded, Formed };

// Something that says phrases. Calls from several threads follow one another.
class PhraseVoice {
public:
    virtual ~PhraseVoice() = default;

    virtual int SampleRate() const = 0; // of the samples, in Hz
    virtual Alphabet Sounds() const = 0;
    virtual Reading Reads() const = 0;

    // Says up to some dozens of words as one phrase. `stretch` lengthens every sound, `pitch` moves the
    // melody; both are factors. Empty when the words cannot be said.
    virtual SaidPhrase Say(std::span<const SpokenWord> words, double stretch, double pitch) const = 0;
};

} // namespace platform
