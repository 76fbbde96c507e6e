#include "game/frmSpell1.h"
#include "platform/Error.h"
#include "shell/SharedState.h"
#include "stage/Endings.h"
#include "stage/Praise.h"
#include "support/Desk.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>

using namespace tumblewick;
using support::Desk;
using namespace std::chrono_literals;

namespace {

const QStringList kButtons = { "cmdGo",  "cmdReplay", "cmdPass", "cmdHint",
                               "cmdNew", "cmdAgain",  "cmdExit", "cmdHelp" };
const QStringList kStage = { "fmeQuiz", "txtScore", "Shape2", "Shape3", "Shape1", "txtAnswer" };
const QString kOffer = QStringLiteral(
    "Genie: If you want to play this list again just click Play Again, or you can play a new game.");
const QString kSpectacular = QStringLiteral("Peedy: That was spectacular !");

} // namespace

// The performance at the end of a list: the twelve endings, the scores, the chatter and the fireworks.
class TestEndOfList : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void theFireworks_data()
    {
        QTest::addColumn<int>("displayWidth");
        QTest::addColumn<QString>("transcript");
        QTest::newRow("on a large display") << 0 << "fireworks";
        QTest::newRow("on a display of 800") << 800 << "fireworks-800";
    }
    void theFireworks()
    {
        QFETCH(int, displayWidth);
        QFETCH(QString, transcript);
        State().DisplayWidth = displayWidth;
        Begin(GameKind::Spelling, { "Ann" });
        Score({ { "2", "2" } });
        End(1);
        m_desk->transcript.StartAt(displayWidth == 800 ? "Merlin MoveTo" : "Peedy MoveTo");
        QCOMPARE(m_desk->transcript.Difference(transcript), QString());
    }

    void aClipThatCannotPlayIsNotNoticed()
    {
        m_desk->media.unplayable << m_desk->folder.path() + "\\fireworks.mpg";
        Begin(GameKind::Spelling, { "Ann" });
        Score({ { "2", "2" } });
        End(1);
        m_desk->transcript.StartAt("Peedy MoveTo");
        QCOMPARE(m_desk->transcript.Difference("fireworks"), QString());
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
            Begin(spelling ? GameKind::Spelling : GameKind::Quiz, { "Ann", "Bob" });
            // The second has the better score, and one who is perfect is enough.
            Score({ { "0", "2" }, { perfect ? "2" : "1", "2" } });
        } else {
            Begin(spelling ? GameKind::Spelling : GameKind::Quiz, { "Eve" });
            Score({ { perfect ? "2" : "1", "2" } });
        }
        End(pick);

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
        Begin(GameKind::Spelling, { "Ann" });
        End(6);
        QCOMPARE(m_desk->chance.RandomizedAfter().back(), m_desk->chance.Given() - 1);
        QCOMPARE(m_desk->chance.Left(), 0);
    }

    void fivePlayersAreReadOutByRank()
    {
        Begin(GameKind::Quiz, { "Ann", "Bob", "Cat", "Dan", "Eve" });
        Score({ { "1", "3" }, { "0", "3" }, { "2", "3" }, { "1", "3" }, { "2", "3" } });
        End(4);
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
        Begin(GameKind::Spelling, { "Ann" });
        Score({ { correct, asked } });
        End(1);
        QCOMPARE(m_desk->transcript.Said().count(kSpectacular), perfect ? 1 : 0);
        QCOMPARE(m_desk->transcript.Said().count(kOffer), perfect ? 0 : 1);
    }

    void severalPerfectScoresBringTheFireworksOnce()
    {
        Begin(GameKind::Spelling, { "Ann", "Bob", "Cat" });
        Score({ { "1", "1" }, { "1", "1" }, { "1", "1" } });
        End(2);
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
        Begin(GameKind::Quiz, { "Ann" });
        if (before != 0) {
            End(before);
            m_desk->Press("cmdAgain");
            GoToLastQuestion();
        }
        Score({ { "2", "2" } });
        End(1);
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
        Begin(GameKind::Spelling, { "Ann" });
        End(6);
        m_desk->Press("cmdNew");
        Begin(GameKind::Quiz, { "Ann" });
        Score({ { "2", "2" } });
        End(1);
        QVERIFY(m_desk->transcript.Asked().contains(
            "Peedy Speak \" A perfect score here so you get the fireworks. I have to get out of the way and "
            "pretend I am a pidgeon sitting on a statue.\""));
    }

    void theStageIsClearedAndComesBack_data()
    {
        QTest::addColumn<bool>("spelling");
        QTest::addColumn<QStringList>("players");
        QTest::newRow("spelling of one") << true << QStringList({ "Ann" });
        QTest::newRow("spelling of two") << true << QStringList({ "Ann", "Bob" });
        QTest::newRow("a quiz") << false << QStringList({ "Ann" });
    }
    void theStageIsClearedAndComesBack()
    {
        QFETCH(bool, spelling);
        QFETCH(QStringList, players);
        Begin(spelling ? GameKind::Spelling : GameKind::Quiz, players);
        Score(QList<QStringList>(players.size(), { "2", "2" }));
        QString before;
        QStringList during;
        When("Merlin Speak \"Ann, you scored", [&] { before = Seen(); });
        for (const char *moment : { "Merlin GestureAt 272,56", "Peedy Speak \"That was spectacular !\"",
                                    "Genie Speak \"Sure was." })
            When(moment, [&, moment] {
                during << Seen();
                QCOMPARE(m_desk->States({ "cmdNew", "cmdAgain" }), QString("cmdNew hidden, cmdAgain hidden"));
                QVERIFY(!m_desk->Find<QPushButton>("cmdNew")->isEnabled());
            });
        End(1);
        QString plain = spelling ? "txtScore Shape2 Shape3 Shape1 txtAnswer cmdGo cmdReplay cmdPass "
                                 : "fmeQuiz txtScore Shape2 Shape3 Shape1 cmdGo cmdReplay ";
        if (spelling && players.size() == 1)
            plain += "cmdHint ";
        QCOMPARE(before, plain + "cmdNew cmdAgain cmdExit cmdHelp");
        QCOMPARE(during, QStringList(3, ""));
        // All buttons come back, those too that the game had hidden; what is answered with does not.
        QCOMPARE(Seen(), "txtScore Shape2 Shape3 Shape1 " + kButtons.join(" "));

        m_desk->Press("cmdAgain");
        m_desk->Rest();
        QCOMPARE(Seen(), plain + "cmdNew cmdAgain cmdExit cmdHelp");
        QCOMPARE(m_desk->States({ "cmdGo", "cmdReplay", "cmdNew", "cmdAgain" }),
                 QString("cmdGo enabled, cmdReplay enabled, cmdNew disabled, cmdAgain disabled"));
    }

    // What is hidden cannot be pressed by a key either, though a last pass leaves it enabled.
    void noKeyReachesAButtonDuringTheFireworks()
    {
        Begin(GameKind::Spelling, { "Ann" });
        Score({ { "2", "2" } });
        int tried = 0;
        When("Merlin GestureAt 272,56", [&] {
            QWidget *window = frmSpell1::Shared().Window();
            QVERIFY(m_desk->Find<QPushButton>("cmdGo")->isEnabled());
            QTest::keyClick(window, Qt::Key_Return);
            QTest::keyClick(window, Qt::Key_P, Qt::AltModifier);
            ++tried;
        });
        End(1);
        QCOMPARE(tried, 1);
        QVERIFY(m_desk->transcript.Said().filter("Sorry").isEmpty());
        QVERIFY(m_desk->transcript.Said().filter("You passed").isEmpty());
    }

    void enterOpensNothingBehindTheFireworks()
    {
        Begin(GameKind::Quiz, { "Ann" });
        Score({ { "2", "2" } });
        End(3);
        QCOMPARE(m_desk->Focus(), QString());
        QTest::keyClick(frmSpell1::Shared().Window(), Qt::Key_Return);
        m_desk->Rest();
        QVERIFY(m_desk->help.Open().empty());
        QVERIFY(frmSpell1::Shared().IsActive());
    }

    void theCastStandsWhereItStoodBefore_data()
    {
        QTest::addColumn<int>("displayWidth");
        QTest::addColumn<int>("pick");
        QTest::newRow("large") << 0 << 1;
        QTest::newRow("large, from the perch") << 0 << 4;
        QTest::newRow("800") << 800 << 1;
        QTest::newRow("800, from the perch") << 800 << 4;
    }
    void theCastStandsWhereItStoodBefore()
    {
        QFETCH(int, displayWidth);
        QFETCH(int, pick);
        State().DisplayWidth = displayWidth;
        Begin(GameKind::Spelling, { "Ann" });
        Score({ { "2", "2" } });
        const QList<QPoint> before = Places();
        QList<QPoint> during;
        When("Merlin GestureAt 272,56", [&] { during = Places(); });
        End(pick);
        QCOMPARE(Places(), before);
        QCOMPARE(during.size(), 3);
        // His feet are to meet the turban.
        const QPoint head = during[kPeedy] - during[kGenie];
        QCOMPARE(head.x(), -30);
        QVERIFY2(head.y() <= -190 && head.y() >= -215, qPrintable(QString::number(head.y())));
        if (displayWidth != 800) {
            QCOMPARE(during[kMerlin], before[kMerlin]);
            QCOMPARE(during[kGenie], before[kGenie]);
        }
    }

    void nobodyWaitsForPeedy()
    {
        Begin(GameKind::Spelling, { "Ann" });
        Score({ { "2", "2" } });
        // His last motion never ends well.
        std::function<void()> watch = [&] {
            if (m_desk->stage.Log().filter("Peedy performs \"Surprised\"").size() < 2)
                return m_desk->After(20ms, watch);
            m_desk->After(1500ms,
                          [&] { m_desk->stage.FailNext("Peedy", "Perform", platform::kAgentBadData); });
        };
        m_desk->After(20ms, watch);
        End(1);
        QCOMPARE(m_desk->transcript.Lines().filter("Peedy Play failed").size(), 1);
        QVERIFY(m_desk->transcript.Said().contains(kSpectacular));
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
        Begin(GameKind::Spelling, { "Ann", "Bob" });
        Score({ { "2", "2" }, { "2", "2" } });
        const auto fail = [this, who, kind] { m_desk->stage.FailNext(who, kind, platform::kAgentBadData); };
        if (moment.isEmpty())
            m_desk->chance.onRandomize = fail;
        else
            When(moment, fail);
        bool alive = false;
        m_desk->time.AfterIdlePolls(500, [&] { alive = frmSpell1::Shared().IsLoaded(); });
        m_desk->chance.QueueDraw(1, kEndingCount, 1);
        m_desk->Press("cmdPass");
        QVERIFY(m_desk->time.Hung());
        QVERIFY(alive);
        QVERIFY2(m_desk->transcript.Said().filter(never).isEmpty(), qPrintable(never));
    }

    void helpOpensWhileTheScoresAreRead()
    {
        Begin(GameKind::Spelling, { "Ann" });
        When("Merlin Speak \"Ann, you scored", [&] { m_desk->Press("cmdHelp"); });
        End(3);
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
        Begin(GameKind::Spelling, { "Ann" });
        int heard = -1;
        When("Merlin Speak \"Ann, you scored", [&] {
            m_desk->transcript.Clear();
            m_desk->chance.QueueDraw(1, kEndingCount, 1);
            m_desk->chance.onRandomize = {};
            m_desk->Press(button);
            heard = int(m_desk->transcript.Said().filter(said).size());
        });
        End(1);
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
        Begin(spelling ? GameKind::Spelling : GameKind::Quiz, { "Ann", "Bob" });
        Score({ { "1", "2" }, { "2", "2" } });
        int tried = 0;
        bool hidden = false;
        m_desk->After(std::chrono::seconds(second), [&] {
            ++tried;
            hidden = m_desk->Find<QPushButton>("cmdExit")->isHidden();
            if (!hidden)
                m_desk->Press("cmdExit");
        });
        End(pick);
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
        Begin(spelling ? GameKind::Spelling : GameKind::Quiz, { "Ann", "Bob" });
        Score({ { "1", "2" }, { "2", "2" } });
        m_desk->After(std::chrono::seconds(second), [] { frmSpell1::Shared().Window()->close(); });
        End(pick);
        m_desk->Rest();
        QVERIFY(m_desk->process.Ended());
        QCOMPARE(*m_desk->process.ExitCode(), 0);
        QVERIFY(!m_desk->time.Hung());
    }

    // A pass inside the closing lines brings an ending of its own, at whose end the new game is offered while
    // the first performance still waits. It may turn for the rest of the run; the screens do not care.
    void aNewGameFromInsideAPerformance()
    {
        Begin(GameKind::Spelling, { "Ann" });
        When("Merlin Speak \"Ann, you scored", [&] {
            m_desk->chance.onRandomize = {};
            m_desk->chance.QueueDraw(1, kEndingCount, 1);
            m_desk->Press("cmdPass");
            m_desk->After(100ms, [&] { m_desk->Press("cmdNew"); });
            m_desk->After(3s, [&] {
                QVERIFY(m_desk->Find<QWidget>("cmdPlay"));
                m_desk->Press("cmdPlay");
            });
        });
        End(2);
        QVERIFY(m_desk->time.Hung());
        QVERIFY(m_desk->transcript.Lines().contains("screen frmNumPlayers1 activate"));
    }

private:
    // A game in which the last question has been asked.
    void Begin(GameKind kind, const QStringList &players)
    {
        m_kind = kind;
        const qsizetype count = players.size() == 1 ? 2 : players.size();
        if (kind == GameKind::Spelling)
            m_desk->BeginSpelling(players, QStringList(count, "cat"));
        else
            m_desk->BeginQuiz(players, QStringList(count, "Q_a_b_c_d_2_"));
        GoToLastQuestion();
    }
    void GoToLastQuestion()
    {
        const int players = State().NumPlayers;
        for (int turn = 1; turn < std::max(2, players); ++turn)
            GiveUp();
        m_desk->Rest();
    }
    // Gives the players these scores: right answers and questions.
    void Score(const QList<QStringList> &scores)
    {
        for (int player = 0; player < scores.size(); ++player) {
            State().Players.SetText(player, Players::kCorrect, scores[player][0]);
            State().Players.SetText(player, Players::kAsked, scores[player][1]);
        }
    }
    // Gives up the last question, which draws that ending. The transcript begins with the performance.
    void End(int pick)
    {
        m_desk->chance.onRandomize = [this] { m_desk->transcript.Clear(); };
        m_desk->chance.QueueDraw(pick, kEndingCount, 1);
        GiveUp();
        m_desk->chance.onRandomize = {};
    }
    // Adds no point: a pass in a spelling game, a wrong answer in a quiz.
    void GiveUp()
    {
        if (m_kind == GameKind::Spelling)
            return m_desk->Press("cmdPass");
        m_desk->Find<QListWidget>("lvwAnswer")->setCurrentRow(3);
        m_desk->Press("cmdGo");
    }

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

    // Calls `work` from the event loop when a line that begins so has been asked, while somebody waits.
    void When(const QString &line, std::function<void()> work)
    {
        m_desk->After(20ms, [this, line, work] {
            const QStringList asked = m_desk->transcript.Asked();
            if (std::any_of(asked.begin(), asked.end(),
                            [&line](const QString &each) { return each.startsWith(line); }))
                work();
            else
                When(line, work);
        });
    }

    // Which pieces of the stage and which buttons can be seen.
    QString Seen()
    {
        QStringList seen;
        for (const QString &name : kStage + kButtons)
            if (m_desk->Find<QWidget>(name)->isVisible())
                seen << name;
        return seen.join(' ');
    }
    QList<QPoint> Places() const
    {
        QList<QPoint> places;
        for (const auto &character : State().Characters)
            places << QPoint(character->Left(), character->Top());
        return places;
    }

    GameKind m_kind = GameKind::Spelling;
    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestEndOfList)
#include "TestEndOfList.moc"
