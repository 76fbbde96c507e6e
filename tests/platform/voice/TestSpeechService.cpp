#include "platform/voice/SpeechService.h"
#include "support/Loops.h"

#include <QTest>

#include <cmath>

using namespace std::chrono_literals;
using platform::SpeechService;
using platform::SpeechText;
using platform::Utterance;
using platform::VoiceSettings;

namespace {

VoiceSettings Merlin()
{
    VoiceSettings settings{ "cmu_us_awb", 1.20, 0.90, 1.05, 12 };
    settings.speaker = QStringLiteral("Merlin");
    return settings;
}

VoiceSettings Peedy()
{
    VoiceSettings settings{ "cmu_us_slt", 1.10, 1.60, 1.00, 10 };
    settings.speaker = QStringLiteral("Peedy");
    return settings;
}

} // namespace

// What the user chooses about the voices.
class TestSpeechService : public QObject {
    Q_OBJECT
private slots:
    void englishComesFirst();
    void unknownReadingVoiceIsRefused();
    void rateHoldsForTheCharacter();
    void rateOfEverybodyHoldsForAll();
    void pitchIsHeard();
    void factorsAreBounded();
    void choiceHoldsFromTheNextLine();
    void everyLanguageCanBeChosen();
    void listsAreReadInTheLanguage();
    void foreignRateAndPitchHold();

private:
    std::shared_ptr<const Utterance> Made(const QString &tagged, const VoiceSettings &settings);
    double Length(const VoiceSettings &settings)
    {
        return static_cast<double>(Made("a rather long line of words", settings)->Length().count());
    }

    support::RealLoop m_realLoop;
    support::Loop &m_loop = m_realLoop;
    std::unique_ptr<SpeechService> m_service;

private slots:
    void init() { m_service = std::make_unique<SpeechService>(); }
};

std::shared_ptr<const Utterance> TestSpeechService::Made(const QString &tagged, const VoiceSettings &settings)
{
    std::shared_ptr<const Utterance> made;
    bool delivered = false;
    const auto order = m_service->Synthesise(SpeechText::Parse(tagged), settings, [&](auto utterance) {
        made = utterance;
        delivered = true;
    });
    return m_loop.Until([&] { return delivered; }) ? made : nullptr;
}

void TestSpeechService::englishComesFirst()
{
    const auto choices = m_service->Available();
    QVERIFY(!choices.empty());
    QCOMPARE(choices[0].id, "en");
    QCOMPARE(m_service->ReadingVoice(), "en");
}

void TestSpeechService::unknownReadingVoiceIsRefused()
{
    QVERIFY(!m_service->SetReadingVoice("espeak:nowhere"));
    QCOMPARE(m_service->ReadingVoice(), "en");
    QVERIFY(m_service->SetReadingVoice("en"));
    QVERIFY(m_service->SetReadingVoice(QString()));
    QCOMPARE(m_service->ReadingVoice(), "en");
}

void TestSpeechService::rateHoldsForTheCharacter()
{
    const auto merlin = Length(Merlin());
    const auto peedy = Length(Peedy());
    m_service->SetRate("MERLIN", 1.5);
    QCOMPARE(m_service->Rate("Merlin"), 1.5);
    QCOMPARE(m_service->Rate("Peedy"), 1.0);
    const auto faster = merlin / Length(Merlin());
    QVERIFY2(faster > 1.35 && faster < 1.55, qPrintable(QString::number(faster)));
    QCOMPARE(Length(Peedy()), peedy);
}

void TestSpeechService::rateOfEverybodyHoldsForAll()
{
    const auto merlin = Length(Merlin());
    const auto peedy = Length(Peedy());
    m_service->SetRate(QString(), 0.8);
    m_service->SetRate("Peedy", 1.25);
    const auto slower = Length(Merlin()) / merlin;
    QVERIFY2(slower > 1.15 && slower < 1.3, qPrintable(QString::number(slower)));
    QCOMPARE(Length(Peedy()), peedy);
}

void TestSpeechService::pitchIsHeard()
{
    const auto plain = Made("hello there", Merlin());
    m_service->SetPitch("merlin", 1.4);
    const auto higher = Made("hello there", Merlin());
    QVERIFY(plain->samples != higher->samples);
    QCOMPARE(plain->Length(), higher->Length());
}

void TestSpeechService::factorsAreBounded()
{
    m_service->SetRate("Merlin", 100);
    QCOMPARE(m_service->Rate("Merlin"), 2.0);
    m_service->SetRate("Merlin", -1);
    QCOMPARE(m_service->Rate("Merlin"), 0.5);
    m_service->SetRate("Merlin", std::nan(""));
    QCOMPARE(m_service->Rate("Merlin"), 1.0);
    m_service->SetPitch("Merlin", 100);
    QCOMPARE(m_service->Pitch("Merlin"), 1.7);
    m_service->SetPitch("Merlin", 0);
    QCOMPARE(m_service->Pitch("Merlin"), 0.6);
}

void TestSpeechService::choiceHoldsFromTheNextLine()
{
    const auto plain = Made("hello there", Merlin());
    std::shared_ptr<const Utterance> made;
    const auto order = m_service->Synthesise(SpeechText::Parse("hello there"), Merlin(),
                                             [&](auto utterance) { made = utterance; });
    m_service->SetRate("Merlin", 0.5);
    QVERIFY(m_loop.Until([&] { return made != nullptr; }));
    QCOMPARE(made->Length(), plain->Length());
    QVERIFY(Made("hello there", Merlin())->Length() > plain->Length() + 200ms);
}

void TestSpeechService::everyLanguageCanBeChosen()
{
    const auto choices = m_service->Available();
    QVERIFY(choices.size() > 80);
    for (const auto &choice : choices) {
        QVERIFY(m_service->SetReadingVoice(choice.id));
        QCOMPARE(m_service->ReadingVoice(), choice.id);
    }
    for (const char *id : { "formed:fr-fr", "formed:ru", "formed:ja", "formed:ar", "formed:en-gb" }) {
        QVERIFY2(m_service->SetReadingVoice(id), id);
        const auto made = Made(QString::fromUtf8(R"(\map="a, maison"="x"\)"), Merlin());
        QVERIFY2(made && made->Length() > 300ms, id);
    }
}

// What is said round a map tag stays as it is; the units keep their order and their times.
void TestSpeechService::listsAreReadInTheLanguage()
{
    const QString line = R"(Ann, how do you spell: \map="maison"="*****"\? Be quick)";
    const auto english = Made(line, Merlin());
    QVERIFY(m_service->SetReadingVoice("formed:fr-fr"));
    const auto mixed = Made(line, Merlin());
    QCOMPARE(mixed->units.size(), english->units.size());
    QCOMPARE(mixed->sampleRate, english->sampleRate);
    for (std::size_t index = 0; index < 5; ++index)
        QCOMPARE(mixed->units[index].begins, english->units[index].begins);
    // Exactly alike until shortly before the word, but for the level, which is that of fewer words.
    QVERIFY(mixed->units[5].begins - mixed->units[4].ends >= 180ms);
    for (std::size_t index = 1; index < mixed->units.size(); ++index)
        QVERIFY(mixed->units[index].begins >= mixed->units[index - 1].ends);
    QVERIFY(mixed->units.back().ends <= mixed->Length());
    for (std::size_t index = 1; index < mixed->mouths.size(); ++index)
        QVERIFY(mixed->mouths[index].at > mixed->mouths[index - 1].at);
    QVERIFY(mixed->mouths.back().mouth == platform::Mouth::Rest);
    // A line without map tags is the game's own.
    const auto plain = Made("Well done!", Merlin());
    QVERIFY(m_service->SetReadingVoice("en"));
    QCOMPARE(plain->Length(), Made("Well done!", Merlin())->Length());
}

void TestSpeechService::foreignRateAndPitchHold()
{
    QVERIFY(m_service->SetReadingVoice("formed:de"));
    const QString line = R"(\map="eine lange Reihe von Worten"="x"\)";
    const auto plain = Made(line, Merlin());
    m_service->SetRate("Merlin", 0.7);
    const auto slow = Made(line, Merlin());
    const auto ratio =
        static_cast<double>(slow->Length().count()) / static_cast<double>(plain->Length().count());
    QVERIFY2(ratio > 1.25 && ratio < 1.6, qPrintable(QString::number(ratio)));
}

QTEST_GUILESS_MAIN(TestSpeechService)
#include "TestSpeechService.moc"
