#include "game/frmSpell1.h"
#include "platform/Error.h"
#include "platform/agent/Agent.h"
#include "shell/SharedState.h"
#include "support/Desk.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTextEdit>

using namespace tumblewick;
using support::Desk;

namespace {

const QStringList kAllButtons = {
    "cmdGo", "cmdPass", "cmdHint", "cmdReplay", "cmdNew", "cmdAgain", "cmdExit"
};

} // namespace

// The opening of a game: the cast, the greetings and the reading of the list.
class TestStartGame : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void theOpeningOfASpellingGame()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "knight_nite", "dog" });
        QCOMPARE(m_desk->transcript.Difference("opening-spelling"), QString());
    }

    void theOpeningOfAQuizOn800()
    {
        State().DisplayWidth = 800;
        m_desk->BeginQuiz({ "Ann" }, { "How many legs has a spider?_Four_Six_Eight_Ten_3_" });
        QCOMPARE(m_desk->transcript.Difference("opening-quiz-800"), QString());
    }

    void placesDependOnTheDisplay_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<QList<QPoint>>("places"); // the y counted from StageY
        QTest::newRow("800 wide") << 800 << QList<QPoint>({ { 10, -20 }, { 130, 10 }, { 250, -20 } });
        QTest::newRow("wider") << 0 << QList<QPoint>({ { 50, 20 }, { 200, 60 }, { 350, 20 } });
    }
    void placesDependOnTheDisplay()
    {
        QFETCH(int, width);
        QFETCH(QList<QPoint>, places);
        State().DisplayWidth = width;
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        const auto *panel = m_desk->Find<QTextEdit>("txtScore");
        const int stage = panel->y() - panel->height() - 256 / 3;
        for (std::size_t index = 0; index < 3; ++index) {
            const auto &character = State().Characters[index];
            QCOMPARE(QPoint(character->Left(), character->Top()),
                     places[static_cast<qsizetype>(index)] + QPoint(0, stage));
            QCOMPARE(int(character->Height()), 256);
            QCOMPARE(int(character->Width()), 256);
        }
    }

    void whatCanBePressedDuringTheOpening()
    {
        QString states;
        m_desk->After(std::chrono::seconds(5), [&] { states = m_desk->States(kAllButtons); });
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QCOMPARE(states, QString("cmdGo disabled, cmdPass disabled, cmdHint disabled, cmdReplay disabled, "
                                 "cmdNew disabled, cmdAgain disabled, cmdExit enabled"));
        QCOMPARE(
            m_desk->States(kAllButtons),
            QString("cmdGo enabled, cmdPass enabled, cmdHint enabled, cmdReplay enabled, cmdNew disabled, "
                    "cmdAgain disabled, cmdExit enabled"));
    }

    void theOpeningHasTheFocusOnTheExit()
    {
        QString focus;
        m_desk->After(std::chrono::seconds(5), [&] { focus = m_desk->Focus(); });
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QCOMPARE(focus, QString("cmdExit"));
        QCOMPARE(m_desk->Focus(), QString("txtAnswer"));
    }

    void aSpellingGameShowsTheAnswerBox()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(m_desk->Find<QLineEdit>("txtAnswer")->isVisible());
        QCOMPARE(m_desk->Find<QLineEdit>("txtAnswer")->text(), QString());
        QVERIFY(m_desk->Find<QWidget>("fmeQuiz")->isHidden());
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->text(), QString("Animals"));
        QCOMPARE(m_desk->Find<QTextEdit>("txtScore")->toPlainText(), QString());
    }

    void aQuizShowsItsFrame()
    {
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_1_" });
        QVERIFY(m_desk->Find<QLineEdit>("txtAnswer")->isHidden());
        QCOMPARE(m_desk->Find<QLineEdit>("txtAnswer")->text(), QString());
        QVERIFY(m_desk->Find<QWidget>("fmeQuiz")->isVisible());
    }

    void anyOtherWordIsAQuizInWhichGoJudgesNothing()
    {
        m_desk->WriteQuiz("Animals", { "Q_a_b_c_d_2_", "Q_a_b_c_d_2_" });
        State().GameMode = "quiz";
        State().NumPlayers = 1;
        State().Players = Players(QStringList{ "Ann" });
        State().ListPath = m_desk->folder.path() + "\\QList\\Animals";
        frmSpell1::Shared().Show();
        m_desk->Settle();
        m_desk->Rest();
        QVERIFY(m_desk->Find<QWidget>("fmeQuiz")->isVisible());
        // Only a game that is exactly a quiz empties the hidden box at its start.
        QCOMPARE(m_desk->Find<QLineEdit>("txtAnswer")->text(), QString("Type your answer here"));
        m_desk->Find<QListWidget>("lvwAnswer")->setCurrentRow(1);
        m_desk->transcript.Clear();
        m_desk->Press("cmdGo");
        QCOMPARE(m_desk->transcript.Lines(), QStringList());
        QCOMPARE(m_desk->Find<QLineEdit>("txtAnswer")->text(), QString());
        QCOMPARE(m_desk->States({ "cmdGo", "cmdReplay" }), QString("cmdGo disabled, cmdReplay disabled"));
        QCOMPARE(State().Players.Text(0, Players::kCorrect), QString("0"));
    }

    void buttonsKeepTheirSizeAndMoveWithTheWindow()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QWidget *window = frmSpell1::Shared().Window();
        window->resize(800, 600);
        const auto *go = m_desk->Find<QWidget>("cmdGo");
        const auto *panel = m_desk->Find<QWidget>("txtScore");
        const QRect before = go->geometry();
        const QRect panelBefore = panel->geometry();
        const int letters = go->font().pixelSize();
        window->resize(1600, 1200);
        QCOMPARE(go->size(), before.size());
        QCOMPARE(go->pos(), before.topLeft() * 2);
        QCOMPARE(go->font().pixelSize(), letters);
        QCOMPARE(panel->size(), panelBefore.size() * 2);
    }

    void hintsAreForALonePlayer()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "dog" });
        QCOMPARE(m_desk->States({ "cmdHint" }), QString("cmdHint hidden"));
        m_desk->Press("cmdPass");
        QCOMPARE(m_desk->States({ "cmdHint" }), QString("cmdHint hidden"));
        m_desk->Press("cmdPass");
        m_desk->Press("cmdAgain");
        QCOMPARE(m_desk->States({ "cmdHint" }), QString("cmdHint hidden"));
    }

    void asManyPlayersAsLinesAreAskedOneEach()
    {
        m_desk->chance.QueueDraw(2, 3);
        m_desk->chance.QueueDraw(2, 3); // taken already
        m_desk->chance.QueueDraw(0, 3);
        m_desk->chance.QueueDraw(1, 3);
        m_desk->BeginSpelling({ "Ann", "Bob", "Cat" }, { "cow", "dog", "pig" });
        m_desk->Press("cmdPass");
        m_desk->Press("cmdPass");
        m_desk->Press("cmdPass");
        QCOMPARE(m_desk->transcript.Said().filter("how do you spell"),
                 QStringList({ "Merlin: Ann, how do you spell: \\map=\"pig\"=\"*****\"\\?",
                               "Genie: Bob, how do you spell: \\map=\"cow\"=\"*****\"\\?",
                               "Peedy: Cat, how do you spell: \\map=\"dog\"=\"*****\"\\?" }));
        QCOMPARE(m_desk->States({ "cmdAgain" }), QString("cmdAgain enabled"));
    }

    void aBlankLineIsAskedAndAnEmptyAnswerIsRight()
    {
        m_desk->chance.QueueDraw(1, 2);
        m_desk->BeginSpelling({ "Ann" }, { "cat", "" });
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Ann, how do you spell: \\map=\"\"=\"*****\"\\?"));
        m_desk->Press("cmdGo");
        QCOMPARE(State().Players.Text(0, Players::kCorrect), QString("1"));
    }

    void everyPlayerGetsTheSameNumberOfQuestions()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "dog", "cow" });
        m_desk->Press("cmdPass");
        m_desk->Press("cmdPass");
        QCOMPARE(State().Players.Text(0, Players::kAsked), QString("1"));
        QCOMPARE(State().Players.Text(1, Players::kAsked), QString("1"));
        QCOMPARE(m_desk->States({ "cmdNew", "cmdAgain" }), QString("cmdNew enabled, cmdAgain enabled"));
    }

    void morePlayersThanQuestions()
    {
        m_desk->BeginSpelling({ "Ann", "Bob", "Cat", "Dan" }, { "cat", "dog", "cow" });
        QCOMPARE(m_desk->transcript.Difference("more-players-than-questions"), QString());
        QVERIFY(!frmSpell1::Shared().IsLoaded());
        QVERIFY(m_desk->Find<QWidget>("opt1"));
    }

    void morePlayersThanQuestionsInAQuiz()
    {
        m_desk->BeginQuiz({ "Ann", "Bob" }, { "Q_a_b_c_d_1_" });
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Hold it! We have a problem. There are more "
                                                   "players than we have questions in the list."));
        QVERIFY(!frmSpell1::Shared().IsLoaded());
        QVERIFY(m_desk->Find<QWidget>("opt1"));
        m_desk->Rest(); // the time for the first answers passes
        QVERIFY(!m_desk->process.Ended());
        m_desk->BeginQuiz({ "Ann" }, { "Q_a_b_c_d_1_" });
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Ann, Q"));
    }

    void aListWithoutLinesIsTooShortForAnybody_data()
    {
        QTest::addColumn<int>("players");
        QTest::newRow("one") << 1;
        QTest::newRow("five") << 5;
    }
    void aListWithoutLinesIsTooShortForAnybody()
    {
        QFETCH(int, players);
        m_desk->BeginSpelling(QStringList({ "Ann", "Bob", "Cat", "Dan", "Eve" }).mid(0, players), {});
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Hold it! We have a problem. There are more "
                                                   "players than we have questions in the list."));
        QVERIFY(m_desk->Find<QWidget>("opt1"));
    }

    void afterARefusalTheNextGameBeginsAsEver()
    {
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat" });
        m_desk->transcript.Clear();
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(
            m_desk->transcript.Said().contains("Merlin: Ann, how do you spell: \\map=\"cat\"=\"*****\"\\?"));
    }

    void theListIsReadWhileGoodLuckIsBeingSaid()
    {
        std::function<void()> watch = [&] {
            if (!m_desk->transcript.Said().contains("Merlin: Good luck!"))
                return m_desk->After(std::chrono::milliseconds(10), watch);
            m_desk->WriteSpelling("Animals", { "dog" }); // too late for this game
        };
        m_desk->After(std::chrono::milliseconds(10), watch);
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(
            m_desk->transcript.Said().contains("Merlin: Ann, how do you spell: \\map=\"cat\"=\"*****\"\\?"));
    }

    void noSoundEndsTheGameAtOnce()
    {
        m_desk->stage.SetSpeechFailure(platform::kAudioDeviceUnusable);
        m_desk->boxes.Expect(
            "Tumble Wick has detected a problem which is probably related to your soundcard. Please "
            "check that your soundcard is working correctly and the soundcard drivers are installed "
            "properly");
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QCOMPARE(m_desk->transcript.Difference("no-sound"), QString());
        QVERIFY(!frmSpell1::Shared().IsLoaded());
        QVERIFY(m_desk->Find<QWidget>("cmdPlay"));
    }

    void noSoundAtTheSecondLineEndsItToo()
    {
        m_desk->After(std::chrono::seconds(12),
                      [this] { m_desk->stage.SetSpeechFailure(platform::kSpeechEngineUnusable); });
        m_desk->stage.timePerLetter = std::chrono::milliseconds(150);
        m_desk->boxes.ExpectAny();
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Good luck!"));
        QVERIFY(m_desk->Find<QWidget>("cmdPlay"));
    }

    void aNullControlIsReplacedAndTheReadRepeated()
    {
        QVERIFY(State().AgentControl.IsNothing());
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(State().AgentControl->Connected());
        QCOMPARE(m_desk->transcript.Asked().filter("Load"),
                 QStringList({ "Merlin Load \"Merlin.acs\"", "Genie Load \"Genie.acs\"",
                               "Peedy Load \"Peedy.acs\"" }));
    }

    void aLostControlIsReplaced()
    {
        const auto lost = m_desk->agent.CreateControl();
        lost->Disconnect();
        State().AgentControl = lost;
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(State().AgentControl->Connected());
        QVERIFY(!(State().AgentControl == lost));
    }

    void aLiveControlIsKept()
    {
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        const auto control = State().AgentControl;
        m_desk->transcript.Clear();
        m_desk->Press("cmdPass");
        m_desk->Press("cmdAgain");
        QVERIFY(State().AgentControl == control);
        QVERIFY(m_desk->transcript.Asked().filter("Load").isEmpty());
    }

    void aCharacterThatCannotBeLoadedIsReported()
    {
        m_desk->stage.SetFileFailure("Genie.acs", platform::kAgentFileMissing);
        m_desk->boxes.Expect(
            "Tumblewick has detected a problem. Please email support@tumblewick.example \r\n"
            " Please quote the following information -2147024894 The system cannot find the file "
            "specified\r\nWe apologise for this inconvenience");
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(frmSpell1::Shared().IsLoaded());
    }

    void aListThatCannotBeReadIsReported_data()
    {
        QTest::addColumn<QString>("path"); // below the application folder
        QTest::addColumn<QString>("report");
        QTest::newRow("missing file") << "\\Lists\\Nothing"
                                      << "53 File not found";
        QTest::newRow("missing folder") << "\\Nowhere\\Animals"
                                        << "76 Path not found";
        QTest::newRow("a folder") << "\\Lists"
                                  << "75 Path/File access error";
    }
    void aListThatCannotBeReadIsReported()
    {
        QFETCH(QString, path);
        QFETCH(QString, report);
        m_desk->boxes.ExpectAny();
        State().GameMode = kSpellingMode;
        State().NumPlayers = 1;
        State().Players = Players(QStringList{ "Ann" });
        State().ListPath = m_desk->folder.path() + path;
        frmSpell1::Shared().Show();
        m_desk->Settle();
        QVERIFY2(m_desk->boxes.LastText().contains(report), qPrintable(m_desk->boxes.LastText()));
        QVERIFY(frmSpell1::Shared().IsLoaded());
    }

    void aBadFirstQuizLineIsReported_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("report");
        QTest::newRow("too few fields") << "What is 2+2?_1_2"
                                        << "5 Invalid procedure call or argument";
        QTest::newRow("no number") << "Q_a_b_c_d_x_"
                                   << "13 Type mismatch";
        QTest::newRow("blank line") << ""
                                    << "5 Invalid procedure call or argument";
    }
    void aBadFirstQuizLineIsReported()
    {
        QFETCH(QString, line);
        QFETCH(QString, report);
        m_desk->boxes.ExpectAny();
        m_desk->BeginQuiz({ "Ann" }, { line });
        QVERIFY2(m_desk->boxes.LastText().contains(report), qPrintable(m_desk->boxes.LastText()));
        QVERIFY(!m_desk->process.Ended());
    }

    void aBinaryFileIsAListLikeAnyOther()
    {
        QByteArray junk;
        for (int value = 0; value < 4096; ++value)
            junk.append(static_cast<char>(value * 7));
        m_desk->WriteFile("Lists/Junk", junk);
        State().GameMode = kSpellingMode;
        State().NumPlayers = 1;
        State().Players = Players(QStringList{ "Ann" });
        State().ListPath = m_desk->folder.path() + "\\Lists\\Junk";
        frmSpell1::Shared().Show();
        m_desk->Settle();
        QCOMPARE(m_desk->States({ "cmdGo" }), QString("cmdGo enabled"));
    }

    void aFailedMoveHoldsThePlainWaitWhileTheScreenLives()
    {
        m_desk->stage.FailNext("Genie", "Slide", platform::kAgentBadData);
        QString states;
        m_desk->time.AfterIdlePolls(500, [&] {
            states = m_desk->States({ "cmdExit" });
            QVERIFY(frmSpell1::Shared().IsLoaded());
        });
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(m_desk->time.Hung());
        QCOMPARE(states, QString("cmdExit enabled"));
        QVERIFY(!m_desk->transcript.Asked().contains("Peedy Show fast"));
    }

    void theScreenMayCloseInTheMiddleOfTheOpening()
    {
        m_desk->After(std::chrono::seconds(3), [] { frmSpell1::Shared().Window()->close(); });
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(m_desk->process.Ended());
        QVERIFY(!m_desk->time.Hung());
    }

    void namesAndListsOfAnyTextGoThrough_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("word");
        QTest::newRow("markup") << "<b>Ann</b>"
                                << "<i>cat</i>";
        QTest::newRow("quotes") << "\"Ann\""
                                << "\"cat\"";
        QTest::newRow("backslashes") << "A\\nn\\"
                                     << "c\\at";
        QTest::newRow("per cent") << "%1%2%n"
                                  << "%s%d";
        QTest::newRow("emoji") << QString::fromUtf8("Ann \xF0\x9F\x90\xB1")
                               << QString::fromUtf8("\xF0\x9F\x90\xB6");
        QTest::newRow("accents") << QString::fromUtf8("Zo\xC3\xAB") << QString::fromUtf8("caf\xC3\xA9");
        QTest::newRow("10,000 letters") << QString(10000, 'n') << QString(10000, 'w');
        QTest::newRow("an underscore in the name") << "A_B"
                                                   << "cat";
    }
    void namesAndListsOfAnyTextGoThrough()
    {
        QFETCH(QString, name);
        QFETCH(QString, word);
        m_desk->BeginSpelling({ name, "Bob" }, { word, word });
        m_desk->Type("txtAnswer", word);
        m_desk->Press("cmdGo");
        QCOMPARE(State().Players.Text(0, Players::kCorrect), QString("1"));
        QVERIFY(m_desk->Find<QTextEdit>("txtScore")->toPlainText().startsWith(name + "    1 out of 1 100%"));
        m_desk->Press("cmdPass");
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->text(), word);
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->textFormat(), Qt::PlainText);
    }

private:
    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestStartGame)
#include "TestStartGame.moc"
