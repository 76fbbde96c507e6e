#include "platform/voice/SphinxRecogniser.h"

#include "platform/voice/SphinxModel.h"

#include <QCoreApplication>
#include <QFile>

#ifdef TUMBLEWICK_SPHINX
#include <pocketsphinx.h>
#include <sphinxbase/err.h>
#include <sphinxbase/fsg_model.h>
#include <sphinxbase/jsgf.h>
#endif

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace platform {

#ifdef TUMBLEWICK_SPHINX

namespace {

constexpr int kAnswers = 3;
constexpr std::size_t kPiece = 2048; // samples
constexpr int kLeastSamples = kSpeechRate / 8;

// How the letters sound, in the model's own sounds.
struct Spoken {
    const char *word;
    const char *sounds;
    const char *name;
};
constexpr Spoken kSpoken[] = {
    { "a", "EY", "a" },
    { "b", "B IY", "b" },
    { "c", "S IY", "c" },
    { "d", "D IY", "d" },
    { "e", "IY", "e" },
    { "f", "EH F", "f" },
    { "g", "JH IY", "g" },
    { "h", "EY CH", "h" },
    { "i", "AY", "i" },
    { "j", "JH EY", "j" },
    { "k", "K EY", "k" },
    { "l", "EH L", "l" },
    { "m", "EH M", "m" },
    { "n", "EH N", "n" },
    { "o", "OW", "o" },
    { "p", "P IY", "p" },
    { "q", "K Y UW", "q" },
    { "r", "AA R", "r" },
    { "r_open", "AA", "r" },
    { "s", "EH S", "s" },
    { "t", "T IY", "t" },
    { "u", "Y UW", "u" },
    { "v", "V IY", "v" },
    { "w", "D AH B AH L Y UW", "w" },
    { "x", "EH K S", "x" },
    { "y", "W AY", "y" },
    { "z", "Z IY", "z" },
    { "z_zed", "Z EH D", "z" },
    // "Go" alone is too close to "o".
    { "go_ahead", "G OW AH HH EH D", "go" },
};

struct Free {
    void operator()(ps_decoder_t *decoder) const { ps_free(decoder); }
    void operator()(cmd_ln_t *options) const { cmd_ln_free_r(options); }
    void operator()(jsgf_t *grammar) const { jsgf_grammar_free(grammar); }
    void operator()(fsg_model_t *model) const { fsg_model_free(model); }
};

// One decoder: for voices as they are, or for those of children, which are higher.
class Decoder {
public:
    Decoder(const QString &model, bool children)
    {
        err_set_logfp(nullptr);
        const QByteArray path = QFile::encodeName(model);
        const std::unique_ptr<cmd_ln_t, Free> options(
            cmd_ln_init(nullptr, ps_args(), TRUE, "-hmm", path.constData(), "-samprate", "16000",
                        "-warp_type", "inverse_linear", "-warp_params", children ? "1.4" : "1.0", nullptr));
        if (options)
            m_decoder.reset(ps_init(options.get()));
        if (!m_decoder)
            return;
        for (const Spoken &spoken : kSpoken) {
            if (ps_add_word(m_decoder.get(), spoken.word, spoken.sounds, FALSE) < 0) {
                m_decoder.reset();
                return;
            }
        }
    }

    struct Answer {
        QString name;
        int score = 0;
    };
    // The best of what is not yet among `known`; none when nothing was said.
    std::optional<Answer> Best(const QByteArray &samples, const QStringList &known)
    {
        if (!m_decoder)
            return std::nullopt;
        QByteArray grammar = "#JSGF V1.0; grammar letters; public <letter> = ";
        bool first = true;
        for (const Spoken &spoken : kSpoken) {
            if (known.contains(QLatin1String(spoken.name)))
                continue;
            grammar += (first ? "" : " | ") + QByteArray(spoken.word);
            first = false;
        }
        grammar += ";";
        if (!Expect(grammar) || ps_start_utt(m_decoder.get()) < 0)
            return std::nullopt;
        // Piece by piece, as from a microphone: so the decoder gets used to voice and room from letter to
        // letter, by which more of them are understood than each for itself.
        const auto *from = reinterpret_cast<const int16 *>(samples.constData());
        const std::size_t count = std::size_t(samples.size()) / sizeof(int16);
        for (std::size_t at = 0; at < count; at += kPiece)
            ps_process_raw(m_decoder.get(), from + at, std::min(kPiece, count - at), FALSE, FALSE);
        ps_end_utt(m_decoder.get());
        int32 score = 0;
        const char *word = ps_get_hyp(m_decoder.get(), &score);
        for (const Spoken &spoken : kSpoken) {
            if (word && qstrcmp(word, spoken.word) == 0)
                return Answer{ QString::fromLatin1(spoken.name), score };
        }
        return std::nullopt;
    }

private:
    // The library's own call for this keeps each grammar for ever.
    bool Expect(const QByteArray &text)
    {
        const std::unique_ptr<jsgf_t, Free> grammar(jsgf_parse_string(text.constData(), nullptr));
        jsgf_rule_t *rule = grammar ? jsgf_get_public_rule(grammar.get()) : nullptr;
        if (!rule)
            return false;
        const auto weight = float32(cmd_ln_float_r(ps_get_config(m_decoder.get()), "-lw"));
        const std::unique_ptr<fsg_model_t, Free> model(
            jsgf_build_fsg(grammar.get(), rule, ps_get_logmath(m_decoder.get()), weight));
        return model && ps_set_fsg(m_decoder.get(), "letters", model.get()) == 0 &&
               ps_set_search(m_decoder.get(), "letters") == 0;
    }

    std::unique_ptr<ps_decoder_t, Free> m_decoder;
};

} // namespace

// Both decoders, and the answers of the one that takes the voice for more likely.
class SphinxRecogniser::Ear {
public:
    explicit Ear(QString model) : m_model(std::move(model)) {}

    const QString &Model() const { return m_model; }

    // The first call reads the files.
    QStringList Understand(const QByteArray &samples)
    {
        if (!m_decoders && IsWholeSphinxModel(m_model))
            m_decoders.emplace(std::array{ Decoder(m_model, false), Decoder(m_model, true) });
        QStringList names;
        if (!m_decoders || samples.size() / qsizetype(sizeof(int16)) < kLeastSamples)
            return names;
        Decoder *likelier = nullptr;
        int best = 0;
        for (Decoder &decoder : *m_decoders) {
            const auto answer = decoder.Best(samples, {});
            if (!answer || (likelier && answer->score <= best))
                continue;
            likelier = &decoder;
            best = answer->score;
            names = { answer->name };
        }
        while (likelier && names.size() < kAnswers) {
            const auto answer = likelier->Best(samples, names);
            if (!answer)
                break;
            names << answer->name;
        }
        return names;
    }

private:
    const QString m_model;
    std::optional<std::array<Decoder, 2>> m_decoders;
};

QString SphinxRecogniser::UsualModel()
{
    return QStringLiteral(TUMBLEWICK_SPHINX "/en-us/en-us");
}

QString SphinxRecogniser::Obstacle() const
{
    if (IsWholeSphinxModel(m_ear->Model()))
        return QString();
    return QCoreApplication::translate("SpeechPage",
                                       "The sounds of English are not installed, so that no letter can be "
                                       "understood. They are in the package pocketsphinx-en-us.");
}

#else

class SphinxRecogniser::Ear {
public:
    explicit Ear(QString model) : m_model(std::move(model)) {}

    const QString &Model() const { return m_model; }
    QStringList Understand(const QByteArray &) { return {}; }

private:
    const QString m_model;
};

QString SphinxRecogniser::UsualModel()
{
    return QString();
}

QString SphinxRecogniser::Obstacle() const
{
    return QCoreApplication::translate("SpeechPage",
                                       "This program was built without a recogniser, so that no "
                                       "letter can be understood.");
}

#endif

SphinxRecogniser::SphinxRecogniser(const QString &model)
    : m_ear(std::make_shared<Ear>(model.isEmpty() ? UsualModel() : model))
{
}

SphinxRecogniser::~SphinxRecogniser() = default;

void SphinxRecogniser::Prepare()
{
    // To understand nothing, the files are read all the same.
    if (!m_prepared)
        m_prepared = Recognise({}, [](const QStringList &) {});
}

std::unique_ptr<LetterRecogniser::Order> SphinxRecogniser::Recognise(QByteArray samples, Ready ready)
{
    if (!m_workshop)
        m_workshop = std::make_unique<Workshop>();
    return m_workshop->Add<Order>([ear = m_ear, samples = std::move(samples)](
                                      const Workshop::Cancelled &) { return ear->Understand(samples); },
                                  std::move(ready));
}

QStringList SphinxRecogniser::Understand(const QString &model, const QByteArray &samples)
{
    static std::unique_ptr<Ear> ear;
    if (!ear || ear->Model() != model)
        ear = std::make_unique<Ear>(model);
    return ear->Understand(samples);
}

} // namespace platform
