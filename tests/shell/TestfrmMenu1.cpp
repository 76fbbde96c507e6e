#include "platform/Error.h"
#include "setup/frmNumPlayers1.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Desk.h"
#include "support/NumberRaised.h"

#include <QAbstractButton>
#include <QFile>
#include <QLabel>
#include <QTest>

using namespace tumblewick;
using support::Desk;
using namespace std::chrono_literals;

// The menu: loading the characters, and the ways from it.
class TestfrmMenu1 : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void captionsOfTheButtons_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::newRow("cmdPlay") << "Play &Spelling";
        QTest::newRow("Command3") << "Play a &Quiz";
        QTest::newRow("cmdCreate") << "&Add or Edit List";
        QTest::newRow("cmdSettings") << "&Settings";
        QTest::newRow("cmdAbout") << "About Tumble Wick"; // two words, and no letter of its own: wanted
        QTest::newRow("cmdHelp") << "&Help !";
        QTest::newRow("Command1") << "Q&uit";
    }
    void captionsOfTheButtons()
    {
        Open();
        QTEST(m_desk->Find<QAbstractButton>(QTest::currentDataTag())->text(), "caption");
    }

    void theFirstTimeTheCharactersAreLoadedHiddenAndDoubled()
    {
        Open();
        QVERIFY(State().MenuShown);
        QVERIFY(State().AgentControl->Connected());
        for (const auto &character : State().Characters) {
            QVERIFY(!character->Visible());
            QCOMPARE(int(character->Height()), 256);
            QCOMPARE(int(character->Width()), 256);
        }
    }

    void aLaterReturnLoadsNothing()
    {
        Open();
        m_desk->transcript.Clear();
        m_desk->Press("cmdPlay");
        m_desk->Press("cmdback");
        QVERIFY(frmMenu1::Shared().IsActive());
        QVERIFY(m_desk->transcript.Asked().filter("Load").isEmpty());
        QVERIFY(!State().AgentControl->Connected());
    }

    void theIconIsShownAsItIs()
    {
        Open();
        QCOMPARE(m_desk->Find<QLabel>("Image1")->pixmap(Qt::ReturnByValue).size(), QSize(8, 8));
    }

    void theStageLineLiesAboveTheTitle()
    {
        Open();
        QCOMPARE(int(frmMenu1::Shared().IntroStartY), m_desk->Find<QLabel>("Label1")->y() - 100);
    }

    void settingsAreReadOnceInARun()
    {
        m_desk->WriteFile("Set", "Intro\r\nsecret\r\n");
        Open();
        QVERIFY(State().PlayIntro);
        QVERIFY(!frmMenu1::Shared().IntroCancelled);
        QCOMPARE(State().AuthoringPassword, QString("secret"));
        m_desk->WriteFile("Set", "No Intro\r\nother\r\n");
        m_desk->Press("cmdPlay");
        m_desk->Press("cmdback");
        QVERIFY(State().PlayIntro);
        QCOMPARE(State().AuthoringPassword, QString("secret"));
    }

    void withoutIntroductionsTheRecordIsNotTouched_data()
    {
        QTest::addColumn<QByteArray>("set");
        QTest::newRow("off") << QByteArray("No Intro\r\n\r\n");
        QTest::newRow("another case") << QByteArray("intro\r\n\r\n");
        QTest::newRow("something else") << QByteArray("Yes\r\n\r\n");
    }
    void withoutIntroductionsTheRecordIsNotTouched()
    {
        QFETCH(QByteArray, set);
        m_desk->WriteFile("Set", set);
        m_desk->WriteFile("Lintro", "odd");
        Open();
        QVERIFY(frmMenu1::Shared().IntroCancelled);
        QCOMPARE(frmMenu1::Shared().PendingIntro, QString());
        QCOMPARE(m_desk->chance.Given(), 0);
        QCOMPARE(m_desk->Content("Lintro"), QByteArray("odd"));
    }

    void anIntroductionIsDrawnUntilItIsTheOtherOne()
    {
        m_desk->WriteFile("Set", "Intro\r\n\r\n");
        m_desk->WriteFile("Lintro", "1");
        for (int drawn : { 1, 1, 0 })
            m_desk->chance.QueueDraw(drawn, 2);
        Open();
        QCOMPARE(frmMenu1::Shared().PendingIntro, QString("IntroTwo"));
        QCOMPARE(m_desk->Content("Lintro"), QByteArray("0"));
        QCOMPARE(m_desk->chance.RandomizedAfter(), std::vector<int>({ 0, 1, 2 }));
    }

    void theRecordFlipsAtEachReturnThoughNothingPlays()
    {
        m_desk->WriteFile("Set", "Intro\r\n\r\n");
        m_desk->chance.QueueDraw(1, 2);
        Open();
        QCOMPARE(frmMenu1::Shared().PendingIntro, QString("IntroOne"));
        QCOMPARE(m_desk->Content("Lintro"), QByteArray("1"));
        m_desk->Press("cmdPlay");
        m_desk->chance.QueueDraw(0, 2);
        m_desk->Press("cmdback");
        QCOMPARE(m_desk->Content("Lintro"), QByteArray("0"));
        m_desk->Press("cmdPlay");
        m_desk->chance.QueueDraw(0, 2);
        m_desk->chance.QueueDraw(1, 2);
        m_desk->Press("cmdback");
        QCOMPARE(m_desk->Content("Lintro"), QByteArray("1"));
    }

    void theRecordFlipsBehindTheAboutBoxToo()
    {
        m_desk->WriteFile("Set", "Intro\r\n\r\n");
        m_desk->chance.QueueDraw(1, 2);
        Open();
        m_desk->Press("cmdAbout");
        m_desk->chance.QueueDraw(0, 2);
        m_desk->Press("cmdOK");
        QCOMPARE(m_desk->Content("Lintro"), QByteArray("0"));
        // The comedy that was drawn first is still the one that is to come.
        QCOMPARE(frmMenu1::Shared().PendingIntro, QString("IntroOne"));
        QVERIFY(!frmMenu1::Shared().IntroCancelled);
    }

    void theComedyBeginsFourSecondsLaterAndOnce()
    {
        m_desk->WriteFile("Set", "Intro\r\n\r\n");
        m_desk->chance.QueueDraw(1, 2);
        Open();
        m_desk->transcript.Clear();
        m_desk->time.Run(3999ms);
        QCOMPARE(m_desk->transcript.Asked(), QStringList());
        m_desk->time.Run(1ms);
        QCOMPARE(m_desk->transcript.Asked().value(0), QString("Merlin Show"));
        QVERIFY(m_desk->time.RunUntilIdle(1h)); // the timer does not go on ticking
        QCOMPARE(frmMenu1::Shared().PendingIntro, QString());
    }

    void aFileOfSettingsThatCannotServeEndsTheProgram_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("report");
        const QByteArray none;
        QTest::newRow("no settings") << "Set" << none << "Run-time error '53':\r\n\r\nFile not found";
        QTest::newRow("settings of one line")
            << "Set" << QByteArray("Intro\r\n") << "Run-time error '62':\r\n\r\nInput past end of file";
        QTest::newRow("no record") << "Lintro" << none
                                   << "Run-time error '62':\r\n\r\nInput past end of file";
        QTest::newRow("an odd record")
            << "Lintro" << QByteArray("abc") << "Run-time error '13':\r\n\r\nType mismatch";
    }
    void aFileOfSettingsThatCannotServeEndsTheProgram()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, content);
        QFETCH(QString, report);
        m_desk->WriteFile("Set", "Intro\r\n\r\n");
        if (content.isNull())
            QVERIFY(QFile::remove(m_desk->folder.filePath(file)));
        else
            m_desk->WriteFile(file, content);
        m_desk->boxes.Expect(report);
        Open();
        QVERIFY(m_desk->process.Ended());
    }

    void aMissingOrBadIconEndsTheProgram_data()
    {
        QTest::addColumn<bool>("present");
        QTest::addColumn<QString>("below"); // the application folder
        QTest::addColumn<QString>("report");
        QTest::newRow("missing") << false << ""
                                 << "Run-time error '53':\r\n\r\nFile not found";
        QTest::newRow("no folder") << false << "/gone"
                                   << "Run-time error '76':\r\n\r\nPath not found";
        QTest::newRow("no picture") << true << ""
                                    << "Run-time error '481':\r\n\r\nInvalid picture";
    }
    void aMissingOrBadIconEndsTheProgram()
    {
        QFETCH(bool, present);
        QFETCH(QString, below);
        QFETCH(QString, report);
        QVERIFY(QFile::remove(m_desk->folder.filePath("TWicon4.bmp")));
        m_desk->process.SetApplicationFolder(m_desk->folder.path() + below);
        if (present)
            m_desk->WriteFile("TWicon4.bmp", "not a picture");
        m_desk->boxes.Expect(report);
        Open();
        QVERIFY(m_desk->process.Ended());
    }

    void aCharacterThatCannotBeLoadedEndsTheProgram()
    {
        m_desk->stage.SetFileFailure("Peedy.acs", platform::kNotACharacterFile);
        m_desk->boxes.ExpectAny();
        Open();
        QVERIFY(m_desk->boxes.LastText().startsWith("Run-time error '-2147212796':"));
        QVERIFY(m_desk->process.Ended());
    }

    void playHidesTheCharactersAndGoesOn_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("mode");
        QTest::newRow("spelling") << "cmdPlay"
                                  << "Spelling";
        QTest::newRow("quiz") << "Command3"
                              << "Quiz";
    }
    void playHidesTheCharactersAndGoesOn()
    {
        QFETCH(QString, button);
        Open();
        m_desk->transcript.Clear();
        m_desk->Press(button);
        QTEST(State().GameMode, "mode");
        QVERIFY(frmMenu1::Shared().IntroCancelled);
        QCOMPARE(m_desk->transcript.Asked().mid(0, 3),
                 QStringList({ "Genie Hide", "Peedy Hide", "Merlin Hide" }));
        QVERIFY(frmNumPlayers1::Shared().IsActive());
        QVERIFY(!frmMenu1::Shared().IsLoaded());
    }

    void theNextScreenIsUpBeforeTheMenuGoes()
    {
        Open();
        m_desk->transcript.Clear();
        m_desk->Press("cmdPlay");
        QCOMPARE(m_desk->transcript.Lines().filter("screen "),
                 QStringList({ "screen frmNumPlayers1 load", "screen frmMenu1 unload",
                               "screen frmNumPlayers1 activate" }));
    }

    void playGoesOnWithoutAControl()
    {
        Open();
        State().AgentControl = nullptr;
        m_desk->transcript.Clear();
        m_desk->Press("cmdPlay");
        QCOMPARE(State().GameMode, QString("Spelling"));
        QVERIFY(frmMenu1::Shared().IntroCancelled);
        QCOMPARE(m_desk->transcript.Asked(), QStringList());
        QVERIFY(frmNumPlayers1::Shared().IsActive());
        QVERIFY(!frmMenu1::Shared().IsLoaded());
    }

    void playReportsOtherErrorsAndStays()
    {
        Open();
        // The control lives, but the characters are those of one that has gone.
        const auto other = m_desk->agent.CreateControl();
        other->Load("Merlin", "Merlin.acs");
        State().Characters[kGenie] = other->Character("Merlin");
        other->Disconnect();
        m_desk->boxes.ExpectAny();
        m_desk->Press("cmdPlay");
        QVERIFY(m_desk->boxes.LastText().contains("-2147213310"));
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void settingsAndAuthoringSendTheCharactersOff_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("screen");
        QTest::newRow("settings") << "cmdSettings"
                                  << "frmSettings";
        QTest::newRow("authoring") << "cmdCreate"
                                   << "frmList";
    }
    void settingsAndAuthoringSendTheCharactersOff()
    {
        QFETCH(QString, button);
        QFETCH(QString, screen);
        Open();
        frmMenu1::Shared().IntroCancelled = false;
        m_desk->transcript.Clear();
        m_desk->Press(button);
        QVERIFY(frmMenu1::Shared().IntroCancelled);
        QCOMPARE(m_desk->transcript.Asked().mid(0, 7),
                 QStringList({ "Merlin StopAll", "Genie StopAll", "Peedy StopAll", "Merlin Play \"Pleased\"",
                               "Merlin Hide", "Genie Hide", "Peedy Hide" }));
        QVERIFY(m_desk->transcript.Lines().contains("screen " + screen + " activate"));
        QVERIFY(!frmMenu1::Shared().IsLoaded());
        // Behind these screens the control has gone; playing goes on all the same.
        m_desk->Press(button == "cmdCreate" ? "cmdMenu" : "cmdback");
        QVERIFY(State().AgentControl.IsNothing());
        m_desk->Press("cmdPlay");
        QVERIFY(frmNumPlayers1::Shared().IsActive());
    }

    void theyOpenWithoutTheService_data() { settingsAndAuthoringSendTheCharactersOff_data(); }
    void theyOpenWithoutTheService()
    {
        QFETCH(QString, button);
        QFETCH(QString, screen);
        Open();
        m_desk->Press("cmdPlay");
        m_desk->Press("cmdback");
        m_desk->Press(button);
        QVERIFY(m_desk->transcript.Lines().contains("screen " + screen + " activate"));
    }

    void theyOpenWhenTheServiceHasGone_data() { settingsAndAuthoringSendTheCharactersOff_data(); }
    void theyOpenWhenTheServiceHasGone()
    {
        QFETCH(QString, button);
        QFETCH(QString, screen);
        m_desk->WriteFile("Set", "No Intro\r\nSecret\r\n");
        Open();
        frmMenu1::Shared().IntroCancelled = false;
        State().AgentControl->Disconnect(); // the only connection that there is
        QCOMPARE(support::NumberRaised([] { State().Characters[kMerlin]->StopAll(); }),
                 qint32(platform::kAgentGone));
        if (button == "cmdCreate")
            m_desk->boxes.ExpectInput("Enter Password", "Secret");
        m_desk->Press(button);
        QVERIFY(m_desk->transcript.Lines().contains("screen " + screen + " activate"));
        // The characters come first, and what is behind them was not come to: wanted.
        QVERIFY(!frmMenu1::Shared().IntroCancelled);
    }

    void theyReportOtherErrorsAndStay_data() { settingsAndAuthoringSendTheCharactersOff_data(); }
    void theyReportOtherErrorsAndStay()
    {
        QFETCH(QString, button);
        Open();
        State().Characters[kMerlin] = nullptr;
        m_desk->boxes.Expect("Object variable or With block variable not set 91");
        m_desk->Press(button);
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void thePasswordGuardsAuthoring_data()
    {
        QTest::addColumn<QString>("reply");
        QTest::addColumn<QString>("box");
        QTest::addColumn<bool>("opens");
        QTest::newRow("right") << "Secret"
                               << "" << true;
        QTest::newRow("another case") << "secret"
                                      << "Incorrect password" << false;
        QTest::newRow("a blank more") << "Secret "
                                      << "Incorrect password" << false;
        QTest::newRow("nothing, or cancelled") << ""
                                               << "" << false;
    }
    void thePasswordGuardsAuthoring()
    {
        QFETCH(QString, reply);
        QFETCH(QString, box);
        QFETCH(bool, opens);
        m_desk->WriteFile("Set", "No Intro\r\nSecret\r\n");
        Open();
        m_desk->boxes.ExpectInput("Enter Password", reply);
        if (!box.isEmpty())
            m_desk->boxes.Expect(box);
        m_desk->Press("cmdCreate");
        QCOMPARE(frmMenu1::Shared().IsLoaded(), !opens);
        QVERIFY(frmMenu1::Shared().IntroCancelled);
    }

    void quitEndsAtOnceAndTellsNobody()
    {
        Open();
        m_desk->transcript.Clear();
        m_desk->Press("Command1");
        QVERIFY(m_desk->process.Ended());
        QCOMPARE(*m_desk->process.ExitCode(), 0);
        QCOMPARE(m_desk->transcript.Lines(), QStringList());
        QCOMPARE(m_desk->help.Calls().last(), QString("CloseAll"));
    }

    void closingTheLastWindowFromItsFrameEndsTheProgram()
    {
        Open();
        frmMenu1::Shared().Window()->close();
        m_desk->Settle();
        QVERIFY(m_desk->process.Ended());
    }

    void buttonsKeepAllButTheirLeft()
    {
        Open();
        QWidget *window = frmMenu1::Shared().Window();
        window->resize(800, 600);
        const auto *play = m_desk->Find<QWidget>("cmdPlay");
        const QRect before = play->geometry();
        const int letters = play->font().pixelSize();
        const QRect title = m_desk->Find<QLabel>("Label1")->geometry();
        window->resize(1600, 1200);
        QCOMPARE(play->geometry(), QRect(QPoint(before.left() * 2, before.top()), before.size()));
        QCOMPARE(play->font().pixelSize(), letters);
        QCOMPARE(m_desk->Find<QLabel>("Label1")->size(), title.size() * 2);
    }

    void helpOpensItsTopic()
    {
        Open();
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().front().topic, QString("Introduction.htm"));
        QCOMPARE(m_desk->help.Open().front().file, m_desk->folder.path() + "\\TumblewickHelp.chm");
        QVERIFY(frmMenu1::Shared().IsActive());
        m_desk->Press("cmdPlay");
        QVERIFY(m_desk->help.Open().empty());
    }

    void finalReleaseClearsTheControlAndTheRequests()
    {
        Open();
        State().CurrentRequest = State().Characters[kMerlin]->Show();
        State().SecondRequest = State().CurrentRequest;
        platform::ForgetScreens();
        QVERIFY(State().AgentControl.IsNothing());
        QVERIFY(State().CurrentRequest.IsNothing());
        QVERIFY(State().SecondRequest.IsNothing());
        QVERIFY(!State().Characters[kMerlin].IsNothing());
    }

private:
    void Open()
    {
        frmMenu1::Shared().Show();
        m_desk->Settle();
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestfrmMenu1)
#include "TestfrmMenu1.moc"
