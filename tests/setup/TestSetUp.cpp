#include "game/frmSpell1.h"
#include "platform/forms/FittingLabel.h"
#include "setup/frmChooseList1.h"
#include "setup/frmNumPlayers1.h"
#include "setup/frmPlayerNames1.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Captions.h"
#include "support/ListDesk.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>

using namespace tumblewick;
using support::CheckCaptions;
using support::ListDesk;

// The three screens between the menu and the game.
class TestSetUp : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace("File2"); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void captions()
    {
        Show(frmNumPlayers1::Shared());
        CheckCaptions(*m_desk, { { "lblHowMany", "How many players?" },
                                 { "opt1", "1" },
                                 { "opt2", "2" },
                                 { "opt3", "3" },
                                 { "opt4", "4" },
                                 { "opt5", "5" },
                                 { "cmdNext", "&Next" },
                                 { "cmdback", "&Back" },
                                 { "cmdHelp", "&Help !" } });
        // The menu is one step back.
        QVERIFY(!frmNumPlayers1::Shared().Window()->findChild<QWidget *>("cmdMenu"));
        ChoosePlayers(5);
        CheckCaptions(*m_desk, { { "lblPlayer_0", "First player's name" },
                                 { "lblPlayer_1", "Second player's name" },
                                 { "lblPlayer_2", "Third player's name" },
                                 { "lblPlayer_3", "Fouth player's name" }, // misspelt: wanted
                                 { "lblPlayer_4", "Fifth player's name" },
                                 { "cmdNext", "&Next" },
                                 { "cmdback", "&Back" },
                                 { "cmdMenu", "&Main Menu" },
                                 { "cmdHelp", "&Help" } });
        Show(frmChooseList1::Shared());
        CheckCaptions(*m_desk, { { "cmdNext", "&Next" },
                                 { "cmdback", "&Back" },
                                 { "cmdMenu", "&Main Menu" },
                                 { "cmdHelp", "&Help !" } });
    }

    void theNumberIsTakenFromTheOption_data()
    {
        QTest::addColumn<int>("players");
        for (int players = 1; players <= 5; ++players)
            QTest::newRow(qPrintable(QString::number(players))) << players;
    }
    void theNumberIsTakenFromTheOption()
    {
        QFETCH(int, players);
        ChoosePlayers(players);
        QCOMPARE(int(State().NumPlayers), players);
        QVERIFY(frmPlayerNames1::Shared().IsActive());
        QVERIFY(!frmNumPlayers1::Shared().IsLoaded());
    }

    void comingBackOffersOnePlayerAgain()
    {
        ChoosePlayers(4);
        m_desk->Press("cmdback");
        QVERIFY(m_desk->Find<QRadioButton>("opt1")->isChecked());
        QCOMPARE(m_desk->Focus(), QString("opt1"));
    }

    void everyTimeTheNumberComesToTheFrontItOffersOnePlayer()
    {
        Show(frmNumPlayers1::Shared());
        m_desk->Find<QRadioButton>("opt3")->click();
        Show(frmPlayerNames1::Shared());
        frmPlayerNames1::Shared().Unload();
        m_desk->Settle();
        QVERIFY(frmNumPlayers1::Shared().IsActive());
        QVERIFY(m_desk->Find<QRadioButton>("opt1")->isChecked());
    }

    void backFromTheNumberIsTheMenu()
    {
        Show(frmNumPlayers1::Shared());
        m_desk->Press("cmdback");
        QVERIFY(frmMenu1::Shared().IsActive());
        QVERIFY(!frmNumPlayers1::Shared().IsLoaded());
    }

    void eachPlayerSeesABox_data()
    {
        QTest::addColumn<int>("players");
        QTest::addColumn<QString>("first");
        QTest::newRow("1") << 1 << "Enter your name";
        for (int players = 2; players <= 5; ++players)
            QTest::newRow(qPrintable(QString::number(players))) << players << "First player's name";
    }
    void eachPlayerSeesABox()
    {
        QFETCH(int, players);
        ChoosePlayers(players);
        QTEST(m_desk->Find<QLabel>("lblPlayer_0")->text(), "first");
        QCOMPARE(m_desk->Focus(), QString("txtPlayer_0"));
        for (int index = 0; index < 5; ++index) {
            for (const char *control : { "lblPlayer_%1", "txtPlayer_%1" })
                QCOMPARE(m_desk->Find<QWidget>(QString(control).arg(index))->isVisible(), index < players);
        }
    }

    void anEmptyNameIsRefused_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::newRow("the only one") << QStringList({ "" });
        QTest::newRow("the second of three") << QStringList({ "Ann", "", "Cat" });
        QTest::newRow("all five") << QStringList({ "", "", "", "", "" });
    }
    void anEmptyNameIsRefused()
    {
        QFETCH(QStringList, names);
        ChoosePlayers(static_cast<int>(names.size()));
        m_desk->boxes.Expect(
            "You haven't entered names for all of the players. If you have less than " +
            QString::number(names.size()) +
            " players, click Back and change the number of players. Otherwise enter a name for each "
            "player.");
        EnterNames(names);
        QVERIFY(frmPlayerNames1::Shared().IsActive());
        QCOMPARE(State().Players.Count(), 0);
    }

    void namesAreTakenAsTheyAre()
    {
        ChoosePlayers(3);
        EnterNames({ " ", "Ann <b>&\"_%1", "Ann <b>&\"_%1" });
        QCOMPARE(State().Players.Text(0, Players::kName), QString(" "));
        QCOMPARE(State().Players.Text(1, Players::kName), QString("Ann <b>&\"_%1"));
        QCOMPARE(State().Players.Text(2, Players::kHints), QString("0"));
        QVERIFY(frmChooseList1::Shared().IsActive());
        QVERIFY(!frmPlayerNames1::Shared().IsLoaded());
    }

    // As when it is pasted; it stands on one line of the scores.
    void aNameIsOneLine()
    {
        ChoosePlayers(1);
        m_desk->Find<QLineEdit>("txtPlayer_0")->insert("Ann\nLee");
        m_desk->Press("cmdNext");
        QCOMPARE(State().Players.Text(0, Players::kName), QString("Ann Lee"));
    }

    void thePlayersAreMadeAnew()
    {
        State().Players = Players(QStringList{ "Old", "Older", "Oldest" });
        for (int player = 0; player < 3; ++player) {
            for (const auto column : { Players::kCorrect, Players::kAsked, Players::kHints })
                State().Players.SetText(player, column, "7");
        }
        ChoosePlayers(2);
        EnterNames({ "Ann", "Ann" });
        QCOMPARE(State().Players.Count(), 2);
        for (int player = 0; player < 2; ++player) {
            QCOMPARE(State().Players.Text(player, Players::kName), QString("Ann"));
            for (const auto column : { Players::kCorrect, Players::kAsked, Players::kHints })
                QCOMPARE(State().Players.Text(player, column), QString("0"));
        }
    }

    void theNamesScreenHasItsWaysOut()
    {
        ChoosePlayers(2);
        m_desk->Press("cmdback");
        QVERIFY(frmNumPlayers1::Shared().IsActive());
        QVERIFY(!frmPlayerNames1::Shared().IsLoaded());
        m_desk->Press("cmdNext");
        m_desk->Press("cmdMenu");
        QVERIFY(frmMenu1::Shared().IsActive());
        QVERIFY(!frmPlayerNames1::Shared().IsLoaded());
    }

    void listsOfTheModeAreOffered_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("label");
        QTest::newRow("spelling") << "Spelling" << QStringList({ "Animals", "odd.name.txt" })
                                  << "Choose a spelling list";
        QTest::newRow("quiz") << "Quiz" << QStringList({ "Space" }) << "Select a Quiz";
        QTest::newRow("any other word is a quiz")
            << "spelling" << QStringList({ "Space" }) << "Select a Quiz";
    }
    void listsOfTheModeAreOffered()
    {
        QFETCH(QString, mode);
        WriteSomeLists();
        State().GameMode = mode;
        Show(frmChooseList1::Shared());
        QTEST(m_desk->Names(), "files");
        QCOMPARE(m_desk->Focus(), QString("File2"));
        QTEST(m_desk->Find<QLabel>("Label1")->text(), "label");
        QCOMPARE(m_desk->Find<QLabel>("lblmsg")->text(), QString());
    }

    void aClickTellsWhatIsSelected()
    {
        WriteSomeLists();
        State().GameMode = "Spelling";
        Show(frmChooseList1::Shared());
        m_desk->Select("odd.name.txt");
        QCOMPARE(m_desk->Find<QLabel>("lblmsg")->text(),
                 QString("You have selected odd.name.txt. Click Next to play."));
        QCOMPARE(m_desk->Find<QLabel>("lblmsg")->textFormat(), Qt::PlainText);
    }

    void theLongestNameLeavesTheGuidanceLegible()
    {
        const QString name(255, 'm');
        m_desk->WriteSpelling(name, { "cat" });
        State().GameMode = "Spelling";
        Show(frmChooseList1::Shared());
        m_desk->Select(name);
        const auto *message = m_desk->Find<platform::FittingLabel>("lblmsg");
        QCOMPARE(message->text(), "You have selected " + name + ". Click Next to play.");
        const QString seen = message->ShownLines().join(' ');
        QVERIFY2(seen.startsWith("You have selected mm"), qPrintable(seen));
        QVERIFY2(seen.endsWith("mm. Click Next to play."), qPrintable(seen));
    }

    void anArrowKeySelectsTheFirstList()
    {
        WriteSomeLists();
        State().GameMode = "Spelling";
        Show(frmChooseList1::Shared());
        auto *list = m_desk->Files();
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(list->FileName(), QString("Animals"));
        QCOMPARE(m_desk->Find<QLabel>("lblmsg")->text(),
                 QString("You have selected Animals. Click Next to play."));
        QTest::keyClick(list, Qt::Key_Down);
        QCOMPARE(list->FileName(), QString("odd.name.txt"));
    }

    void withoutASelectionNextAsksForASpellingList_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::newRow("spelling") << "Spelling";
        QTest::newRow("quiz, the same words") << "Quiz";
    }
    void withoutASelectionNextAsksForASpellingList()
    {
        QFETCH(QString, mode);
        State().GameMode = mode;
        Show(frmChooseList1::Shared());
        QCOMPARE(m_desk->Names(), QStringList());
        m_desk->boxes.Expect("Please choose a spelling list");
        m_desk->Press("cmdNext");
        QVERIFY(frmChooseList1::Shared().IsActive());
    }

    void aMissingFolderIsReportedAndTheScreenStays()
    {
        QVERIFY(QDir(m_desk->folder.path()).rmdir("Lists"));
        State().GameMode = "Spelling";
        m_desk->boxes.Expect(
            "Tumblewick has detected a problem. Please email support@tumblewick.example \r\n Please quote "
            "the following information 76 Path not found\r\nWe apologise for this inconvenience");
        Show(frmChooseList1::Shared());
        QVERIFY(frmChooseList1::Shared().IsActive());
        QCOMPARE(m_desk->Names(), QStringList());
        m_desk->boxes.Expect("Please choose a spelling list");
        m_desk->Press("cmdNext");
    }

    void theChosenListIsHandedToTheGame()
    {
        m_desk->WriteSpelling("Animals", { "cat" });
        State().GameMode = "Spelling";
        ChoosePlayers(1);
        EnterNames({ "Ann" });
        m_desk->Select("Animals");
        m_desk->Press("cmdNext");
        QCOMPARE(State().ListName, QString("Animals"));
        QCOMPARE(State().ListPath, m_desk->folder.path() + "\\Lists\\Animals");
        QVERIFY(frmSpell1::Shared().IsActive());
        QVERIFY(!frmChooseList1::Shared().IsLoaded());
        QVERIFY(
            m_desk->transcript.Said().contains("Merlin: Ann, how do you spell: \\map=\"cat\"=\"*****\"\\?"));
    }

    void aDoubleClickDoesWhatNextDoes()
    {
        m_desk->WriteSpelling("Animals", { "cat" });
        m_desk->WriteSpelling("Birds", { "robin" });
        State().GameMode = "Spelling";
        ChoosePlayers(1);
        EnterNames({ "Ann" });
        m_desk->DoubleClick("Birds");
        QCOMPARE(State().ListName, QString("Birds"));
        QCOMPARE(State().ListPath, m_desk->folder.path() + "\\Lists\\Birds");
        QVERIFY(frmSpell1::Shared().IsActive());
        QVERIFY(!frmChooseList1::Shared().IsLoaded());
    }

    void aDoubleClickBesideTheListsDoesNothing()
    {
        WriteSomeLists();
        State().GameMode = "Spelling";
        Show(frmChooseList1::Shared());
        auto *list = m_desk->Files();
        const QPoint place(20, list->viewport()->height() - 5);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place);
        m_desk->Settle();
        QVERIFY(frmChooseList1::Shared().IsActive());
    }

    void backLeavesTheListLoadedBehindTheNames()
    {
        WriteSomeLists();
        State().GameMode = "Spelling";
        ChoosePlayers(1);
        EnterNames({ "Ann" });
        m_desk->Select("Animals");
        m_desk->Press("cmdback");
        QVERIFY(frmPlayerNames1::Shared().IsActive());
        QVERIFY(frmChooseList1::Shared().IsLoaded());
        QCOMPARE(m_desk->Find<QLineEdit>("txtPlayer_0")->text(), QString());
        EnterNames({ "Bob" });
        QVERIFY(frmChooseList1::Shared().IsActive());
        QCOMPARE(m_desk->Find<QLabel>("lblmsg")->text(), QString());
        QCOMPARE(m_desk->Files()->FileName(), QString("Animals"));
    }

    void theLabelOfAQuizIsNotTakenBack()
    {
        WriteSomeLists();
        State().GameMode = "Quiz";
        ChoosePlayers(1);
        EnterNames({ "Ann" });
        m_desk->Press("cmdback");
        State().GameMode = "Spelling";
        EnterNames({ "Ann" });
        QCOMPARE(m_desk->Names(), QStringList({ "Animals", "odd.name.txt" }));
        // The screen has stayed loaded, and only a fresh one has its first caption.
        QCOMPARE(m_desk->Find<QLabel>("Label1")->text(), QString("Select a Quiz"));
    }

    void theListHasAWayToTheMenu()
    {
        State().GameMode = "Quiz";
        Show(frmChooseList1::Shared());
        m_desk->Press("cmdMenu");
        QVERIFY(frmMenu1::Shared().IsActive());
        QVERIFY(!frmChooseList1::Shared().IsLoaded());
    }

    void enterGoesOn()
    {
        Show(frmNumPlayers1::Shared());
        QTest::keyClick(m_desk->Find<QRadioButton>("opt1"), Qt::Key_Return);
        m_desk->Settle();
        QVERIFY(frmPlayerNames1::Shared().IsActive());
        auto *name = m_desk->Find<QLineEdit>("txtPlayer_0");
        QTest::keyClicks(name, "Ann");
        QTest::keyClick(name, Qt::Key_Return);
        m_desk->Settle();
        QVERIFY(frmChooseList1::Shared().IsActive());
    }

    void everyStepHasItsHelp()
    {
        Show(frmNumPlayers1::Shared());
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().back().topic, QString("Playing the Game.htm"));
        m_desk->Press("cmdNext");
        QVERIFY(m_desk->help.Open().empty());
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().back().topic, QString("Playing the Game.htm"));
        EnterNames({ "Ann" });
        QVERIFY(m_desk->help.Open().empty());
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().back().topic, QString("Playing the Game.htm"));
        m_desk->Press("cmdMenu");
        QVERIFY(m_desk->help.Open().empty());
    }

private:
    void Show(platform::Screen &screen)
    {
        screen.Show();
        m_desk->Settle();
    }
    void ChoosePlayers(int players)
    {
        Show(frmNumPlayers1::Shared());
        m_desk->Find<QRadioButton>(QString("opt%1").arg(players))->click();
        m_desk->Press("cmdNext");
    }
    void EnterNames(const QStringList &names)
    {
        for (int index = 0; index < names.size(); ++index)
            m_desk->Type(QString("txtPlayer_%1").arg(index), names[index]);
        m_desk->Press("cmdNext");
    }
    void WriteSomeLists()
    {
        m_desk->WriteSpelling("Animals", { "cat" });
        m_desk->WriteSpelling("odd.name.txt", { "dog" });
        m_desk->WriteQuiz("Space", { "Q_a_b_c_d_1_" });
    }

    std::optional<ListDesk> m_desk;
};

QTEST_MAIN(TestSetUp)
#include "TestSetUp.moc"
