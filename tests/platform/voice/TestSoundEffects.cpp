#include "platform/voice/QtSoundEffects.h"
#include "support/Loops.h"

#include <QElapsedTimer>
#include <QTest>

#include <csignal>

using namespace std::chrono_literals;
using platform::kSoundRate;
using platform::QtSoundEffects;
using platform::Sound;

namespace {

std::shared_ptr<const Sound> Quiet(std::chrono::milliseconds length)
{
    return std::make_shared<const Sound>(
        Sound{ QByteArray(qsizetype(length.count()) * kSoundRate / 1000 * 2, '\0') });
}

// How many milliseconds pass until `effect` is over; -1 when it never is.
qint64 Lasts(support::RealLoop &loop, const platform::SoundEffects::Playing &effect)
{
    QElapsedTimer timer;
    timer.start();
    while (!effect.IsOver()) {
        if (timer.elapsed() > 5000)
            return -1;
        loop.For(5ms);
    }
    return timer.elapsed();
}

} // namespace

// Effects on a device; they play to a sound server of the test's own.
class TestSoundEffects : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY2(!qEnvironmentVariableIsEmpty("SOUND_SERVER_PID"), "no sound server is installed");
    }

    void askingTakesNoTime()
    {
        QtSoundEffects effects;
        auto first = effects.Play(Quiet(50ms), 0us); // asks the desktop for its device
        QElapsedTimer timer;
        timer.start();
        auto second = effects.Play(Quiet(50ms), 0us);
        QVERIFY2(timer.elapsed() < 10, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(first && second);
    }

    void anEffectLastsItsTime()
    {
        QtSoundEffects effects;
        auto effect = effects.Play(Quiet(400ms), 100ms);
        QVERIFY(effect);
        QVERIFY(!effect->IsOver());
        const qint64 lasts = Lasts(m_loop, *effect);
        QVERIFY2(lasts > 450 && lasts < 900, qPrintable(QString::number(lasts)));
        // The device is open by now.
        effect = effects.Play(Quiet(400ms), 100ms);
        const qint64 again = Lasts(m_loop, *effect);
        QVERIFY2(again > 450 && again < 900, qPrintable(QString::number(again)));
    }

    void fadingEndsAnEffectSoon()
    {
        QtSoundEffects effects;
        auto effect = effects.Play(Quiet(3000ms), 0us);
        QVERIFY(effect);
        m_loop.For(300ms);
        QVERIFY(!effect->IsOver());
        effect->FadeOut();
        const qint64 lasts = Lasts(m_loop, *effect);
        QVERIFY2(lasts >= 0 && lasts < 500, qPrintable(QString::number(lasts)));
    }

    void switchingOffFadesAllAndKeepsSilent()
    {
        QtSoundEffects effects;
        auto effect = effects.Play(Quiet(3000ms), 0us);
        m_loop.For(200ms);
        effects.SetOn(false);
        QVERIFY(Lasts(m_loop, *effect) >= 0);
        QVERIFY(!effects.Play(Quiet(50ms), 0us));
        effects.SetOn(true);
        QVERIFY(effects.Play(Quiet(50ms), 0us) != nullptr);
    }

    void theServiceMayGoBeforeItsEffects()
    {
        auto effects = std::make_unique<QtSoundEffects>();
        auto effect = effects->Play(Quiet(3000ms), 0us);
        m_loop.For(100ms);
        effects.reset();
        QVERIFY(effect->IsOver());
    }

    // The last one, since it takes the sound server away.
    void aLostDeviceEndsItsEffects()
    {
        QtSoundEffects effects;
        auto effect = effects.Play(Quiet(4500ms), 0us);
        m_loop.For(200ms);
        QCOMPARE(::kill(qEnvironmentVariableIntValue("SOUND_SERVER_PID"), SIGKILL), 0);
        const qint64 lasts = Lasts(m_loop, *effect);
        QVERIFY2(lasts >= 0 && lasts < 3500, qPrintable(QString::number(lasts)));
        m_loop.For(50ms);
        // It is left alone for a while.
        QVERIFY(!effects.Play(Quiet(50ms), 0us));
    }

private:
    support::RealLoop m_loop;
};

QTEST_GUILESS_MAIN(TestSoundEffects)
#include "TestSoundEffects.moc"
