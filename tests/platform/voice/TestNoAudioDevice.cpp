#include "platform/voice/QtAudioOut.h"
#include "platform/voice/QtSoundEffects.h"
#include "support/Loops.h"

#include <QElapsedTimer>
#include <QTest>

using namespace std::chrono_literals;
using platform::QtAudioOut;
using platform::Utterance;

namespace {

int g_messages = 0;

void Count(QtMsgType, const QMessageLogContext &, const QString &)
{
    ++g_messages;
}

} // namespace

// A machine without any sound.
class TestNoAudioDevice : public QObject {
    Q_OBJECT
private slots:
    void nothingCanBePlayed();
    void effectsAreOverAtOnce();
    void askingIsQuickAndQuiet();
};

void TestNoAudioDevice::effectsAreOverAtOnce()
{
    platform::QtSoundEffects effects;
    const auto sound = std::make_shared<platform::Sound>(platform::Sound{ QByteArray(48000, '\1') });
    for (int ask = 0; ask < 100; ++ask)
        QVERIFY(!effects.Play(sound, 0us));
}

void TestNoAudioDevice::nothingCanBePlayed()
{
    QtAudioOut out;
    auto utterance = std::make_shared<Utterance>();
    utterance->samples = QByteArray(48000, '\1');
    int ends = 0;
    QVERIFY(!out.Usable());
    QVERIFY(!out.Play(utterance, [&](bool) { ++ends; }));
    QCOMPARE(out.Heard(), 0us);
    out.Stop();
    support::RealLoop().For(50ms);
    QCOMPARE(ends, 0);
}

void TestNoAudioDevice::askingIsQuickAndQuiet()
{
    QtAudioOut out;
    const auto before = qInstallMessageHandler(&Count);
    QElapsedTimer timer;
    timer.start();
    int usable = 0;
    for (int round = 0; round < 3; ++round) {
        for (int times = 0; times < 10'000; ++times)
            usable += out.Usable() ? 1 : 0;
        support::RealLoop().For(1100ms);
    }
    qInstallMessageHandler(before);
    QCOMPARE(usable, 0);
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY2(g_messages <= 3, qPrintable(QString::number(g_messages)));
}

QTEST_GUILESS_MAIN(TestNoAudioDevice)
#include "TestNoAudioDevice.moc"
