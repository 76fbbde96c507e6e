#include "FigureFixture.h"

#include "platform/Error.h"
#include "support/KeptLog.h"

#include <QRegularExpression>

using namespace platform;

// How a figure speaks: voice, mouth and balloon.
class TestFigureSpeech : public FigureFixture {
    Q_OBJECT

private slots:
    void init() { MakeFigure(); }
    void cleanup() { DropFigure(); }

    void aLineIsHeardSeenAndShown()
    {
        const support::KeptLog mouths("tumblewick.mouth", support::KeptLog::Of::Traces);
        m_figure->SetFrame(QRect(300, 300, 256, 256));
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Hello \\map=\"kat\"=\"***\"\\ & <b>"), true, End());
        QVERIFY(!m_figure->BalloonVisible());
        m_time->Run(milliseconds(140)); // made, and the first word begun
        QVERIFY(m_audio->Playing());
        QVERIFY(m_figure->BalloonVisible());
        QCOMPARE(BalloonText(), QStringLiteral("Hello"));
        m_time->Run(milliseconds(60));
        QCOMPARE(int(m_figure->Player().Shown().swaps[5]), int(Mouth::AA));
        m_time->Run(milliseconds(240));
        QCOMPARE(BalloonText(), QStringLiteral("Hello ***"));
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(400));
        QCOMPARE(m_number, 0);
        QVERIFY(!m_audio->Playing());
        QCOMPARE(BalloonText(), QStringLiteral("Hello *** & <b>"));
        m_time->Run(milliseconds(1000));
        QCOMPARE(int(m_figure->Player().Shown().swaps[5]), int(Mouth::Rest));
        QVERIFY(m_figure->BalloonVisible());
        m_time->Run(milliseconds(600));
        QVERIFY(!m_figure->BalloonVisible());
        QCOMPARE(m_ends, 1);
        QVERIFY(mouths.lines.size() >= 5);
        QCOMPARE(mouths.lines.first(), QStringLiteral("mouth: Merlin Rest 0"));
        for (const QString &line : mouths.lines)
            QVERIFY2(QRegularExpression("^mouth: Merlin (Rest|AA) \\d+$").match(line).hasMatch(),
                     qPrintable(line));
        QVERIFY(mouths.lines.last().startsWith("mouth: Merlin Rest "));
    }

    void theMouthLogIsOffByDefault()
    {
        const support::KeptLog mouths("tumblewick.mouth");
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Hello"), true, End());
        m_time->Run(milliseconds(2000));
        QVERIFY(mouths.lines.isEmpty());
        QCOMPARE(m_number, 0);
    }

    void aLineWithoutBalloonShowsNone()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Hello there"), true, End());
        m_time->Run(milliseconds(900));
        QCOMPARE(m_number, 0);
        QVERIFY(m_figure->BalloonVisible());
        m_figure->Speak(SpeechText::Parse("spell it"), false, End());
        for (int count = 0; count < 40; ++count) {
            m_time->Run(milliseconds(50));
            if (m_audio->Playing())
                QVERIFY(!m_figure->BalloonVisible());
        }
        QCOMPARE(m_ends, 2);
    }

    void theNextLineCancelsTheEndOfTheBalloon()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("One"), true, End());
        m_time->Run(milliseconds(400));
        QCOMPARE(m_ends, 1);
        m_time->Run(milliseconds(1300));
        m_figure->Speak(SpeechText::Parse("This is a long line that takes its time to be said"), true, End());
        for (int count = 0; count < 30; ++count) {
            m_time->Run(milliseconds(50));
            QVERIFY(m_figure->BalloonVisible());
        }
        QVERIFY(BalloonText().startsWith("This is"));
    }

    void withTheVoiceOffALineIsShownWordByWordAndNotHeard()
    {
        Choose([](ServiceOptions &options) { options.voice = false; });
        m_engine->SetUsable(false);
        m_audio->SetUsable(false);
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Good morning, \\map=\"kat\"=\"***\"\\!"), true, End());
        m_time->Run(milliseconds(100));
        QCOMPARE(BalloonText(), QStringLiteral("Good"));
        QCOMPARE(m_number, kNotEnded);
        QStringList seen;
        while (m_number == kNotEnded && m_time->Elapsed() < milliseconds(10000)) {
            if (seen.isEmpty() || seen.last() != BalloonText())
                seen << BalloonText();
            m_time->Run(milliseconds(20));
            QCOMPARE(int(m_figure->Player().Shown().swaps[5]), int(Mouth::Rest));
        }
        QCOMPARE(seen, (QStringList{ "Good", "Good morning,", "Good morning, ***!" }));
        QCOMPARE(m_number, 0);
        QCOMPARE(m_ends, 1);
        QVERIFY(m_engine->Ordered().isEmpty());
        QVERIFY(m_audio->Played().empty());
        QVERIFY(m_time->Elapsed() > milliseconds(900) && m_time->Elapsed() < milliseconds(3000));
        m_time->Run(milliseconds(1600));
        QVERIFY(!m_figure->BalloonVisible());
    }

    void aSilentLineWithoutBalloonEndsAsWell()
    {
        Choose([](ServiceOptions &options) { options.voice = false; });
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("spell it"), false, End());
        for (int count = 0; count < 100 && m_number == kNotEnded; ++count) {
            m_time->Run(milliseconds(20));
            QVERIFY(!m_figure->BalloonVisible());
        }
        QCOMPARE(m_number, 0);
    }

    void theVoiceSwitchedOffFallsSilentAtOnceAndTheLineGoesOn()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("One two three four five six"), true, End());
        m_time->Run(milliseconds(400));
        QVERIFY(m_audio->Playing());
        const QString before = BalloonText();
        Choose([](ServiceOptions &options) { options.voice = false; });
        QVERIFY(!m_audio->Playing());
        QVERIFY(BalloonText().startsWith(before));
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(200));
        QCOMPARE(int(m_figure->Player().Shown().swaps[5]), int(Mouth::Rest));
        while (m_number == kNotEnded && m_time->Elapsed() < milliseconds(10000))
            m_time->Run(milliseconds(20));
        QCOMPARE(m_number, 0);
        QCOMPARE(BalloonText(), QStringLiteral("One two three four five six"));
        Choose([](ServiceOptions &options) { options.voice = true; });
        m_figure->Speak(SpeechText::Parse("Again"), true, End());
        m_time->Run(milliseconds(140));
        QVERIFY(m_audio->Playing());
    }

    void theVoiceSwitchedOffWhileALineIsMadeStillShowsIt()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("One two"), true, End());
        Choose([](ServiceOptions &options) { options.voice = false; });
        m_time->Run(milliseconds(4000));
        QCOMPARE(m_number, 0);
        QCOMPARE(m_ends, 1);
        QVERIFY(m_audio->Played().empty());
    }

    void aStoppedSilentLineTellsNothing()
    {
        Choose([](ServiceOptions &options) { options.voice = false; });
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("One two three"), true, End());
        m_time->Run(milliseconds(400));
        QVERIFY(m_figure->BalloonVisible());
        m_figure->Halt();
        QVERIFY(!m_figure->BalloonVisible());
        m_time->Run(milliseconds(9000));
        QCOMPARE(m_ends, 0);
    }

    void balloonsSwitchedOffAreNeverSeen()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("One two three four five six"), true, End());
        m_time->Run(milliseconds(400));
        QVERIFY(m_figure->BalloonVisible());
        Choose([](ServiceOptions &options) { options.balloons = false; });
        QVERIFY(!m_figure->BalloonVisible());
        QVERIFY(m_audio->Playing());
        for (int count = 0; count < 200 && m_number == kNotEnded; ++count) {
            m_time->Run(milliseconds(20));
            QVERIFY(!m_figure->BalloonVisible());
        }
        QCOMPARE(m_number, 0);
        m_number = kNotEnded;
        m_figure->Speak(SpeechText::Parse("One two three"), true, End());
        for (int count = 0; count < 200 && m_number == kNotEnded; ++count) {
            m_time->Run(milliseconds(20));
            QVERIFY(!m_figure->BalloonVisible());
        }
        QCOMPARE(m_number, 0);
        QCOMPARE(m_audio->Played().size(), std::size_t(2));
        Choose([](ServiceOptions &options) { options.balloons = true; });
        m_figure->Speak(SpeechText::Parse("Back"), true, End());
        m_time->Run(milliseconds(140));
        QVERIFY(m_figure->BalloonVisible());
    }

    void theUsersTextSizeHoldsForABalloonThatIsSeen()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("One two three four five six"), true, End());
        m_time->Run(milliseconds(400));
        const QString before = BalloonText();
        QVERIFY(!before.isEmpty());
        const int height = Balloon()->Bubble().height();
        QCOMPARE(Balloon()->font().pixelSize(), 20);
        Choose([](ServiceOptions &options) { options.balloonTextSize = 32; });
        QCOMPARE(Balloon()->font().pixelSize(), 32);
        QCOMPARE(BalloonText(), before);
        QVERIFY(Balloon()->Bubble().height() > height + 8);
    }

    void theUsersVoiceReachesTheEngine()
    {
        Choose([](ServiceOptions &options) { options.SetVoiceOf("Merlin", { "cmu_us_slt", -2 }); });
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("One"), true, End());
        QCOMPARE(m_engine->LastSettings().voice, QStringLiteral("cmu_us_slt"));
        // A voice that this machine lacks is no reason to be dumb.
        m_time->Run(milliseconds(2000));
        Choose([](ServiceOptions &options) { options.SetVoiceOf("Merlin", { "gone", 0 }); });
        m_figure->Speak(SpeechText::Parse("One"), true, End());
        QCOMPARE(m_engine->LastSettings().voice, m_character->voice.voice);
    }

    void whoGoesTakesHisBalloonAlongAndIsNotInTheWay()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("One two"), true, End());
        while (m_number == kNotEnded)
            m_time->Run(milliseconds(50));
        QVERIFY(m_figure->BalloonVisible());
        const auto &window = static_cast<const StageWindow &>(m_figure->Window());
        QVERIFY(window.IsTouchable());
        m_figure->Perform("hide", End());
        QVERIFY(!m_figure->BalloonVisible());
        QVERIFY(!window.IsTouchable());
        // Who is called back before he has gone can be pressed again.
        m_figure->Halt();
        QVERIFY(window.IsTouchable());
        m_figure->Perform("Hide", End());
        m_time->Run(milliseconds(3000));
        m_figure->Disappear(false);
        m_figure->Appear();
        QVERIFY(window.IsTouchable());
    }

    void aHiddenBalloonStaysHiddenForItsLine()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("One two three four five six"), true, End());
        m_time->Run(milliseconds(400));
        QVERIFY(m_figure->BalloonVisible());
        m_figure->HideBalloon();
        for (int count = 0; count < 20; ++count) {
            m_time->Run(milliseconds(50));
            QVERIFY(!m_figure->BalloonVisible());
        }
        m_time->Run(milliseconds(1000));
        QCOMPARE(m_number, 0);
    }

    void whatCannotBeHeardFailsWithoutBalloon_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<qint32>("number");
        QTest::newRow("no engine") << "engine" << qint32(kSpeechEngineUnusable);
        QTest::newRow("no device") << "device" << qint32(kAudioDeviceUnusable);
        QTest::newRow("the device goes before the sound") << "late" << qint32(kAudioDeviceUnusable);
        QTest::newRow("the device goes on the way") << "way" << qint32(kAudioDeviceUnusable);
    }
    void whatCannotBeHeardFailsWithoutBalloon()
    {
        QFETCH(QString, fault);
        QFETCH(qint32, number);
        m_figure->Appear();
        m_engine->SetUsable(fault != "engine");
        m_audio->SetUsable(fault != "device");
        if (fault == "way")
            m_audio->FailAfter(milliseconds(200));
        m_figure->Speak(SpeechText::Parse("Hello there, children"), true, End());
        if (fault == "late")
            m_audio->SetUsable(false);
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(600));
        QCOMPARE(m_number, number);
        QVERIFY(!m_figure->BalloonVisible());
        QVERIFY(!m_audio->Playing());
        m_time->Run(milliseconds(3000));
        QCOMPARE(m_ends, 1);
    }

    void heComesBackToRestBeforeHeSpeaks()
    {
        m_figure->Appear();
        m_figure->Perform("Acknowledge", End()); // nobody can speak from its last pose
        m_time->Run(milliseconds(900));
        m_figure->Speak(SpeechText::Parse("Hello"), true, End());
        m_time->Run(milliseconds(250));
        QVERIFY(!m_audio->Playing());
        m_time->Run(milliseconds(150));
        QVERIFY(m_audio->Playing());
        QVERIFY(!m_figure->Player().Current());
    }

    void heSpeaksFromAPoseThatAllowsIt()
    {
        m_figure->Appear();
        m_figure->Perform("Wave", End());
        m_time->Run(milliseconds(1300));
        m_figure->Speak(SpeechText::Parse("Hello there"), true, End());
        m_time->Run(milliseconds(100));
        QVERIFY(m_audio->Playing());
        QCOMPARE(m_figure->Player().Shown().At(6, Change::Turn), -90.0);
    }

    void aHaltSilencesHim()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Hello there, children"), true, End());
        m_time->Run(milliseconds(400));
        m_figure->Halt();
        QVERIFY(!m_audio->Playing());
        QVERIFY(!m_figure->BalloonVisible());
        m_time->Run(milliseconds(200));
        QCOMPARE(int(m_figure->Player().Shown().swaps[5]), int(Mouth::Rest));
        m_time->Run(milliseconds(5000));
        QCOMPARE(m_ends, 0);
    }

    void aHaltBeforeTheSoundSilencesHimToo()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Hello there"), true, End());
        m_figure->Halt();
        m_time->Run(milliseconds(3000));
        QVERIFY(m_audio->Played().empty());
        QCOMPARE(m_ends, 0);
    }

    void goingMeansSilence()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Hello there"), true, End());
        m_time->Run(milliseconds(300));
        m_figure->Disappear(false);
        QVERIFY(!m_audio->Playing());
        QVERIFY(!m_figure->BalloonVisible());
        QCOMPARE(m_ticker->Rate(), 0);
        m_time->Run(milliseconds(3000));
        QCOMPARE(m_ends, 0);
    }

    void destructionTellsNobody()
    {
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Hello there"), true, End());
        m_time->Run(milliseconds(300));
        m_figure.reset();
        QVERIFY(!m_audio->Playing());
        m_time->Run(milliseconds(3000));
        QCOMPARE(m_ends, 0);
    }

    void aBookStaysOpenWhileItIsSharedOrTalkedFrom()
    {
        m_figure->Appear();
        m_figure->Perform("Read", End());
        m_time->Run(milliseconds(1100));
        m_figure->Rest(); // the queue is empty for a moment
        m_time->Run(milliseconds(30));
        m_figure->Speak(SpeechText::Parse("Once upon a time"), true, End());
        for (int count = 0; count < 15; ++count) {
            m_time->Run(milliseconds(50));
            QVERIFY(Prop() > 0.99);
        }
        QVERIFY(m_audio->Playing());
    }

    void anIdleNeverDelaysASpeech()
    {
        m_figure->Appear();
        m_figure->Rest();
        while (!m_figure->Player().Current())
            m_time->Run(milliseconds(20));
        m_figure->Speak(SpeechText::Parse("Hello"), true, End());
        m_time->Run(milliseconds(80));
        QVERIFY(m_audio->Playing());
        QVERIFY(!m_figure->Player().Current()); // nor does it go on under the words
    }

    void heSettlesBeforeHeSpeaksWhenAMotionWasCutOff()
    {
        m_figure->Appear();
        m_figure->Perform("Wave", End()); // whose last pose may be spoken from
        m_time->Run(milliseconds(300));
        m_figure->Halt();
        m_figure->Speak(SpeechText::Parse("Hello there"), true, End());
        m_time->Run(milliseconds(250));
        QVERIFY(!m_audio->Playing());
        m_time->Run(milliseconds(150));
        QVERIFY(m_audio->Playing());
        QVERIFY(std::abs(m_figure->Player().Shown().At(6, Change::Turn)) < 0.01);
    }

    void hisHeadMovesWithTheStressedWords()
    {
        m_figure->Appear();
        const auto farthest = [this](const QString &line) {
            double most = 0;
            m_figure->Speak(SpeechText::Parse(line), true, End());
            for (int count = 0; count < 60; ++count) {
                m_time->Run(milliseconds(20));
                most = std::max(most, m_figure->Player().Shown().At(3, Change::Turn));
            }
            return most;
        };
        QVERIFY(farthest("You are right") < 0.01);
        QVERIFY(farthest("You \\emp\\are right") > 3);
    }

    void theTextSizeHoldsForTheFirstBalloonToo()
    {
        Choose([](ServiceOptions &options) { options.balloonTextSize = 28; });
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Hello there"), true, End());
        m_time->Run(milliseconds(200));
        QVERIFY(Balloon());
        QCOMPARE(Balloon()->font().pixelSize(), 28);
    }

    void aSilentLineKeepsToTheSpeakingRate()
    {
        m_figure->Appear();
        const auto timeAt = [this](int rate) {
            Choose([rate](ServiceOptions &options) {
                options.voice = false;
                options.speakingRate = rate;
            });
            m_number = kNotEnded;
            const auto began = m_time->Elapsed();
            m_figure->Speak(SpeechText::Parse("Once upon a time there was a king"), true, End());
            while (m_number == kNotEnded && m_time->Elapsed() < began + milliseconds(60000))
                m_time->Run(milliseconds(20));
            return double((m_time->Elapsed() - began).count());
        };
        const double usual = timeAt(0);
        QVERIFY(std::abs(timeAt(5) / usual - 1 / RateFactor(5)) < 0.05);
        QVERIFY(std::abs(timeAt(-5) / usual - 1 / RateFactor(-5)) < 0.05);
    }

    void aBalloonLeavesTheFacesFreeThatAreSeenNow()
    {
        PuppetFigure other(m_character, *m_engine, *m_audio, *m_time, *m_options,
                           std::make_unique<support::FakeTicker>(*m_time), 9);
        m_figure->SetFrame(QRect(40, 20, 256, 256));
        m_figure->Appear();
        const auto bubbleOf = [this](const char *line) {
            m_figure->Speak(SpeechText::Parse(QLatin1String(line)), true, End());
            m_time->Run(milliseconds(200));
            const QRect bubble = Balloon() ? Balloon()->Bubble() : QRect();
            m_time->Run(milliseconds(4000));
            return bubble;
        };
        const QRect alone = bubbleOf("Hello there");
        other.SetFrame(QRect(200, 20, 256, 256));
        const QRect face = m_character->face.translated(200, 20).toAlignedRect();
        QVERIFY2(alone.intersects(face), qPrintable(QDebug::toString(alone)));
        QCOMPARE(bubbleOf("Hello there"), alone); // whom nobody sees is in nobody's way
        other.Appear();
        const QRect together = bubbleOf("Hello there");
        QVERIFY2(together.isValid() && !together.intersects(face), qPrintable(QDebug::toString(together)));
    }

    void whatHasBeenSaidGivesWayToTheNextSpeaker()
    {
        PuppetFigure other(m_character, *m_engine, *m_audio, *m_time, *m_options,
                           std::make_unique<support::FakeTicker>(*m_time), 9);
        m_figure->SetFrame(QRect(250, 300, 256, 256));
        other.SetFrame(QRect(290, 300, 256, 256));
        m_figure->Appear();
        other.Appear();
        m_figure->Speak(SpeechText::Parse("One two three"), true, End());
        m_time->Run(milliseconds(900));
        QCOMPARE(m_number, 0);
        QVERIFY(m_figure->BalloonVisible());
        other.Speak(SpeechText::Parse("Four five six"), true, [](qint32) {});
        m_time->Run(milliseconds(300));
        QVERIFY(other.BalloonVisible());
        QVERIFY(!m_figure->BalloonVisible());
    }

    void aClickHidesTheBalloonOfOneWhoIsSilent()
    {
        m_figure->SetFrame(QRect(300, 300, 128, 128));
        m_figure->Appear();
        m_figure->Speak(SpeechText::Parse("Hello there"), true, End());
        m_time->Run(milliseconds(300));
        Mouse(QEvent::MouseButtonPress, QPoint(360, 360), Qt::LeftButton);
        Mouse(QEvent::MouseButtonRelease, QPoint(360, 360), Qt::LeftButton);
        QVERIFY(m_figure->BalloonVisible());
        m_time->Run(milliseconds(700));
        QCOMPARE(m_number, 0);
        QVERIFY(m_figure->BalloonVisible());
        Mouse(QEvent::MouseButtonPress, QPoint(360, 360), Qt::LeftButton);
        QVERIFY(!m_figure->BalloonVisible());
    }
};

QTEST_MAIN(TestFigureSpeech)
#include "TestFigureSpeech.moc"
