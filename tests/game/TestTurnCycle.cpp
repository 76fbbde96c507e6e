#include "game/frmSpell1.h"
#include "shell/SharedState.h"
#include "support/Desk.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>

using namespace tumblewick;
using support::Desk;

namespace {

const QStringList kAnswerButtons = { "cmdGo", "cmdPass", "cmdHint", "cmdReplay" };
const QStringList kQuiz = { "Q one_a_b_c_d_1_", "Q two_e_f_g_h_2_", "Q three_i_j_k_l_3_" };

} // namespace

// Asking, passing, repeating, leaving; and the answers that come up in their time.
class TestTurnCycle : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void speakersWalkRoundAndPlayersTakeTurns()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat", "cat", "cat" });
        for (int turn = 0; turn < 3; ++turn)
            m_desk->Press("cmdPass");
        const QStringList asked = m_desk->transcript.Said().filter("how do you spell");
        QCOMPARE(asked, QStringList({ "Merlin: Ann, how do you spell: \\map=\"cat\"=\"*****\"\\?",
                                      "Genie: Bob, how do you spell: \\map=\"cat\"=\"*****\"\\?",
                                      "Peedy: Ann, how do you spell: \\map=\"cat\"=\"*****\"\\?",
                                      "Merlin: Bob, how do you spell: \\map=\"cat\"=\"*****\"\\?" }));
    }

    void theWordIsAskedByItsPronunciationAndNeverShown()
    {
        m_desk->BeginSpelling({ "Ann" }, { "knight_nite" });
        m_desk->Rest();
        QVERIFY(m_desk->stage.Log().contains("Merlin says \"Ann, how do you spell: nite?\" without balloon"));
    }

    void aPassSpellsTheWordOut()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        m_desk->transcript.Clear();
        m_desk->Press("cmdPass");
        QCOMPARE(m_desk->transcript.Difference("pass"), QString());
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->text(), QString("cat"));
        QCOMPARE(m_desk->Find<QTextEdit>("txtScore")->toPlainText(),
                 QString("Ann    0 out of 1 0%\nBob    0 out of 0 0%\n"));
    }

    void aPassOfTheSecondPlayerScoresLikeAWrongAnswer()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, QStringList(4, "cat"));
        m_desk->Type("txtAnswer", "cat");
        m_desk->Press("cmdGo");
        m_desk->Press("cmdPass");
        QCOMPARE(m_desk->Find<QTextEdit>("txtScore")->toPlainText(),
                 QString("Ann    1 out of 1 100%\nBob    0 out of 1 0%\n"));
    }

    void aPassDisablesNothing()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat", "cat" });
        QString states;
        m_desk->After(std::chrono::seconds(3), [&] { states = m_desk->States(kAnswerButtons); });
        m_desk->Press("cmdPass");
        QCOMPARE(states, QString("cmdGo enabled, cmdPass enabled, cmdHint enabled, cmdReplay enabled"));
    }

    void theSpelledWordStaysThroughTheNextQuestions()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat", "cat", "cat" });
        m_desk->Press("cmdPass");
        m_desk->Type("txtAnswer", "cat");
        m_desk->Press("cmdGo");
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->text(), QString("cat"));
    }

    void aReplayCountsNothing()
    {
        m_desk->BeginSpelling({ "Ann" }, { "knight_nite", "cat" });
        m_desk->Rest();
        m_desk->transcript.Clear();
        m_desk->Find<QPushButton>("cmdReplay")->setFocus();
        m_desk->Press("cmdReplay");
        m_desk->Press("cmdReplay");
        QCOMPARE(m_desk->transcript.Asked().size(), 2);
        QCOMPARE(m_desk->transcript.Said(),
                 QStringList(2, "Merlin: How do you spell: \\map=\"nite\"=\"*****\"\\?"));
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("1"));
        QCOMPARE(m_desk->Focus(), QString("txtAnswer"));
    }

    void aReplayInAQuizSaysTheQuestionAlone()
    {
        m_desk->BeginQuiz({ "Ann" }, { kQuiz[0] });
        m_desk->transcript.Clear();
        m_desk->Press("cmdReplay");
        QCOMPARE(m_desk->transcript.Said(), QStringList({ "Merlin: Q one" }));
    }

    void aQuizHasNoPassAndNoHint()
    {
        m_desk->BeginQuiz({ "Ann" }, kQuiz);
        QCOMPARE(m_desk->States(kAnswerButtons),
                 QString("cmdGo enabled, cmdPass hidden, cmdHint hidden, cmdReplay enabled"));
        QCOMPARE(m_desk->Focus(), QString("cmdGo"));
    }

    void aQuizListsItsAnswersInTheOrderOfTheFile()
    {
        m_desk->BeginQuiz({ "Ann" }, { "Q_<b>a</b>_b & c_%1_\"d\"_3_" });
        const auto *list = m_desk->Find<QListWidget>("lvwAnswer");
        QStringList answers;
        for (int row = 0; row < list->count(); ++row)
            answers << list->item(row)->text();
        QCOMPARE(answers, QStringList({ "<b>a</b>", "b & c", "%1", "\"d\"" }));
        QVERIFY(list->selectedItems().isEmpty());
    }

    void answersOfAShortFirstQuestionComeUpAfterSixSeconds()
    {
        // A tenth of a second of speech.
        m_desk->stage.timePerLetter = std::chrono::milliseconds(10);
        m_desk->stage.motionTime = std::chrono::milliseconds(0);
        m_desk->BeginQuiz({ "Ann" }, kQuiz);
        const auto *list = m_desk->Find<QListWidget>("lvwAnswer");
        QVERIFY(list->isHidden());
        m_desk->time.Run(std::chrono::milliseconds(5800));
        QVERIFY(list->isHidden());
        m_desk->time.Run(std::chrono::milliseconds(150));
        QVERIFY(!list->isHidden());
    }

    void answersOfALaterQuestionComeUpRightBehindIt()
    {
        m_desk->stage.timePerLetter = std::chrono::milliseconds(10);
        m_desk->BeginQuiz({ "Ann" }, kQuiz);
        m_desk->Rest();
        AnswerWith(0);
        const auto *list = m_desk->Find<QListWidget>("lvwAnswer");
        QVERIFY(list->isHidden());
        m_desk->time.Run(std::chrono::milliseconds(150));
        QVERIFY(!list->isHidden());
    }

    void answersOfALongQuestionComeUpWhileItIsAsked()
    {
        // Some ten seconds of speech; the timer is far away.
        m_desk->stage.timePerLetter = std::chrono::milliseconds(1000);
        m_desk->stage.motionTime = std::chrono::milliseconds(0);
        std::optional<bool> early;
        std::optional<bool> late;
        m_desk->BeginQuiz({ "Ann" }, kQuiz);
        AnswerAndWatch(early, late, false);
        QVERIFY(early.has_value() && late.has_value());
        QVERIFY(!*early);
        QVERIFY(*late);
    }

    void answersComeUpFourSecondsAfterTheRoundedStart_data()
    {
        QTest::addColumn<double>("second"); // at which the question begins, within a minute
        QTest::addColumn<int>("hidden");    // milliseconds into it
        QTest::addColumn<int>("shown");
        QTest::newRow("on the second, strictly later") << 10.0 << 4100 << 4300;
        QTest::newRow("rounded down") << 10.4 << 3600 << 3800;
        QTest::newRow("rounded up") << 10.6 << 4300 << 4600;
    }
    void answersComeUpFourSecondsAfterTheRoundedStart()
    {
        QFETCH(double, second);
        QFETCH(int, hidden);
        QFETCH(int, shown);
        m_desk->stage.timePerLetter = std::chrono::milliseconds(1000);
        m_desk->stage.motionTime = std::chrono::milliseconds(0);
        m_desk->BeginQuiz({ "Ann" }, kQuiz);
        m_desk->Rest();
        // To a whole second, so that the clock below shows exactly what is asked for.
        m_desk->time.Run(std::chrono::milliseconds(1000 - m_desk->time.Elapsed().count() % 1000));
        const int before = static_cast<int>(QString("Sorry Ann.The correct answer was a.").size());
        const auto elapsed = static_cast<double>(m_desk->time.Elapsed().count() / 1000);
        m_desk->time.SetStartOfClock(12 * 3600.0 - before - elapsed + second);
        const auto *list = m_desk->Find<QListWidget>("lvwAnswer");
        std::optional<bool> early;
        std::optional<bool> late;
        m_desk->After(std::chrono::milliseconds(before * 1000 + hidden), [&] { early = !list->isHidden(); });
        m_desk->After(std::chrono::milliseconds(before * 1000 + shown), [&] { late = !list->isHidden(); });
        AnswerWith(3);
        QVERIFY(early.has_value() && late.has_value());
        QVERIFY(!*early);
        QVERIFY(*late);
    }

    // The timer is set behind every answer, the last one too; it is wanted so.
    void theLastAnswersComeUpAgainWhenTheListIsDone()
    {
        m_desk->BeginQuiz({ "Ann" }, { kQuiz[0] });
        m_desk->Rest();
        AnswerWith(1);
        const auto *list = m_desk->Find<QListWidget>("lvwAnswer");
        QVERIFY(list->isHidden());
        QCOMPARE(m_desk->States(kAnswerButtons),
                 QString("cmdGo disabled, cmdPass hidden, cmdHint hidden, cmdReplay disabled"));
        m_desk->time.Run(std::chrono::milliseconds(150));
        QVERIFY(!list->isHidden());
    }

    void theNextQuestionBringsItsOwnAnswers()
    {
        m_desk->chance.QueueDraw(0, 3);
        m_desk->BeginQuiz({ "Ann" }, kQuiz);
        m_desk->chance.QueueDraw(2, 3);
        AnswerWith(3);
        const auto *list = m_desk->Find<QListWidget>("lvwAnswer");
        QCOMPARE(list->count(), 4);
        QCOMPARE(list->item(0)->text(), QString("i"));
        QCOMPARE(list->item(3)->text(), QString("l"));
    }

    void pastMidnightOnlyTheTimerBringsThemUp()
    {
        m_desk->stage.timePerLetter = std::chrono::milliseconds(1000);
        m_desk->stage.motionTime = std::chrono::milliseconds(0);
        std::optional<bool> early;
        std::optional<bool> late;
        m_desk->BeginQuiz({ "Ann" }, kQuiz);
        AnswerAndWatch(early, late, true);
        QVERIFY(late.has_value());
        QVERIFY(!*late);
        m_desk->time.Run(std::chrono::milliseconds(200));
        QVERIFY(!m_desk->Find<QListWidget>("lvwAnswer")->isHidden());
    }

    // Nothing is left to come then, and nothing looks at the clock any more.
    void aQuestionThatFailsIsWaitedForInSleep()
    {
        m_desk->BeginQuiz({ "Ann" }, kQuiz);
        m_desk->stage.FailNext("Genie", "Speak", platform::kAgentBadData);
        AnswerWith(2);
        QVERIFY(m_desk->time.Hung());
        QVERIFY(m_desk->transcript.Said().last().startsWith("Genie: Ann, "));
    }

    void theEndOfTheListAfterTheLastAnswer()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->Type("txtAnswer", "cat");
        m_desk->Press("cmdGo");
        QCOMPARE(
            m_desk->States(kAnswerButtons + QStringList({ "cmdNew", "cmdAgain" })),
            QString("cmdGo disabled, cmdPass disabled, cmdHint disabled, cmdReplay disabled, cmdNew enabled, "
                    "cmdAgain enabled"));
    }

    void theEndOfTheListAfterALastPass()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->Press("cmdPass");
        QCOMPARE(m_desk->States(kAnswerButtons + QStringList({ "cmdNew", "cmdAgain" })),
                 QString("cmdGo enabled, cmdPass enabled, cmdHint enabled, cmdReplay enabled, cmdNew "
                         "enabled, cmdAgain "
                         "enabled"));
    }

    void playAgainStartsOverButKeepsTheHints()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->Press("cmdHint");
        m_desk->Type("txtAnswer", "cat");
        m_desk->Press("cmdGo");
        QCOMPARE(State().Players.Text(0, Players::kCorrect), QString("1"));
        m_desk->WriteSpelling("Animals", { "dog" }); // the file is read again
        m_desk->transcript.Clear();
        m_desk->Press("cmdAgain");
        QCOMPARE(State().Players.Text(0, Players::kCorrect), QString("0"));
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("1"));
        QCOMPARE(State().Players.Text(0, Players::kHints), QString("1"));
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Here we go. Get ready to play Animals."));
        QVERIFY(
            m_desk->transcript.Said().contains("Merlin: Ann, how do you spell: \\map=\"dog\"=\"*****\"\\?"));
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->text(), QString("Animals"));
        QCOMPARE(m_desk->States({ "cmdNew", "cmdAgain" }), QString("cmdNew disabled, cmdAgain disabled"));
    }

    void playAgainTakesDownTheSpelledWordAndTheBoard()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->Press("cmdPass");
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->text(), QString("cat"));
        QCOMPARE(m_desk->Find<QTextEdit>("txtScore")->toPlainText(), QString("Ann    0 out of 1\n"));
        m_desk->Press("cmdAgain");
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->text(), QString("Animals"));
        QCOMPARE(m_desk->Find<QTextEdit>("txtScore")->toPlainText(), QString());
    }

    void playAgainStartsTheTurnsOver()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        m_desk->Press("cmdPass");
        m_desk->Press("cmdPass");
        m_desk->transcript.Clear();
        m_desk->Press("cmdAgain");
        QCOMPARE(m_desk->transcript.Said().last(),
                 QString("Merlin: Ann, how do you spell: \\map=\"cat\"=\"*****\"\\?"));
        for (int player = 0; player < 2; ++player) {
            QCOMPARE(State().Players.Text(player, Players::kCorrect), QString("0"));
            QCOMPARE(State().Players.Text(player, Players::kAsked),
                     player == 0 ? QString("1") : QString("0"));
        }
    }

    // The buttons stay enabled after a last pass, and the list counts as done until it has been read again.
    void aPassInTheOpeningOfTheNextGameEndsTheListOnceMore()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->Press("cmdPass");
        m_desk->transcript.Clear();
        m_desk->After(std::chrono::seconds(5), [this] { m_desk->Press("cmdPass"); });
        m_desk->Press("cmdAgain");
        QCOMPARE(m_desk->transcript.Said().filter("You passed on that one Ann").size(), 1);
        QCOMPARE(m_desk->transcript.Said().last(),
                 QString("Merlin: Ann, how do you spell: \\map=\"cat\"=\"*****\"\\?"));
        QCOMPARE(m_desk->States({ "cmdNew", "cmdAgain" }), QString("cmdNew disabled, cmdAgain disabled"));
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("1"));
    }

    void newGameGoesHome()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        const auto control = State().AgentControl;
        m_desk->Press("cmdPass");
        m_desk->Press("cmdNew");
        QVERIFY(!control->Connected());
        QVERIFY(m_desk->Find<QWidget>("cmdPlay"));
        QVERIFY(!frmSpell1::Shared().IsLoaded());
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("1"));
    }

    void theExitSaysFarewell()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->Rest();
        m_desk->transcript.Clear();
        m_desk->Press("cmdExit");
        QCOMPARE(m_desk->transcript.Difference("exit"), QString());
        QVERIFY(m_desk->process.Ended());
        QCOMPARE(*m_desk->process.ExitCode(), 0);
        for (const auto &character : State().Characters)
            QVERIFY(character.IsNothing());
        QCOMPARE(m_desk->help.Calls().last(), QString("CloseAll"));
    }

    void theExitWorksInTheMiddleOfTheOpening()
    {
        m_desk->After(std::chrono::seconds(4), [this] { m_desk->Press("cmdExit"); });
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(m_desk->process.Ended());
        QVERIFY(!m_desk->time.Hung());
        QVERIFY(m_desk->transcript.Said().contains("Peedy: See you next time."));
    }

    void helpIsOpenedAndGoesWithTheScreen()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().front().topic, QString("Playing the Game.htm"));
        m_desk->Press("cmdPass");
        m_desk->Press("cmdNew");
        QVERIFY(m_desk->help.Open().empty());
    }

    void hintsGrowByALetter()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->transcript.Clear();
        for (int press = 0; press < 4; ++press)
            m_desk->Press("cmdHint");
        const QString tag = "\\map=\"cat\"=\"*****\"\\";
        QCOMPARE(m_desk->transcript.Said(),
                 QStringList({ "Merlin: The first letter of " + tag + " is: C.",
                               "Merlin: The first 2 letters of " + tag + " are: C,A.",
                               "Merlin: The first 3 letters of " + tag + " are: C,A,T.",
                               "Merlin: The first 3 letters of " + tag + " are: C,A,T." }));
        QCOMPARE(State().Players.Text(0, Players::kHints), QString("4"));
    }

    void aHintIsReadWithStarsForTheWordAndCostsNothing()
    {
        m_desk->BeginSpelling({ "Ann" }, { "knight_nite" });
        m_desk->Press("cmdHint");
        QCOMPARE(m_desk->States(kAnswerButtons),
                 QString("cmdGo enabled, cmdPass enabled, cmdHint enabled, cmdReplay enabled"));
        m_desk->Rest();
        // The word itself, not the way in which it is asked.
        QVERIFY(
            m_desk->stage.Log().contains("Merlin says \"The first letter of knight is: K.\" showing \"The "
                                         "first letter of ***** is: K.\""));
        QCOMPARE(State().Players.Text(0, Players::kCorrect), QString("0"));
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("1"));
    }

    void aNewQuestionBeginsItsHintsAnew()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat", "cat" });
        m_desk->Press("cmdHint");
        m_desk->Find<QPushButton>("cmdHint")->setFocus();
        m_desk->Press("cmdHint");
        QCOMPARE(m_desk->Focus(), QString("txtAnswer"));
        m_desk->Press("cmdPass");
        m_desk->transcript.Clear();
        m_desk->Press("cmdHint");
        QCOMPARE(m_desk->transcript.Said(),
                 QStringList({ "Genie: The first letter of \\map=\"cat\"=\"*****\"\\ is: C." }));
    }

    void whatIsTypedStandsLargeInThePanel()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        const auto *panel = m_desk->Find<QTextEdit>("txtScore");
        m_desk->Type("txtAnswer", "c<b>");
        QCOMPARE(panel->toPlainText(), QString("c<b>"));
        const int large = panel->document()->firstBlock().begin().fragment().charFormat().font().pixelSize();
        m_desk->Type("txtAnswer", "");
        QCOMPARE(panel->toPlainText(), QString("c<b>"));
        m_desk->Press("cmdPass");
        QCOMPARE(panel->toPlainText(), QString("Ann    0 out of 1\n"));
        const auto format = panel->document()->firstBlock().begin().fragment().charFormat();
        QCOMPARE(format.foreground().color(), QColor(Qt::white));
        QCOMPARE(large, 53);                     // 40 points
        QCOMPARE(format.font().pixelSize(), 32); // 24 points
    }

    void theWordStaysInThePanelUntilTheScoresAreWritten()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        m_desk->Rest();
        QString panel;
        m_desk->Type("txtAnswer", "kat");
        m_desk->After(std::chrono::seconds(1),
                      [&] { panel = m_desk->Find<QTextEdit>("txtScore")->toPlainText(); });
        m_desk->Press("cmdGo");
        QCOMPARE(panel, QString("kat"));
        QCOMPARE(m_desk->Find<QTextEdit>("txtScore")->toPlainText(),
                 QString("Ann    0 out of 1 0%\nBob    0 out of 0 0%\n"));
    }

    void theLastTryOfALonePlayerStaysInThePanel()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->Type("txtAnswer", "kat");
        m_desk->Press("cmdGo");
        m_desk->Rest();
        QCOMPARE(m_desk->Find<QLineEdit>("txtAnswer")->text(), QString());
        QCOMPARE(m_desk->Find<QTextEdit>("txtScore")->toPlainText(), QString("kat"));
        m_desk->Type("txtAnswer", "c");
        QCOMPARE(m_desk->Find<QTextEdit>("txtScore")->toPlainText(), QString("c"));
    }

    void theBoardShrinksItsTypeForManyPlayers()
    {
        m_desk->BeginSpelling({ "Ann", "Bob", "Cat", "Dan", "Eve" }, QStringList(5, "cat"));
        m_desk->Press("cmdPass");
        const auto *panel = m_desk->Find<QTextEdit>("txtScore");
        for (auto block = panel->document()->firstBlock(); block.isValid() && block.length() > 1;
             block = block.next()) {
            const auto format = block.begin().fragment().charFormat();
            QCOMPARE(format.font().pixelSize(), 21); // 16 points
            QCOMPARE(format.foreground().color(), QColor(Qt::white));
        }
        QVERIFY(!panel->textCursor().hasSelection());
    }

private:
    void AnswerWith(int row)
    {
        m_desk->Find<QListWidget>("lvwAnswer")->setCurrentRow(row);
        m_desk->Press("cmdGo");
    }

    // Answers the first question wrongly and looks at the list 3 and 6 seconds into the next one; with
    // `midnight` the day ends 2 seconds into it.
    void AnswerAndWatch(std::optional<bool> &early, std::optional<bool> &late, bool midnight)
    {
        m_desk->Rest();
        if (midnight) {
            const double spokenBefore = QString("Sorry Ann.The correct answer was a.").size();
            const double elapsed = static_cast<double>(m_desk->time.Elapsed().count()) / 1000.0;
            m_desk->time.SetStartOfClock(24 * 3600.0 - 2.0 - spokenBefore - elapsed);
        }
        const auto *list = m_desk->Find<QListWidget>("lvwAnswer");
        std::function<void()> watch = [&] {
            if (m_desk->transcript.Said().filter("Genie: Ann, ").isEmpty())
                return m_desk->After(std::chrono::milliseconds(50), watch);
            m_desk->After(std::chrono::milliseconds(3000), [&early, list] { early = !list->isHidden(); });
            m_desk->After(std::chrono::milliseconds(6000), [&late, list] { late = !list->isHidden(); });
        };
        m_desk->After(std::chrono::milliseconds(50), watch);
        AnswerWith(3);
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestTurnCycle)
#include "TestTurnCycle.moc"
