#pragma once

#include "platform/voice/Voice.h"
#include "platform/voice/VoiceOptions.h"
#include "platform/voice/Workshop.h"

#include <map>

namespace platform {

// Everything that speaks: English with three voices recorded from people, "cmu_us_awb", "cmu_us_rms" and
// "cmu_us_slt", the words of lists in any language that is installed, and whatever the user has chosen about
// all that.
//
// A word takes some 20 ms to make and a sentence below a tenth of a second. To be made and used by the
// program's one thread; destroying it cancels everything that is still to come and waits at most for the
// phrase in work.
class SpeechService final : public SpeechEngine, public VoiceOptions {
public:
    bool Speaks(const VoiceSettings &settings) const override;
    // Gives null for a voice that it does not speak with.
    [[nodiscard]] std::unique_ptr<Order> Synthesise(const SpeechText &text, const VoiceSettings &settings,
                                                    Ready ready) override;

    VoiceChoices Available() const override;
    bool SetReadingVoice(const QString &id) override;
    QString ReadingVoice() const override;
    void SetRate(const QString &character, double factor) override;
    void SetPitch(const QString &character, double factor) override;
    double Rate(const QString &character) const override;
    double Pitch(const QString &character) const override;

private:
    // `settings` with what the user has chosen for its speaker.
    VoiceSettings Chosen(const VoiceSettings &settings) const;

    QString m_readingVoice;            // an id; empty for English
    std::map<QString, double> m_rates; // by name in lower case; empty for everybody
    std::map<QString, double> m_pitches;
    Workshop m_workshop;
};

} // namespace platform
