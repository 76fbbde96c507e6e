#include "authoring/frmDelete.h"
#include "authoring/frmList.h"
#include "platform/agent/Agent.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Captions.h"
#include "support/ListDesk.h"
#include "support/ReportText.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace tumblewick;
using platform::BoxAnswer;
using support::ListDesk;
using support::ReportText;
using Operation = support::FaultyFiles::Operation;

namespace {

QString Question(const QString &name)
{
    return QStringLiteral("Are you sure you want to delete ") + name + QLatin1Char('?');
}

} // namespace

// Lists that are deleted, and what goes wrong with it.
class TestfrmDelete : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace("File1");
        for (const char *name : { "bears", "Ants", "cats.txt", "Dogs" })
            m_desk->WriteSpelling(name, { "word" });
        for (const char *name : { "Capitals", "Rivers.old.doc" })
            m_desk->WriteQuiz(name, { "q_1_2_3_4_1_" });
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void everyFileOfTheKindIsOffered_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("spelling lists") << kSpellList << QStringList{ "Ants", "bears", "cats.txt", "Dogs" };
        QTest::newRow("quizzes") << kQuizList << QStringList{ "Capitals", "Rivers.old.doc" };
        QTest::newRow("anything else is quizzes") << "spell" << QStringList{ "Capitals", "Rivers.old.doc" };
        QTest::newRow("nothing is quizzes") << "" << QStringList{ "Capitals", "Rivers.old.doc" };
    }
    void everyFileOfTheKindIsOffered()
    {
        QFETCH(QString, kind);
        Open(kind);
        QTEST(m_desk->Names(), "names");
        QCOMPARE(frmDelete::Shared().Window()->windowTitle(), "Delete a List");
        support::CheckCaptions(*m_desk, { { "lblHead", "Select a List to Delete" },
                                          { "cmdDel", "&Delete List" },
                                          { "cmdback", "&Back" },
                                          { "cmdExit", "&Main Menu" },
                                          { "cmdHelp", "&Help !" } });
    }

    void aListIsDeletedAfterAYes_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("file");
        QTest::addColumn<QStringList>("left");
        QTest::newRow("spelling list") << kSpellList << "bears"
                                       << "Lists/bears" << QStringList{ "Ants", "cats.txt", "Dogs" };
        QTest::newRow("the last one") << kSpellList << "Dogs"
                                      << "Lists/Dogs" << QStringList{ "Ants", "bears", "cats.txt" };
        QTest::newRow("quiz") << kQuizList << "Capitals"
                              << "QList/Capitals" << QStringList{ "Rivers.old.doc" };
    }
    void aListIsDeletedAfterAYes()
    {
        QFETCH(QString, kind);
        QFETCH(QString, name);
        QFETCH(QString, file);
        Open(kind);
        m_desk->Select(name);
        m_desk->boxes.Expect(Question(name), BoxAnswer::Yes);
        m_desk->Press("cmdDel");
        QVERIFY(!QFile::exists(m_desk->folder.filePath(file)));
        QTEST(m_desk->Names(), "left");
        QCOMPARE(m_desk->Files()->FileName(), QString());
        QCOMPARE(m_desk->boxes.All().at(0).title, "Confirm Delete");
        QVERIFY(m_desk->boxes.All().at(0).buttons == platform::BoxButtons::YesNo);
        QVERIFY(frmDelete::Shared().IsActive());
    }

    void aNoLeavesEverything()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->boxes.Expect(Question("bears"), BoxAnswer::No);
        m_desk->Press("cmdDel");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList({ "Ants", "Dogs", "bears", "cats.txt" }));
        QCOMPARE(m_desk->Files()->FileName(), "bears");
    }

    void oneAfterTheOtherUntilNoneIsLeft()
    {
        Open(kQuizList);
        for (const char *name : { "Rivers.old.doc", "Capitals" }) {
            m_desk->Select(name);
            m_desk->boxes.Expect(Question(name), BoxAnswer::Yes);
            m_desk->Press("cmdDel");
        }
        QCOMPARE(m_desk->Names(), QStringList());
        QCOMPARE(m_desk->OnDisk("QList"), QStringList());
    }

    void withNothingSelectedTheQuestionHasNoNameAndAYesFails()
    {
        Open(kSpellList);
        m_desk->boxes.Expect("Are you sure you want to delete ?", BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(75));
        m_desk->Press("cmdDel");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList({ "Ants", "Dogs", "bears", "cats.txt" }));
        m_desk->boxes.Expect("Are you sure you want to delete ?", BoxAnswer::No);
        m_desk->Press("cmdDel");
    }

    void anEmptyFolderIsAnEmptyBox()
    {
        QVERIFY(QDir(m_desk->folder.filePath("QList")).removeRecursively());
        QVERIFY(QDir(m_desk->folder.path()).mkdir("QList"));
        Open(kQuizList);
        QCOMPARE(m_desk->Names(), QStringList());
    }

    void aFailureIsReportedAndChangesNothing_data()
    {
        QTest::addColumn<qint32>("number");
        QTest::newRow("no permission") << 70;
        QTest::newRow("deleted meanwhile") << 53;
        QTest::newRow("folder gone") << 76;
        QTest::newRow("drive gone") << 68;
    }
    void aFailureIsReportedAndChangesNothing()
    {
        QFETCH(qint32, number);
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->files.Fail(Operation::Kill, number);
        m_desk->boxes.Expect(Question("bears"), BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(number));
        m_desk->Press("cmdDel");
        QCOMPARE(m_desk->Names(), QStringList({ "Ants", "bears", "cats.txt", "Dogs" }));
        QCOMPARE(m_desk->Files()->FileName(), "bears");
        QVERIFY(frmDelete::Shared().IsActive());
    }

    void aListThatIsGoneMeanwhileIsReported()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->boxes.Expect(Question("bears"), BoxAnswer::Yes,
                             [&] { QVERIFY(QFile::remove(m_desk->folder.filePath("Lists/bears"))); });
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdDel");
        // The box shows what it showed.
        QCOMPARE(m_desk->Names(), QStringList({ "Ants", "bears", "cats.txt", "Dogs" }));
    }

    void aMissingFolderIsReported()
    {
        QVERIFY(QDir(m_desk->folder.filePath("Lists")).removeRecursively());
        m_desk->boxes.Expect(ReportText(76));
        Open(kSpellList);
        QCOMPARE(m_desk->Names(), QStringList());
        QVERIFY(frmDelete::Shared().IsActive());
    }

    void aFolderThatGoesDuringTheQuestionIsReported()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->boxes.Expect(Question("bears"), BoxAnswer::Yes,
                             [&] { QVERIFY(QDir(m_desk->folder.filePath("Lists")).removeRecursively()); });
        m_desk->boxes.Expect(ReportText(76));
        m_desk->Press("cmdDel");
    }

    void namesThatDifferByCaseAreTwoLists()
    {
        m_desk->WriteSpelling("BEARS", { "other" });
        Open(kSpellList);
        QCOMPARE(m_desk->Names(), QStringList({ "Ants", "BEARS", "bears", "cats.txt", "Dogs" }));
        m_desk->Select("bears");
        m_desk->boxes.Expect(Question("bears"), BoxAnswer::Yes);
        m_desk->Press("cmdDel");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList({ "Ants", "BEARS", "Dogs", "cats.txt" }));
    }

    void theDeleteKeyPressesTheButton()
    {
        Open(kSpellList);
        QCOMPARE(m_desk->Focus(), "File1");
        QTest::keyClick(m_desk->Files(), Qt::Key_Delete); // nothing is selected
        QTest::keyClick(m_desk->Files(), Qt::Key_Down);
        QCOMPARE(m_desk->Files()->FileName(), "Ants");
        m_desk->boxes.Expect(Question("Ants"), BoxAnswer::Yes);
        QTest::keyClick(m_desk->Files(), Qt::Key_Delete);
        m_desk->Settle();
        QCOMPARE(m_desk->Names(), QStringList({ "bears", "cats.txt", "Dogs" }));
    }

    void theContextMenuPressesTheButton()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->boxes.Expect(Question("bears"), BoxAnswer::No);
        m_desk->ChooseFromMenu("&Delete List");
    }

    void itLeadsBackAndHome()
    {
        Open(kSpellList);
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().size(), 1U);
        QCOMPARE(m_desk->help.Open().at(0).topic, "Adding, Editing and Deleting Lists.htm");
        m_desk->Press("cmdback");
        QVERIFY(frmList::Shared().IsActive());
        QVERIFY(!frmDelete::Shared().IsLoaded());
        QVERIFY(frmDelete::Exists());
        // Its own word stays, until somebody writes another.
        QCOMPARE(frmDelete::Shared().ListType, kSpellList);
        QVERIFY(m_desk->help.Open().empty());
        frmDelete::Shared().Show();
        m_desk->Settle();
        m_desk->Press("cmdExit");
        QVERIFY(frmMenu1::Shared().IsActive());
        QVERIFY(!frmDelete::Shared().IsLoaded());
    }

    void theFinalReleaseDropsTheAgent()
    {
        Open(kSpellList);
        State().AgentControl = m_desk->agent.CreateControl();
        frmMenu1::Shared().Load();
        frmDelete::Shared().Unload();
        QVERIFY(!(State().AgentControl == nullptr));
        frmDelete::Release();
        m_desk->Settle();
        QVERIFY(State().AgentControl == nullptr);
    }

private:
    void Open(const QString &kind)
    {
        frmDelete::Shared().ListType = kind;
        frmDelete::Shared().Show();
        m_desk->Settle();
    }

    std::optional<ListDesk> m_desk;
};

QTEST_MAIN(TestfrmDelete)
#include "TestfrmDelete.moc"
