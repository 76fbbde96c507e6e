#include "platform/agent/CharacterFile.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTest>
#include <QtEndian>
#include <cmath>

using namespace platform;

namespace {

const QDir kCharacters(QStringLiteral(CHARACTERS_FOLDER));
const QString kSounds = QStringLiteral(SOUNDS_FOLDER);

// What is heard of each; the others move in silence.
struct Heard {
    const char *character;
    QStringList motions;
};
const QStringList kAll{ "Show",    "Hide",     "Idle3_1",  "Idle3_2",        "Congratulate", "DoMagic2",
                        "MoveUp",  "MoveDown", "MoveLeft", "MoveRight",      "Read",         "ReadContinued",
                        "Reading", "Suggest",  "Write",    "WriteContinued", "Writing" };
const QStringList kMerlinAndPeedy{ "Announce",  "Confused", "GetAttention", "GetAttentionContinued",
                                   "Greet",     "Process",  "Processing",   "Search",
                                   "Searching", "Surprised" };
const Heard kHeard[] = {
    { "Merlin", kAll + kMerlinAndPeedy + QStringList{ "Congratulate_2" } },
    { "Genie", kAll + QStringList{ "Congratulate_2" } },
    { "Peedy", kAll + kMerlinAndPeedy + QStringList{ "DoMagic1", "Idle2_2" } },
};

// No motion that is played between two questions is lengthened by its sound.
const char *const kPlayedInTurns[] = { "Show",         "Hide",    "Congratulate", "Congratulate_2",
                                       "GetAttention", "Process", "Read" };

// A voice sounds at -20.
constexpr double kLoudest = -23.9;
constexpr double kLoudestFanfare = -20;
constexpr double kHighestPeak = -6;
constexpr qsizetype kLargestSounds = 1500 * 1000; // bytes for each character

std::vector<double> Numbers(const QByteArray &samples)
{
    std::vector<double> numbers;
    for (qsizetype at = 0; at + 1 < samples.size(); at += 2)
        numbers.push_back(qFromLittleEndian<qint16>(samples.constData() + at) / 32768.0);
    return numbers;
}

double Decibel(double power)
{
    return 10 * std::log10(std::max(power, 1e-12));
}

// The mean power of what lies within 20 dB of the loudest fiftieth of a second.
double Loudness(const std::vector<double> &samples)
{
    constexpr std::size_t kWindow = kSoundRate / 50;
    std::vector<double> powers;
    for (std::size_t from = 0; from < samples.size(); from += kWindow) {
        double power = 0;
        for (std::size_t at = from; at < std::min(samples.size(), from + kWindow); ++at)
            power += samples[at] * samples[at];
        powers.push_back(power / kWindow);
    }
    const double loudest = *std::max_element(powers.begin(), powers.end());
    double sum = 0;
    int count = 0;
    for (const double power : powers) {
        sum += power > loudest / 100 ? power : 0;
        count += power > loudest / 100;
    }
    return Decibel(sum / count);
}

// Where something high is heard for two thousandths of a second in a sound that is softer behind it than
// before.
std::vector<double> Clicks(const std::vector<double> &samples)
{
    constexpr std::size_t kWindow = kSoundRate / 500;
    std::vector<double> all;
    std::vector<double> high;
    for (std::size_t from = 3; from + kWindow <= samples.size(); from += kWindow) {
        double sum = 0;
        double bends = 0;
        for (std::size_t at = from; at < from + kWindow; ++at) {
            const double bend = samples[at] - 3 * samples[at - 1] + 3 * samples[at - 2] - samples[at - 3];
            sum += samples[at] * samples[at];
            bends += bend * bend;
        }
        all.push_back(Decibel(sum / kWindow));
        high.push_back(Decibel(bends / kWindow));
    }
    const auto most = [](const std::vector<double> &values, std::size_t from, std::size_t to) {
        return *std::max_element(values.begin() + std::ptrdiff_t(from), values.begin() + std::ptrdiff_t(to));
    };
    std::vector<double> clicks;
    for (std::size_t at = 6; at + 8 < all.size(); ++at) {
        const double round = std::max(most(high, at - 4, at - 1), most(high, at + 3, at + 6));
        if (high[at] > round + 9 &&
            std::max(all[at] + 1, most(all, at + 2, at + 7) + 1) < most(all, at - 6, at) &&
            (clicks.empty() || double(at * kWindow) / kSoundRate > clicks.back() + 0.01))
            clicks.push_back(double(at * kWindow) / kSoundRate);
    }
    return clicks;
}

} // namespace

// The sounds of the characters as they are shipped.
class TestSounds : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const Heard &heard : kHeard) {
            const QString name = QLatin1String(heard.character);
            try {
                const CharacterSource source =
                    ReadCharacterFolder(kCharacters.filePath(name.toLower()), kSounds);
                m_sources.insert(name, source);
                m_characters.insert(
                    name, ReadCharacter(source.drawing, source.figure, source.motions, &source.sounds));
            } catch (const CharacterFault &fault) {
                QFAIL(qPrintable(name + QStringLiteral(": ") + fault.Text()));
            }
        }
    }

    void everyMotionThatIsToBeHeardIs()
    {
        for (const Heard &heard : kHeard) {
            const CharacterData &character = m_characters[QLatin1String(heard.character)];
            for (const auto &[key, motion] : character.motions) {
                const bool wanted = heard.motions.contains(motion.name);
                QVERIFY2(wanted == !motion.sounds.empty(), qPrintable(character.name + ' ' + motion.name));
                for (const SoundCue &cue : motion.sounds)
                    QVERIFY2(cue.sound, qPrintable(cue.name));
            }
            for (const QString &name : heard.motions)
                QVERIFY2(character.FindMotion(name), qPrintable(name));
        }
    }

    void noSoundOutlastsItsMotion()
    {
        for (const CharacterData &character : m_characters) {
            for (const auto &[key, motion] : character.motions) {
                double end = 0;
                for (const SoundCue &cue : motion.sounds)
                    end = std::max(end, cue.at + double(cue.sound->Length().count()) / 1e6);
                const QString label = QStringLiteral("%1 %2 %3").arg(character.name, motion.name).arg(end);
                if (motion.aloft)
                    QVERIFY2(end < motion.aloft->from + 1, qPrintable(label)); // a flight takes a second
                else
                    QVERIFY2(end < motion.length + 0.1, qPrintable(label));
                for (const char *name : kPlayedInTurns)
                    QVERIFY2(motion.name != QLatin1String(name) || end < 3, qPrintable(label));
            }
        }
    }

    void everyPassOfALoopIsHeard()
    {
        for (const CharacterData &character : m_characters) {
            for (const auto &[key, motion] : character.motions) {
                if (!motion.loop || motion.sounds.empty())
                    continue;
                const bool heard =
                    std::any_of(motion.sounds.begin(), motion.sounds.end(), [&motion](const SoundCue &cue) {
                        return cue.at >= motion.loop->from && cue.at < motion.loop->to;
                    });
                QVERIFY2(heard, qPrintable(character.name + ' ' + motion.name));
            }
        }
    }

    void noneIsLouderThanAVoice()
    {
        for (const QString &file : Files()) {
            const auto samples = Samples(file);
            const double loudness = Loudness(samples);
            double peak = 0;
            for (const double sample : samples)
                peak = std::max(peak, std::abs(sample));
            const double most = file == "fanfare.wav" ? kLoudestFanfare : kLoudest;
            QVERIFY2(loudness <= most && loudness > -45,
                     qPrintable(QStringLiteral("%1: %2 dB").arg(file).arg(loudness)));
            QVERIFY2(Decibel(peak * peak) <= kHighestPeak, qPrintable(file));
        }
    }

    void noneClicksOrIsOffItsMiddle()
    {
        for (const QString &file : Files()) {
            const auto samples = Samples(file);
            QVERIFY2(samples.size() > 1000, qPrintable(file));
            QVERIFY2(std::abs(samples.front()) < 0.001 && std::abs(samples.back()) < 0.001, qPrintable(file));
            double sum = 0;
            for (const double sample : samples)
                sum += sample;
            QVERIFY2(std::abs(sum / double(samples.size())) < 0.001, qPrintable(file));
            // The last hundredth of a second dies away.
            double tail = 0;
            for (std::size_t at = samples.size() - kSoundRate / 100; at < samples.size(); ++at)
                tail = std::max(tail, std::abs(samples[at]));
            QVERIFY2(tail < 0.02, qPrintable(QStringLiteral("%1: %2").arg(file).arg(tail)));
        }
    }

    void nothingIsBrokenOffWhileItRings()
    {
        for (const QString &file : Files()) {
            // Bubbles that break do click.
            if (file == "pot.wav")
                continue;
            const auto samples = Samples(file);
            const auto clicks = Clicks(samples);
            QVERIFY2(clicks.empty(),
                     qPrintable(QStringLiteral("%1 at %2 s").arg(file).arg(clicks.empty() ? 0 : clicks[0])));
        }
        // What is looked for is found: a tone that is cut.
        std::vector<double> cut(kSoundRate, 0);
        for (std::size_t at = 0; at < cut.size() / 2 + 11; ++at)
            cut[at] = 0.01 * std::sin(double(at) * 0.1);
        QCOMPARE(Clicks(cut).size(), std::size_t(1));
    }

    void everySoundIsUsedAndDifferent()
    {
        QSet<QString> used;
        for (const CharacterSource &source : m_sources) {
            for (const auto &[name, samples] : source.sounds)
                used << name.toString() + QStringLiteral(".wav");
        }
        const QStringList files = Files();
        QCOMPARE(used, QSet<QString>(files.begin(), files.end()));
        QSet<QByteArray> contents;
        for (const QString &file : files) {
            QFile wave(QDir(kSounds).filePath(file));
            QVERIFY(wave.open(QIODevice::ReadOnly));
            contents << wave.readAll();
        }
        QCOMPARE(contents.size(), files.size());
        // The three sleepers are told apart by their snores.
        QSet<QString> snores;
        for (const CharacterData &character : m_characters)
            snores << character.FindMotion("Idle3_2")->sounds.front().name;
        QCOMPARE(snores.size(), qsizetype(3));
    }

    void aCharacterStaysSmall()
    {
        for (const QString &name : m_sources.keys()) {
            CharacterSource silent = m_sources[name];
            silent.sounds = {};
            const qsizetype grown = PackCharacter(m_sources[name]).size() - PackCharacter(silent).size();
            QVERIFY2(grown > 100000 && grown < kLargestSounds,
                     qPrintable(QStringLiteral("%1 %2").arg(name).arg(grown)));
        }
    }

private:
    static QStringList Files() { return QDir(kSounds).entryList({ "*.wav" }, QDir::Files, QDir::Name); }
    // Behind the header, which has a fixed size in these.
    static std::vector<double> Samples(const QString &file)
    {
        QFile wave(QDir(kSounds).filePath(file));
        return wave.open(QIODevice::ReadOnly) ? Numbers(wave.readAll().mid(44)) : std::vector<double>();
    }

    QMap<QString, CharacterSource> m_sources;
    QMap<QString, CharacterData> m_characters;
};

QTEST_GUILESS_MAIN(TestSounds)
#include "TestSounds.moc"
