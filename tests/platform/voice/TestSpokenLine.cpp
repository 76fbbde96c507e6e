#include "platform/voice/FliteVoice.h"
#include "platform/voice/SoundShaping.h"
#include "platform/voice/SpeechService.h"
#include "platform/voice/SpokenLine.h"
#include "platform/voice/SpokenWords.h"
#include "support/Loops.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <ctime>

using namespace std::chrono_literals;
using platform::FliteVoice;
using platform::Mouth;
using platform::SpeechService;
using platform::SpeechText;
using platform::Utterance;
using platform::VoiceSettings;

namespace {

const VoiceSettings kMerlin{ "cmu_us_awb", 1.20, 0.90, 1.05, 12 };
const VoiceSettings kGenie{ "cmu_us_rms", 1.05, 1.00, 0.95, 10 };
const VoiceSettings kPeedy{ "cmu_us_slt", 1.10, 1.60, 1.00, 10 };
const VoiceSettings kVoices[] = { kMerlin, kGenie, kPeedy };

std::shared_ptr<const Utterance> Made(const QString &tagged, const VoiceSettings &settings)
{
    const std::atomic<bool> cancelled = false;
    return platform::MakeLine(SpeechText::Parse(tagged), settings, *FliteVoice::Find(settings.voice),
                              cancelled);
}

std::vector<float> Samples(const Utterance &utterance)
{
    std::vector<float> samples;
    const auto *raw = reinterpret_cast<const qint16 *>(utterance.samples.constData());
    for (qsizetype index = 0; index < utterance.samples.size() / 2; ++index)
        samples.push_back(static_cast<float>(raw[index]) / 32768);
    return samples;
}

// The level between two moments, in decibels below full scale.
double LevelBetween(const Utterance &utterance, std::chrono::microseconds from, std::chrono::microseconds to)
{
    const auto *raw = reinterpret_cast<const qint16 *>(utterance.samples.constData());
    const auto index = [&](auto at) { return at.count() * utterance.sampleRate / 1'000'000; };
    double sum = 1e-9;
    const auto first = index(from);
    const auto last = std::min<qint64>(index(to), utterance.samples.size() / 2);
    for (auto at = first; at < last; ++at)
        sum += std::pow(raw[at] / 32768.0, 2);
    return 10 * std::log10(sum / static_cast<double>(std::max<qint64>(1, last - first)));
}

// The stretches of at least `least` in which hardly anything is heard, between sounds.
std::vector<std::chrono::milliseconds> Pauses(const Utterance &utterance, std::chrono::milliseconds least)
{
    std::vector<std::chrono::milliseconds> pauses;
    bool heard = false;
    auto silent = 0ms;
    for (auto at = 0ms; at + 10ms <= utterance.Length(); at += 10ms) {
        if (LevelBetween(utterance, at, at + 10ms) > -42) {
            if (heard && silent >= least)
                pauses.push_back(silent);
            heard = true;
            silent = 0ms;
        } else {
            silent += 10ms;
        }
    }
    return pauses;
}

} // namespace

// What comes out of the three recorded voices.
class TestSpokenLine : public QObject {
    Q_OBJECT
private slots:
    void voicesAreEquallyLoud();
    void lineBeginsAtOnce();
    void spelledWordHasAPausePerLetter_data();
    void spelledWordHasAPausePerLetter();
    void wordStandsApartInTheQuestion();
    void ownPronunciationsAreSaid_data();
    void ownPronunciationsAreSaid();
    void mapIsCoveredByItsUnit();
    void soundsLieInTheirUnits();
    void mouthRestsWhileNothingIsHeard();
    void lipsAreClosedBetweenSyllables();
    void rateTurnsPitchAndKeepsLength();
    void stressedWordIsLonger();
    void stressIsMarked();
    void oddLinesAreMadeQuickly_data();
    void oddLinesAreMadeQuickly();
    void anyBytesCanBeSaid();
    void oddSettingsAreBounded();
    void cancelledLineIsGivenUp();
    void engineMayGoWhileItWorks();
};

void TestSpokenLine::voicesAreEquallyLoud()
{
    for (const char *line :
         { "cat", "Well done! You finished the list.", "\\map=\"S, ,H, ,I, ,P, ,\"=\"ship\"\\" }) {
        for (const auto &settings : kVoices) {
            const auto level = platform::ActiveLevel(Samples(*Made(line, settings)), 48000);
            QVERIFY2(level > -20.6 && level < -19.4, qPrintable(QString::number(level)));
        }
    }
}

void TestSpokenLine::lineBeginsAtOnce()
{
    for (const auto &settings : kVoices) {
        const auto made = Made("hello", settings);
        QVERIFY(made->units[0].begins >= 50ms && made->units[0].begins <= 70ms);
        QVERIFY(made->Length() - made->units[0].ends <= 130ms);
    }
}

void TestSpokenLine::spelledWordHasAPausePerLetter_data()
{
    QTest::addColumn<QString>("word");
    for (const char *word : { "cat", "egg", "letter", "llama", "aardvark", "bookkeeper" })
        QTest::newRow(word) << word;
}

void TestSpokenLine::spelledWordHasAPausePerLetter()
{
    QFETCH(QString, word);
    QString letters;
    for (const auto letter : word)
        letters += QString(letter.toUpper()) + ", ,";
    for (const auto &settings : kVoices) {
        const auto made = Made("\\map=\"" + letters + "\"=\"" + word + "\"\\", settings);
        QCOMPARE(made->units.size(), 1U);
        const auto pauses = Pauses(*made, 200ms);
        QVERIFY2(pauses.size() == static_cast<std::size_t>(word.size() - 1),
                 qPrintable(settings.voice + QString::number(pauses.size())));
    }
}

void TestSpokenLine::wordStandsApartInTheQuestion()
{
    for (const auto &settings : kVoices) {
        const auto made = Made(R"(Ann, how do you spell: \map="nite"="*****"\?)", settings);
        QVERIFY(made->units[5].begins - made->units[4].ends >= 180ms);
        QVERIFY(made->units[1].begins - made->units[0].ends >= 80ms);
        QVERIFY(made->units[3].begins - made->units[2].ends < 20ms);
    }
}

void TestSpokenLine::ownPronunciationsAreSaid_data()
{
    QTest::addColumn<QString>("word");
    for (const char *word :
         { "Peedy", "Peedy's", "Genie", "Merlin", "Tumblewick", "isn't", "HAVEN'T", "they're", "hmm",
           "realise", "triceratops", "tyrannosaurus", "wammy", "a,", "W.", "z" })
        QTest::newRow(word) << word;
}

void TestSpokenLine::ownPronunciationsAreSaid()
{
    QFETCH(QString, word);
    const auto spoken = platform::SpokenWords::Of(SpeechText::Parse(word)).words;
    QCOMPARE(spoken.size(), 1U);
    auto wanted = QString::fromLatin1(spoken[0].phones);
    wanted.removeIf([](QChar c) { return c.isDigit(); });
    QVERIFY(!wanted.isEmpty());
    for (const auto &settings : kVoices) {
        QStringList said;
        for (const auto &sound : FliteVoice::Find(settings.voice)->Say(spoken, 1, 1).sounds)
            if (sound.phone != "pau")
                said << QString::fromStdString(sound.phone);
        QCOMPARE(said.join(u' '), wanted);
    }
}

void TestSpokenLine::mapIsCoveredByItsUnit()
{
    const auto whole = Made(R"(now \map="a rather long row of words"="x"\ then)", kMerlin);
    QCOMPARE(whole->units.size(), 3U);
    QVERIFY(whole->units[1].ends - whole->units[1].begins > 1s);
    QVERIFY(whole->units[1].begins - whole->units[0].ends < 50ms);
    QVERIFY(whole->units[2].begins >= whole->units[1].ends);
}

void TestSpokenLine::soundsLieInTheirUnits()
{
    for (const auto &settings : kVoices) {
        const auto made = Made("one, two: three. four! five", settings);
        for (std::size_t index = 0; index < made->units.size(); ++index) {
            const auto &unit = made->units[index];
            QVERIFY(LevelBetween(*made, unit.begins, unit.ends) > -28);
            const auto until =
                index + 1 < made->units.size() ? made->units[index + 1].begins : made->Length();
            QVERIFY(until - unit.ends > 80ms);
            QVERIFY(LevelBetween(*made, unit.ends + 30ms, until - 20ms) <
                    LevelBetween(*made, unit.begins, unit.ends) - 12);
        }
    }
}

void TestSpokenLine::mouthRestsWhileNothingIsHeard()
{
    for (const auto &settings : kVoices) {
        const auto made = Made("one, two: three. four! five", settings);
        const auto shape = [&](std::chrono::microseconds at) {
            auto mouth = Mouth::Rest;
            for (const auto &cue : made->mouths)
                if (cue.at <= at)
                    mouth = cue.mouth;
            return mouth;
        };
        for (std::size_t index = 0; index + 1 < made->units.size(); ++index) {
            const auto middle = (made->units[index].ends + made->units[index + 1].begins) / 2;
            QVERIFY(shape(middle) == Mouth::Rest);
            QVERIFY(shape((made->units[index].begins + made->units[index].ends) / 2) != Mouth::Rest);
        }
        QVERIFY(shape(made->Length()) == Mouth::Rest);
    }
}

void TestSpokenLine::lipsAreClosedBetweenSyllables()
{
    for (const auto &settings : kVoices) {
        const auto made = Made("papa papa", settings);
        int closed = 0;
        for (std::size_t index = 0; index + 1 < made->mouths.size(); ++index) {
            if (made->mouths[index].mouth != Mouth::MBP)
                continue;
            ++closed;
            QVERIFY(made->mouths[index + 1].mouth != Mouth::Rest);
        }
        QCOMPARE(closed, 4);
    }
}

void TestSpokenLine::rateTurnsPitchAndKeepsLength()
{
    auto fast = kPeedy;
    fast.rate = 1.2;
    const auto plain = Made("a parrot can talk all day", kPeedy);
    const auto turned = Made("a parrot can talk all day", fast);
    const auto ratio =
        static_cast<double>(turned->Length().count()) / static_cast<double>(plain->Length().count());
    QVERIFY2(ratio > 0.93 && ratio < 1.07, qPrintable(QString::number(ratio)));
    QVERIFY(turned->samples != plain->samples);
    QVERIFY(turned->units.back().ends <= turned->Length());
    QVERIFY(turned->mouths.back().at <= turned->Length());
}

void TestSpokenLine::stressedWordIsLonger()
{
    for (const auto &settings : kVoices) {
        const auto plain = Made("this is my hat today", settings);
        const auto stressed = Made("this is \\emp\\ my hat today", settings);
        const auto length = [](const auto &made) { return made->units[2].ends - made->units[2].begins; };
        QVERIFY(length(stressed) > length(plain) + 10ms);
    }
}

void TestSpokenLine::stressIsMarked()
{
    const auto made = Made("You have finished the list. That was \\emp\\ really good.", kMerlin);
    QVERIFY(made->units[7].stressed);
    const auto marked =
        std::count_if(made->units.begin(), made->units.end(), [](auto &unit) { return unit.stressed; });
    QVERIFY(marked >= 2 && marked <= 4);
}

void TestSpokenLine::oddLinesAreMadeQuickly_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("endless word") << QString(10'000, u'a');
    QTest::newRow("endless word without vowels") << QString(10'000, u'x');
    QTest::newRow("endless capitals") << QString(10'000, u'W');
    QTest::newRow("endless digits") << QString(10'000, u'9');
    QTest::newRow("endless marks") << QString(10'000, u'!');
    QTest::newRow("endless commas") << QStringLiteral("a") + QString(10'000, u',');
    QTest::newRow("endless hyphens") << QStringLiteral("a-").repeated(10'000);
    QTest::newRow("endless dots") << QStringLiteral("a.").repeated(10'000);
    QTest::newRow("endless words") << QStringLiteral("word ").repeated(10'000);
    QTest::newRow("endless spelling") << QStringLiteral("T, ,").repeated(10'000);
    QTest::newRow("endless apostrophes") << QStringLiteral("a'").repeated(5'000);
    QTest::newRow("endless money") << QStringLiteral("£").repeated(100'000);
    QTest::newRow("endless emoji") << QString::fromUtf8("🦜").repeated(10'000);
    QTest::newRow("endless accents") << QStringLiteral("e") + QString(10'000, QChar(0x301));
}

void TestSpokenLine::oddLinesAreMadeQuickly()
{
    QFETCH(QString, line);
    const auto begin = std::clock(); // of this process alone, whatever else the machine does
    const auto made = Made(line, kMerlin);
    QVERIFY(made);
    const auto seconds = double(std::clock() - begin) / CLOCKS_PER_SEC;
    QVERIFY2(seconds < 10, qPrintable(QString::number(seconds)));
    QVERIFY(made->Length() < 150s);
    QCOMPARE(made->units.size(), SpeechText::Parse(line).units.size());
}

void TestSpokenLine::anyBytesCanBeSaid()
{
    // Every pair of signs, between letters and alone; the voice must come through all of them.
    const QString signs = QString::fromUtf8("!\"#$%&'()*+,-./0aA:;<=>?@[\\]^_`{|}~é£²");
    auto quick = kPeedy;
    quick.stretch = 0.3;
    std::size_t units = 0;
    for (const auto first : signs) {
        auto line = QStringLiteral("b#b 7# #7 7#7 ").replace(u'#', first);
        for (const auto second : signs)
            line += QString(first) + second + u' ';
        const auto made = Made(line, quick);
        QVERIFY(made);
        QVERIFY(made->Length() < 85s); // so that nothing of it was left out
        QCOMPARE(made->units.size(), SpeechText::Parse(line).units.size());
        units += made->units.size();
    }
    QVERIFY(units > 1500);
}

void TestSpokenLine::oddSettingsAreBounded()
{
    for (const double value : { -1.0, 0.0, 1e9, std::nan("") }) {
        for (int which = 0; which < 4; ++which) {
            auto settings = kMerlin;
            (which == 0   ? settings.stretch
             : which == 1 ? settings.pitch
             : which == 2 ? settings.rate
                          : settings.treble) = value;
            const auto made = Made("hello there", settings);
            QVERIFY(made);
            QVERIFY(made->Length() > 100ms && made->Length() < 20s);
        }
    }
}

void TestSpokenLine::cancelledLineIsGivenUp()
{
    const std::atomic<bool> cancelled = true;
    QVERIFY(!platform::MakeLine(SpeechText::Parse("hello"), kMerlin, *FliteVoice::Find(kMerlin.voice),
                                cancelled));
}

void TestSpokenLine::engineMayGoWhileItWorks()
{
    support::RealLoop loop;
    int delivered = 0;
    std::vector<std::unique_ptr<platform::SpeechEngine::Order>> orders;
    for (int round = 0; round < 30; ++round) {
        SpeechService engine;
        for (int line = 0; line < 3; ++line)
            orders.push_back(
                engine.Synthesise(SpeechText::Parse(QStringLiteral("word, word. ").repeated(400)),
                                  kVoices[line], [&](auto) { ++delivered; }));
        if (round % 3 == 1)
            orders.clear();
        loop.For(std::chrono::milliseconds(round % 7));
        QElapsedTimer timer;
        timer.start();
        {
            const SpeechService other;
        }
        QVERIFY(timer.elapsed() < 1000);
    }
    loop.For(100ms);
    orders.clear();
    QCOMPARE(delivered, 0);
}

QTEST_GUILESS_MAIN(TestSpokenLine)
#include "TestSpokenLine.moc"
