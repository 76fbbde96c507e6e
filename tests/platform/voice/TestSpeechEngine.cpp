#include "platform/voice/SpeechService.h"
#include "support/FakeVoice.h"
#include "support/Loops.h"

#include <QTest>

#include <memory>
#include <optional>

using namespace std::chrono_literals;
using platform::Mouth;
using platform::SpeechEngine;
using platform::SpeechText;
using platform::Utterance;
using platform::VoiceSettings;

namespace {

const VoiceSettings kMerlin{ "cmu_us_awb", 1.20, 0.90, 1.05, 12 };
const VoiceSettings kGenie{ "cmu_us_rms", 1.05, 1.00, 0.95, 10 };
const VoiceSettings kPeedy{ "cmu_us_slt", 1.10, 1.60, 1.00, 10 };

} // namespace

// What every speech engine keeps to, the one that is heard and the one that only counts.
class TestSpeechEngine : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void voicesAreKnown_data() { Engines(); }
    void voicesAreKnown();
    void lineIsDeliveredFromTheEventLoop_data() { Engines(); }
    void lineIsDeliveredFromTheEventLoop();
    void unknownVoiceGivesNothing_data() { Engines(); }
    void unknownVoiceGivesNothing();
    void everyUnitHasItsTime_data();
    void everyUnitHasItsTime();
    void mouthBeginsAndEndsAtRest_data() { Engines(); }
    void mouthBeginsAndEndsAtRest();
    void lineWithoutWordsHasNoSound_data();
    void lineWithoutWordsHasNoSound();
    void pausesAreKept_data() { Engines(); }
    void pausesAreKept();
    void droppedOrderIsNotDelivered_data() { Engines(); }
    void droppedOrderIsNotDelivered();
    void ordersAreDeliveredInTurn_data() { Engines(); }
    void ordersAreDeliveredInTurn();
    void orderMayBeDroppedWhenItIsDelivered_data() { Engines(); }
    void orderMayBeDroppedWhenItIsDelivered();

private:
    static void Engines();
    std::shared_ptr<const Utterance> Made(const QString &tagged, const VoiceSettings &settings = kMerlin);

    std::unique_ptr<support::Loop> m_loop;
    std::unique_ptr<SpeechEngine> m_engine;
};

void TestSpeechEngine::Engines()
{
    QTest::addColumn<bool>("real");
    QTest::newRow("heard") << true;
    QTest::newRow("counting") << false;
}

void TestSpeechEngine::init()
{
    QFETCH(bool, real);
    if (real) {
        m_loop = std::make_unique<support::RealLoop>();
        m_engine = std::make_unique<platform::SpeechService>();
    } else {
        auto loop = std::make_unique<support::FakeLoop>();
        m_engine = std::make_unique<support::FakeSpeechEngine>(loop->time);
        m_loop = std::move(loop);
    }
}

void TestSpeechEngine::cleanup()
{
    m_engine.reset();
    m_loop.reset();
}

std::shared_ptr<const Utterance> TestSpeechEngine::Made(const QString &tagged, const VoiceSettings &settings)
{
    std::shared_ptr<const Utterance> made;
    bool delivered = false;
    const auto order = m_engine->Synthesise(SpeechText::Parse(tagged), settings, [&](auto utterance) {
        made = utterance;
        delivered = true;
    });
    return m_loop->Until([&] { return delivered; }) ? made : nullptr;
}

void TestSpeechEngine::voicesAreKnown()
{
    for (const auto &settings : { kMerlin, kGenie, kPeedy })
        QVERIFY(m_engine->Speaks(settings));
    QVERIFY(!m_engine->Speaks({ .voice = "nobody" }));
    QVERIFY(!m_engine->Speaks({}));
}

void TestSpeechEngine::lineIsDeliveredFromTheEventLoop()
{
    int delivered = 0;
    const auto order = m_engine->Synthesise(SpeechText::Parse("hello"), kMerlin, [&](auto) { ++delivered; });
    QCOMPARE(delivered, 0);
    QVERIFY(m_loop->Until([&] { return delivered > 0; }));
    m_loop->For(100ms);
    QCOMPARE(delivered, 1);
}

void TestSpeechEngine::unknownVoiceGivesNothing()
{
    std::optional<std::shared_ptr<const Utterance>> made;
    const auto order = m_engine->Synthesise(SpeechText::Parse("hello"), { .voice = "nobody" },
                                            [&](auto utterance) { made = utterance; });
    QVERIFY(m_loop->Until([&] { return made.has_value(); }));
    QVERIFY(!*made);
}

void TestSpeechEngine::everyUnitHasItsTime_data()
{
    QTest::addColumn<bool>("real");
    QTest::addColumn<QString>("tagged");
    for (const bool real : { true, false }) {
        const auto row = [real](const char *name, const char *tagged) {
            QTest::addRow("%s, %s", name, real ? "heard" : "counting") << real << QString::fromUtf8(tagged);
        };
        row("question", R"(Ann, how do you spell: \map="nite"="*****"\?)");
        row("spelled word", R"(\map="L, ,E, ,T, ,T, ,E, ,R, ,"="letter"\)");
        row("hint", R"(The first 2 letters of \map="cat"="*****"\ are: C,A.)");
        row("marks alone", "Come on ! Let's go .");
        row("signs without sound", "🙂 hello 世界 there 🙂");
        row("pauses", R"(one \pau=200\ two \pau=300\)");
        row("sentences", "That's it. You finished the list! Well done, was it hard? No.");
        row("empty map", R"(a \map=""="*****"\ b)");
    }
}

void TestSpeechEngine::everyUnitHasItsTime()
{
    QFETCH(QString, tagged);
    for (const auto &settings : { kMerlin, kGenie, kPeedy }) {
        const auto made = Made(tagged, settings);
        QVERIFY(made);
        QCOMPARE(made->units.size(), SpeechText::Parse(tagged).units.size());
        auto last = 0us;
        for (const auto &unit : made->units) {
            QVERIFY(unit.begins >= last);
            QVERIFY(unit.ends >= unit.begins);
            last = unit.begins;
        }
        QVERIFY(last <= made->Length());
        QVERIFY(made->units.back().ends <= made->Length());
        QVERIFY(made->Length() > 100ms);
    }
}

void TestSpeechEngine::mouthBeginsAndEndsAtRest()
{
    const auto made = Made("Peedy, this is a fine bird of mine.");
    QVERIFY(made);
    QVERIFY(made->mouths.size() > 3);
    QCOMPARE(made->mouths.front().at, 0us);
    QVERIFY(made->mouths.front().mouth == Mouth::Rest);
    QVERIFY(made->mouths.back().mouth == Mouth::Rest);
    for (std::size_t index = 1; index < made->mouths.size(); ++index)
        QVERIFY(made->mouths[index].at > made->mouths[index - 1].at);
    QVERIFY(made->mouths.back().at <= made->Length());
}

void TestSpeechEngine::lineWithoutWordsHasNoSound_data()
{
    QTest::addColumn<bool>("real");
    QTest::addColumn<QString>("tagged");
    for (const bool real : { true, false })
        for (const char *tagged :
             { "", "   ", "?!...", "🙂🙂", "\\map=\"\"=\"\"\\", "\\map=\"\"=\"*****\"\\?", "\x01\x02" })
            QTest::addRow("%s, %s", tagged, real ? "heard" : "counting") << real << QString::fromUtf8(tagged);
}

void TestSpeechEngine::lineWithoutWordsHasNoSound()
{
    QFETCH(QString, tagged);
    const auto made = Made(tagged);
    QVERIFY(made);
    QCOMPARE(made->Length(), 0us);
    QCOMPARE(made->units.size(), SpeechText::Parse(tagged).units.size());
    QCOMPARE(made->mouths.size(), 1U);
    QVERIFY(made->mouths[0].mouth == Mouth::Rest);
}

void TestSpeechEngine::pausesAreKept()
{
    const auto plain = Made("one two");
    const auto apart = Made("one \\pau=700\\ two");
    const auto behind = Made("one two \\pau=700\\");
    QVERIFY(plain && apart && behind);
    QVERIFY(apart->units[1].begins - apart->units[0].ends >= 690ms);
    QVERIFY(plain->units[1].begins - plain->units[0].ends < 200ms);
    QVERIFY(apart->Length() > plain->Length() + 500ms);
    QVERIFY(behind->Length() >= plain->Length() + 690ms);
}

void TestSpeechEngine::droppedOrderIsNotDelivered()
{
    int delivered = 0;
    bool other = false;
    auto dropped = m_engine->Synthesise(SpeechText::Parse("hello"), kMerlin, [&](auto) { ++delivered; });
    auto late =
        m_engine->Synthesise(SpeechText::Parse("a long line of words"), kMerlin, [&](auto) { ++delivered; });
    const auto kept = m_engine->Synthesise(SpeechText::Parse("there"), kMerlin, [&](auto) { other = true; });
    dropped.reset();
    late.reset();
    QVERIFY(m_loop->Until([&] { return other; }));
    QCOMPARE(delivered, 0);
}

void TestSpeechEngine::ordersAreDeliveredInTurn()
{
    QStringList delivered;
    std::vector<std::unique_ptr<SpeechEngine::Order>> orders;
    for (const QString line : { "a rather long first line", "two", "three" })
        orders.push_back(m_engine->Synthesise(SpeechText::Parse(line), kPeedy,
                                              [&delivered, line](auto) { delivered << line; }));
    QVERIFY(m_loop->Until([&] { return delivered.size() == 3; }));
    QCOMPARE(delivered, QStringList({ "a rather long first line", "two", "three" }));
}

void TestSpeechEngine::orderMayBeDroppedWhenItIsDelivered()
{
    std::unique_ptr<SpeechEngine::Order> order;
    const auto witness = std::make_shared<int>(0);
    bool delivered = false;
    order = m_engine->Synthesise(SpeechText::Parse("hello"), kMerlin, [&, witness](auto) {
        order.reset();
        *witness += 1;
        delivered = true;
    });
    QVERIFY(m_loop->Until([&] { return delivered; }));
    QCOMPARE(*witness, 1);
    QVERIFY(!order);
}

QTEST_GUILESS_MAIN(TestSpeechEngine)
#include "TestSpeechEngine.moc"
