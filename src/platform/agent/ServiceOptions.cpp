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

VoiceSettings Adjusted(const VoiceSettings &own, const CharacterVoice &chosen, int speakingRate)
{
    VoiceSettings adjusted = own;
    if (!chosen.voice.isEmpty() && chosen.voice != own.voice) {
        // The rest of the character's settings were made for its own voice.
        adjusted = VoiceSettings{};
        adjusted.voice = chosen.voice;
        adjusted.treble = own.treble;
    }
    adjusted.pitch *= std::pow(kPitchStep, chosen.pitch);
    adjusted.stretch *= std::pow(kRateStep, -speakingRate);
    return adjusted;
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
