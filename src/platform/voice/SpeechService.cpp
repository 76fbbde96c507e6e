#include "platform/voice/SpeechService.h"

#include "platform/voice/FliteVoice.h"
#include "platform/voice/SpokenLine.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

const QString kEnglish = QStringLiteral("en");

void SetFactor(std::map<QString, double> &factors, const QString &character, double factor, double least,
               double most)
{
    factors[character.toLower()] = std::isnan(factor) ? 1.0 : std::clamp(factor, least, most);
}

double FactorOf(const std::map<QString, double> &factors, const QString &character)
{
    const auto found = factors.find(character.toLower());
    return found != factors.end() ? found->second : 1.0;
}

// What is set for the speaker and for everybody.
double WholeFactor(const std::map<QString, double> &factors, const QString &speaker)
{
    const auto everybody = FactorOf(factors, QString());
    return speaker.isEmpty() ? everybody : everybody * FactorOf(factors, speaker);
}

} // namespace

bool SpeechService::Speaks(const VoiceSettings &settings) const
{
    return FliteVoice::Find(settings.voice) != nullptr;
}

std::unique_ptr<SpeechEngine::Order> SpeechService::Synthesise(const SpeechText &text,
                                                               const VoiceSettings &settings, Ready ready)
{
    return m_workshop.Add(
        [text,
         chosen = Chosen(settings)](const std::atomic<bool> &cancelled) -> std::shared_ptr<const Utterance> {
            const auto *voice = FliteVoice::Find(chosen.voice);
            return voice ? MakeLine(text, chosen, *voice, cancelled) : nullptr;
        },
        std::move(ready));
}

VoiceChoices SpeechService::Available() const
{
    return { { kEnglish, QStringLiteral("English (recorded voices)"), QStringLiteral("en") } };
}

bool SpeechService::SetReadingVoice(const QString &id)
{
    const auto choices = Available();
    const bool known = id.isEmpty() || std::any_of(choices.begin(), choices.end(),
                                                   [&id](const auto &choice) { return choice.id == id; });
    if (known)
        m_readingVoice = id == kEnglish ? QString() : id;
    return known;
}

QString SpeechService::ReadingVoice() const
{
    return m_readingVoice.isEmpty() ? kEnglish : m_readingVoice;
}

void SpeechService::SetRate(const QString &character, double factor)
{
    SetFactor(m_rates, character, factor, 0.5, 2.0);
}

void SpeechService::SetPitch(const QString &character, double factor)
{
    SetFactor(m_pitches, character, factor, 0.6, 1.7);
}

double SpeechService::Rate(const QString &character) const
{
    return FactorOf(m_rates, character);
}

double SpeechService::Pitch(const QString &character) const
{
    return FactorOf(m_pitches, character);
}

VoiceSettings SpeechService::Chosen(const VoiceSettings &settings) const
{
    const auto rate = WholeFactor(m_rates, settings.speaker);
    const auto pitch = WholeFactor(m_pitches, settings.speaker);
    auto chosen = settings;
    chosen.stretch /= rate;
    chosen.foreign.pace *= rate;
    chosen.pitch *= pitch;
    // The engine's scale: fifty steps to the octave.
    chosen.foreign.pitch += 50 * std::log2(pitch);
    return chosen;
}

} // namespace platform
