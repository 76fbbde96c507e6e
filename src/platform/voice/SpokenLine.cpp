#include "platform/voice/SpokenLine.h"

#include "platform/voice/MouthShapes.h"
#include "platform/voice/SoundShaping.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

using std::chrono::milliseconds;

constexpr int kOutputRate = 48000;
constexpr double kLevel = -20;
constexpr double kLongestLine = 90;
// The engine sets long rests round every phrase; these are left of them.
constexpr double kRestBefore = 0.060;
constexpr double kRestBetween = 0.180;
constexpr double kRestBehind = 0.100;
// Where another voice goes on, so that a word stands as well apart as behind a colon.
constexpr double kBetweenVoices = 0.080;
// A cut that is not in silence is faded this long, so that it does not click.
constexpr double kFade = 0.004;
constexpr std::size_t kWordsInPhrase = 40;
// A nod for every word would be no nod; the voice's accents count this far apart.
constexpr double kBetweenStresses = 0.8;

bool IsRest(const SpokenSound &sound)
{
    return sound.phone == "pau";
}

double Seconds(milliseconds duration)
{
    return static_cast<double>(duration.count()) / 1000;
}

// `value` within bounds, and `otherwise` for what is no number.
double Bounded(double value, double least, double most, double otherwise)
{
    return std::isnan(value) ? otherwise : std::clamp(value, least, most);
}

// The sound of a line while it grows, at the voice's own rate.
class Line {
public:
    explicit Line(int sampleRate) : m_sampleRate(sampleRate) {}

    double Length() const { return static_cast<double>(samples.size()) / m_sampleRate; }

    void AppendSilence(double seconds)
    {
        if (seconds <= 0)
            return;
        const auto begins = Length();
        samples.resize(samples.size() + static_cast<std::size_t>(std::lround(seconds * m_sampleRate)));
        AppendSound({ begins, Length(), "pau" });
    }

    // Appends `phrase`, its own rests cut to `before` and `behind`, and makes the pause behind each of its
    // words as long as the word asks.
    void Append(const SaidPhrase &phrase, std::span<const SpokenWord> said, double before, double behind)
    {
        auto from = 0.0;
        auto to = static_cast<double>(phrase.samples.size()) / m_sampleRate;
        if (!phrase.sounds.empty() && IsRest(phrase.sounds.front()))
            from = std::max(0.0, phrase.sounds.front().ends - before);
        if (phrase.sounds.size() > 1 && IsRest(phrase.sounds.back()))
            to = std::min(to, phrase.sounds.back().begins + behind);

        const auto firstWord = words.size();
        words.insert(words.end(), phrase.words.begin(), phrase.words.end());
        std::size_t sound = 0;
        std::size_t timed = firstWord; // words from here on have no times of the line yet
        auto at = from;
        const auto copyUpTo = [&](double end) {
            const auto shift = Length() - at;
            CopySamples(phrase, at, end);
            for (; sound < phrase.sounds.size() && phrase.sounds[sound].begins < end; ++sound) {
                const auto &heard = phrase.sounds[sound];
                AppendSound(
                    { std::max(heard.begins, at) + shift, std::min(heard.ends, end) + shift, heard.phone });
                if (heard.ends > end)
                    break;
            }
            for (; timed < words.size() && words[timed].begins < end; ++timed) {
                words[timed].begins = std::max(words[timed].begins, at) + shift;
                words[timed].ends = std::min(words[timed].ends, end) + shift;
            }
            at = end;
        };
        for (std::size_t index = 0; index + 1 < said.size() && index < phrase.words.size(); ++index) {
            const auto wanted = Seconds(said[index].after);
            const auto ends = phrase.words[index].ends;
            if (wanted <= 0 || ends <= at || ends >= to)
                continue;
            const auto rest =
                std::find_if(phrase.sounds.begin(), phrase.sounds.end(), [ends](const auto &heard) {
                    return IsRest(heard) && std::abs(heard.begins - ends) < 0.001;
                });
            const auto there = rest != phrase.sounds.end() ? rest->ends - rest->begins : 0.0;
            if (wanted > there) {
                copyUpTo(ends + there / 2);
                AppendSilence(wanted - there);
            }
        }
        copyUpTo(to);
        for (; timed < words.size(); ++timed)
            words[timed].begins = words[timed].ends = Length();
    }

    std::vector<float> samples;
    std::vector<SpokenSound> sounds;
    std::vector<SaidWord> words;

private:
    const int m_sampleRate;

    void AppendSound(SpokenSound sound)
    {
        if (!sounds.empty() && sounds.back().phone == sound.phone && IsRest(sound))
            sounds.back().ends = sound.ends;
        else
            sounds.push_back(std::move(sound));
    }

    void CopySamples(const SaidPhrase &phrase, double from, double to)
    {
        const auto index = [&](double seconds) {
            const auto rounded = std::lround(std::max(0.0, seconds) * m_sampleRate);
            return std::min(static_cast<std::size_t>(rounded), phrase.samples.size());
        };
        const auto first = index(from);
        const auto last = std::max(first, index(to));
        const auto start = samples.size();
        samples.insert(samples.end(), phrase.samples.begin() + static_cast<std::ptrdiff_t>(first),
                       phrase.samples.begin() + static_cast<std::ptrdiff_t>(last));
        const auto fade = std::min(static_cast<std::size_t>(kFade * m_sampleRate), (last - first) / 2);
        for (std::size_t step = 0; step < fade; ++step) {
            const auto factor = static_cast<float>(step) / static_cast<float>(fade);
            samples[start + step] *= factor;
            samples[samples.size() - 1 - step] *= factor;
        }
    }
};

// How many words from `first` on are said in one breath.
std::size_t PhraseLength(std::span<const SpokenWord> words, std::size_t first)
{
    std::size_t comma = 0;
    for (auto index = first; index < words.size(); ++index) {
        const auto length = index - first + 1;
        if (words[index].endsSentence || (index + 1 < words.size() && words[index + 1].before.count() > 0))
            return length;
        if (words[index].after.count() > 0)
            comma = length;
        if (length == kWordsInPhrase)
            return comma > 0 ? comma : length;
    }
    return words.size() - first;
}

// Marks the words that carry the phrases' weight, for the nods of the figure.
std::vector<bool> Stresses(const Line &line, std::span<const SpokenWord> words)
{
    std::vector<bool> stresses(words.size());
    double last = -kBetweenStresses;
    std::size_t accented = words.size();
    for (std::size_t index = 0; index < line.words.size(); ++index) {
        if (line.words[index].accented)
            accented = index;
        const bool phraseEnds =
            index + 1 == line.words.size() || words[index].after.count() > 0 || words[index].endsSentence;
        if (phraseEnds && accented < words.size()) {
            if (line.words[accented].begins - last >= kBetweenStresses) {
                stresses[accented] = true;
                last = line.words[accented].begins;
            }
            accented = words.size();
        }
        if (words[index].stressed)
            stresses[index] = true;
    }
    return stresses;
}

std::vector<UnitCue> UnitCues(const Line &line, std::span<const SpokenWord> words, std::size_t units,
                              double rate)
{
    const auto time = [rate](double seconds) {
        return std::chrono::microseconds(std::llround(seconds / rate * 1e6));
    };
    const auto end = line.words.empty() ? time(line.Length()) : time(line.words.back().ends);
    std::vector<UnitCue> cues(units, UnitCue{ end, end });
    std::vector<bool> heard(units);
    const auto stresses = Stresses(line, words);
    for (std::size_t index = 0; index < line.words.size(); ++index) {
        auto &cue = cues[words[index].unit];
        if (!heard[words[index].unit])
            cue.begins = time(line.words[index].begins);
        cue.ends = time(line.words[index].ends);
        cue.stressed = cue.stressed || stresses[index];
        heard[words[index].unit] = true;
    }
    // What makes no sound comes with that which follows.
    for (auto index = units; index-- > 1;)
        if (!heard[index - 1])
            cues[index - 1].begins = cues[index - 1].ends = cues[index].begins;
    return cues;
}

} // namespace

std::shared_ptr<const Utterance> MakeLine(const SpeechText &text, const VoiceSettings &settings,
                                          const PhraseVoice &voice, const std::atomic<bool> &cancelled)
{
    const auto spoken = SpokenWords::Of(text, voice.Reads());
    const std::span<const SpokenWord> words(spoken.words);
    const auto rate = Bounded(settings.rate, 0.5, 2.0, 1.0);
    const auto stretch = Bounded(settings.stretch, 0.3, 3.0, 1.0) * rate;
    const auto pitch = Bounded(settings.pitch, 0.3, 3.0, 1.0);

    Line line(voice.SampleRate());
    for (std::size_t first = 0; first < words.size() && line.Length() < kLongestLine;) {
        if (cancelled)
            return nullptr;
        const auto phrase = words.subspan(first, PhraseLength(words, first));
        line.AppendSilence(Seconds(phrase.front().before) * rate);
        line.Append(voice.Say(phrase, stretch, pitch), phrase, first == 0 ? kRestBefore : kRestBetween,
                    kRestBehind);
        line.words.resize(first + phrase.size(), { line.Length(), line.Length(), false });
        first += phrase.size();
        if (first < words.size() && !phrase.back().endsSentence)
            line.AppendSilence(Seconds(phrase.back().after) - kRestBehind - kRestBetween);
    }
    line.AppendSilence(Seconds(spoken.behind) * rate);
    if (cancelled)
        return nullptr;

    auto utterance = std::make_shared<Utterance>();
    utterance->sampleRate = kOutputRate;
    utterance->units = UnitCues(line, words, text.units.size(), rate);
    for (auto &sound : line.sounds) {
        sound.begins /= rate;
        sound.ends /= rate;
    }
    utterance->mouths = MouthShapes(line.sounds, voice.Sounds());
    LiftTreble(line.samples, voice.SampleRate(), Bounded(settings.treble, -20.0, 20.0, 0.0));
    SetLevel(line.samples, voice.SampleRate(), kLevel);
    utterance->samples =
        Resampled(line.samples, static_cast<int>(std::lround(voice.SampleRate() * rate)), kOutputRate);
    return utterance;
}

std::shared_ptr<const Utterance> Joined(const Utterance &first, const Utterance &second)
{
    if (first.samples.isEmpty() || second.samples.isEmpty()) {
        // Units that make no sound come with the sound there is.
        auto joined = std::make_shared<Utterance>(first.samples.isEmpty() ? second : first);
        const auto at = first.samples.isEmpty() ? std::chrono::microseconds(0) : first.Length();
        const auto &silent = first.samples.isEmpty() ? first.units : second.units;
        joined->units.insert(first.samples.isEmpty() ? joined->units.begin() : joined->units.end(),
                             silent.size(), UnitCue{ at, at });
        return joined;
    }
    auto joined = std::make_shared<Utterance>(first);
    const auto frames = static_cast<qsizetype>(std::lround(kBetweenVoices * first.sampleRate));
    joined->samples.append(QByteArray(frames * static_cast<qsizetype>(sizeof(qint16)), '\0'));
    const auto shift = joined->Length();
    joined->samples.append(second.samples);
    for (auto unit : second.units) {
        unit.begins += shift;
        unit.ends += shift;
        joined->units.push_back(unit);
    }
    // The first ends at rest and the second begins so.
    for (std::size_t index = 1; index < second.mouths.size(); ++index)
        joined->mouths.push_back({ second.mouths[index].at + shift, second.mouths[index].mouth });
    return joined;
}

} // namespace platform
