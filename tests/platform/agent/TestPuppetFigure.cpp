#include "FigureFixture.h"

#include "platform/Error.h"
#include "platform/agent/PuppetFigureMaker.h"
#include "platform/forms/OnTop.h"

#include <QTemporaryDir>

#include <set>

using namespace platform;

// How a figure moves and idles.
class TestPuppetFigure : public FigureFixture {
    Q_OBJECT

private slots:
    void init() { MakeFigure(); }
    void cleanup() { DropFigure(); }

    void aFigureTellsWhatItHidesWhileItIsSeen()
    {
        QVERIFY(OnTop::Areas().empty());
        m_figure->SetFrame(QRect(300, 200, 256, 256));
        m_figure->Appear();
        QCOMPARE(OnTop::Areas().size(), std::size_t(1));
        const QRect body = OnTop::Areas().front();
        // The robe and the hat, and not the air round them.
        QVERIFY2(m_figure->Frame().contains(body), qPrintable(QDebug::toString(body)));
        QVERIFY(body.width() > 60 && body.height() > 120);
        m_figure->Disappear(false);
        QVERIFY(OnTop::Areas().empty());
    }

    void aNewFigureIsHiddenAtTheUpperLeftCorner()
    {
        QCOMPARE(m_figure->Frame(), QRect(0, 0, 128, 128));
        QVERIFY(!m_figure->Window().isVisible());
        QCOMPARE(m_ticker->Rate(), 0);
        QVERIFY(m_figure->HasMotion("wAvE"));
        QVERIFY(!m_figure->HasMotion("Juggle"));
    }

    void theWindowFollowsTheFrame()
    {
        m_figure->SetFrame(QRect(-40, 90, 256, 256));
        m_figure->Appear();
        QVERIFY(m_figure->Window().isVisible());
        QCOMPARE(m_figure->Window().geometry(), QRect(-40, 90, 256, 256));
        QCOMPARE(m_figure->Picture().size(), QSize(256, 256));
        m_figure->SetFrame(QRect(10, 20, 64, 64));
        QCOMPARE(m_figure->Window().geometry(), QRect(10, 20, 64, 64));
        QCOMPARE(m_figure->Picture().size(), QSize(64, 64));
        m_figure->Disappear(false);
        QVERIFY(!m_figure->Window().isVisible());
    }

    void theWindowIsOfTheRightKind()
    {
        const CharacterWindow &window = m_figure->Window();
        QCOMPARE(window.windowType(), Qt::ToolTip);
        QVERIFY(window.windowFlags() & Qt::FramelessWindowHint);
        QVERIFY(window.testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(window.testAttribute(Qt::WA_ShowWithoutActivating));
        QVERIFY(!window.testAttribute(Qt::WA_QuitOnClose));
        QCOMPARE(window.accessibleName(), QStringLiteral("Merlin"));
    }

    void appearingShowsTheRestPoseAtOnce()
    {
        m_figure->Appear();
        QVERIFY(Inked() > 1000);
        m_figure->Perform("Wave", End()); // whose last pose is held
        m_time->Run(milliseconds(1500));
        m_figure->Disappear(false);
        m_figure->Appear();
        QCOMPARE(m_figure->Player().Shown().At(6, Change::Turn), 0.0);
        QVERIFY(!m_figure->Player().Current());
    }

    void showBeginsUnseen()
    {
        m_figure->Appear();
        QVERIFY(QTest::qWaitForWindowExposed(&m_figure->Window()));
        m_figure->Perform("Show", End());
        QCOMPARE(Inked(), 0);
        m_time->Run(milliseconds(500));
        QVERIFY(Inked() > 1000);
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(700));
        QCOMPARE(m_number, 0);
    }

    void aMotionEndsOnceAndFromTheLoop()
    {
        m_figure->Appear();
        m_figure->Perform("wave", End());
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(1100));
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(200));
        QCOMPARE(m_number, 0);
        m_time->Run(milliseconds(60000));
        QCOMPARE(m_ends, 1);
    }

    void anUnknownMotionFails()
    {
        m_figure->Appear();
        m_figure->Perform("Juggle", End());
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(20));
        QCOMPARE(m_number, qint32(kNoSuchAnimation));
    }

    void theBodyComesBackBeforeTheNextMotion_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<int>("longest"); // ms from the call to the end of the second
        QTest::newRow("ends at rest") << "Nod"
                                      << "Nod" << 900;
        QTest::newRow("blends back") << "Wave"
                                     << "Nod" << 900 + 350 + 40;
        QTest::newRow("has a return") << "Read"
                                      << "Nod" << 900 + 600 + 40;
        QTest::newRow("is the return") << "Read"
                                       << "ReadReturn" << 700;
        QTest::newRow("shares the return") << "Read"
                                           << "ReadContinued" << 1100;
        QTest::newRow("was flying") << "MoveLeft"
                                    << "Nod" << 900 + 350 + 40;
    }
    void theBodyComesBackBeforeTheNextMotion()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(int, longest);
        m_figure->Appear();
        m_figure->Perform(first, End());
        m_time->Run(milliseconds(1500));
        QCOMPARE(m_number, 0);
        m_number = kNotEnded;
        m_figure->Perform(second, End());
        m_time->Run(milliseconds(longest - 160));
        QCOMPARE(m_number, kNotEnded);
        m_time->Run(milliseconds(160));
        QCOMPARE(m_number, 0);
    }

    void aLoopGoesOnUntilItIsHalted()
    {
        m_figure->Appear();
        m_figure->Perform("Doze", End());
        m_time->Run(milliseconds(60000));
        QCOMPARE(m_number, kNotEnded);
        m_figure->Halt();
        m_figure->Rest();
        m_time->Run(milliseconds(500));
        QCOMPARE(m_number, kNotEnded);
        QVERIFY(std::abs(m_figure->Player().Shown().At(3, Change::Turn)) < 0.01);
    }

    void afterAHaltNothingIsToldAndTheNextBegins()
    {
        m_figure->Appear();
        m_figure->Perform("Wave", End());
        m_time->Run(milliseconds(300));
        m_figure->Halt();
        m_time->Run(milliseconds(5000));
        QCOMPARE(m_ends, 0);
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(1400));
        QCOMPARE(m_ends, 1);
    }

    void aMotionThatEndsAtRestIsLeftAtOnceWhenItIsCutOff()
    {
        m_figure->Appear();
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(400));
        m_figure->Halt();
        m_figure->Perform("Nod", End()); // blends from where he is; what has a return would return first
        m_time->Run(milliseconds(860));
        QCOMPARE(m_number, 0);
    }

    void anEndOnItsWayIsNotToldAfterAHalt()
    {
        m_figure->Appear();
        m_figure->Perform("Juggle", End()); // its end is on its way at once
        m_figure->Halt();
        m_time->Run(milliseconds(100));
        QCOMPARE(m_ends, 0);
    }

    void aSlideArrivesAtItsTimeAndPlace_data()
    {
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<int>("time");
        QTest::newRow("right") << QPoint(500, 100) << 1000;
        QTest::newRow("off the screen") << QPoint(-90, -60) << 1000;
        QTest::newRow("where he is") << QPoint(100, 100) << 1000;
        QTest::newRow("in no time") << QPoint(300, 200) << 0;
    }
    void aSlideArrivesAtItsTimeAndPlace()
    {
        QFETCH(QPoint, to);
        QFETCH(int, time);
        m_figure->SetFrame(QRect(100, 100, 128, 128));
        m_figure->Appear();
        m_figure->Perform("MoveLeft", End());
        m_time->Run(milliseconds(450));
        QCOMPARE(m_number, 0);
        m_number = kNotEnded;
        m_figure->Slide(to, milliseconds(time), End());
        m_time->Run(milliseconds(time / 2));
        if (time > 0) {
            const QPoint middle = (QPoint(100, 100) + to) / 2;
            QVERIFY((m_figure->Frame().topLeft() - middle).manhattanLength() < 20);
            QCOMPARE(m_figure->Window().pos(), m_figure->Frame().topLeft());
            QCOMPARE(m_number, kNotEnded);
        }
        m_time->Run(milliseconds(time / 2 + 40));
        QCOMPARE(m_number, 0);
        QCOMPARE(m_figure->Frame(), QRect(to, QSize(128, 128)));
        QCOMPARE(m_figure->Window().pos(), to);
    }

    // On a busy machine time goes by between two looks at the clock.
    void aSlideArrivesAtItsPlaceHoweverBusyTheMachineIs()
    {
        class BusyTicker : public support::FakeTicker {
        public:
            using FakeTicker::FakeTicker;
            double Now() const override { return FakeTicker::Now() + 0.03 * ++m_looks; }

        private:
            mutable int m_looks = 0;
        };
        PuppetFigure figure(m_character, *m_engine, *m_audio, *m_time, *m_options,
                            std::make_unique<BusyTicker>(*m_time), 7);
        figure.Appear();
        figure.Perform("MoveLeft", {});
        m_time->Run(milliseconds(450));
        for (int time = 1000; time < 1100; time += 10) {
            const QPoint to(900 - figure.Frame().left(), time);
            m_number = kNotEnded;
            figure.Slide(to, milliseconds(time), End());
            m_time->Run(milliseconds(time));
            QCOMPARE(m_number, 0);
            QCOMPARE(figure.Frame().topLeft(), to);
        }
    }

    void wingsMoveInFlight()
    {
        m_figure->Appear();
        m_figure->Perform("MoveLeft", End());
        m_time->Run(milliseconds(450));
        m_figure->Slide(QPoint(600, 0), milliseconds(2000), End());
        std::set<int> turns;
        for (int count = 0; count < 30; ++count) {
            m_time->Run(milliseconds(50));
            turns.insert(int(m_figure->Player().Shown().At(1, Change::Turn) * 10));
        }
        QVERIFY(turns.size() > 8);
    }

    void aHaltedSlideStaysWhereItIs()
    {
        m_figure->Appear();
        m_figure->Perform("MoveLeft", End());
        m_time->Run(milliseconds(450));
        m_figure->Slide(QPoint(600, 0), milliseconds(1000), End());
        m_time->Run(milliseconds(500));
        m_figure->Halt();
        const QRect frame = m_figure->Frame();
        QVERIFY(frame.left() > 200 && frame.left() < 400);
        m_time->Run(milliseconds(2000));
        QCOMPARE(m_figure->Frame(), frame);
        QCOMPARE(m_ends, 1); // the flight's beginning
    }

    void afterAFlightHeSettlesAtOnce()
    {
        m_figure->Appear();
        m_figure->Perform("MoveLeft", End());
        m_time->Run(milliseconds(450));
        m_figure->Slide(QPoint(60, 0), milliseconds(100), End());
        m_time->Run(milliseconds(140));
        m_figure->Rest();
        m_time->Run(milliseconds(420));
        QVERIFY(std::abs(m_figure->Player().Shown().At(1, Change::Turn)) < 0.01);
    }

    void settlingDelaysNothing()
    {
        m_figure->Appear();
        m_figure->Perform("Read", End());
        m_time->Run(milliseconds(1100));
        m_figure->Rest();
        m_time->Run(milliseconds(400)); // the book is being closed
        m_number = kNotEnded;
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(850));
        QCOMPARE(m_number, 0);
        QVERIFY(Prop() < 0.01);
    }

    void whatNobodySeesIsNotDrawn()
    {
        m_figure->Appear();
        QVERIFY(QTest::qWaitForWindowExposed(&m_figure->Window()));
        m_figure->Perform("Wave", End());
        const qint64 before = m_figure->Picture().cacheKey();
        m_time->Run(milliseconds(300));
        QVERIFY(m_figure->Picture().cacheKey() != before);
        m_figure->Window().windowHandle()->setVisible(false);
        QTRY_VERIFY(!m_figure->Window().windowHandle()->isExposed());
        const qint64 unseen = m_figure->Picture().cacheKey();
        m_time->Run(milliseconds(300));
        QCOMPARE(m_figure->Picture().cacheKey(), unseen);
    }

    void framesComeAsOftenAsTheyAreNeeded()
    {
        m_figure->Appear();
        m_time->Run(milliseconds(1000));
        QCOMPARE(m_ticker->Rate(), 20);
        m_figure->Perform("Wave", End());
        QCOMPARE(m_ticker->Rate(), 60);
        m_time->Run(milliseconds(3000));
        QCOMPARE(m_ticker->Rate(), 20);
        m_figure->Disappear(false);
        QCOMPARE(m_ticker->Rate(), 0);
    }

    void heIdlesByHimselfAndBlinks()
    {
        m_figure->Appear();
        m_figure->Rest();
        int idles = 0;
        int blinks = 0;
        bool wasIdle = false;
        bool wasShut = false;
        int first = 0;
        for (int time = 0; time < 60000; time += 50) {
            m_time->Run(milliseconds(50));
            const Motion *motion = m_figure->Player().Current();
            const bool idle = motion && !m_figure->Player().HasEnded();
            if (idle && !wasIdle) {
                ++idles;
                first = first == 0 ? time : first;
            }
            wasIdle = idle;
            const bool shut = m_figure->Player().Shown().swaps[4] == 1;
            blinks += shut && !wasShut;
            wasShut = shut;
        }
        QVERIFY2(first >= 9900 && first < 10500, qPrintable(QString::number(first)));
        QVERIFY2(idles >= 5 && idles <= 13, qPrintable(QString::number(idles)));
        QVERIFY2(blinks >= 9 && blinks <= 30, qPrintable(QString::number(blinks)));
        QCOMPARE(m_ends, 0);
    }

    void heFallsAsleepAndWakesAtOnce()
    {
        m_figure->Appear();
        m_figure->Rest();
        const auto sleeps = [this] {
            const Motion *motion = m_figure->Player().Current();
            return motion && motion->name == QLatin1String("Doze");
        };
        int time = 0;
        for (; time < 120000 && !sleeps(); time += 100)
            m_time->Run(milliseconds(100));
        // Two periods of half a minute behind the first ten seconds, and at most one pause more.
        QVERIFY2(sleeps() && time > 69000 && time < 80000, qPrintable(QString::number(time)));
        m_time->Run(milliseconds(2000));
        QVERIFY(sleeps());
        m_figure->Perform("Nod", End());
        m_time->Run(milliseconds(860));
        QCOMPARE(m_number, 0); // no return of the sleep came before it
    }

    void aSleeperWakesByHimselfAfterAWhile()
    {
        m_figure->Appear();
        m_figure->Rest();
        const auto sleeps = [this] {
            const Motion *motion = m_figure->Player().Current();
            return motion && motion->name == QLatin1String("Doze");
        };
        while (!sleeps() && m_time->Elapsed() < milliseconds(120000))
            m_time->Run(milliseconds(100));
        QVERIFY(sleeps());
        const auto began = m_time->Elapsed();
        while (sleeps() && m_time->Elapsed() < began + milliseconds(60000))
            m_time->Run(milliseconds(100));
        const auto slept = int((m_time->Elapsed() - began).count());
        QVERIFY2(slept > 20000 && slept < 30000, qPrintable(QString::number(slept)));
        m_time->Run(milliseconds(500));
        QVERIFY(std::abs(m_figure->Player().Shown().At(3, Change::Turn)) < 0.01);
    }

    void noIdleComesTwiceInARow()
    {
        IdleLife life(*m_character, 5);
        QString before;
        for (int count = 0; count < 60; ++count) {
            const Motion *motion = nullptr;
            while (!motion)
                motion = life.MotionDue(0.1);
            if (motion->name == QLatin1String("Doze"))
                break;
            QVERIFY2(motion->name != before, qPrintable(before));
            before = motion->name;
        }
        QVERIFY(!before.isEmpty());
        for (std::size_t was = 0; was < 4; ++was) {
            std::set<std::size_t> drawn;
            for (int count = 0; count < 100; ++count)
                drawn.insert(life.Another(4, was));
            QCOMPARE(drawn.size(), std::size_t(3));
            QVERIFY(drawn.count(was) == 0 && *drawn.rbegin() < 4);
        }
    }

    void betweenTwoIdlesHeStandsAtRest()
    {
        m_figure->Appear();
        m_figure->Rest();
        bool waved = false;
        int still = 0;
        for (int time = 0; time < 68000; time += 50) {
            m_time->Run(milliseconds(50));
            const Motion *motion = m_figure->Player().Current();
            waved = waved || (motion && motion->name == QLatin1String("Wave"));
            still = motion && !m_figure->Player().HasEnded() ? 0 : still + 50;
            if (still > 600)
                QVERIFY(std::abs(m_figure->Player().Shown().At(6, Change::Turn)) < 0.01);
        }
        QVERIFY(waved);
    }

    void theMakerTakesThoseWhoLieInItsFolder()
    {
        QTemporaryDir folder;
        QVERIFY(QDir(folder.path()).mkdir("inside"));
        const QString inside = folder.filePath("inside");
        support::WriteSmallCharacter(inside, "Merlin");
        support::WriteSmallCharacter(inside, "Genie");
        support::WriteSmallCharacter(folder.path(), "Peedy");
        QFile broken(inside + "/Broken.acs");
        QVERIFY(broken.open(QIODevice::WriteOnly) && broken.write("no character") > 0);
        broken.close();
        PuppetFigureMaker maker(inside, *m_engine, *m_audio, *m_time, *m_options,
                                [this] { return std::make_unique<support::FakeTicker>(*m_time); });
        const auto number = [&](const QString &file) {
            try {
                return maker.Make("Somebody", file) ? 0 : -1;
            } catch (const Error &error) {
                return int(error.Number());
            }
        };
        // One that cannot serve is left out of the choice, and told of when it is asked for.
        QCOMPARE(maker.Names(), QStringList({ "Genie", "Merlin" }));
        QCOMPARE(number("mERLIN.ACS"), 0);
        QCOMPARE(number("Broken.acs"), int(kNotACharacterFile));
        QCOMPARE(number("Peedy.acs"), int(kAgentFileMissing));
        QCOMPARE(number("../Peedy.acs"), int(kAgentFileMissing));
        QCOMPARE(number(""), int(kAgentFileMissing));
        // It is not held against him when he is whole again.
        QVERIFY(broken.remove());
        support::WriteSmallCharacter(inside, "Broken");
        QCOMPARE(number("Broken.acs"), 0);
        QCOMPARE(maker.All().size(), size_t(3));
    }

    void aWholeLifeLeavesNoDoneBehind()
    {
        // Random calls; every activity that is neither halted nor replaced ends exactly once.
        quint32 random = 99;
        const auto draw = [&random](quint32 count) {
            random = random * 1664525 + 1013904223;
            return (random >> 16) % count;
        };
        const QStringList motions{ "Wave", "Nod",  "Read",     "ReadReturn",
                                   "Show", "Hide", "MoveLeft", "Acknowledge" };
        m_figure->Appear();
        for (int round = 0; round < 300; ++round) {
            int ends = 0;
            const auto end = [&ends](qint32 number) {
                ++ends;
                QCOMPARE(number, 0);
            };
            switch (draw(3)) {
            case 0:
                m_figure->Perform(motions[draw(quint32(motions.size()))], end);
                break;
            case 1:
                m_figure->Slide(QPoint(int(draw(900)), int(draw(600))), milliseconds(draw(1500)), end);
                break;
            default:
                m_figure->Speak(SpeechText::Parse("Some words"), draw(2) == 0, end);
            }
            if (draw(3) == 0) {
                m_time->Run(milliseconds(draw(900)));
                m_figure->Halt();
                const int before = ends;
                if (draw(2) == 0)
                    m_figure->Rest();
                m_time->Run(milliseconds(draw(3000)));
                QCOMPARE(ends, before);
            } else {
                m_time->Run(milliseconds(3500));
                QCOMPARE(ends, 1);
                if (draw(2) == 0)
                    m_figure->Rest();
                m_time->Run(milliseconds(draw(20000)));
                QCOMPARE(ends, 1);
            }
        }
    }
};

QTEST_MAIN(TestPuppetFigure)
#include "TestPuppetFigure.moc"
