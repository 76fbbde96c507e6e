#include "platform/voice/EspeakVoice.h"

#include <QDir>
#include <QHash>

#include <espeak-ng/speak_lib.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <set>

namespace platform {

namespace {

const QString kPrefix = QStringLiteral("formed:");
// At a stretch of 1, in words a minute.
constexpr double kPace = 150;
// Silence before the first sound, which the library does not make.
constexpr double kLead = 0.100;
// What is this quiet behind the last word is silence.
constexpr float kSilent = 0.003F;
// A word of so many letters or more carries weight.
constexpr qsizetype kWeightyWord = 4;

// One thing that the library tells about what it said, at a sample counted from the first of the call.
struct Event {
    int sample;
    int position;    // of a word, in characters from 1
    QByteArray name; // of a sound; empty for a word
};

struct Said {
    std::vector<float> samples;
    std::vector<Event> events;
};

int Collect(short *samples, int count, espeak_EVENT *events)
{
    auto *said = static_cast<Said *>(events->user_data);
    if (!said)
        return 0;
    if (samples)
        for (int index = 0; index < count; ++index)
            said->samples.push_back(static_cast<float>(samples[index]) / 32768.0F);
    for (; events->type != espeakEVENT_LIST_TERMINATED; ++events) {
        // A call can bring what was left of the one before it; that has no position.
        if (events->type == espeakEVENT_WORD && events->text_position >= 1)
            said->events.push_back({ events->sample, events->text_position, {} });
        else if (events->type == espeakEVENT_PHONEME)
            said->events.push_back(
                { events->sample, 0,
                  QByteArray(events->id.string, qstrnlen(events->id.string, sizeof events->id.string)) });
    }
    return 0;
}

// The library, started once; `rate` is 0 when that failed.
struct Library {
    std::mutex lock;
    int rate = 0;
    QByteArray voice; // the one that is set
    VoiceChoices languages;
    QHash<QString, QByteArray> files; // of each id, the library's name of the voice
    std::set<QString> variants;

    Library()
    {
        rate = std::max(0, espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 60, nullptr,
                                             espeakINITIALIZE_PHONEME_EVENTS | espeakINITIALIZE_DONT_EXIT));
        if (rate == 0)
            return;
        const char *folder = nullptr;
        espeak_Info(&folder);
        for (const auto &name :
             QDir(QString::fromLocal8Bit(folder) + QStringLiteral("/voices/!v")).entryList(QDir::Files))
            variants.insert(name);
        for (const auto *voices = espeak_ListVoices(nullptr); *voices; ++voices)
            Add(**voices);
        std::sort(languages.begin(), languages.end(), [](const auto &left, const auto &right) {
            return left.name.localeAwareCompare(right.name) < 0;
        });
    }

    void Add(const espeak_VOICE &found)
    {
        const QByteArray file(found.identifier);
        // Voices of another library, which is not there, and speakers without a language.
        if (file.startsWith("mb/") || file.startsWith("!v/") || !found.languages || !found.languages[0])
            return;
        // The first byte tells how well the voice fits the language.
        const auto language = QString::fromLatin1(found.languages + 1);
        const auto id = kPrefix + language;
        if (language.isEmpty() || files.contains(id))
            return;
        files.insert(id, file);
        languages.push_back({ id, QString::fromUtf8(found.name), language });
    }
};

Library &TheLibrary()
{
    static Library library;
    return library;
}

QByteArray Escaped(QByteArray text)
{
    return text.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
}

// To be called with the lock held and the voice set.
Said SayText(const QByteArray &text, unsigned flags)
{
    Said said;
    espeak_SetSynthCallback(Collect);
    espeak_Synth(text.constData(), static_cast<std::size_t>(text.size()) + 1, 0, POS_CHARACTER, 0,
                 espeakCHARS_UTF8 | flags, nullptr, &said);
    return said;
}

// A phrase that grows by what is said.
class Phrase {
public:
    explicit Phrase(int rate) : m_rate(rate)
    {
        m_phrase.samples.resize(static_cast<std::size_t>(kLead * rate));
        m_phrase.sounds.push_back({ 0, Now(), "pau" });
    }

    // `starts` tells at which character each word begins.
    void Append(Said said, const std::vector<int> &starts, std::span<const SpokenWord> words)
    {
        const auto begins = Now();
        auto last = said.samples.size();
        while (last > 0 && std::abs(said.samples[last - 1]) < kSilent)
            --last;
        const auto ends = begins + static_cast<double>(last) / m_rate;
        m_phrase.samples.insert(m_phrase.samples.end(), said.samples.begin(), said.samples.end());
        const auto time = [&](const Event &event) {
            return std::clamp(begins + static_cast<double>(event.sample) / m_rate, begins, ends);
        };
        const auto firstSound = m_phrase.sounds.size();
        for (const auto &event : said.events)
            if (event.position == 0 && time(event) < ends)
                AddSound(time(event), event.name);
        if (m_phrase.sounds.size() > firstSound || last > 0)
            m_phrase.sounds.back().ends = ends;
        AddWords(said, starts, words, begins, ends, time);
        if (Now() > ends)
            m_phrase.sounds.push_back({ ends, Now(), "pau" });
    }

    SaidPhrase Take() { return std::move(m_phrase); }

private:
    double Now() const { return static_cast<double>(m_phrase.samples.size()) / m_rate; }

    void AddSound(double at, const QByteArray &name)
    {
        const bool rest = name.isEmpty() || name.startsWith('_') || name == ";";
        const std::string phone = rest ? "pau" : name.toStdString();
        auto &before = m_phrase.sounds.back();
        if (at > before.begins)
            before.ends = at;
        if (phone != before.phone || phone != "pau")
            m_phrase.sounds.push_back({ at, at, phone });
    }

    template <typename Time>
    void AddWords(const Said &said, const std::vector<int> &starts, std::span<const SpokenWord> words,
                  double begins, double ends, const Time &time)
    {
        std::vector<double> at(words.size(), -1);
        for (const auto &event : said.events) {
            if (event.position == 0)
                continue;
            const auto behind = std::upper_bound(starts.begin(), starts.end(), event.position);
            const auto index =
                static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, behind - starts.begin() - 1));
            if (at[index] < 0)
                at[index] = time(event);
        }
        if (!at.empty() && at[0] < 0)
            at[0] = begins;
        // Words that were joined to the one before them share its time by their letters.
        for (std::size_t index = 1; index < at.size(); ++index) {
            if (at[index] >= 0)
                continue;
            auto next = index;
            while (next < at.size() && at[next] < 0)
                ++next;
            const auto until = next < at.size() ? at[next] : ends;
            const auto from = starts[index - 1];
            const auto to = next < at.size() ? starts[next] : starts.back() + LettersOf(words.back());
            const auto part = static_cast<double>(starts[index] - from) / std::max(1, to - from);
            at[index] = at[index - 1] + (until - at[index - 1]) * part;
        }
        for (std::size_t index = 0; index < at.size(); ++index) {
            at[index] = index > 0 ? std::max(at[index], at[index - 1]) : at[index];
            const auto next = index + 1 < at.size() ? std::max(at[index], at[index + 1]) : ends;
            m_phrase.words.push_back({ at[index], EndBefore(at[index], next),
                                       QString::fromUtf8(words[index].text).size() >= kWeightyWord });
        }
    }

    static int LettersOf(const SpokenWord &word)
    {
        return static_cast<int>(QString::fromUtf8(word.text).toUcs4().size());
    }

    // Where the rest begins that a word ends with, if it does.
    double EndBefore(double begins, double next) const
    {
        for (const auto &sound : m_phrase.sounds)
            if (sound.phone == "pau" && sound.begins > begins && sound.ends >= next - 0.001 &&
                sound.begins < next)
                return sound.begins;
        return next;
    }

    const int m_rate;
    SaidPhrase m_phrase;
};

} // namespace

const VoiceChoices &EspeakVoice::Languages()
{
    return TheLibrary().languages;
}

std::optional<EspeakVoice> EspeakVoice::Find(const QString &id, const QString &variant)
{
    const auto &library = TheLibrary();
    const auto file = library.files.constFind(id);
    if (file == library.files.cend())
        return std::nullopt;
    // The library takes a variant that it does not know without a word, and speaks like nobody.
    const bool known = library.variants.contains(variant);
    return EspeakVoice(known ? *file + '+' + variant.toUtf8() : *file);
}

int EspeakVoice::SampleRate() const
{
    return TheLibrary().rate;
}

SaidPhrase EspeakVoice::Say(std::span<const SpokenWord> words, double stretch, double pitch) const
{
    auto &library = TheLibrary();
    const std::scoped_lock lock(library.lock);
    if (library.voice != m_name) {
        if (espeak_SetVoiceByName(m_name.constData()) != EE_OK)
            return {};
        library.voice = m_name;
    }
    const auto scale = [](double value, double least, double most) {
        return static_cast<int>(std::lround(std::clamp(value, least, most)));
    };
    espeak_SetParameter(espeakRATE, scale(kPace / stretch, 80, 450), 0);
    // Fifty steps to the octave round the speaker's own.
    espeak_SetParameter(espeakPITCH, scale(50 + 50 * std::log2(pitch), 0, 99), 0);
    espeak_SetParameter(espeakRANGE, 50, 0);

    Phrase phrase(library.rate);
    for (std::size_t first = 0; first < words.size();) {
        if (words[first].letter) {
            // Among words "a" would be read as one, and of a capital it would be said that it is one.
            phrase.Append(SayText("<say-as interpret-as=\"tts:char\">" +
                                      Escaped(QString::fromUtf8(words[first].text).toLower().toUtf8()) +
                                      "</say-as>",
                                  espeakSSML),
                          { 1 }, words.subspan(first, 1));
            ++first;
            continue;
        }
        auto last = first;
        QString text;
        std::vector<int> starts;
        for (; last < words.size() && !words[last].letter; ++last) {
            starts.push_back(static_cast<int>(text.toUcs4().size()) + 1);
            text += QString::fromUtf8(words[last].text);
            // A mark that is not seen keeps the library from joining small words, which would then have one
            // time for all.
            text += words[last].punctuation.isEmpty() ? QStringLiteral("\u2063")
                                                      : QString::fromLatin1(words[last].punctuation);
            text += u' ';
        }
        phrase.Append(SayText(text.toUtf8(), 0), starts, words.subspan(first, last - first));
        first = last;
    }
    return phrase.Take();
}

} // namespace platform
