#include "platform/voice/SpeechService.h"

#include "platform/voice/EspeakVoice.h"
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

// What stands in map tags is said by `reader`, all else by the character's `own` voice.
std::shared_ptr<const Utterance> MakeMixedLine(const SpeechText &text, const VoiceSettings &settings,
                                               const PhraseVoice &own, const PhraseVoice &reader,
                                               const std::atomic<bool> &cancelled)
{
    auto foreign = settings;
    foreign.stretch = settings.foreign.stretch;
    foreign.pitch = settings.foreign.pitch;
    foreign.rate = settings.foreign.rate;
    foreign.treble = settings.foreign.treble;
    std::shared_ptr<const Utterance> line;
    const auto &units = text.units;
    for (auto first = units.begin(); first != units.end();) {
        const auto last = std::find_if(
            first, units.end(), [first](const SpeechUnit &unit) { return unit.mapped != first->mapped; });
        const auto part = first->mapped ? MakeLine({ { first, last } }, foreign, reader, cancelled)
                                        : MakeLine({ { first, last } }, settings, own, cancelled);
        if (!part)
            return nullptr;
        line = line ? Joined(*line, *part) : part;
        first = last;
    }
    return line ? line : MakeLine(text, settings, own, cancelled);
}

} // namespace

bool SpeechService::Speaks(const VoiceSettings &settings) const
{
    return FliteVoice::Find(settings.voice) != nullptr;
}

std::unique_ptr<SpeechEngine::Order> SpeechService::Synthesise(const SpeechText &text,
                                                               const VoiceSettings &settings, Ready ready)
{
    return m_workshop.Add<Order>(
        [text, chosen = Chosen(settings),
         reading = m_readingVoice](const std::atomic<bool> &cancelled) -> std::shared_ptr<const Utterance> {
            const auto *own = FliteVoice::Find(chosen.voice);
            if (!own)
                return nullptr;
            const auto reader =
                reading.isEmpty() ? std::nullopt : EspeakVoice::Find(reading, chosen.foreign.variant);
            return reader ? MakeMixedLine(text, chosen, *own, *reader, cancelled)
                          : MakeLine(text, chosen, *own, cancelled);
        },
        std::move(ready));
}

VoiceChoices SpeechService::Available() const
{
    VoiceChoices choices{ { kEnglish, QStringLiteral("English (recorded voices)"), QStringLiteral("en") } };
    const auto &languages = EspeakVoice::Languages();
    choices.insert(choices.end(), languages.begin(), languages.end());
    return choices;
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
    chosen.foreign.stretch /= rate;
    chosen.pitch *= pitch;
    chosen.foreign.pitch *= pitch;
    return chosen;
}

} // namespace platform
