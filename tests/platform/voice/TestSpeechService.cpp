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
    VoiceSettings settings{ "cmu_us_awb", 1.15, 0.90, 1.00, 10 };
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

QTEST_GUILESS_MAIN(TestSpeechService)
#include "TestSpeechService.moc"
