#include "Judge.h"

#include "platform/voice/SoundShaping.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>

namespace {

constexpr double kQuietRound = 0.5;

QByteArray ContentOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error(path.toStdString() + " cannot be read");
    return file.readAll();
}

void WriteTo(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        throw std::runtime_error(path.toStdString() + " cannot be written");
}

} // namespace

QStringList WordsOf(const QString &dictionary)
{
    QStringList words;
    for (const auto &line : ContentOf(dictionary).split('\n')) {
        const auto word = QString::fromUtf8(line.left(line.indexOf(' '))).section(u'(', 0, 0);
        if (!word.isEmpty() && (words.isEmpty() || words.last() != word))
            words << word;
    }
    return words;
}

QByteArray GrammarOf(const QStringList &words)
{
    return "#JSGF V1.0;\ngrammar words;\npublic <word> = " + words.join(QStringLiteral(" | ")).toUtf8() +
           ";\n";
}

std::vector<float> PinkNoise(std::size_t count, unsigned seed)
{
    std::mt19937 generator(seed);
    // The sum of a few white noises, each let through below another frequency.
    static constexpr double kKeep[] = { 0.99886, 0.99332, 0.96900, 0.86650, 0.55000, -0.7616 };
    static constexpr double kTake[] = { 0.0555179, 0.0750759, 0.1538520, 0.3104856, 0.5329522, -0.0168980 };
    double states[6] = {};
    double delayed = 0;
    std::vector<double> noise;
    double sum = 0;
    for (std::size_t index = 0; index < count; ++index) {
        const double white = static_cast<double>(generator()) / 2147483648.0 - 1;
        double value = delayed + white * 0.5362;
        delayed = white * 0.115926;
        for (int part = 0; part < 6; ++part) {
            states[part] = kKeep[part] * states[part] + white * kTake[part];
            value += states[part];
        }
        noise.push_back(value);
        sum += value * value;
    }
    const double scale = sum > 0 ? 1 / std::sqrt(sum / static_cast<double>(count)) : 0;
    std::vector<float> scaled;
    for (const double value : noise)
        scaled.push_back(static_cast<float>(value * scale));
    return scaled;
}

QByteArray InNoise(const std::vector<float> &speech, int sampleRate, double below, unsigned seed)
{
    const auto quiet = static_cast<std::size_t>(kQuietRound * sampleRate);
    auto noise = PinkNoise(speech.size() + 2 * quiet, seed);
    const auto size =
        static_cast<float>(std::pow(10, (platform::ActiveLevel(speech, sampleRate) - below) / 20));
    QByteArray samples(static_cast<qsizetype>(noise.size() * sizeof(qint16)), '\0');
    auto *out = reinterpret_cast<qint16 *>(samples.data());
    for (std::size_t index = 0; index < noise.size(); ++index) {
        auto value = noise[index] * size;
        if (index >= quiet && index < quiet + speech.size())
            value += speech[index - quiet];
        out[index] = static_cast<qint16>(std::clamp(std::lround(value * 32767), -32768L, 32767L));
    }
    return samples;
}

QStringList Heard(const std::vector<QByteArray> &recordings, const QString &dictionary, double warp)
{
    const QTemporaryDir folder;
    const QDir place(folder.path());
    QByteArray names;
    for (std::size_t index = 0; index < recordings.size(); ++index) {
        const auto name = QByteArray::number(static_cast<qulonglong>(index));
        WriteTo(place.filePath(QString::fromLatin1(name) + QStringLiteral(".raw")), recordings[index]);
        names += name + '\n';
    }
    WriteTo(place.filePath(QStringLiteral("names")), names);
    WriteTo(place.filePath(QStringLiteral("grammar")), GrammarOf(WordsOf(dictionary)));
    // One listener hears them all: what he takes for the middle of voice and room goes on from word to word,
    // as from a microphone. Left to begin anew with every recording, he would take it from a single short
    // word. The recordings are cut to the word already; left to look for the speech itself, this program ends
    // a long word at its first soft sound.
    QStringList arguments{ "-adcin",
                           "yes",
                           "-cmn",
                           "live",
                           "-remove_silence",
                           "no",
                           "-cepext",
                           ".raw",
                           "-cepdir",
                           folder.path(),
                           "-ctl",
                           place.filePath(QStringLiteral("names")),
                           "-dict",
                           dictionary,
                           "-jsgf",
                           place.filePath(QStringLiteral("grammar")),
                           "-hyp",
                           place.filePath(QStringLiteral("heard")) };
    if (warp != 1)
        arguments << QStringLiteral("-warp_type") << QStringLiteral("inverse_linear")
                  << QStringLiteral("-warp_params") << QString::number(warp);
    QProcess recogniser;
    recogniser.setStandardOutputFile(QProcess::nullDevice());
    recogniser.setStandardErrorFile(QProcess::nullDevice());
    recogniser.start(QStringLiteral("pocketsphinx_batch"), arguments);
    if (!recogniser.waitForFinished(-1) || recogniser.exitStatus() != QProcess::NormalExit ||
        recogniser.exitCode() != 0)
        throw std::runtime_error("pocketsphinx_batch failed; it is in the packages pocketsphinx and "
                                 "pocketsphinx-en-us");
    QStringList heard(static_cast<qsizetype>(recordings.size()));
    for (const auto &line : ContentOf(place.filePath(QStringLiteral("heard"))).split('\n')) {
        // "the words (name score)"
        const auto bracket = line.lastIndexOf('(');
        const auto name = bracket < 0 ? QByteArray() : line.mid(bracket + 1).split(' ').value(0);
        bool isNumber = false;
        const auto index = name.toLongLong(&isNumber);
        if (isNumber && index >= 0 && index < heard.size())
            heard[index] = QString::fromUtf8(line.left(bracket)).trimmed().toLower();
    }
    return heard;
}
