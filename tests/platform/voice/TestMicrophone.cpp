#include "platform/voice/QtAudioOut.h"
#include "platform/voice/QtMicrophone.h"
#include "support/Loops.h"

#include <QProcess>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

using namespace std::chrono_literals;
using platform::QtAudioOut;
using platform::QtMicrophone;
using platform::Utterance;

namespace {

constexpr double kPitch = 440;       // hertz
constexpr int kRecordedRate = 16000; // samples a second

// Asks the sound server to do something; gives what it says.
QByteArray Ask(const QStringList &arguments)
{
    QProcess process;
    process.start(QStringLiteral("pactl"), arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("pactl %s: %s", qPrintable(arguments.join(' ')), process.readAllStandardError().constData());
    return process.readAllStandardOutput().trimmed();
}

// Plugs in a microphone, which stands before the loudspeaker.
QByteArray PlugIn(const char *name)
{
    return Ask({ "load-module", "module-remap-source", "master=nowhere.monitor",
                 QStringLiteral("source_name=%1").arg(name) });
}

std::shared_ptr<const Utterance> Tone(std::chrono::milliseconds length)
{
    auto utterance = std::make_shared<Utterance>();
    const auto frames = utterance->sampleRate * length.count() / 1000;
    utterance->samples.resize(static_cast<qsizetype>(frames) * 2);
    auto *samples = reinterpret_cast<qint16 *>(utterance->samples.data());
    for (qint64 index = 0; index < frames; ++index)
        samples[index] = static_cast<qint16>(
            16000 * std::sin(2 * M_PI * kPitch * static_cast<double>(index) / utterance->sampleRate));
    return utterance;
}

double Seconds(const QByteArray &bytes)
{
    return double(bytes.size()) / 2 / kRecordedRate;
}

// From the first to the last loud sample.
QByteArray LoudPart(const QByteArray &bytes)
{
    const auto *begin = reinterpret_cast<const qint16 *>(bytes.constData());
    const auto *end = begin + bytes.size() / 2;
    const auto isLoud = [](qint16 sample) { return std::abs(sample) > 8000; };
    const auto *first = std::find_if(begin, end, isLoud);
    while (end > first && !isLoud(end[-1]))
        --end;
    return QByteArray(reinterpret_cast<const char *>(first), (end - first) * 2);
}

// How often a second the sound rises from below to above.
double PitchOf(const QByteArray &bytes)
{
    const auto *samples = reinterpret_cast<const qint16 *>(bytes.constData());
    const auto count = bytes.size() / 2;
    int rises = 0;
    qsizetype first = 0;
    qsizetype last = 0;
    for (qsizetype index = 1; index < count; ++index) {
        if (samples[index - 1] >= 0 || samples[index] < 0)
            continue;
        first = rises == 0 ? index : first;
        last = index;
        ++rises;
    }
    return rises < 2 ? 0 : (rises - 1) * double(kRecordedRate) / double(last - first);
}

} // namespace

// The real microphone, on a sound server of the test's own.
class TestMicrophone : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY2(qEnvironmentVariableIsSet("SOUND_SERVER_PID"), "no sound server is installed");
    }
    void init() { m_plug = PlugIn("desk"); }
    void cleanup()
    {
        for (const QByteArray &plug : { m_plug, m_other })
            if (!plug.isEmpty())
                Ask({ "unload-module", plug });
        m_plug.clear();
        m_other.clear();
    }

    void theEchoIsNoDevice();
    void whatIsSaidIsRecordedAsItIs();
    void levelsFollowWhatIsHeard();
    void stopTellsTheRestAndIsSilentThen();
    void whoIsToldTheRestMayListenAnew();
    void whoListensLastIsTold();
    void aDeviceThatHasGoneGivesWayToAnother();
    void comingAndGoingIsTold();
    void withoutADeviceNothingIsHeard();
    void loudnessIsWhatAnEarHas();

private:
    static bool Has(const QtMicrophone &microphone, const QString &id)
    {
        const auto devices = microphone.Devices();
        return std::any_of(devices.begin(), devices.end(),
                           [&](const auto &device) { return device.id == id; });
    }
    // Until the library has noticed which devices there are.
    bool Sees(const QtMicrophone &microphone, const QString &id)
    {
        return m_loop.Until([&] { return Has(microphone, id); });
    }

    support::RealLoop m_real;
    support::Loop &m_loop = m_real;
    // What is heard from a little before the tone to a little after it.
    QByteArray RecordTone(QtMicrophone &microphone, std::chrono::milliseconds length)
    {
        QtAudioOut out;
        QByteArray heard;
        bool isOver = false;
        const bool isRecording =
            microphone.Record("desk", [&](const QByteArray &samples) { heard += samples; });
        m_loop.For(200ms);
        const bool isPlaying = out.Play(Tone(length), [&](bool) { isOver = true; });
        const bool ends = m_loop.Until([&] { return isOver; });
        m_loop.For(300ms);
        microphone.Stop();
        return isRecording && isPlaying && ends && heard.size() % 2 == 0 ? heard : QByteArray();
    }

    QByteArray m_plug;
    QByteArray m_other;
};

void TestMicrophone::theEchoIsNoDevice()
{
    const QtMicrophone microphone;
    QVERIFY(Sees(microphone, "desk"));
    QCOMPARE(microphone.Devices().size(), size_t(1));
    QVERIFY(!microphone.Devices().front().name.isEmpty());
}

void TestMicrophone::whatIsSaidIsRecordedAsItIs()
{
    QtMicrophone microphone;
    QVERIFY(Sees(microphone, "desk"));
    // A sound server without time drops a piece now and then; it does not do so three times running.
    QByteArray loud;
    for (int attempt = 0; attempt < 3 && std::abs(Seconds(loud) - 1) > 0.03; ++attempt)
        loud = LoudPart(RecordTone(microphone, 1000ms));
    QVERIFY2(std::abs(Seconds(loud) - 1) < 0.03, qPrintable(QString::number(Seconds(loud))));
    const double pitch = PitchOf(loud);
    QVERIFY2(std::abs(pitch - kPitch) < 4, qPrintable(QString::number(pitch)));
}

void TestMicrophone::levelsFollowWhatIsHeard()
{
    QtMicrophone microphone;
    QtAudioOut out;
    QVERIFY(Sees(microphone, "desk"));
    std::vector<double> levels;
    QVERIFY(microphone.Listen("desk", [&](double level) { levels.push_back(level); }));
    m_loop.For(600ms);
    QVERIFY2(levels.size() >= 4, "some ten times a second");
    QCOMPARE(*std::max_element(levels.begin(), levels.end()), 0.0);
    bool isOver = false;
    QVERIFY(out.Play(Tone(500ms), [&](bool) { isOver = true; }));
    QVERIFY(m_loop.Until([&] { return isOver; }));
    QVERIFY(m_loop.Until([&] { return *std::max_element(levels.begin(), levels.end()) > 0.7; }));
    QVERIFY(m_loop.Until([&] { return levels.back() == 0; }));
    microphone.Stop();
}

void TestMicrophone::stopTellsTheRestAndIsSilentThen()
{
    QtMicrophone microphone;
    QVERIFY(Sees(microphone, "desk"));
    int calls = 0;
    bool stopsAgain = false;
    QVERIFY(microphone.Record("desk", [&](const QByteArray &) {
        ++calls;
        if (std::exchange(stopsAgain, false))
            microphone.Stop();
    }));
    QVERIFY(m_loop.Until([&] { return calls > 2; }));
    stopsAgain = true; // by whoever is told the rest
    microphone.Stop();
    const int before = calls;
    m_loop.For(300ms);
    QCOMPARE(calls, before);
    microphone.Stop();
}

void TestMicrophone::whoIsToldTheRestMayListenAnew()
{
    QtMicrophone microphone;
    QVERIFY(Sees(microphone, "desk"));
    int levels = 0;
    int calls = 0;
    bool listensAnew = false;
    const auto record = [&] {
        return microphone.Record("desk", [&](const QByteArray &) {
            ++calls;
            if (std::exchange(listensAnew, false))
                QVERIFY(microphone.Listen("desk", [&](double) { ++levels; }));
        });
    };
    QVERIFY(record());
    QVERIFY(m_loop.Until([&] { return calls > 2; }));
    listensAnew = true;
    QTest::qSleep(100); // so that there is a rest
    microphone.Stop();
    QVERIFY(!listensAnew);
    QVERIFY(m_loop.Until([&] { return levels > 2; }));
    // What is begun behind it counts.
    QVERIFY(record());
    calls = 0;
    QVERIFY(m_loop.Until([&] { return calls > 2; }));
    listensAnew = true;
    QTest::qSleep(100);
    int last = 0;
    QVERIFY(microphone.Record("desk", [&](const QByteArray &) { ++last; }));
    levels = 0;
    QVERIFY(m_loop.Until([&] { return last > 2; }));
    QCOMPARE(levels, 0);
}

void TestMicrophone::whoListensLastIsTold()
{
    QtMicrophone microphone;
    QVERIFY(Sees(microphone, "desk"));
    int first = 0;
    int second = 0;
    QVERIFY(microphone.Listen("desk", [&](double) { ++first; }));
    QVERIFY(m_loop.Until([&] { return first > 0; }));
    QVERIFY(microphone.Record("desk", [&](const QByteArray &) { ++second; }));
    const int before = first;
    QVERIFY(m_loop.Until([&] { return second > 2; }));
    QCOMPARE(first, before);
    // Another one begun from inside, as a sheet does whose page is turned.
    bool turned = false;
    QVERIFY(microphone.Listen("desk", [&](double) {
        if (!std::exchange(turned, true))
            QVERIFY(microphone.Listen("desk", [&](double) { ++first; }));
    }));
    QVERIFY(m_loop.Until([&] { return first > before; }));
}

void TestMicrophone::aDeviceThatHasGoneGivesWayToAnother()
{
    QtMicrophone microphone;
    QVERIFY(Sees(microphone, "desk"));
    for (const QString id : { "headset", "" }) {
        int calls = 0;
        QVERIFY(microphone.Listen(id, [&](double) { ++calls; }));
        QVERIFY(m_loop.Until([&] { return calls > 0; }));
        microphone.Stop();
    }
}

void TestMicrophone::comingAndGoingIsTold()
{
    QtMicrophone microphone;
    QVERIFY(Sees(microphone, "desk"));
    int changes = 0;
    microphone.devicesChanged = [&] { ++changes; };
    m_other = PlugIn("headset");
    QVERIFY(m_loop.Until([&] { return changes > 0; }));
    QVERIFY(Has(microphone, "headset"));
    changes = 0;
    Ask({ "unload-module", std::exchange(m_other, {}) });
    QVERIFY(m_loop.Until([&] { return changes > 0; }));
    QVERIFY(!Has(microphone, "headset"));
    m_loop.For(2500ms);
    QCOMPARE(changes, 1);
    microphone.devicesChanged = nullptr; // nobody wants to be told any more
    m_other = PlugIn("headset");
    QVERIFY(Sees(microphone, "headset"));
}

void TestMicrophone::withoutADeviceNothingIsHeard()
{
    QtMicrophone microphone;
    Ask({ "unload-module", std::exchange(m_plug, {}) });
    QVERIFY(m_loop.Until([&] { return microphone.Devices().empty(); }));
    bool isCalled = false;
    QVERIFY(!microphone.Listen("desk", [&](double) { isCalled = true; }));
    QVERIFY(!microphone.Record("", [&](const QByteArray &) { isCalled = true; }));
    m_loop.For(200ms);
    microphone.Stop();
    QVERIFY(!isCalled);
}

void TestMicrophone::loudnessIsWhatAnEarHas()
{
    QCOMPARE(platform::LoudnessOf(0), 0.0);
    QCOMPARE(platform::LoudnessOf(-1), 0.0);
    QCOMPARE(platform::LoudnessOf(std::nan("")), 0.0);
    QCOMPARE(platform::LoudnessOf(0.0001), 0.0);
    QCOMPARE(platform::LoudnessOf(1), 1.0);
    double before = 0;
    for (const double soft : { 0.003, 0.01, 0.1, 0.4 }) {
        QVERIFY(platform::LoudnessOf(soft) > before);
        before = platform::LoudnessOf(soft);
    }
    QVERIFY(before < 1);
}

QTEST_GUILESS_MAIN(TestMicrophone)
#include "TestMicrophone.moc"
