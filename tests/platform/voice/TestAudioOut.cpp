#include "platform/voice/QtAudioOut.h"
#include "support/FakeVoice.h"
#include "support/Loops.h"

#include <QElapsedTimer>
#include <QTest>

#include <cmath>
#include <csignal>
#include <memory>
#include <optional>

using namespace std::chrono_literals;
using platform::AudioOut;
using platform::Utterance;

// What every sound device keeps to, the one that is heard and the one that only counts. The one that is heard
// plays to a sound server of the test's own.
class TestAudioOut : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void deviceIsThere_data() { Devices(); }
    void deviceIsThere();
    void lineIsHeardToItsEnd_data() { Devices(); }
    void lineIsHeardToItsEnd();
    void heardTimeRunsSmoothly_data() { Devices(); }
    void heardTimeRunsSmoothly();
    void stopCutsOff_data() { Devices(); }
    void stopCutsOff();
    void newLineCutsOffTheOld_data() { Devices(); }
    void newLineCutsOffTheOld();
    void lineWithoutSoundEndsSoon_data() { Devices(); }
    void lineWithoutSoundEndsSoon();
    void noLineCannotBegin_data() { Devices(); }
    void noLineCannotBegin();
    void nextLineMayBeginWhenOneEnds_data() { Devices(); }
    void nextLineMayBeginWhenOneEnds();
    void deviceMayGoWhenALineEnds_data() { Devices(); }
    void deviceMayGoWhenALineEnds();
    void deviceMayGoWhileALinePlays_data() { Devices(); }
    void deviceMayGoWhileALinePlays();
    // The last one, since it takes the sound server away.
    void lostDeviceFailsTheLine_data() { Devices(); }
    void lostDeviceFailsTheLine();

private:
    static void Devices();
    static std::shared_ptr<const Utterance> Tone(std::chrono::milliseconds length);
    bool Real() const { return m_fake == nullptr; }

    std::unique_ptr<support::Loop> m_loop;
    std::unique_ptr<AudioOut> m_out;
    support::FakeAudioOut *m_fake = nullptr; // m_out, when it is the fake one
};

void TestAudioOut::Devices()
{
    QTest::addColumn<bool>("real");
    QTest::newRow("heard") << true;
    QTest::newRow("counting") << false;
}

std::shared_ptr<const Utterance> TestAudioOut::Tone(std::chrono::milliseconds length)
{
    auto utterance = std::make_shared<Utterance>();
    const auto frames = utterance->sampleRate * length.count() / 1000;
    utterance->samples.resize(static_cast<qsizetype>(frames) * 2);
    auto *samples = reinterpret_cast<qint16 *>(utterance->samples.data());
    for (qint64 index = 0; index < frames; ++index)
        samples[index] = static_cast<qint16>(8000 * std::sin(static_cast<double>(index) * 0.05));
    return utterance;
}

void TestAudioOut::init()
{
    QFETCH(bool, real);
    m_fake = nullptr;
    if (real) {
        QVERIFY2(qEnvironmentVariableIsSet("SOUND_SERVER_PID"), "no sound server is installed");
        m_loop = std::make_unique<support::RealLoop>();
        m_out = std::make_unique<platform::QtAudioOut>();
    } else {
        auto loop = std::make_unique<support::FakeLoop>();
        auto fake = std::make_unique<support::FakeAudioOut>(loop->time, loop->time);
        m_fake = fake.get();
        m_out = std::move(fake);
        m_loop = std::move(loop);
    }
}

void TestAudioOut::cleanup()
{
    m_out.reset();
    m_loop.reset();
}

void TestAudioOut::deviceIsThere()
{
    QVERIFY(m_out->Usable());
    QCOMPARE(m_out->Heard(), 0us);
}

void TestAudioOut::lineIsHeardToItsEnd()
{
    int ends = 0;
    bool whole = false;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(m_out->Play(Tone(500ms), [&](bool ok) {
        ++ends;
        whole = ok;
    }));
    QCOMPARE(ends, 0);
    QVERIFY(m_loop->Until([&] { return ends > 0; }));
    QVERIFY(whole);
    if (Real())
        QVERIFY2(timer.elapsed() >= 490 && timer.elapsed() < 900,
                 qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(m_out->Heard(), 0us);
    m_loop->For(200ms);
    QCOMPARE(ends, 1);
}

void TestAudioOut::heardTimeRunsSmoothly()
{
    bool ended = false;
    const auto tone = Tone(1500ms);
    QVERIFY(m_out->Play(tone, [&](bool) { ended = true; }));
    auto last = 0us;
    auto largestStep = 0us;
    int steps = 0;
    QVERIFY(m_loop->Until([&] {
        if (ended)
            return true;
        const auto heard = m_out->Heard();
        if (heard < last || heard > tone->Length())
            return true;
        largestStep = std::max(largestStep, heard - last);
        steps += heard > last ? 1 : 0;
        last = heard;
        return false;
    }));
    QVERIFY(ended);
    QVERIFY2(last > 1450ms, qPrintable(QString::number(last.count())));
    QVERIFY2(steps > 50, qPrintable(QString::number(steps)));
    QVERIFY2(largestStep < 150ms, qPrintable(QString::number(largestStep.count())));
}

void TestAudioOut::stopCutsOff()
{
    int ends = 0;
    QVERIFY(m_out->Play(Tone(300ms), [&](bool) { ++ends; }));
    m_loop->For(100ms);
    m_out->Stop();
    QCOMPARE(m_out->Heard(), 0us);
    m_out->Stop();
    m_loop->For(500ms);
    QCOMPARE(ends, 0);
}

void TestAudioOut::newLineCutsOffTheOld()
{
    int oldEnds = 0;
    int newEnds = 0;
    QVERIFY(m_out->Play(Tone(2s), [&](bool) { ++oldEnds; }));
    m_loop->For(200ms);
    QVERIFY(m_out->Play(Tone(200ms), [&](bool) { ++newEnds; }));
    QVERIFY(m_out->Heard() < 100ms);
    QVERIFY(m_loop->Until([&] { return newEnds > 0; }, 1500ms));
    m_loop->For(200ms);
    QCOMPARE(oldEnds, 0);
    QCOMPARE(newEnds, 1);
}

void TestAudioOut::lineWithoutSoundEndsSoon()
{
    std::optional<bool> whole;
    QVERIFY(m_out->Play(std::make_shared<Utterance>(), [&](bool ok) { whole = ok; }));
    QVERIFY(!whole);
    QVERIFY(m_loop->Until([&] { return whole.has_value(); }, 500ms));
    QVERIFY(*whole);
}

void TestAudioOut::noLineCannotBegin()
{
    int ends = 0;
    QVERIFY(!m_out->Play(nullptr, [&](bool) { ++ends; }));
    m_loop->For(100ms);
    QCOMPARE(ends, 0);
}

void TestAudioOut::nextLineMayBeginWhenOneEnds()
{
    int ends = 0;
    std::function<void(bool)> next = [&](bool) {
        if (++ends < 4)
            QVERIFY(m_out->Play(Tone(60ms), next));
    };
    QVERIFY(m_out->Play(Tone(60ms), next));
    QVERIFY(m_loop->Until([&] { return ends == 4; }));
}

void TestAudioOut::deviceMayGoWhenALineEnds()
{
    bool ended = false;
    QVERIFY(m_out->Play(Tone(60ms), [&](bool) {
        ended = true;
        m_out.reset();
    }));
    QVERIFY(m_loop->Until([&] { return ended; }));
    m_loop->For(50ms);
    QVERIFY(!m_out);
}

void TestAudioOut::deviceMayGoWhileALinePlays()
{
    int ends = 0;
    for (int round = 0; round < 20; ++round) {
        QFETCH(bool, real);
        QVERIFY(m_out->Play(Tone(1s), [&](bool) { ++ends; }));
        m_loop->For(std::chrono::milliseconds(round));
        cleanup();
        init();
        QCOMPARE(Real(), real);
    }
    m_loop->For(100ms);
    QCOMPARE(ends, 0);
}

void TestAudioOut::lostDeviceFailsTheLine()
{
    std::optional<bool> whole;
    if (m_fake)
        m_fake->FailAfter(300ms);
    QVERIFY(m_out->Play(Tone(2s), [&](bool ok) { whole = ok; }));
    m_loop->For(200ms);
    if (Real())
        QCOMPARE(::kill(qEnvironmentVariableIntValue("SOUND_SERVER_PID"), SIGKILL), 0);
    QVERIFY(m_loop->Until([&] { return whole.has_value(); }));
    QVERIFY(!*whole);
    QCOMPARE(m_out->Heard(), 0us);
    QVERIFY(m_loop->Until([&] { return !m_out->Usable(); }));
    QVERIFY(!m_out->Play(Tone(1s), [&](bool) { whole.reset(); }));
    m_loop->For(100ms);
    QVERIFY(whole.has_value());
}

QTEST_GUILESS_MAIN(TestAudioOut)
#include "TestAudioOut.moc"
