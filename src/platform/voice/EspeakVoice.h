#pragma once

#include "platform/voice/PhraseVoice.h"
#include "platform/voice/VoiceOptions.h"

#include <optional>

namespace platform {

// One of some hundred languages, spoken by a voice that is formed rather than recorded. The library behind it
// keeps its state for the whole process; all calls take turns, on whichever thread.
class EspeakVoice final : public PhraseVoice {
public:
    // The languages that are installed, by name; their ids begin with "formed:". Empty when the library
    // cannot be started, as when its data are missing.
    static const VoiceChoices &Languages();

    // `id` is one of Languages; `variant` names a speaker, such as "m3", and one that is not installed gives
    // the plain one. None for an unknown id.
    static std::optional<EspeakVoice> Find(const QString &id, const QString &variant);

    int SampleRate() const override;
    Alphabet Sounds() const override { return Alphabet::Formed; }
    Reading Reads() const override { return Reading::AsWritten; }
    SaidPhrase Say(std::span<const SpokenWord> words, double stretch, double pitch) const override;

private:
    explicit EspeakVoice(QByteArray name) : m_name(std::move(name)) {}
    QByteArray m_name; // as the library takes it, with the variant
};

} // namespace platform
