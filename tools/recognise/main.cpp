// Says the words of dictionaries in the voices of characters, through everything that the game itself uses up
// to the sound device, and prints how many of them a recogniser understands in noise.
//
// The listener is pocketsphinx with its model of American English and its usual settings, listening as to a
// microphone: what it knows of voice and room goes on from word to word. It knows the words of one dictionary
// and expects exactly one of them. Each is heard once at each level of noise, with half a second of noise
// before and behind it; the noise is pink and so many decibels below the active level of the word. The size
// of the speaker is told to it for the two voices that are larger or smaller than people. Rounds differ in
// nothing but the noise.

#include "Judge.h"

#include "platform/agent/CharacterFile.h"
#include "platform/agent/CharacterReader.h"
#include "platform/voice/SoundShaping.h"
#include "platform/voice/SpeechService.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileInfo>

#include <cmath>
#include <cstdio>
#include <map>
#include <numeric>
#include <stdexcept>

using namespace platform;

namespace {

constexpr int kJudgeRate = 16000;
constexpr double kNoises[] = { 30, 20, 15 };

// A listener gets used to the size of a speaker, and so may the recogniser: by the voice, never by the word.
double WarpFor(const VoiceSettings &voice)
{
    if (voice.voice == QLatin1String("cmu_us_rms"))
        return 0.9;
    return voice.pitch > 1.3 ? 1.4 : 1.0;
}

// The word as it is heard, at the rate of the recogniser.
std::vector<float> Said(SpeechService &service, const QString &word, const VoiceSettings &voice)
{
    std::shared_ptr<const Utterance> made;
    QEventLoop loop;
    const auto order = service.Synthesise(SpeechText::Parse(word), voice, [&](auto utterance) {
        made = std::move(utterance);
        loop.quit();
    });
    loop.exec();
    if (!made)
        throw std::runtime_error("the word cannot be said: " + word.toStdString());
    const auto floats = [](const QByteArray &raw) {
        std::vector<float> samples;
        const auto *values = reinterpret_cast<const qint16 *>(raw.constData());
        for (qsizetype index = 0; index < raw.size() / 2; ++index)
            samples.push_back(static_cast<float>(values[index]) / 32768.0F);
        return samples;
    };
    return floats(Resampled(floats(made->samples), made->sampleRate, kJudgeRate));
}

struct Row {
    std::vector<double> understood[std::size(kNoises)]; // in per cent, for each round
    std::map<QString, QStringList> mistakes; // in the quietest room: the word, and what it was taken for
};

Row Measure(SpeechService &service, const VoiceSettings &voice, const QString &dictionary, double warp,
            unsigned rounds)
{
    const auto words = WordsOf(dictionary);
    std::vector<std::vector<float>> said;
    for (const auto &word : words)
        said.push_back(Said(service, word, voice));
    Row row;
    for (unsigned round = 0; round < rounds; ++round) {
        for (std::size_t noise = 0; noise < std::size(kNoises); ++noise) {
            std::vector<QByteArray> recordings;
            for (std::size_t index = 0; index < said.size(); ++index)
                recordings.push_back(InNoise(said[index], kJudgeRate, kNoises[noise],
                                             round * 100000 + static_cast<unsigned>(index + 1)));
            const auto heard = Heard(recordings, dictionary, warp);
            int right = 0;
            for (qsizetype index = 0; index < words.size(); ++index) {
                if (heard[index] == words[index])
                    ++right;
                else if (noise == 0)
                    row.mistakes[words[index]] << heard[index];
            }
            row.understood[noise].push_back(100.0 * right / static_cast<double>(words.size()));
        }
    }
    return row;
}

// "91.4", or over several rounds their mean with the standard deviation behind it, "91.4 (0.6)".
QString Summary(const std::vector<double> &values)
{
    const auto count = static_cast<double>(values.size());
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    if (values.size() < 2)
        return QString::number(mean, 'f', 1);
    double squares = 0;
    for (const double value : values)
        squares += (value - mean) * (value - mean);
    return QStringLiteral("%1 (%2)").arg(mean, 0, 'f', 1).arg(std::sqrt(squares / (count - 1)), 0, 'f', 1);
}

} // namespace

int main(int argumentCount, char **arguments)
{
    QCoreApplication application(argumentCount, arguments);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Measures how well the voices are understood."));
    parser.addHelpOption();
    const QCommandLineOption dictionaryOption(
        QStringLiteral("words"),
        QStringLiteral("Words and how they may be said; may be given several times."),
        QStringLiteral("file"));
    const QCommandLineOption mistakesOption(
        QStringLiteral("mistakes"), QStringLiteral("Print what was misunderstood in the quietest room."));
    const QCommandLineOption roundsOption(
        QStringLiteral("rounds"), QStringLiteral("Hears everything so many times, each in other noise."),
        QStringLiteral("count"), QStringLiteral("1"));
    const QCommandLineOption setOption(QStringLiteral("set"),
                                       QStringLiteral("Tries another stretch, pitch, rate or treble."),
                                       QStringLiteral("name=value"));
    parser.addOptions({ dictionaryOption, mistakesOption, roundsOption, setOption });
    parser.addPositionalArgument(QStringLiteral("folders"),
                                 QStringLiteral("Characters, such as characters/merlin."),
                                 QStringLiteral("folder..."));
    parser.process(application);
    if (parser.positionalArguments().isEmpty() || !parser.isSet(dictionaryOption))
        parser.showHelp(1);
    const unsigned rounds = parser.value(roundsOption).toUInt();
    if (rounds < 1)
        parser.showHelp(1);
    QString reading;
    try {
        SpeechService service;
        std::printf("%-10s %-16s %6s %12s %12s %12s\n", "voice", "words", "", "30 dB", "20 dB", "15 dB");
        for (const QString &folder : parser.positionalArguments()) {
            reading = folder;
            const CharacterSource source = ReadCharacterFolder(folder);
            auto data = ReadCharacter(source.drawing, source.figure, source.motions);
            for (const QString &setting : parser.values(setOption)) {
                const auto name = setting.section(u'=', 0, 0);
                bool isNumber = false;
                const auto value = setting.section(u'=', 1).toDouble(&isNumber);
                if (!isNumber)
                    throw std::runtime_error("no number stands in --set " + setting.toStdString());
                if (name == QLatin1String("stretch"))
                    data.voice.stretch = value;
                else if (name == QLatin1String("pitch"))
                    data.voice.pitch = value;
                else if (name == QLatin1String("rate"))
                    data.voice.rate = value;
                else if (name == QLatin1String("treble"))
                    data.voice.treble = value;
                else
                    throw std::runtime_error("no such setting: --set " + setting.toStdString());
            }
            for (const QString &dictionary : parser.values(dictionaryOption)) {
                QElapsedTimer timer;
                timer.start();
                const Row row = Measure(service, data.voice, dictionary, WarpFor(data.voice), rounds);
                std::printf("%-10s %-16s %6lld %12s %12s %12s   %lld s\n", qPrintable(data.name),
                            qPrintable(QFileInfo(dictionary).baseName()),
                            static_cast<long long>(WordsOf(dictionary).size()),
                            qPrintable(Summary(row.understood[0])), qPrintable(Summary(row.understood[1])),
                            qPrintable(Summary(row.understood[2])),
                            static_cast<long long>(timer.elapsed() / 1000));
                if (parser.isSet(mistakesOption)) {
                    for (const auto &[word, heard] : row.mistakes)
                        std::printf("    %-16s %lld of %u: %s\n", qPrintable(word),
                                    static_cast<long long>(heard.size()), rounds,
                                    qPrintable(heard.join(u' ')));
                }
                std::fflush(stdout);
            }
        }
    } catch (const CharacterFault &fault) {
        std::fprintf(stderr, "recognise: %s: %s\n", qPrintable(reading), qPrintable(fault.Text()));
        return 1;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "recognise: %s\n", error.what());
        return 1;
    }
    return 0;
}
