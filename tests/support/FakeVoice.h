#pragma once

#include "platform/system/Clock.h"
#include "platform/system/Events.h"
#include "platform/voice/Voice.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace support {

// An engine whose lines last by their letters: every letter the same time, every word a pause behind it. What
// a line sounds like is silence.
class FakeSpeechEngine : public platform::SpeechEngine {
public:
    static constexpr std::chrono::milliseconds kLead{ 60 };
    static constexpr std::chrono::milliseconds kPerLetter{ 50 };
    static constexpr std::chrono::milliseconds kBetweenWords{ 40 };
    static constexpr std::chrono::milliseconds kWork{ 20 }; // from the order to its delivery

    explicit FakeSpeechEngine(platform::Events &events) : m_events(events) {}

    // An engine that cannot be started speaks no voice and gives null for every line.
    void SetUsable(bool usable) { m_usable = usable; }
    // The spoken texts of all orders, cancelled ones too.
    const QStringList &Ordered() const { return m_ordered; }
    // Those of the order that came last.
    const platform::VoiceSettings &LastSettings() const { return m_lastSettings; }

    // The utterance that `text` becomes.
    static std::shared_ptr<const platform::Utterance> Made(const platform::SpeechText &text);

    bool Speaks(const platform::VoiceSettings &settings) const override;
    [[nodiscard]] std::unique_ptr<Order> Synthesise(const platform::SpeechText &text,
                                                    const platform::VoiceSettings &settings,
                                                    Ready ready) override;

private:
    platform::Events &m_events;
    bool m_usable = true;
    QStringList m_ordered;
    platform::VoiceSettings m_lastSettings;
};

// A device that only counts the time.
class FakeAudioOut : public platform::AudioOut {
public:
    FakeAudioOut(platform::Events &events, const platform::Clock &clock) : m_events(events), m_clock(clock) {}

    void SetUsable(bool usable) { m_usable = usable; }
    // The next line fails when so much of it has been heard, and the device is gone then.
    void FailAfter(std::chrono::milliseconds heard) { m_failAfter = heard; }
    // Everything that began to play.
    const std::vector<std::shared_ptr<const platform::Utterance>> &Played() const { return m_played; }
    bool Playing() const { return m_playing != nullptr; }

    bool Usable() const override { return m_usable; }
    [[nodiscard]] bool Play(std::shared_ptr<const platform::Utterance> utterance,
                            std::function<void(bool)> ended) override;
    void Stop() override;
    std::chrono::microseconds Heard() const override;

private:
    platform::Events &m_events;
    const platform::Clock &m_clock;
    bool m_usable = true;
    std::optional<std::chrono::milliseconds> m_failAfter;
    std::vector<std::shared_ptr<const platform::Utterance>> m_played;
    std::shared_ptr<const platform::Utterance> m_playing;
    std::chrono::milliseconds m_begun{ 0 };
    std::unique_ptr<platform::PendingCall> m_end;
};

} // namespace support
