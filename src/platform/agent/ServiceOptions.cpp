#include "platform/agent/ServiceOptions.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

// The slowest rate takes about one and a half times as long as the voice's own, the fastest two thirds.
constexpr double kRateStep = 1.08;
// Two steps are somewhat less than a whole tone; more would make the recorded voices hard to understand.
constexpr double kPitchStep = 1.05;

} // namespace

CharacterVoice ServiceOptions::VoiceOf(const QString &character) const
{
    const auto found = characters.find(character);
    return found == characters.end() ? CharacterVoice{} : found->second;
}

void ServiceOptions::SetVoiceOf(const QString &character, const CharacterVoice &chosen)
{
    if (chosen == CharacterVoice{})
        characters.erase(character);
    else
        characters[character] = chosen;
}

void ServiceOptions::Limit()
{
    balloonTextSize = std::clamp(balloonTextSize, kSmallestText, kLargestText);
    speakingRate = std::clamp(speakingRate, -kMostRate, kMostRate);
    for (auto &[name, chosen] : characters)
        chosen.pitch = std::clamp(chosen.pitch, -kMostPitch, kMostPitch);
    std::erase_if(characters, [](const auto &entry) { return entry.second == CharacterVoice{}; });
}

VoiceSettings WithVoice(const VoiceSettings &own, const CharacterVoice &chosen)
{
    VoiceSettings settings = own;
    if (chosen.voice.isEmpty() || chosen.voice == own.voice)
        return settings;
    // What bends the character's own voice would only spoil another.
    const VoiceSettings plain;
    settings.voice = chosen.voice;
    settings.stretch = plain.stretch;
    settings.pitch = plain.pitch;
    settings.rate = plain.rate;
    return settings;
}

double RateFactor(int speakingRate)
{
    return std::pow(kRateStep, speakingRate);
}

void ApplyVoices(const ServiceOptions &options, const QStringList &characters, VoiceOptions &voices)
{
    // A voice that has gone from the machine leaves the lists to the characters.
    if (!voices.SetReadingVoice(options.readingVoice))
        voices.SetReadingVoice(QString());
    voices.SetRate(QString(), RateFactor(options.speakingRate));
    for (const QString &character : characters)
        voices.SetPitch(character, 1.0);
    for (const auto &[character, chosen] : options.characters)
        voices.SetPitch(character, std::pow(kPitchStep, chosen.pitch));
}

OptionsKeeper::OptionsKeeper(OptionsStore &store) : m_store(store), m_options(store.ReadOptions())
{
    m_options.Limit();
}

void OptionsKeeper::Set(ServiceOptions options)
{
    options.Limit();
    if (options == m_options)
        return;
    m_options = std::move(options);
    m_store.WriteOptions(m_options);
    const auto observers = m_observers;
    for (const auto &weak : observers) {
        // One that goes on the way is called to its end and no more.
        if (const auto observer = weak.lock())
            (*observer)();
    }
}

std::shared_ptr<void> OptionsKeeper::Observe(std::function<void()> changed)
{
    std::erase_if(m_observers, [](const auto &weak) { return weak.expired(); });
    auto observer = std::make_shared<std::function<void()>>(std::move(changed));
    m_observers.push_back(observer);
    return observer;
}

} // namespace platform
