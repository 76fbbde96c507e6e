#pragma once

#include "platform/voice/Voice.h"

#include <memory>

namespace platform {

// Speaks English with three voices recorded from people: "cmu_us_awb", "cmu_us_rms" and "cmu_us_slt". The
// pitch of cmu_us_rms cannot be set; all other settings hold for all voices.
//
// Lines are made one after the other, on one thread, in the order in which they were asked for. A line takes
// some 20 ms for a word and below a tenth of a second for a sentence. To be made and used by the program's
// one thread; destroying the engine cancels everything that is still to come and waits at most for the phrase
// in work.
class FliteEngine final : public SpeechEngine {
public:
    FliteEngine();
    ~FliteEngine() override;

    bool Speaks(const VoiceSettings &settings) const override;
    // Gives null for a voice that it does not speak with.
    [[nodiscard]] std::unique_ptr<Order> Synthesise(const SpeechText &text, const VoiceSettings &settings,
                                                    Ready ready) override;

private:
    class Workshop;
    std::unique_ptr<Workshop> m_workshop;
};

} // namespace platform
