#include "Judge.h"

#include "platform/voice/SoundShaping.h"

#include <QFile>
#include <QTemporaryDir>

#include <pocketsphinx.h>
#include <sphinxbase/err.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <stdexcept>

namespace {

constexpr double kQuietRound = 0.5;
constexpr std::size_t kPiece = 2048; // samples

struct Free {
    void operator()(ps_decoder_t *decoder) const { ps_free(decoder); }
    void operator()(cmd_ln_t *options) const { cmd_ln_free_r(options); }
};

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
    err_set_logfp(nullptr);
    const QTemporaryDir folder;
    const QByteArray grammar = QFile::encodeName(folder.filePath(QStringLiteral("grammar")));
    WriteTo(QString::fromLocal8Bit(grammar), GrammarOf(WordsOf(dictionary)));
    const std::unique_ptr<cmd_ln_t, Free> options(
        cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", SPHINX_MODELS "/en-us/en-us", "-dict",
                    QFile::encodeName(dictionary).constData(), "-jsgf", grammar.constData(), "-warp_type",
                    "inverse_linear", "-warp_params", QByteArray::number(warp).constData(), nullptr));
    const std::unique_ptr<ps_decoder_t, Free> decoder(options ? ps_init(options.get()) : nullptr);
    if (!decoder)
        throw std::runtime_error(
            "the recogniser cannot be started; its model is in the package pocketsphinx-en-us");
    // One listener hears them all piece by piece, as from a microphone: what he knows of voice and room goes
    // on from word to word. Left to begin anew with every recording, he would take it from a single short
    // word.
    ps_start_stream(decoder.get());
    QStringList heard;
    for (const QByteArray &recording : recordings) {
        if (ps_start_utt(decoder.get()) < 0)
            throw std::runtime_error("the recogniser does not listen");
        const auto *samples = reinterpret_cast<const int16 *>(recording.constData());
        const auto count = static_cast<std::size_t>(recording.size()) / sizeof(int16);
        for (std::size_t at = 0; at < count; at += kPiece)
            ps_process_raw(decoder.get(), samples + at, std::min(kPiece, count - at), FALSE, FALSE);
        ps_end_utt(decoder.get());
        int32 score = 0;
        heard << QString::fromUtf8(ps_get_hyp(decoder.get(), &score)).trimmed().toLower();
    }
    return heard;
}
