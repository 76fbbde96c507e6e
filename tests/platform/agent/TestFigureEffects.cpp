#include "platform/agent/OrderedJson.h"
#include "platform/agent/PuppetFigure.h"
#include "support/FakeOptionsStore.h"
#include "support/FakeSounds.h"
#include "support/FakeVoice.h"
#include "support/SmallCharacter.h"

#include <QCborMap>
#include <QTest>

using namespace platform;

namespace {

using std::chrono::milliseconds;

constexpr qint32 kNotEnded = -1;
// A picture and what the device is late by.
constexpr auto kNear = milliseconds(20);

struct Sounding {
    const char *motion;
    const char *cues;
};
const Sounding kCues[] = {
    { "Wave", R"([[0, "short"], [0.9, "short"]])" },
    { "Nod", R"([[0.5, "long"]])" },
    { "Read", R"([[0.2, "short"]])" },
    { "ReadReturn", R"([[0.3, "short"]])" },
    { "Doze", R"([[0.5, "short"], [2, "short"]])" },
    { "MoveLeft", R"([[0.1, "long"], [0.7, "short"]])" },
    { "Show", R"([[0.1, "short"]])" },
    { "Hide", R"([[0.5, "long"]])" },
};
constexpr auto kShort = milliseconds(200);
constexpr auto kLong = milliseconds(800);

QByteArray Samples(milliseconds length)
{
    return QByteArray(qsizetype(length.count()) * kSoundRate / 1000 * 2, '\1');
}

std::shared_ptr<const CharacterData> SoundingCharacter()
{
    CharacterSource source = support::SmallCharacterSource();
    for (const Sounding &sounding : kCues) {
        QCborMap motion = source.motions.value(QLatin1String(sounding.motion)).toMap();
        motion.insert(QStringLiteral("sounds"), ReadOrderedJson(sounding.cues));
        source.motions[QLatin1String(sounding.motion)] = motion;
    }
    source.sounds = { { "short", Samples(kShort) }, { "long", Samples(kLong) } };
    return CharacterFromFile(PackCharacter(source));
}

} // namespace

// What is heard of a figure, and what waits for it.
class TestFigureEffects : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_time = std::make_unique<support::FakeTime>();
        m_engine = std::make_unique<support::FakeSpeechEngine>(*m_time);
        m_audio = std::make_unique<support::FakeAudioOut>(*m_time, *m_time);
        m_sounds = std::make_unique<support::FakeSounds>(*m_time);
        MakeFigure(m_sounds.get());
    }
    void cleanup()
    {
        m_figure.reset();
        m_sounds.reset();
        m_audio.reset();
        m_engine.reset();
        m_time.reset();
    }

    void cuesAreToldOnceAndAhead()
    {
        MotionPlayer player(m_character);
        player.Play(*m_character->FindMotion("Wave"));
        auto due = player.TakeCues(0.1);
        QCOMPARE(due.size(), std::size_t(1));
        QCOMPARE(due[0].delay, 0.0);
        QVERIFY(player.TakeCues(0.1).empty());
        player.Advance(0.7);
        QVERIFY(player.TakeCues(0.1).empty());
        player.Advance(0.12);
        due = player.TakeCues(0.1);
        QCOMPARE(due.size(), std::size_t(1));
        QVERIFY(qAbs(due[0].delay - 0.08) < 1e-9);
        player.Advance(1);
        QVERIFY(player.TakeCues(0.1).empty());
    }

    void aLoopTellsItsCuesInEachPass()
    {
        MotionPlayer player(m_character);
        player.Play(*m_character->FindMotion("Doze")); // repeats from 1 to 3
        QList<double> told;
        for (double time = 0; time < 7.05; time += 0.05) {
            for (const auto &due : player.TakeCues(0.1))
                told << time + due.delay;
            player.Advance(0.05);
        }
        const QList<double> wanted{ 0.5, 2, 4, 6 };
        QCOMPARE(told.size(), wanted.size());
        for (qsizetype index = 0; index < told.size(); ++index)
            QVERIFY(qAbs(told[index] - wanted[index]) < 1e-6);
    }

    void whatWasSleptThroughIsNotMadeUpFor()
    {
        MotionPlayer player(m_character);
        player.Play(*m_character->FindMotion("Doze"));
        player.TakeCues(0);
        player.Advance(21.1); // the cue of the tenth pass has just gone by at 20
        QVERIFY(player.TakeCues(0).empty());
        player.Advance(1);
        const auto due = player.TakeCues(0); // 22 was passed a tenth of a second ago
        QCOMPARE(due.size(), std::size_t(1));
        QVERIFY(qAbs(due[0].delay + 0.1) < 1e-6);
    }

    void aHeldMotionTellsNothing()
    {
        MotionPlayer player(m_character);
        player.Play(*m_character->FindMotion("Nod"));
        player.Advance(0.45);
        player.Hold();
        QVERIFY(player.TakeCues(0.2).empty());
    }

    void whatIsOverIsLetGoInALoopToo()
    {
        m_figure->Appear();
        m_figure->Perform("Doze", End());
        m_time->Run(std::chrono::minutes(2));
        QVERIFY(m_sounds->All().size() > 50);
        QVERIFY2(m_sounds->Kept() <= 2, qPrintable(QString::number(m_sounds->Kept())));
    }

    void anEffectIsHeardWhenTheMotionReachesItsCue()
    {
        m_figure->Appear();
        m_figure->Perform("Wave", End());
        m_time->Run(milliseconds(1500));
        const auto all = m_sounds->All();
        QCOMPARE(all.size(), std::size_t(2));
        QVERIFY(Near(all[0].from, milliseconds(0)));
        QVERIFY(Near(all[1].from, milliseconds(900)));
        QVERIFY(!all[0].faded && !all[1].faded);
    }

    void aMotionHasEndedWhenItsSoundHas()
    {
        m_figure->Appear();
        m_figure->Perform("Nod", End()); // 0.8 long, heard from 0.5 to 1.3
        m_time->Run(milliseconds(1280));
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(60));
        QCOMPARE(m_number, 0);
        QCOMPARE(m_ends, 1);
    }

    void aShowHasEndedWhenItsSoundHas()
    {
        m_figure->Appear();
        m_figure->Perform("Show", End());
        m_time->Run(milliseconds(300));
        QCOMPARE(m_sounds->All().size(), std::size_t(1));
        m_time->Run(milliseconds(730));
        QCOMPARE(m_number, 0);
    }

    void aMotionEndsByItsFramesWithoutADevice()
    {
        m_sounds->SetUsable(false);
        m_figure->Appear();
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(840));
        QCOMPARE(m_number, 0);
        QVERIFY(m_sounds->All().empty());
    }

    void aMotionEndsByItsFramesWhenEffectsAreNotWanted()
    {
        m_sounds->SetOn(false);
        m_figure->Appear();
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(840));
        QCOMPARE(m_number, 0);
        QVERIFY(m_sounds->All().empty());
        m_sounds->SetOn(true);
        m_figure->Perform("Wave", End());
        m_time->Run(milliseconds(1300));
        QCOMPARE(m_sounds->All().size(), std::size_t(2));
    }

    void aMotionEndsByItsFramesInAFigureWithoutEffects()
    {
        MakeFigure(nullptr);
        m_figure->Appear();
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(840));
        QCOMPARE(m_number, 0);
    }

    void switchingEffectsOffFadesThemAndFreesWhatWaits()
    {
        m_figure->Appear();
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(900));
        QCOMPARE(m_sounds->Sounding(), 1);
        m_sounds->SetOn(false);
        m_time->Run(milliseconds(80));
        QCOMPARE(m_sounds->Sounding(), 0);
        QCOMPARE(m_number, 0);
    }

    void aDeviceThatNeverEndsIsNotWaitedForLong()
    {
        m_sounds->SetStuck();
        m_figure->Appear();
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(1400));
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(450));
        QCOMPARE(m_number, 0);
    }

    void interruptingFadesTheSound()
    {
        m_figure->Appear();
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(700));
        QCOMPARE(m_sounds->Sounding(), 1);
        m_figure->Halt();
        m_time->Run(support::FakeSounds::kFade);
        QCOMPARE(m_sounds->Sounding(), 0);
        QVERIFY(m_sounds->All()[0].faded);
        QCOMPARE(m_number, kNotEnded);
    }

    void whatWasOnlyAskedForAheadIsNotHeardBehindAnInterruption()
    {
        m_figure->Appear();
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(420)); // asked for, to begin at 500
        QCOMPARE(m_sounds->All().size(), std::size_t(1));
        m_figure->Halt();
        m_time->Run(milliseconds(100));
        QCOMPARE(m_sounds->Sounding(), 0);
    }

    void disappearingFadesTheSound()
    {
        m_figure->Appear();
        m_figure->Perform("Hide", End());
        m_time->Run(milliseconds(700));
        QCOMPARE(m_sounds->Sounding(), 1);
        m_figure->Disappear(false);
        m_time->Run(support::FakeSounds::kFade);
        QCOMPARE(m_sounds->Sounding(), 0);
    }

    void aSleeperIsHeardInEachPassAndStopsWhenHeIsWoken()
    {
        m_figure->Appear();
        m_figure->Perform("Doze", End());
        m_time->Run(milliseconds(6050));
        QCOMPARE(m_sounds->All().size(), std::size_t(4)); // at 0.5, 2, 4 and 6
        QVERIFY(Near(m_sounds->All()[3].from, milliseconds(6000)));
        QCOMPARE(m_sounds->Sounding(), 1);
        m_figure->Halt();
        m_figure->Perform("Acknowledge", End());
        m_time->Run(milliseconds(5000));
        QCOMPARE(m_sounds->All().size(), std::size_t(4));
        QVERIFY(m_sounds->All()[3].faded);
    }

    void anIdlesSoundGoesWithIt()
    {
        m_figure->Appear();
        m_figure->Rest();
        for (int step = 0; step < 6000 && m_sounds->Sounding() == 0; ++step)
            m_time->Run(milliseconds(10));
        QCOMPARE(m_sounds->Sounding(), 1);
        m_figure->Perform("Acknowledge", End());
        m_time->Run(support::FakeSounds::kFade);
        QCOMPARE(m_sounds->Sounding(), 0);
    }

    void speechWaitsForTheSoundOfAMotionThatItInterrupts()
    {
        m_figure->Appear();
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(700));
        m_figure->Speak(SpeechText::Parse("Hello"), false, End());
        bool together = false;
        for (int step = 0; step < 200; ++step) {
            m_time->Run(milliseconds(10));
            together = together || (m_audio->Playing() && m_sounds->Sounding() > 0);
        }
        QVERIFY(!together);
        QCOMPARE(m_audio->Played().size(), std::size_t(1));
        QCOMPARE(m_number, 0);
    }

    void speechBehindAFlightWaitsForTheSoundOfTheFlight()
    {
        m_figure->Appear();
        m_figure->Perform("MoveLeft", End()); // up at 0.4, heard from 0.1 to 0.9
        m_time->Run(milliseconds(460));
        QCOMPARE(m_number, 0); // a flight does not wait for its own sound
        QCOMPARE(m_sounds->Sounding(), 1);
        m_figure->Slide(QPoint(300, 0), milliseconds(200), End());
        m_time->Run(milliseconds(150));
        QCOMPARE(m_sounds->Sounding(), 1); // and takes it along
        m_time->Run(milliseconds(100));
        m_figure->Speak(SpeechText::Parse("Hello"), false, End());
        bool together = false;
        for (int step = 0; step < 200; ++step) {
            m_time->Run(milliseconds(10));
            together = together || (m_audio->Playing() && m_sounds->Sounding() > 0);
        }
        QVERIFY(!together);
        QCOMPARE(m_audio->Played().size(), std::size_t(1));
    }

    void aFlightSoundsAsLongAsItLasts()
    {
        m_figure->Appear();
        m_figure->Perform("MoveLeft", End());
        m_time->Run(milliseconds(460));
        m_figure->Slide(QPoint(900, 0), milliseconds(2000), End());
        m_time->Run(milliseconds(2000));
        // At 0.1, and at 0.7 and every 0.6 seconds from there.
        QCOMPARE(m_sounds->All().size(), std::size_t(5));
        QVERIFY(Near(m_sounds->All()[4].from, milliseconds(2500)));
    }

    void charactersAreHeardOverEachOther()
    {
        auto ticker = std::make_unique<support::FakeTicker>(*m_time);
        PuppetFigure other(m_character, *m_engine, *m_audio, *m_time, m_options, std::move(ticker), 9,
                           m_sounds.get());
        m_figure->Appear();
        other.Appear();
        m_figure->Perform("Nod", End());
        other.Perform("Nod", {});
        m_time->Run(milliseconds(600));
        QCOMPARE(m_sounds->Sounding(), 2);
        other.Halt();
        m_time->Run(milliseconds(40));
        QCOMPARE(m_sounds->Sounding(), 1);
    }

private:
    void MakeFigure(SoundEffects *effects)
    {
        m_figure.reset();
        m_character = SoundingCharacter();
        m_figure = std::make_unique<PuppetFigure>(m_character, *m_engine, *m_audio, *m_time, m_options,
                                                  std::make_unique<support::FakeTicker>(*m_time), 7, effects);
        m_number = kNotEnded;
        m_ends = 0;
    }
    Figure::Done End()
    {
        m_number = kNotEnded;
        return [this](qint32 number) {
            m_number = number;
            ++m_ends;
        };
    }
    static bool Near(milliseconds time, milliseconds wanted)
    {
        return std::chrono::abs(time - wanted) <= kNear;
    }

    support::FakeOptionsStore m_store;
    OptionsKeeper m_options{ m_store };
    std::unique_ptr<support::FakeTime> m_time;
    std::unique_ptr<support::FakeSpeechEngine> m_engine;
    std::unique_ptr<support::FakeAudioOut> m_audio;
    std::unique_ptr<support::FakeSounds> m_sounds;
    std::shared_ptr<const CharacterData> m_character;
    std::unique_ptr<PuppetFigure> m_figure;
    qint32 m_number = kNotEnded;
    int m_ends = 0;
};

QTEST_MAIN(TestFigureEffects)
#include "TestFigureEffects.moc"
