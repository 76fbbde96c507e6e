#include "game/frmSpell1.h"
#include "shell/SharedState.h"
#include "shell/frmAbout.h"
#include "shell/frmMenu1.h"
#include "shell/frmSettings.h"
#include "support/Desk.h"

#include <QFile>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

using namespace tumblewick;
using platform::BoxAnswer;
using support::Desk;

namespace {

const QString kDifferent =
    QStringLiteral("The 2 passwords are different. Please check your passwords and try again. ");
const QString kSaved = QStringLiteral("Save successful");
const QString kQuestion = QStringLiteral("Save changes?");

} // namespace

// Introductions, the password, and what is asked on the way back.
class TestfrmSettings : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void texts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("lblHead") << "Change Settings";
        QTest::newRow("Frame1") << "Character Introductions";
        QTest::newRow("optIntro") << "Play introductions";
        QTest::newRow("optNoIntro") << "Don't play introductions";
        QTest::newRow("Label1") << "Password for accessing add / edit list functionality (optional)";
        QTest::newRow("Label2") << "Repeat password";
        QTest::newRow("cmdProperties") << "&Change Character Properties";
        QTest::newRow("cmdSave") << "&Save";
        QTest::newRow("cmdback") << "&Back";
        QTest::newRow("cmdHelp") << "&Help !";
    }
    void texts()
    {
        Open(true, "");
        const QWidget *control = m_desk->Find<QWidget>(QTest::currentDataTag());
        QTEST(control->property(control->inherits("QGroupBox") ? "title" : "text").toString(), "text");
    }

    void itShowsWhatTheRunStartedWith_data()
    {
        QTest::addColumn<bool>("playIntro");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("box");
        QTest::newRow("on") << true << ""
                            << "";
        QTest::newRow("off") << false << ""
                             << "";
        QTest::newRow("password") << false << "secret"
                                  << "****";
    }
    void itShowsWhatTheRunStartedWith()
    {
        QFETCH(bool, playIntro);
        QFETCH(QString, password);
        Open(playIntro, password);
        QCOMPARE(m_desk->Find<QRadioButton>("optIntro")->isChecked(), playIntro);
        QCOMPARE(m_desk->Find<QRadioButton>("optNoIntro")->isChecked(), !playIntro);
        QTEST(m_desk->Find<QLineEdit>("txtPassword")->text(), "box");
        QTEST(m_desk->Find<QLineEdit>("txtpassword2")->text(), "box");
        QCOMPARE(m_desk->Find<QLineEdit>("txtPassword")->echoMode(), QLineEdit::Normal);
    }

    void backWithoutAChangeAsksNothing()
    {
        Open(true, "secret");
        m_desk->Press("cmdback");
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void aSaveWritesTheFile_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<bool>("written");
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("after");
        const QByteArray none = "as it was";
        QTest::newRow("a new one") << ""
                                   << "abc"
                                   << "abc" << true << QByteArray("No Intro\r\nabc\r\n") << "abc";
        QTest::newRow("untouched") << "old"
                                   << "****"
                                   << "****" << true << QByteArray("No Intro\r\nold\r\n") << "old";
        QTest::newRow("cleared") << "old"
                                 << ""
                                 << "" << true << QByteArray("No Intro\r\n\r\n") << "";
        QTest::newRow("only one changed") << "old"
                                          << "abc"
                                          << "****" << false << none << "old";
        QTest::newRow("letter case differs") << ""
                                             << "abc"
                                             << "Abc" << false << none << "";
        QTest::newRow("the mask without one set") << ""
                                                  << "****"
                                                  << "****" << true << QByteArray("No Intro\r\n\r\n") << "";
    }
    void aSaveWritesTheFile()
    {
        QFETCH(QString, before);
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(bool, written);
        Open(false, before);
        m_desk->WriteFile("Set", "as it was");
        m_desk->Type("txtPassword", first);
        m_desk->Type("txtpassword2", second);
        m_desk->boxes.Expect(written ? kSaved : kDifferent);
        m_desk->Press("cmdSave");
        QTEST(m_desk->Content("Set"), "file");
        QTEST(State().AuthoringPassword, "after");
        QVERIFY(frmSettings::Shared().IsActive());
    }

    // As when it is pasted; a line break would cut it off in the file.
    void aPasswordIsOneLine()
    {
        Open(true, "");
        for (const char *box : { "txtPassword", "txtpassword2" }) {
            m_desk->Find<QLineEdit>(box)->insert("open\r\nsesame");
            QCOMPARE(m_desk->Find<QLineEdit>(box)->text(), QString("open sesame"));
        }
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Content("Set"), QByteArray("Intro\r\nopen sesame\r\n"));
        QCOMPARE(State().AuthoringPassword, QString("open sesame"));
    }

    void theChoiceOfIntroductionsIsForTheNextRun()
    {
        Open(true, "");
        Click("optNoIntro");
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Content("Set"), QByteArray("No Intro\r\n\r\n"));
        m_desk->Press("cmdback");
        QVERIFY(State().PlayIntro);
        ShowScreen(frmSettings::Shared(), frmMenu1::Shared());
        m_desk->Settle();
        QVERIFY(m_desk->Find<QRadioButton>("optIntro")->isChecked());
    }

    void whatMarksAChange_data()
    {
        QTest::addColumn<bool>("playIntro");
        QTest::addColumn<QString>("act");
        QTest::addColumn<bool>("asks");
        QTest::newRow("mouse on the first") << false << "click optIntro" << true;
        QTest::newRow("mouse on the one that is chosen") << true << "click optIntro" << true;
        QTest::newRow("key on the first") << false << "key optIntro" << false;
        QTest::newRow("mouse on the second") << true << "click optNoIntro" << true;
        QTest::newRow("mouse on the second when it is chosen") << false << "click optNoIntro" << true;
        QTest::newRow("key on the second") << true << "key optNoIntro" << true;
        QTest::newRow("first box") << true << "type txtPassword" << true;
        QTest::newRow("second box") << true << "type txtpassword2" << true;
    }
    void whatMarksAChange()
    {
        QFETCH(bool, playIntro);
        QFETCH(QString, act);
        QFETCH(bool, asks);
        Open(playIntro, "");
        const QString control = act.section(' ', 1);
        if (act.startsWith("click"))
            Click(control.toUtf8());
        else if (act.startsWith("key"))
            ChooseByKey(control);
        else
            m_desk->Type(control, "x");
        if (asks)
            m_desk->boxes.Expect(kQuestion, BoxAnswer::No);
        m_desk->Press("cmdback");
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void theQuestionOnTheWayBack_data()
    {
        QTest::addColumn<QString>("second");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("box");
        QTest::addColumn<bool>("leaves");
        QTest::newRow("yes") << "abc" << int(BoxAnswer::Yes) << kSaved << true;
        QTest::newRow("yes, but they differ") << "x" << int(BoxAnswer::Yes) << kDifferent << false;
        QTest::newRow("no") << "x" << int(BoxAnswer::No) << "" << true;
        QTest::newRow("cancel") << "abc" << int(BoxAnswer::Cancel) << "" << false;
    }
    void theQuestionOnTheWayBack()
    {
        QFETCH(QString, second);
        QFETCH(int, answer);
        QFETCH(QString, box);
        QFETCH(bool, leaves);
        Open(true, "");
        m_desk->Type("txtPassword", "abc");
        m_desk->Type("txtpassword2", second);
        m_desk->boxes.Expect(kQuestion, static_cast<BoxAnswer>(answer));
        if (!box.isEmpty())
            m_desk->boxes.Expect(box);
        m_desk->Press("cmdback");
        QCOMPARE(m_desk->boxes.All().front().buttons, platform::BoxButtons::YesNoCancel);
        QCOMPARE(frmMenu1::Shared().IsActive(), leaves);
    }

    void aSavedScreenAsksNothing()
    {
        Open(true, "");
        m_desk->Type("txtPassword", "a");
        m_desk->Type("txtpassword2", "a");
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("cmdSave");
        m_desk->Press("cmdback");
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void aRefusedSaveIsStillToBeDone()
    {
        Open(true, "");
        m_desk->Type("txtPassword", "a");
        m_desk->boxes.Expect(kDifferent);
        m_desk->Press("cmdSave");
        QCOMPARE(State().AuthoringPassword, QString());
        m_desk->boxes.Expect(kQuestion, BoxAnswer::Cancel);
        m_desk->Press("cmdback");
        QVERIFY(frmSettings::Shared().IsActive());
    }

    // As when another screen lay over it. What was typed stays, unless there is a password.
    void becomingActiveAgainTakesNothingForChanged_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("text");
        QTest::newRow("no password") << ""
                                     << "typed";
        QTest::newRow("password") << "secret"
                                  << "****";
    }
    void becomingActiveAgainTakesNothingForChanged()
    {
        QFETCH(QString, password);
        Open(false, password);
        m_desk->Type("txtPassword", "typed");
        frmAbout::Shared().Show();
        m_desk->Settle();
        m_desk->Press("cmdOK");
        QVERIFY(frmSettings::Shared().IsActive());
        QTEST(m_desk->Find<QLineEdit>("txtPassword")->text(), "text");
        m_desk->Press("cmdback");
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void aFileThatCannotBeWrittenEndsTheProgram()
    {
        Open(true, "");
        QVERIFY(QFile::remove(m_desk->folder.filePath("Set")));
        m_desk->boxes.Expect("Run-time error '53':\r\n\r\nFile not found");
        m_desk->Press("cmdSave");
        QVERIFY(m_desk->process.Ended());
        QVERIFY(!QFile::exists(m_desk->folder.filePath("Set")));
    }

    void theCharactersPropertiesComeByTheGameScreen()
    {
        Open(true, "");
        m_desk->Press("cmdProperties");
        QVERIFY(frmSpell1::Shared().IsLoaded());
        QVERIFY(frmSpell1::Shared().Agent1()->Sheet().Visible());
        QVERIFY(frmSettings::Shared().IsActive());
    }

    void helpOpensItsTopicAndGoesWithTheScreen()
    {
        Open(true, "");
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().front().topic, QString("Settings1.htm"));
        m_desk->Press("cmdback");
        QVERIFY(m_desk->help.Open().empty());
    }

    void leavingReleasesTheScreenAndTheControl()
    {
        Open(true, "");
        m_desk->Press("cmdback");
        QVERIFY(!frmSettings::Exists());
        QVERIFY(State().AgentControl.IsNothing());
    }

private:
    void Open(bool playIntro, const QString &password)
    {
        State().MenuShown = true;
        State().PlayIntro = playIntro;
        State().AuthoringPassword = password;
        if (playIntro)
            m_desk->chance.QueueDraw(1, 2);
        frmSettings::Shared().Show();
        m_desk->Settle();
    }
    // By an arrow key, from the other one.
    void ChooseByKey(const QString &control)
    {
        const QString other = control == "optIntro" ? "optNoIntro" : "optIntro";
        QTest::keyClick(m_desk->Find<QRadioButton>(other), Qt::Key_Down);
        QVERIFY(m_desk->Find<QRadioButton>(control)->isChecked());
    }
    void Click(const QByteArray &control)
    {
        QTest::mouseClick(m_desk->Find<QRadioButton>(control), Qt::LeftButton);
        m_desk->Settle();
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestfrmSettings)
#include "TestfrmSettings.moc"
