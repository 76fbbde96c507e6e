#include "support/FakeVoice.h"

#include <algorithm>
#include <utility>

namespace support {

using std::chrono::microseconds;
using std::chrono::milliseconds;

namespace {

constexpr int kSampleRate = 8000;

class FakeOrder : public platform::SpeechEngine::Order {
public:
    std::unique_ptr<platform::PendingCall> call;
};

} // namespace

std::shared_ptr<const platform::Utterance> FakeSpeechEngine::Made(const platform::SpeechText &text)
{
    auto utterance = std::make_shared<platform::Utterance>();
    utterance->sampleRate = kSampleRate;
    utterance->mouths.push_back({ microseconds(0), platform::Mouth::Rest });
    microseconds at(0);
    for (const auto &unit : text.units) {
        at += milliseconds(unit.pause);
        const auto letters = std::count_if(unit.spoken.cbegin(), unit.spoken.cend(),
                                           [](QChar c) { return c.isLetterOrNumber(); });
        if (letters > 0) {
            at += at == microseconds(0) ? microseconds(kLead) : microseconds(kBetweenWords);
            utterance->mouths.push_back({ at, platform::Mouth::AA });
        }
        const auto ends = at + kPerLetter * letters;
        utterance->units.push_back({ at, ends, unit.stressed });
        if (letters > 0)
            utterance->mouths.push_back({ ends, platform::Mouth::Rest });
        at = ends;
    }
    const auto frames = at.count() * kSampleRate / 1'000'000;
    utterance->samples = QByteArray(static_cast<qsizetype>(frames) * 2, '\0');
    return utterance;
}

bool FakeSpeechEngine::Speaks(const platform::VoiceSettings &settings) const
{
    return m_usable && QStringList{ "cmu_us_awb", "cmu_us_rms", "cmu_us_slt" }.contains(settings.voice);
}

std::unique_ptr<platform::SpeechEngine::Order>
FakeSpeechEngine::Synthesise(const platform::SpeechText &text, const platform::VoiceSettings &settings,
                             Ready ready)
{
    m_ordered.push_back(text.Spoken());
    m_lastSettings = settings;
    auto utterance = Speaks(settings) ? Made(text) : nullptr;
    auto order = std::make_unique<FakeOrder>();
    order->call = m_events.After(
        kWork, [ready = std::move(ready), utterance = std::move(utterance)] { ready(utterance); });
    return order;
}

bool FakeAudioOut::Play(std::shared_ptr<const platform::Utterance> utterance, std::function<void(bool)> ended)
{
    Stop();
    if (!m_usable || !utterance)
        return false;
    const auto length = std::chrono::ceil<milliseconds>(utterance->Length());
    const bool fails = m_failAfter && *m_failAfter < length;
    const auto until = fails ? *std::exchange(m_failAfter, std::nullopt) : length;
    m_played.push_back(utterance);
    m_playing = std::move(utterance);
    m_begun = m_clock.Elapsed();
    m_end = m_events.After(until, [this, fails, ended = std::move(ended)] {
        // Stop drops this very call.
        const auto call = ended;
        const bool whole = !fails;
        m_usable = m_usable && whole;
        Stop();
        call(whole);
    });
    return true;
}

void FakeAudioOut::Stop()
{
    m_playing.reset();
    m_end.reset();
}

microseconds FakeAudioOut::Heard() const
{
    if (!m_playing)
        return microseconds(0);
    return std::min<microseconds>(m_clock.Elapsed() - m_begun, m_playing->Length());
}

} // namespace support
