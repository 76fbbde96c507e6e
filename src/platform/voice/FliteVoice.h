#pragma once

#include "platform/voice/PhraseVoice.h"

namespace platform {

// One of the recorded voices. The library behind it keeps its state for the whole process, so calls from
// several threads follow one another.
class FliteVoice final : public PhraseVoice {
public:
    static constexpr int kSampleRate = 16000;

    // "cmu_us_awb", "cmu_us_rms" or "cmu_us_slt"; null for any other name. Voices live as long as the
    // process.
    static const FliteVoice *Find(const QString &name);

    int SampleRate() const override { return kSampleRate; }
    Alphabet Sounds() const override { return Alphabet::Recorded; }
    Reading Reads() const override { return Reading::English; }
    // cmu_us_rms has a melody of its own and ignores `pitch`.
    SaidPhrase Say(std::span<const SpokenWord> words, double stretch, double pitch) const override;

private:
    explicit FliteVoice(void *voice) : m_voice(voice) {}
    void *m_voice;
};

} // namespace platform
