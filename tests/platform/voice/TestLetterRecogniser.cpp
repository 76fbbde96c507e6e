#include "platform/voice/SphinxRecogniser.h"
#include "support/FakeRecogniser.h"
#include "support/FakeTime.h"

#include <QRandomGenerator>
#include <QSet>
#include <QTest>

#include <espeak-ng/speak_lib.h>

using namespace platform;

namespace {

class Service {
public:
    virtual ~Service() = default;
    virtual LetterRecogniser &Recogniser() = 0;
    virtual bool Until(const std::function<bool()> &reached) = 0;
};

class RealService : public Service {
public:
    LetterRecogniser &Recogniser() override { return m_recogniser; }
    bool Until(const std::function<bool()> &reached) override { return QTest::qWaitFor(reached, 20000); }

private:
    SphinxRecogniser m_recogniser;
};

class FakeService : public Service {
public:
    FakeService() { m_recogniser.answers = { { "w", "o", "u" }, { "w", "o", "u" }, { "w", "o", "u" } }; }
    LetterRecogniser &Recogniser() override { return m_recogniser; }
    bool Until(const std::function<bool()> &reached) override
    {
        m_time.Run(std::chrono::seconds(2));
        return reached();
    }

private:
    support::FakeTime m_time;
    support::FakeRecogniser m_recogniser{ m_time };
};

QByteArray g_spoken;

int Keep(short *samples, int count, espeak_EVENT *)
{
    if (samples && count > 0)
        g_spoken.append(reinterpret_cast<const char *>(samples), qsizetype(count) * 2);
    return 0;
}

// The letter as a synthetic voice says it, in the soft noise of a room.
QByteArray Spoken(const QString &text)
{
    static const int rate = [] {
        const int made = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 60, nullptr, espeakINITIALIZE_DONT_EXIT);
        espeak_SetSynthCallback(Keep);
        espeak_SetVoiceByName("en-us");
        espeak_SetParameter(espeakRATE, 130, 0);
        return made;
    }();
    g_spoken.clear();
    const QByteArray utf8 = text.toUtf8();
    espeak_Synth(utf8.constData(), std::size_t(utf8.size()) + 1, 0, POS_CHARACTER, 0, espeakCHARS_UTF8,
                 nullptr, nullptr);
    const auto *from = reinterpret_cast<const qint16 *>(g_spoken.constData());
    const auto length = qsizetype(double(g_spoken.size()) / 2 * kSpeechRate / rate);
    constexpr qsizetype kAround = kSpeechRate * 2 / 5;
    QByteArray samples((length + 2 * kAround) * 2, '\0');
    auto *into = reinterpret_cast<qint16 *>(samples.data());
    QRandomGenerator random(7);
    for (qsizetype at = 0; at < length + 2 * kAround; ++at) {
        double value = random.bounded(121) - 60;
        if (at >= kAround && at < kAround + length)
            value += from[qsizetype(double(at - kAround) * rate / kSpeechRate)] * 0.7;
        into[at] = qint16(qBound(-32767.0, value, 32767.0));
    }
    return samples;
}

} // namespace

// Single letters: the contract of the recogniser and of the fake one, and what the real one understands.
class TestLetterRecogniser : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_service.reset(); }

    void answersOnceFromTheEventLoop_data() { Both(); }
    void answersOnceFromTheEventLoop();
    void silenceIsNoLetter_data() { Both(); }
    void silenceIsNoLetter();
    void anOrderThatIsDroppedIsSilent_data() { Both(); }
    void anOrderThatIsDroppedIsSilent();
    void mayGoWithOrdersOnTheirWay();
    void withoutItsModelItSaysSo();
    void understandsAVoice();

private:
    void Both()
    {
        QTest::addColumn<int>("row");
        QTest::newRow("real") << 0;
        QTest::newRow("fake") << 1;
    }
    std::unique_ptr<Service> m_service;
};

void TestLetterRecogniser::init()
{
    const bool fake =
        QTest::currentDataTag() && QLatin1String(QTest::currentDataTag()) == QLatin1String("fake");
    if (fake)
        m_service = std::make_unique<FakeService>();
    else
        m_service = std::make_unique<RealService>();
    const QString obstacle = m_service->Recogniser().Obstacle();
    QVERIFY2(obstacle.isEmpty(), qPrintable(obstacle));
}

void TestLetterRecogniser::answersOnceFromTheEventLoop()
{
    int answers = 0;
    QStringList names;
    const auto order = m_service->Recogniser().Recognise(Spoken("w"), [&](const QStringList &heard) {
        ++answers;
        names = heard;
    });
    QCOMPARE(answers, 0);
    QVERIFY(m_service->Until([&] { return answers > 0; }));
    QCOMPARE(names.size(), 3);
    QCOMPARE(names.front(), QString("w"));
    QCOMPARE(QSet<QString>(names.begin(), names.end()).size(), 3);
    for (const QString &name : names)
        QVERIFY(SpokenNames().contains(name));
    bool later = false;
    const auto other = m_service->Recogniser().Recognise({}, [&](const QStringList &) { later = true; });
    QVERIFY(m_service->Until([&] { return later; }));
    QCOMPARE(answers, 1);
}

void TestLetterRecogniser::silenceIsNoLetter()
{
    for (const qsizetype length : { 0, 200, kSpeechRate * 2, kSpeechRate * 4 }) {
        bool answered = false;
        QStringList names{ "not yet" };
        const auto order =
            m_service->Recogniser().Recognise(QByteArray(length, '\0'), [&](const QStringList &heard) {
                answered = true;
                names = heard;
            });
        QVERIFY(m_service->Until([&] { return answered; }));
        QCOMPARE(names, QStringList());
    }
}

void TestLetterRecogniser::anOrderThatIsDroppedIsSilent()
{
    bool dropped = false;
    bool answered = false;
    auto first = m_service->Recogniser().Recognise(Spoken("w"), [&](const QStringList &) { dropped = true; });
    const auto second =
        m_service->Recogniser().Recognise(Spoken("w"), [&](const QStringList &) { answered = true; });
    first.reset();
    QVERIFY(m_service->Until([&] { return answered; }));
    QVERIFY(!dropped);
}

void TestLetterRecogniser::mayGoWithOrdersOnTheirWay()
{
    bool answered = false;
    const auto order =
        m_service->Recogniser().Recognise(Spoken("w"), [&](const QStringList &) { answered = true; });
    m_service.reset();
    QCoreApplication::processEvents();
    QVERIFY(!answered);
}

void TestLetterRecogniser::withoutItsModelItSaysSo()
{
    SphinxRecogniser lost(QStringLiteral("/nonexistent"));
    QVERIFY(!lost.Obstacle().isEmpty());
    bool answered = false;
    QStringList names{ "not yet" };
    const auto order = lost.Recognise(Spoken("w"), [&](const QStringList &heard) {
        answered = true;
        names = heard;
    });
    QVERIFY(!answered);
    QVERIFY(m_service->Until([&] { return answered; }));
    QCOMPARE(names, QStringList());
}

// Letters that no other is like; the whole alphabet is measured by hear-letters.
void TestLetterRecogniser::understandsAVoice()
{
    for (const QString &name : { QStringLiteral("w"), QStringLiteral("i"), QStringLiteral("q"),
                                 QStringLiteral("y"), QStringLiteral("go") }) {
        const QString said = name == QLatin1String("go") ? QStringLiteral("go ahead") : name;
        const QStringList heard = SphinxRecogniser::Understand(SphinxRecogniser::UsualModel(), Spoken(said));
        QVERIFY2(heard.contains(name), qPrintable(name + " was taken for " + heard.join(' ')));
    }
}

QTEST_GUILESS_MAIN(TestLetterRecogniser)
#include "TestLetterRecogniser.moc"
