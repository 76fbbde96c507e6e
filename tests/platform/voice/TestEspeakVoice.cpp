#include "platform/voice/EspeakVoice.h"
#include "platform/voice/SpokenLine.h"

#include <QTest>

#include <algorithm>
#include <atomic>
#include <cmath>

using namespace std::chrono_literals;
using platform::EspeakVoice;
using platform::Mouth;
using platform::Reading;
using platform::SaidPhrase;
using platform::SpeechText;
using platform::SpokenWords;
using platform::Utterance;

namespace {

EspeakVoice Voice(const char *language)
{
    return *EspeakVoice::Find(QStringLiteral("formed:") + QString::fromLatin1(language), QString());
}

SaidPhrase Said(const EspeakVoice &voice, const QString &line, double stretch = 1, double pitch = 1)
{
    const auto words = SpokenWords::Of(SpeechText::Parse(line), Reading::AsWritten).words;
    return voice.Say(words, stretch, pitch);
}

QStringList Phones(const SaidPhrase &phrase)
{
    QStringList phones;
    for (const auto &sound : phrase.sounds)
        if (sound.phone != "pau")
            phones << QString::fromStdString(sound.phone);
    return phones;
}

double Level(const SaidPhrase &phrase, int rate, double from, double to)
{
    double sum = 1e-12;
    const auto first = static_cast<std::size_t>(from * rate);
    const auto last = std::min(static_cast<std::size_t>(to * rate), phrase.samples.size());
    for (auto index = first; index < last; ++index)
        sum += std::pow(static_cast<double>(phrase.samples[index]), 2);
    return 10 * std::log10(sum / static_cast<double>(std::max<std::size_t>(1, last - first)));
}

double Length(const SaidPhrase &phrase)
{
    return phrase.words.back().ends - phrase.words.front().begins;
}

// After how many samples the sound comes back to itself: the first echo nearly as strong as any.
double Period(const SaidPhrase &phrase, int rate)
{
    const auto from = static_cast<std::size_t>((phrase.words[0].begins + Length(phrase) / 2) * rate) - 600;
    const auto first = static_cast<std::size_t>(rate / 300);
    std::vector<double> echoes;
    for (auto lag = first; lag < static_cast<std::size_t>(rate / 60); ++lag) {
        double sum = 0;
        for (std::size_t index = from; index < from + 1200; ++index)
            sum +=
                static_cast<double>(phrase.samples[index]) * static_cast<double>(phrase.samples[index + lag]);
        echoes.push_back(sum);
    }
    const auto most = *std::max_element(echoes.begin(), echoes.end());
    auto strong =
        std::find_if(echoes.begin(), echoes.end(), [most](double echo) { return echo > 0.85 * most; });
    while (strong + 1 != echoes.end() && strong[1] > strong[0])
        ++strong;
    return static_cast<double>(first) + static_cast<double>(strong - echoes.begin());
}

} // namespace

// The voices that speak other languages.
class TestEspeakVoice : public QObject {
    Q_OBJECT
private slots:
    void languagesAreListed();
    void unknownLanguageHasNoVoice();
    void unknownVariantGivesThePlainVoice();
    void everyWordHasItsTime_data();
    void everyWordHasItsTime();
    void soundsFollowOneAnother_data() { everyWordHasItsTime_data(); }
    void soundsFollowOneAnother();
    void languagesSoundDifferent();
    void accentsAreKept();
    void lettersAreNamed_data();
    void lettersAreNamed();
    void stretchLengthens();
    void pitchRaises();
    void beginsAndEndsInSilence();
    void spelledWordHasAPausePerLetter();
    void lipsCloseForTheSoundsThatNeedIt();
    void signsDoNotSwitchTheVoice();
    void anyTextCanBeSaid();
};

void TestEspeakVoice::languagesAreListed()
{
    const auto &languages = EspeakVoice::Languages();
    QVERIFY(languages.size() > 80);
    QStringList ids;
    for (const auto &language : languages) {
        QVERIFY(!language.name.isEmpty() && !language.language.isEmpty());
        QVERIFY(language.id.startsWith("formed:"));
        ids << language.id;
    }
    QCOMPARE(ids.removeDuplicates(), 0);
    for (const char *id : { "formed:fr-fr", "formed:de", "formed:es", "formed:en-us" })
        QVERIFY2(ids.contains(QString::fromLatin1(id)), id);
}

void TestEspeakVoice::unknownLanguageHasNoVoice()
{
    QVERIFY(!EspeakVoice::Find("formed:nowhere", QString()));
    QVERIFY(!EspeakVoice::Find("fr-fr", QString()));
    QVERIFY(!EspeakVoice::Find(QString(), QString()));
}

void TestEspeakVoice::unknownVariantGivesThePlainVoice()
{
    const auto plain = Said(Voice("de"), "a");
    const auto unknown = Said(*EspeakVoice::Find("formed:de", "nobody"), "a");
    const auto known = Said(*EspeakVoice::Find("formed:de", "f2"), "a");
    const auto rate = Voice("de").SampleRate();
    QVERIFY2(std::abs(Period(plain, rate) / Period(unknown, rate) - 1) < 0.1,
             qPrintable(QString("%1 %2 %3")
                            .arg(Period(plain, rate))
                            .arg(Period(unknown, rate))
                            .arg(Period(known, rate))));
    QVERIFY(Period(plain, rate) / Period(known, rate) > 1.2);
}

void TestEspeakVoice::everyWordHasItsTime_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *language, const char *line) {
        QTest::newRow(line) << language << QString::fromUtf8(line);
    };
    row("en-us", "the dog of the man has been in the house and I am to be on the hill");
    row("en-us", "one, two: three 1234 times at 3.14 or so");
    row("fr-fr", "l'été il y a des pommes à côté de la maison");
    row("de", "im Haus ist es schön, auf der Straße nicht");
    row("es", "¿cómo se escribe la palabra niño?");
    row("it", "perché la città è così bella");
    row("pl", "chrząszcz brzmi w trzcinie");
}

void TestEspeakVoice::everyWordHasItsTime()
{
    QFETCH(QString, language);
    QFETCH(QString, line);
    const auto voice = Voice(qPrintable(language));
    const auto phrase = Said(voice, line);
    QCOMPARE(phrase.words.size(), static_cast<std::size_t>(line.split(u' ').size()));
    for (std::size_t index = 0; index < phrase.words.size(); ++index) {
        const auto &word = phrase.words[index];
        const auto length = word.ends - word.begins;
        QVERIFY2(length > 0.02 && length < 3, qPrintable(QString("word %1: %2 s").arg(index).arg(length)));
        QVERIFY(Level(phrase, voice.SampleRate(), word.begins, word.ends) > -40);
        if (index > 0)
            QVERIFY(word.begins >= phrase.words[index - 1].ends - 1e-9);
    }
}

void TestEspeakVoice::soundsFollowOneAnother()
{
    QFETCH(QString, language);
    QFETCH(QString, line);
    const auto voice = Voice(qPrintable(language));
    const auto phrase = Said(voice, line);
    double at = 0;
    for (const auto &sound : phrase.sounds) {
        QVERIFY(std::abs(sound.begins - at) < 1e-9);
        QVERIFY(sound.ends >= sound.begins);
        at = sound.ends;
    }
    QVERIFY(std::abs(at - static_cast<double>(phrase.samples.size()) / voice.SampleRate()) < 0.001);
    QVERIFY(Phones(phrase).size() > 10);
}

void TestEspeakVoice::languagesSoundDifferent()
{
    QVERIFY(Phones(Said(Voice("fr-fr"), "six")) != Phones(Said(Voice("en-us"), "six")));
    QVERIFY(Phones(Said(Voice("es"), "jota")) != Phones(Said(Voice("en-us"), "jota")));
}

void TestEspeakVoice::accentsAreKept()
{
    QVERIFY(Phones(Said(Voice("es"), QString::fromUtf8("año"))) != Phones(Said(Voice("es"), "ano")));
    QVERIFY(Phones(Said(Voice("de"), QString::fromUtf8("schön"))) != Phones(Said(Voice("de"), "schon")));
}

void TestEspeakVoice::lettersAreNamed_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QString>("letter");
    QTest::addColumn<QString>("phones");
    QTest::newRow("A") << "en-us"
                       << "A,"
                       << "eI";
    QTest::newRow("a") << "en-us"
                       << "a,"
                       << "eI";
    QTest::newRow("w in German") << "de"
                                 << "W,"
                                 << "v e:";
    QTest::newRow("y in Spanish") << "es"
                                  << "E,"
                                  << "e";
}

void TestEspeakVoice::lettersAreNamed()
{
    QFETCH(QString, language);
    QFETCH(QString, letter);
    QFETCH(QString, phones);
    QCOMPARE(Phones(Said(Voice(qPrintable(language)), letter)).join(u' '), phones);
}

void TestEspeakVoice::stretchLengthens()
{
    const auto plain = Length(Said(Voice("fr-fr"), "bonjour tout le monde"));
    const auto slow = Length(Said(Voice("fr-fr"), "bonjour tout le monde", 1.4));
    QVERIFY2(slow / plain > 1.25 && slow / plain < 1.55, qPrintable(QString::number(slow / plain)));
}

void TestEspeakVoice::pitchRaises()
{
    const auto voice = Voice("it");
    const auto plain = Period(Said(voice, "a"), voice.SampleRate());
    const auto high = Period(Said(voice, "a", 1, 1.6), voice.SampleRate());
    QVERIFY2(plain / high > 1.3 && plain / high < 1.9, qPrintable(QString::number(plain / high)));
}

void TestEspeakVoice::beginsAndEndsInSilence()
{
    for (const char *word : { "pan", "sol", "taza" }) {
        const auto phrase = Said(Voice("es"), word);
        QVERIFY(phrase.sounds.front().phone == "pau");
        QVERIFY(phrase.sounds.front().ends >= 0.09);
        QVERIFY(phrase.words[0].begins >= 0.09);
    }
}

void TestEspeakVoice::spelledWordHasAPausePerLetter()
{
    const std::atomic<bool> cancelled = false;
    const auto voice = Voice("fr-fr");
    const auto made =
        platform::MakeLine(SpeechText::Parse(QString::fromUtf8(R"(\map="M, ,A, ,M, ,A, ,N, ,"="maman"\)")),
                           { .voice = {}, .treble = 6 }, voice, cancelled);
    std::vector<int> pauses;
    int silent = 0;
    bool heard = false;
    const auto *samples = reinterpret_cast<const qint16 *>(made->samples.constData());
    for (qsizetype at = 0; at + 480 <= made->samples.size() / 2; at += 480) {
        const bool sound =
            std::any_of(samples + at, samples + at + 480, [](auto s) { return std::abs(s) > 260; });
        if (sound && heard && silent >= 20)
            pauses.push_back(silent * 10);
        silent = sound ? 0 : silent + 1;
        heard = heard || sound;
    }
    QCOMPARE(pauses.size(), 4U);
}

void TestEspeakVoice::lipsCloseForTheSoundsThatNeedIt()
{
    const std::atomic<bool> cancelled = false;
    for (const char *language : { "en-us", "fr-fr", "de", "es" }) {
        const auto made = platform::MakeLine(SpeechText::Parse("papa papa"), {}, Voice(language), cancelled);
        QCOMPARE(std::count_if(made->mouths.begin(), made->mouths.end(),
                               [](const auto &cue) { return cue.mouth == Mouth::MBP; }),
                 4);
    }
}

void TestEspeakVoice::signsDoNotSwitchTheVoice()
{
    const auto plain = Phones(Said(Voice("de"), "eins zwei"));
    for (const char *line : { "eins [[zwei]]", "eins <zwei>", "eins {zwei}" })
        QCOMPARE(Phones(Said(Voice("de"), line)), plain);
}

void TestEspeakVoice::anyTextCanBeSaid()
{
    const std::atomic<bool> cancelled = false;
    const auto voice = Voice("fr-fr");
    for (const QString &line :
         { QString(), QString("?!"), QString::fromUtf8("🦜"), QString::fromUtf8("日本語"),
           QString(3000, u'a'), QString("a, ").repeated(300), QString(QChar(0xd800)), QString("<&>"),
           QString::fromUtf8("\u2063") }) {
        const auto made = platform::MakeLine(SpeechText::Parse(line), {}, voice, cancelled);
        QVERIFY(made);
        QCOMPARE(made->units.size(), SpeechText::Parse(line).units.size());
        QVERIFY(made->mouths.back().mouth == Mouth::Rest);
    }
}

QTEST_GUILESS_MAIN(TestEspeakVoice)
#include "TestEspeakVoice.moc"
