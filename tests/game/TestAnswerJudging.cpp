#include "game/frmSpell1.h"
#include "shell/SharedState.h"
#include "stage/Praise.h"
#include "support/Desk.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTextEdit>

using namespace tumblewick;
using support::Desk;

namespace {

const QStringList kAnswerButtons = { "cmdGo", "cmdPass", "cmdHint", "cmdReplay" };

} // namespace

// From the answer to the next question.
class TestAnswerJudging : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void aRightSpellingOfOnePlayer()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat", "cat" });
        Ready();
        DrawCheerAndPraise(1, 12);
        Answer("CAT");
        QCOMPARE(m_desk->transcript.Difference("right-spelling-one-player"), QString());
        QCOMPARE(Panel(), QString("Ann    1 out of 1\n"));
        QCOMPARE(m_desk->Find<QLineEdit>("txtAnswer")->text(), QString());
    }

    void aRightSpellingOfSeveralPlayers()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        Ready();
        DrawCheerAndPraise(3, 2);
        Answer("cat");
        QCOMPARE(m_desk->transcript.Difference("right-spelling-two-players"), QString());
        QCOMPARE(Panel(), QString("Ann    1 out of 1 100%\nBob    0 out of 0 0%\n"));
    }

    void theBoardOfAGameBeforeIsNotSeenAgain()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        Answer("cat");
        Answer("cat");
        QCOMPARE(Panel(), QString("Ann    1 out of 1 100%\nBob    1 out of 1 100%\n"));
        m_desk->Press("cmdNew");
        m_desk->BeginSpelling({ "Cat" }, { "cat", "cat" });
        Answer("cat");
        QCOMPARE(Panel(), QString("Cat    1 out of 1\n"));
    }

    void aWrongSpellingOfOnePlayer()
    {
        m_desk->BeginSpelling({ "Ann" }, { "knight_nite", "knight_nite" });
        Ready();
        Answer("nite");
        QCOMPARE(m_desk->transcript.Difference("wrong-spelling-one-player"), QString());
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("1"));
        QCOMPARE(Panel(), QString("nite")); // the try stays in view
        QCOMPARE(m_desk->States(kAnswerButtons),
                 QString("cmdGo enabled, cmdPass enabled, cmdHint enabled, cmdReplay enabled"));
        m_desk->Rest();
        QVERIFY(m_desk->stage.Log().contains("Merlin says \"How do you spell: nite?\" without balloon"));
    }

    void aWrongSpellingOfSeveralPlayers()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        Ready();
        Answer("kat");
        QCOMPARE(m_desk->transcript.Difference("wrong-spelling-two-players"), QString());
        QCOMPARE(Panel(), QString("Ann    0 out of 1 0%\nBob    0 out of 0 0%\n"));
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->text(), QString("cat"));
    }

    void aLonePlayerScoresTheSamePointAtTheSeventhTry()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat", "cat" });
        for (int attempt = 0; attempt < 6; ++attempt)
            Answer("");
        Answer("cat");
        QCOMPARE(State().Players.Text(0, Players::kCorrect), QString("1"));
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("2")); // the next word is asked already
    }

    void hintsGoOnAfterAWrongTry()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        m_desk->Press("cmdHint");
        Answer("kat");
        m_desk->transcript.Clear();
        m_desk->Press("cmdHint");
        QVERIFY(m_desk->transcript.Said()[0].startsWith("Merlin: The first 2 letters"));
    }

    void anEmptyAnswerOfTwoPlayersLosesTheTurn()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        Ready();
        Answer("");
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Sorry Ann."));
        QVERIFY(
            m_desk->transcript.Said().contains("Genie: Bob, how do you spell: \\map=\"cat\"=\"*****\"\\?"));
    }

    void enterAnswers_data()
    {
        QTest::addColumn<QStringList>("players");
        QTest::addColumn<QStringList>("said");
        QTest::newRow("an empty answer of a lone player")
            << QStringList({ "Ann" })
            << QStringList({ "Merlin: Sorry Ann. Try again",
                             "Merlin: How do you spell: \\map=\"cat\"=\"*****\"\\?" });
        QTest::newRow("an empty answer of one of two")
            << QStringList({ "Ann", "Bob" })
            << QStringList({ "Merlin: Sorry Ann.", "Merlin: The correct spelling for cat is",
                             "Merlin: \\map=\"C, ,A, ,T, ,\"=\"cat\"\\",
                             "Genie: Bob, how do you spell: \\map=\"cat\"=\"*****\"\\?" });
    }
    void enterAnswers()
    {
        QFETCH(QStringList, players);
        m_desk->BeginSpelling(players, { "cat", "cat" });
        Ready();
        QTest::keyClick(m_desk->Find<QLineEdit>("txtAnswer"), Qt::Key_Return);
        m_desk->Settle();
        QTEST(m_desk->transcript.Said(), "said");
    }

    void enterAnswersInAQuiz_data()
    {
        QTest::addColumn<QString>("focus");
        QTest::newRow("from the button") << "cmdGo";
        QTest::newRow("from the list") << "lvwAnswer";
    }
    void enterAnswersInAQuiz()
    {
        QFETCH(QString, focus);
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_2_", "Q_a_b_c_d_2_" });
        Ready();
        m_desk->Find<QListWidget>("lvwAnswer")->setCurrentRow(1);
        auto *control = m_desk->Find<QWidget>(focus);
        control->setFocus();
        QTest::keyClick(control, Qt::Key_Return);
        m_desk->Settle();
        QCOMPARE(State().Players.Text(0, Players::kCorrect), QString("1"));
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("2"));
    }

    void aRightAnswerInAQuiz()
    {
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_2_", "Q_a_b_c_d_2_" });
        Ready();
        DrawCheerAndPraise(1, 12);
        Choose(1);
        QCOMPARE(m_desk->transcript.Difference("right-answer-one-player"), QString());
        QCOMPARE(Panel(), QString("Ann    1 out of 1\n"));
    }

    void aWrongAnswerInAQuiz()
    {
        m_desk->BeginQuiz({ "Ann", "Bob" }, { "Q_a_b_c_d_2_", "Q_a_b_c_d_2_" });
        Ready();
        QString focus;
        m_desk->After(std::chrono::milliseconds(500), [&] { focus = m_desk->Focus(); });
        const int seeded = m_desk->chance.Randomized();
        Choose(3);
        QCOMPARE(m_desk->transcript.Difference("wrong-answer-two-players"), QString());
        QCOMPARE(focus, QString("lvwAnswer"));
        // Once for nothing, and once for the next question.
        QCOMPARE(m_desk->chance.Randomized() - seeded, 2);
        QCOMPARE(Panel(), QString("Ann    0 out of 1 0%\nBob    0 out of 0 0%\n"));
    }

    void aQuizAllowsOneTryForALonePlayerToo()
    {
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_2_", "Q_a_b_c_d_2_" });
        Ready();
        Choose(0);
        QVERIFY(m_desk->transcript.Said().contains("Merlin: The correct answer was b."));
        QVERIFY(m_desk->transcript.Said().contains("Genie: Ann, Q"));
    }

    void nothingSelectedLeavesTheQuestionStanding()
    {
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_2_", "Q_a_b_c_d_2_" });
        Ready();
        m_desk->Press("cmdGo");
        QCOMPARE(m_desk->transcript.Lines(), QStringList());
        QCOMPARE(m_desk->Focus(), QString("lvwAnswer"));
        QCOMPARE(m_desk->States(kAnswerButtons),
                 QString("cmdGo enabled, cmdPass hidden, cmdHint hidden, cmdReplay enabled"));
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("1"));
        QCOMPARE(Panel(), QString());
    }

    void theBoardIsWrittenWhileAllThreeCheer()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat", "cat" });
        Ready();
        QString panel;
        QStringList cheers;
        m_desk->After(std::chrono::milliseconds(500), [&] {
            panel = Panel();
            cheers = m_desk->transcript.Lines();
        });
        Answer("cat");
        QCOMPARE(panel, QString("Ann    1 out of 1\n"));
        QCOMPARE(cheers.filter("Play \"Congratulate").size(), 3);
        QVERIFY(cheers.filter("done").isEmpty());
    }

    void aLineThatFailsHoldsTheGameWhileTheScreenLives()
    {
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_2_", "Q_a_b_c_d_2_" });
        Ready();
        m_desk->stage.SetSpeechFailure(platform::kAudioDeviceUnusable);
        QString states;
        m_desk->time.AfterIdlePolls(500, [&] { states = m_desk->States({ "cmdGo", "cmdExit" }); });
        Choose(3);
        QVERIFY(m_desk->time.Hung());
        QCOMPARE(states, QString("cmdGo disabled, cmdExit enabled"));
        QVERIFY(m_desk->transcript.Said().filter("Genie: ").isEmpty());
    }

    void theButtonsAreDeadWhileAnAnswerIsJudged()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        Ready();
        QString states;
        m_desk->After(std::chrono::seconds(2), [&] {
            states = m_desk->States(kAnswerButtons + QStringList({ "cmdNew", "cmdExit", "cmdHelp" }));
        });
        Answer("dog");
        QCOMPARE(states, QString("cmdGo disabled, cmdPass disabled, cmdHint hidden, cmdReplay disabled, "
                                 "cmdNew disabled, cmdExit enabled, cmdHelp enabled"));
    }

    void theCheckpointOfALoneSpeller()
    {
        BeginSpellingWithPoints({ "Ann" }, { "4" });
        DrawCheerAndPraise(2, 4);
        Answer("cat");
        QCOMPARE(m_desk->transcript.Difference("checkpoint-spelling-one-player"), QString());
    }

    void theCheckpointReadsTheBestFirst()
    {
        BeginSpellingWithPoints({ "Ann", "Bob" }, { "4", "2" });
        State().Players.SetText(0, Players::kAsked, "20");
        State().Players.SetText(1, Players::kAsked, "2");
        DrawCheerAndPraise(2, 4);
        Answer("cat");
        QCOMPARE(m_desk->transcript.Said().filter("your score is"),
                 QStringList({ "Peedy: Bob, your score is 2 out of 2. ",
                               "Peedy: Ann, your score is 5 out of 20. " }));
    }

    void theCheckpointOfAQuizDoesNotWaitForItsAnnouncement()
    {
        m_desk->BeginQuiz({ "Ann" }, QStringList(8, "Q_a_b_c_d_2_"));
        State().Players.SetText(0, Players::kCorrect, "6");
        Ready();
        DrawCheerAndPraise(2, 4);
        Choose(1);
        QCOMPARE(m_desk->transcript.Difference("checkpoint-quiz"), QString());
    }

    void noCheckpointForAnotherPraise()
    {
        BeginSpellingWithPoints({ "Ann" }, { "4" });
        DrawCheerAndPraise(2, 7);
        Answer("cat");
        QVERIFY(m_desk->transcript.Said().filter("Going well").isEmpty());
    }

    void noCheckpointAfterTheLastQuestion()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        State().Players.SetText(0, Players::kCorrect, "9");
        Ready();
        DrawCheerAndPraise(2, 4);
        Answer("cat");
        QVERIFY(m_desk->transcript.Said().filter("Going well").isEmpty());
        QVERIFY(m_desk->transcript.Said().contains("Merlin: You got that one right  Ann."));
    }

    void spellingDoesNotPraiseTwiceTheSame()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat", "cat", "cat" });
        Ready();
        for (int turn = 0; turn < 2; ++turn) {
            DrawCheerAndPraise(2, 9);
            Answer("cat");
        }
        const QStringList praises = m_desk->transcript.Said().filter("  Ann.");
        QCOMPARE(praises, QStringList({ "Merlin: That's correct. You made that one look easy  Ann.",
                                        "Genie: You're so clever. That was a hard one  Ann." }));
    }

    void aQuizMayPraiseTwiceTheSame()
    {
        m_desk->BeginQuiz({ "Ann" }, QStringList(3, "Q_a_b_c_d_2_"));
        Ready();
        for (int turn = 0; turn < 2; ++turn) {
            DrawCheerAndPraise(2, 9);
            Choose(1);
        }
        QCOMPARE(m_desk->transcript.Said().filter("look easy").size(), 2);
    }

    void aLaterBadQuizLineEndsTheProgramWithItsReport_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("report");
        QTest::newRow("too few fields") << "Q_a"
                                        << "Run-time error '5':\r\n\r\nInvalid procedure call or argument";
        QTest::newRow("no number") << "Q_a_b_c_d_x_"
                                   << "Run-time error '13':\r\n\r\nType mismatch";
    }
    void aLaterBadQuizLineEndsTheProgramWithItsReport()
    {
        QFETCH(QString, line);
        QFETCH(QString, report);
        m_desk->chance.QueueDraw(0, 2);
        m_desk->chance.QueueDraw(1, 2);
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_1_", line });
        m_desk->boxes.Expect(report);
        Choose(2);
        QVERIFY(m_desk->process.Ended());
        QVERIFY(*m_desk->process.ExitCode() != 0);
    }

    void anAnswerNumberWithoutAnAnswerEndsTheProgramWithItsReport()
    {
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_7_" });
        m_desk->boxes.Expect("Run-time error '9':\r\n\r\nSubscript out of range");
        Choose(2);
        QVERIFY(m_desk->process.Ended());
    }

    void voiceCommandsSpell_data()
    {
        QTest::addColumn<QStringList>("commands");
        QTest::addColumn<QString>("answer");
        QTest::newRow("small") << QStringList({ "b" }) << "b";
        QTest::newRow("capital") << QStringList({ "B" }) << "b";
        QTest::newRow("e writes c") << QStringList({ "e" }) << "c";
        QTest::newRow("a word") << QStringList({ "c", "A", "t" }) << "cat";
        QTest::newRow("any other name") << QStringList({ "x1", "", "hello", "z" }) << "z";
    }
    void voiceCommandsSpell()
    {
        QFETCH(QStringList, commands);
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        for (const QString &command : commands)
            m_desk->agent.DeliverCommand(command);
        m_desk->Settle();
        QTEST(m_desk->Find<QLineEdit>("txtAnswer")->text(), "answer");
    }

    void theVoiceCommandGoAnswers()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "cat" });
        Ready();
        m_desk->agent.DeliverCommand("Go");
        m_desk->Settle();
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Sorry Ann."));
    }

    void theVoiceCommandGoAnswersAlsoWhenTheButtonIsDisabled()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat", "cat", "cat", "cat" });
        Ready();
        QString states;
        m_desk->After(std::chrono::milliseconds(500), [&] {
            states = m_desk->States({ "cmdGo" });
            m_desk->agent.DeliverCommand("go");
        });
        Answer("cat");
        QCOMPARE(states, QString("cmdGo disabled"));
        // The word still stands in the box, so the same answer is right a second time.
        QCOMPARE(State().Players.Text(0, Players::kCorrect), QString("2"));
    }

    void voiceCommandsSpellIntoTheHiddenBoxOfAQuiz()
    {
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_2_" });
        Ready();
        m_desk->agent.DeliverCommand("a");
        m_desk->agent.DeliverCommand("E");
        m_desk->Settle();
        QVERIFY(m_desk->Find<QLineEdit>("txtAnswer")->isHidden());
        QCOMPARE(m_desk->Find<QLineEdit>("txtAnswer")->text(), QString("ac"));
        QCOMPARE(Panel(), QString("ac"));
    }

    void theVoiceCommandGoBeforeTheFirstQuestionEndsTheProgramWithItsReport()
    {
        m_desk->After(std::chrono::seconds(5), [this] { m_desk->agent.DeliverCommand("go"); });
        m_desk->boxes.Expect("Run-time error '9':\r\n\r\nSubscript out of range");
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(m_desk->process.Ended());
        QVERIFY(!m_desk->time.Hung());
    }

private:
    // Lets the question be asked to its end and begins the transcript there.
    void Ready()
    {
        m_desk->Rest();
        m_desk->transcript.Clear();
    }
    void DrawCheerAndPraise(int set, int praise)
    {
        m_desk->chance.QueueDraw(set, 4, 1);
        m_desk->chance.QueueDraw(praise, kPraiseCount, 1);
    }
    void Answer(const QString &text)
    {
        m_desk->Type("txtAnswer", text);
        m_desk->Press("cmdGo");
    }
    void Choose(int row)
    {
        m_desk->Find<QListWidget>("lvwAnswer")->setCurrentRow(row);
        m_desk->Press("cmdGo");
    }
    QString Panel() { return m_desk->Find<QTextEdit>("txtScore")->toPlainText(); }
    void BeginSpellingWithPoints(const QStringList &players, const QStringList &points)
    {
        m_desk->BeginSpelling(players, QStringList(8, "cat"));
        for (int player = 0; player < players.size(); ++player)
            State().Players.SetText(player, Players::kCorrect, points[player]);
        Ready();
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestAnswerJudging)
#include "TestAnswerJudging.moc"
