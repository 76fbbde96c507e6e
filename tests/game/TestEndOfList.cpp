#include "game/EndingDesk.h"
#include "platform/Error.h"
#include "stage/Praise.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>

using namespace tumblewick;
using namespace std::chrono_literals;

namespace {

const QString kOffer = QStringLiteral(
    "Genie: If you want to play this list again just click Play Again, or you can play a new game.");
const QString kSpectacular = QStringLiteral("Peedy: That was spectacular !");

} // namespace

// The performance at the end of a list: the twelve endings, the scores and the chatter.
class TestEndOfList : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void everyEnding_data()
    {
        QTest::addColumn<bool>("spelling");
        QTest::addColumn<int>("pick");
        QTest::addColumn<bool>("several");
        QTest::addColumn<bool>("perfect");
        QTest::addColumn<int>("displayWidth");
        for (const bool spelling : { true, false })
            for (int pick = 1; pick <= kEndingCount; ++pick)
                for (const bool several : { false, true })
                    for (const bool perfect : { false, true })
                        for (const int width : { 0, 800 })
                            QTest::addRow("%s %d, %s player%s%s", spelling ? "spelling" : "quiz", pick,
                                          several ? "two" : "one", several ? "s" : "",
                                          perfect ? (width ? ", perfect, 800" : ", perfect")
                                                  : (width ? ", 800" : ""))
                                << spelling << pick << several << perfect << width;
    }
    void everyEnding()
    {
        QFETCH(bool, spelling);
        QFETCH(int, pick);
        QFETCH(bool, several);
        QFETCH(bool, perfect);
        QFETCH(int, displayWidth);
        State().DisplayWidth = displayWidth;
        if (several) {
            m_desk->Begin(spelling ? GameKind::Spelling : GameKind::Quiz, { "Ann", "Bob" });
            // The second has the better score, and one who is perfect is enough.
            m_desk->Score({ { "0", "2" }, { perfect ? "2" : "1", "2" } });
        } else {
            m_desk->Begin(spelling ? GameKind::Spelling : GameKind::Quiz, { "Eve" });
            m_desk->Score({ { perfect ? "2" : "1", "2" } });
        }
        m_desk->End(pick);

        m_desk->transcript.Fold(displayWidth == 800 ? "fireworks-800" : "fireworks", "(fireworks)");
        QCOMPARE(m_desk->transcript.Lines().count("(fireworks)"), perfect ? 1 : 0);
        // The display matters to the perch alone.
        const bool perch = pick == 4 && perfect && displayWidth == 800;
        QCOMPARE(m_desk->transcript.Difference(QString("endings/%1-%2-%3%4%5")
                                                   .arg(spelling ? "spelling" : "quiz", QString::number(pick),
                                                        several ? "two" : "one", perfect ? "-perfect" : "",
                                                        perch ? "-800" : "")),
                 QString());
        QCOMPARE(m_desk->States({ "cmdNew", "cmdAgain", "cmdExit", "cmdHelp" }),
                 QString("cmdNew enabled, cmdAgain enabled, cmdExit enabled, cmdHelp enabled"));
        QVERIFY(!m_desk->time.Hung());
    }

    void theEndingIsDrawnWithAFreshSeed()
    {
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->End(6);
        QCOMPARE(m_desk->chance.RandomizedAfter().back(), m_desk->chance.Given() - 1);
        QCOMPARE(m_desk->chance.Left(), 0);
    }

    void fivePlayersAreReadOutByRank()
    {
        m_desk->Begin(GameKind::Quiz, { "Ann", "Bob", "Cat", "Dan", "Eve" });
        m_desk->Score({ { "1", "3" }, { "0", "3" }, { "2", "3" }, { "1", "3" }, { "2", "3" } });
        m_desk->End(4);
        QCOMPARE(m_desk->transcript.Said().filter("you scored"),
                 QStringList({ "Merlin: Cat, you scored 2 out of 3. ", "Merlin: Eve, you scored 2 out of 3. ",
                               "Merlin: Ann, you scored 1 out of 3. ", "Merlin: Dan, you scored 1 out of 3. ",
                               "Merlin: Bob, you scored 0 out of 3. " }));
        QCOMPARE(m_desk->transcript.Said().last(), kOffer);
    }

    void aPerfectScoreIsOneOfEqualTexts_data()
    {
        QTest::addColumn<QString>("correct");
        QTest::addColumn<QString>("asked");
        QTest::addColumn<bool>("perfect");
        QTest::newRow("all of them") << "2"
                                     << "2" << true;
        QTest::newRow("none out of none") << "0"
                                          << "0" << true;
        QTest::newRow("all but one") << "1"
                                     << "2" << false;
        QTest::newRow("another text for the same number") << "2"
                                                          << "02" << false;
    }
    void aPerfectScoreIsOneOfEqualTexts()
    {
        QFETCH(QString, correct);
        QFETCH(QString, asked);
        QFETCH(bool, perfect);
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->Score({ { correct, asked } });
        m_desk->End(1);
        QCOMPARE(m_desk->transcript.Said().count(kSpectacular), perfect ? 1 : 0);
        QCOMPARE(m_desk->transcript.Said().count(kOffer), perfect ? 0 : 1);
    }

    void severalPerfectScoresBringTheFireworksOnce()
    {
        m_desk->Begin(GameKind::Spelling, { "Ann", "Bob", "Cat" });
        m_desk->Score({ { "1", "1" }, { "1", "1" }, { "1", "1" } });
        m_desk->End(2);
        QCOMPARE(m_desk->transcript.Said().filter("you scored").size(), 3);
        QCOMPARE(m_desk->transcript.Said().count(kSpectacular), 1);
    }

    void aRealPerfectGameOfTwo()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        for (const int ending : { 0, 3 }) {
            m_desk->Type("txtAnswer", "cat");
            m_desk->chance.QueueDraw(1, 4, 1);
            m_desk->chance.QueueDraw(1 + ending, kPraiseCount, 1);
            if (ending != 0)
                m_desk->chance.QueueDraw(ending, kEndingCount, 1);
            m_desk->Press("cmdGo");
        }
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Ann, you scored 1 out of 1. "));
        QVERIFY(m_desk->transcript.Said().contains(
            "Genie: That's right Merlin. These are good players I think!"));
        QCOMPARE(m_desk->transcript.Said().count(kSpectacular), 1);
        QCOMPARE(m_desk->Find<QTextEdit>("txtScore")->toPlainText(),
                 QString("Ann    1 out of 1 100%\nBob    1 out of 1 100%\n"));
    }

    // The first ending of a quiz does not say which it is.
    void theFirstEndingOfAQuizTakesTheChatterOfTheGameBefore_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<QString>("chatter");
        QTest::newRow("none") << 0 << "";
        QTest::newRow("the first itself") << 1 << "";
        QTest::newRow("the second") << 2
                                    << "Peedy: Hey Genie that was a perfect score. You know what that means. "
                                       "Here come the perfect score fireworks. I have to get out of the way "
                                       "when those fireworks go off.";
        QTest::newRow("the fifth") << 5
                                   << "Peedy: Great job a perfect score means fireworks and I just love "
                                      "seeing the fireworks display, but I don't like the scorched tail "
                                      "feathers.";
    }
    void theFirstEndingOfAQuizTakesTheChatterOfTheGameBefore()
    {
        QFETCH(int, before);
        QFETCH(QString, chatter);
        m_desk->Begin(GameKind::Quiz, { "Ann" });
        if (before != 0) {
            m_desk->End(before);
            m_desk->Press("cmdAgain");
            m_desk->GoToLastQuestion();
        }
        m_desk->Score({ { "2", "2" } });
        m_desk->End(1);
        QStringList expected = { "Merlin: Ann, you scored 2 out of 2. " };
        if (!chatter.isEmpty())
            expected << chatter;
        expected << kSpectacular;
        const QStringList said = m_desk->transcript.Said();
        QCOMPARE(said.mid(1, expected.size()), expected);
    }

    // A game before on the same screen counts, whatever it was.
    void theChatterOfASpellingGameIsKeptForAQuiz()
    {
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->End(6);
        m_desk->Press("cmdNew");
        m_desk->Begin(GameKind::Quiz, { "Ann" });
        m_desk->Score({ { "2", "2" } });
        m_desk->End(1);
        QVERIFY(m_desk->transcript.Asked().contains(
            "Peedy Speak \" A perfect score here so you get the fireworks. I have to get out of the way and "
            "pretend I am a pidgeon sitting on a statue.\""));
    }

    void aFailureHoldsThePerformanceWhileTheScreenLives_data()
    {
        QTest::addColumn<QString>("moment");
        QTest::addColumn<QString>("who");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("never");
        QTest::newRow("the closing line") << ""
                                          << "Genie"
                                          << "Speak"
                                          << "Merlin: Ann, you scored 2 out of 2. ";
        QTest::newRow("the move to the perch") << "Peedy Speak \"A perfect"
                                               << "Peedy"
                                               << "Slide" << kSpectacular;
        QTest::newRow("Peedy's praise of them") << "Merlin GestureAt 272,56"
                                                << "Peedy"
                                                << "Speak"
                                                << "Genie: Sure was. If you want to play this";
    }
    void aFailureHoldsThePerformanceWhileTheScreenLives()
    {
        QFETCH(QString, moment);
        QFETCH(QString, who);
        QFETCH(QString, kind);
        QFETCH(QString, never);
        m_desk->Begin(GameKind::Spelling, { "Ann", "Bob" });
        m_desk->Score({ { "2", "2" }, { "2", "2" } });
        const auto fail = [this, who, kind] { m_desk->stage.FailNext(who, kind, platform::kAgentBadData); };
        if (moment.isEmpty())
            m_desk->chance.onRandomize = fail;
        else
            m_desk->When(moment, fail);
        bool alive = false;
        m_desk->time.AfterIdlePolls(500, [&] { alive = frmSpell1::Shared().IsLoaded(); });
        m_desk->chance.QueueDraw(1, kEndingCount, 1);
        m_desk->Press("cmdPass");
        QVERIFY(m_desk->time.Hung());
        QVERIFY(alive);
        QVERIFY2(m_desk->transcript.Said().filter(never).isEmpty(), qPrintable(never));
    }

    // The set-up screens may be brought back over a game and change the number.
    void aPlayerWhoIsNotThereIsReported()
    {
        m_desk->Begin(GameKind::Spelling, { "Ann", "Bob" });
        State().NumPlayers = 3;
        m_desk->boxes.Expect("Run-time error '9':\r\n\r\nSubscript out of range");
        m_desk->End(1);
        QCOMPARE(m_desk->process.ExitCode(), std::optional(1));
    }

    void helpOpensWhileTheScoresAreRead()
    {
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->When("Merlin Speak \"Ann, you scored", [&] { m_desk->Press("cmdHelp"); });
        m_desk->End(3);
        QCOMPARE(m_desk->help.Open().front().topic, QString("Playing the Game.htm"));
        QCOMPARE(m_desk->transcript.Said().last(), kOffer);
    }

    // A last pass leaves the buttons of the question enabled. Whatever they do runs inside, and the
    // performance goes on behind it.
    void theButtonsOfTheLastQuestionWorkOn_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("said");
        QTest::addColumn<int>("endings");
        QTest::newRow("replay") << "cmdReplay"
                                << "How do you spell" << 1;
        QTest::newRow("hint") << "cmdHint"
                              << "The first letter of" << 1;
        QTest::newRow("pass") << "cmdPass"
                              << "You passed on that one Ann" << 2;
        QTest::newRow("go") << "cmdGo"
                            << "Sorry Ann. Try again" << 1;
    }
    void theButtonsOfTheLastQuestionWorkOn()
    {
        QFETCH(QString, button);
        QFETCH(QString, said);
        QFETCH(int, endings);
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        int heard = -1;
        m_desk->When("Merlin Speak \"Ann, you scored", [&] {
            m_desk->transcript.Clear();
            m_desk->chance.QueueDraw(1, kEndingCount, 1);
            m_desk->chance.onRandomize = {};
            m_desk->Press(button);
            heard = int(m_desk->transcript.Said().filter(said).size());
        });
        m_desk->End(1);
        QCOMPARE(heard, 1);
        QCOMPARE(m_desk->transcript.Said().count(kOffer), endings);
        QVERIFY(!m_desk->time.Hung());
        QVERIFY(!m_desk->process.Ended());
        QCOMPARE(m_desk->States({ "cmdNew", "cmdAgain" }), QString("cmdNew enabled, cmdAgain enabled"));
    }

    void theExitWorksAtAnyMomentButTheFireworks_data() { Moments(); }
    void theExitWorksAtAnyMomentButTheFireworks()
    {
        QFETCH(bool, spelling);
        QFETCH(int, pick);
        QFETCH(int, second);
        QFETCH(int, displayWidth);
        State().DisplayWidth = displayWidth;
        m_desk->Begin(spelling ? GameKind::Spelling : GameKind::Quiz, { "Ann", "Bob" });
        m_desk->Score({ { "1", "2" }, { "2", "2" } });
        int tried = 0;
        bool hidden = false;
        m_desk->After(std::chrono::seconds(second), [&] {
            ++tried;
            hidden = m_desk->Find<QPushButton>("cmdExit")->isHidden();
            if (!hidden)
                m_desk->Press("cmdExit");
        });
        m_desk->End(pick);
        m_desk->Rest();
        QCOMPARE(tried, 1);
        QVERIFY(!m_desk->time.Hung());
        QCOMPARE(m_desk->process.Ended(), !hidden);
        if (hidden) {
            m_desk->Press("cmdExit");
            m_desk->Rest();
        }
        QCOMPARE(*m_desk->process.ExitCode(), 0);
        QVERIFY(m_desk->transcript.Said().contains("Peedy: See you next time."));
    }

    void theScreenMayCloseAtAnyMoment_data() { Moments(); }
    void theScreenMayCloseAtAnyMoment()
    {
        QFETCH(bool, spelling);
        QFETCH(int, pick);
        QFETCH(int, second);
        QFETCH(int, displayWidth);
        State().DisplayWidth = displayWidth;
        m_desk->Begin(spelling ? GameKind::Spelling : GameKind::Quiz, { "Ann", "Bob" });
        m_desk->Score({ { "1", "2" }, { "2", "2" } });
        m_desk->After(std::chrono::seconds(second), [] { frmSpell1::Shared().Window()->close(); });
        m_desk->End(pick);
        m_desk->Rest();
        QVERIFY(m_desk->process.Ended());
        QCOMPARE(*m_desk->process.ExitCode(), 0);
        QVERIFY(!m_desk->time.Hung());
    }

    // A pass inside the closing lines brings an ending of its own, at whose end the new game is offered while
    // the first performance still waits. It may turn for the rest of the run; the screens do not care.
    void aNewGameFromInsideAPerformance()
    {
        m_desk->Begin(GameKind::Spelling, { "Ann" });
        m_desk->When("Merlin Speak \"Ann, you scored", [&] {
            m_desk->chance.onRandomize = {};
            m_desk->chance.QueueDraw(1, kEndingCount, 1);
            m_desk->Press("cmdPass");
            m_desk->After(100ms, [&] { m_desk->Press("cmdNew"); });
            m_desk->After(3s, [&] {
                QVERIFY(m_desk->Find<QWidget>("cmdPlay"));
                m_desk->Press("cmdPlay");
            });
        });
        m_desk->End(2);
        QVERIFY(m_desk->time.Hung());
        QVERIFY(m_desk->transcript.Lines().contains("screen frmNumPlayers1 activate"));
    }

private:
    void Moments()
    {
        QTest::addColumn<bool>("spelling");
        QTest::addColumn<int>("pick");
        QTest::addColumn<int>("second");
        QTest::addColumn<int>("displayWidth");
        for (const bool spelling : { true, false })
            for (const int pick : { 1, 4, 6 })
                for (int second = 1; second < 75; second += 4)
                    QTest::addRow("%s %d after %d s", spelling ? "spelling" : "quiz", pick, second)
                        << spelling << pick << second << (second % 8 == 1 ? 800 : 0);
    }

    std::optional<EndingDesk> m_desk;
};

QTEST_MAIN(TestEndOfList)
#include "TestEndOfList.moc"
