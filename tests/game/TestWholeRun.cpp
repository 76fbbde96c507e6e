#include "game/frmSpell1.h"
#include "platform/forms/FileListBox.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "stage/Praise.h"
#include "support/Desk.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QTest>
#include <QTextEdit>

using namespace tumblewick;
using support::Desk;

// From the menu through the set-up into one game after another, as children do it.
class TestWholeRun : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace();
        m_desk->WriteSpelling("Animals", { "cat", "knight_nite" });
        m_desk->WriteQuiz("Space", { "Q_a_b_c_d_2_", "Q_a_b_c_d_2_" });
        frmMenu1::Shared().Show();
        m_desk->Settle();
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        QVERIFY(!m_desk->time.Hung());
        m_desk.reset();
    }

    void twoGamesOneBehindTheOther()
    {
        m_desk->chance.QueueDraw(0, 2);
        SetUp("cmdPlay", { "Ann", "Bob" }, "Animals");
        QCOMPARE(State().GameMode, QString("Spelling"));
        CharactersStandAtTwiceTheirSize();
        m_desk->chance.QueueDraw(1, 4, 1);
        m_desk->chance.QueueDraw(9, kPraiseCount, 1);
        m_desk->chance.QueueDraw(1, 2);
        Answer("Cat");
        QCOMPARE(Panel(), QString("Ann    1 out of 1 100%\nBob    0 out of 0 0%\n"));
        Answer("nite");
        QCOMPARE(Panel(), QString("Ann    1 out of 1 100%\nBob    0 out of 1 0%\n"));
        m_desk->Press("cmdNew");
        QVERIFY(frmMenu1::Shared().IsActive());

        SetUp("Command3", { "Cleo" }, "Space");
        QCOMPARE(State().GameMode, QString("Quiz"));
        CharactersStandAtTwiceTheirSize();
        QCOMPARE(Panel(), QString());
        QCOMPARE(m_desk->Find<QLabel>("lblListName")->text(), QString("Space"));
        m_desk->transcript.Clear();
        m_desk->chance.QueueDraw(1, 4, 1);
        m_desk->chance.QueueDraw(9, kPraiseCount, 1);
        Choose(1);
        QCOMPARE(Panel(), QString("Cleo    1 out of 1\n"));
        // The praise of the spelling game before is still remembered, and so another one is said.
        QVERIFY(m_desk->transcript.Said().contains("Merlin: Correct. You're too good  Cleo."));
        Choose(0);
        QCOMPARE(Panel(), QString("Cleo    1 out of 2\n"));
        QCOMPARE(m_desk->States({ "cmdGo", "cmdNew", "cmdAgain" }),
                 QString("cmdGo disabled, cmdNew enabled, cmdAgain enabled"));
        m_desk->Press("cmdAgain");
        CharactersStandAtTwiceTheirSize();
        QCOMPARE(Panel(), QString());
        m_desk->Press("cmdExit");
        QVERIFY(m_desk->process.Ended());
        QCOMPARE(*m_desk->process.ExitCode(), 0);
    }

    void tooManyPlayersChooseAgain()
    {
        SetUp("Command3", { "Ann", "Bob", "Cat" }, "Space");
        QVERIFY(m_desk->Find<QRadioButton>("opt1")->isChecked());
        m_desk->Press("cmdNext");
        EnterNamesAndList({ "Ann" }, "Space");
        CharactersStandAtTwiceTheirSize();
        Choose(1);
        QCOMPARE(Panel(), QString("Ann    1 out of 1\n"));
    }

private:
    void SetUp(const QString &button, const QStringList &players, const QString &list)
    {
        m_desk->Press(button);
        m_desk->Find<QRadioButton>(QString("opt%1").arg(players.size()))->click();
        m_desk->Press("cmdNext");
        EnterNamesAndList(players, list);
    }
    void EnterNamesAndList(const QStringList &players, const QString &list)
    {
        for (int index = 0; index < players.size(); ++index)
            m_desk->Type(QString("txtPlayer_%1").arg(index), players[index]);
        m_desk->Press("cmdNext");
        auto *files = m_desk->Find<platform::FileListBox>("File2");
        QCOMPARE(files->count(), 1);
        files->setCurrentRow(0);
        QCOMPARE(files->FileName(), list);
        m_desk->Press("cmdNext");
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
    // Each game loads them anew on a control of its own.
    void CharactersStandAtTwiceTheirSize()
    {
        for (const auto &character : State().Characters) {
            QCOMPARE(int(character->Width()), 256);
            QCOMPARE(int(character->Height()), 256);
            QVERIFY(character->Visible());
        }
        QCOMPARE(int(State().Characters[kMerlin]->Left()), 50);
        QCOMPARE(int(State().Characters[kGenie]->Left()), 200);
        QCOMPARE(int(State().Characters[kPeedy]->Left()), 350);
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestWholeRun)
#include "TestWholeRun.moc"
