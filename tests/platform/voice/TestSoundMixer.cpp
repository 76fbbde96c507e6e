#include "platform/voice/SoundMixer.h"

#include <QTest>
#include <QtEndian>

#include <cstdlib>

using platform::kSoundRate;
using platform::Sound;
using platform::SoundMixer;
using Link = SoundMixer::Link;

namespace {

std::shared_ptr<const Sound> Level(qint16 level, int frames)
{
    QByteArray samples(frames * 2, '\0');
    for (int frame = 0; frame < frames; ++frame)
        qToLittleEndian(level, samples.data() + frame * 2);
    return std::make_shared<const Sound>(Sound{ samples });
}

std::vector<qint16> Mixed(SoundMixer &mixer, int frames)
{
    std::vector<qint16> samples(static_cast<std::size_t>(frames), 99);
    mixer.Mix(samples.data(), frames);
    return samples;
}

} // namespace

// How effects become one stream.
class TestSoundMixer : public QObject {
    Q_OBJECT
private slots:
    void silenceWithoutEffects()
    {
        SoundMixer mixer;
        QVERIFY(mixer.IsEmpty());
        QCOMPARE(Mixed(mixer, 3), (std::vector<qint16>{ 0, 0, 0 }));
    }

    void anEffectBeginsAtItsFrameAcrossBlocks()
    {
        SoundMixer mixer;
        const auto link = std::make_shared<Link>();
        mixer.Add(Level(100, 3), link, 4);
        QCOMPARE(Mixed(mixer, 5), (std::vector<qint16>{ 0, 0, 0, 0, 100 }));
        QCOMPARE(Mixed(mixer, 4), (std::vector<qint16>{ 100, 100, 0, 0 }));
    }

    void anEffectThatIsLateBeginsWithTheNextFrame()
    {
        SoundMixer mixer;
        Mixed(mixer, 10);
        mixer.Add(Level(7, 2), std::make_shared<Link>(), 3);
        QCOMPARE(Mixed(mixer, 3), (std::vector<qint16>{ 7, 7, 0 }));
    }

    void effectsAreAddedAndHeldAtTheLargestSample()
    {
        SoundMixer mixer;
        mixer.Add(Level(20000, 2), std::make_shared<Link>(), 0);
        mixer.Add(Level(20000, 1), std::make_shared<Link>(), 1);
        mixer.Add(Level(-30000, 1), std::make_shared<Link>(), 2);
        mixer.Add(Level(-30000, 1), std::make_shared<Link>(), 2);
        QCOMPARE(Mixed(mixer, 3), (std::vector<qint16>{ 20000, 32767, -32768 }));
    }

    void anEffectIsOverWhenItHasBeenHeard()
    {
        SoundMixer mixer;
        const auto link = std::make_shared<Link>();
        mixer.Add(Level(100, 5), link, 2);
        Mixed(mixer, 20);
        mixer.Heard(6);
        QVERIFY(!link->over);
        mixer.Heard(7);
        QVERIFY(link->over);
        QVERIFY(mixer.IsEmpty());
    }

    void aFadeIsSmoothAndShort()
    {
        SoundMixer mixer;
        const auto link = std::make_shared<Link>();
        mixer.Add(Level(10000, kSoundRate), link, 0);
        Mixed(mixer, 500);
        link->fade = true;
        const auto faded = Mixed(mixer, 1000);
        const std::size_t length = kSoundRate * 30 / 1000;
        QCOMPARE(faded[0], qint16(10000));
        for (std::size_t frame = 1; frame < faded.size(); ++frame)
            QVERIFY(faded[frame] <= faded[frame - 1] && faded[frame - 1] - faded[frame] < 30);
        QVERIFY(faded[length - 1] > 0);
        QCOMPARE(faded[length], qint16(0));
        mixer.Heard(500 + qint64(length));
        QVERIFY(link->over);
    }

    void anEffectThatFadesBeforeItsBeginIsNeverHeard()
    {
        SoundMixer mixer;
        const auto link = std::make_shared<Link>();
        mixer.Add(Level(10000, 100), link, 10);
        link->fade = true;
        for (const qint16 sample : Mixed(mixer, 200))
            QCOMPARE(sample, qint16(0));
        mixer.Heard(1);
        QVERIFY(link->over);
    }

    void droppingEndsEverything()
    {
        SoundMixer mixer;
        const auto link = std::make_shared<Link>();
        mixer.Add(Level(100, 500), link, 0);
        Mixed(mixer, 20);
        mixer.Drop();
        QVERIFY(link->over);
        QVERIFY(mixer.IsEmpty());
        // It counts from 0 again.
        mixer.Add(Level(7, 1), std::make_shared<Link>(), 1);
        QCOMPARE(Mixed(mixer, 3), (std::vector<qint16>{ 0, 7, 0 }));
    }
};

QTEST_APPLESS_MAIN(TestSoundMixer)
#include "TestSoundMixer.moc"
