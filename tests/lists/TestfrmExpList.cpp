#include "lists/frmExpList.h"

#include "lists/TransferDesk.h"
#include "support/FullDisk.h"
#include "support/ReportText.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTest>

using namespace tumblewick;
using platform::BoxAnswer;
using support::FullDisk;
using support::kRefused;
using support::ReportText;
using support::TransferDesk;
using Operation = support::FaultyFiles::Operation;

namespace {

const QString kNoList =
    QStringLiteral("Please select a list to export by clicking on the name of the list. ");
const QString kDone = QStringLiteral("Export Successful");

} // namespace

// Lists that are copied out of the program, and what goes wrong with it.
class TestfrmExpList : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace();
        m_desk->WriteSpelling("bears", { "grizzly", "panda_pan da" });
        m_desk->WriteSpelling("Ants", { "fire" });
        QVERIFY(QDir().mkpath(m_desk->Home("/Documents/School")));
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void itShowsTheListsOfTheKindAndTheHome_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("spelling lists") << kSpellList << QStringList{ "Ants", "bears" };
        QTest::newRow("quizzes") << kQuizList << QStringList{ "Capitals" };
        QTest::newRow("anything else is quizzes") << "Spelling" << QStringList{ "Capitals" };
    }
    void itShowsTheListsOfTheKindAndTheHome()
    {
        QFETCH(QString, kind);
        Open(kind);
        QTEST(m_desk->Names(), "names");
        QCOMPARE(m_desk->Drive()->Drive(), m_desk->Home());
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Home());
        QCOMPARE(TransferDesk::Names(*m_desk->Folder()), QStringList({ "Home folder", "Documents" }));
        QCOMPARE(frmExpList::Shared().Window()->windowTitle(), "Lists");
        QCOMPARE(m_desk->Find<QLabel>("lblHead")->text(), "Select a List to Export");
        QCOMPARE(m_desk->Find<QLabel>("Label1")->text(), "&Save as:");
        QCOMPARE(m_desk->Find<QLabel>("Label2")->text(), "Export &To:");
        QCOMPARE(m_desk->Name()->text(), QString());
    }

    void aClickFillsTheName()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        QCOMPARE(m_desk->Name()->text(), "bears");
        QCOMPARE(m_desk->Name()->cursorPosition(), 0); // a long name is seen from its beginning
        m_desk->Type("txtName", "mine");
        m_desk->Select("Ants");
        QCOMPARE(m_desk->Name()->text(), "Ants");
    }

    void whatIsMissingIsToldInOneBoxWithoutATitle_data() { TransferDesk::MissingRows(kNoList); }
    void whatIsMissingIsToldInOneBoxWithoutATitle()
    {
        QFETCH(bool, isSelected);
        QFETCH(QString, name);
        QFETCH(QString, message);
        Open(kSpellList);
        if (isSelected)
            m_desk->Select("bears");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(message);
        m_desk->Press("cmdExport");
        QVERIFY(m_desk->boxes.All().at(0).HasNoTitle());
        QCOMPARE(m_desk->OnDisk("Home"), QStringList());
    }

    void theListIsCopiedByteByByte_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("file");
        QTest::newRow("under its name") << "bears"
                                        << "Home/Documents/bears";
        QTest::newRow("with an ending") << "bears.txt"
                                        << "Home/Documents/bears.txt";
        QTest::newRow("with blanks") << " my bears "
                                     << "Home/Documents/ my bears ";
        QTest::newRow("any letters") << QString::fromUtf8("Bären 熊")
                                     << QString::fromUtf8("Home/Documents/Bären 熊");
        QTest::newRow("into the folder above") << "..\\bears"
                                               << "Home/bears";
    }
    void theListIsCopiedByteByByte()
    {
        QFETCH(QString, name);
        QFETCH(QString, file);
        const QByteArray bytes("odd\xFF\0bytes\n\r\r\nno end", 20);
        m_desk->WriteFile("Lists/bears", bytes);
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->Go("Documents");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->Content(file), bytes);
        QCOMPARE(m_desk->Content("Lists/bears"), bytes);
        QVERIFY(m_desk->boxes.All().at(0).HasProgramTitle());
        QVERIFY(frmExpList::Shared().IsActive());
        QCOMPARE(m_desk->Name()->text(), name);
        QCOMPARE(m_desk->boxes.Busy(), QStringList{ "Copying bears ..." });
    }

    void aQuizIsCopied()
    {
        Open(kQuizList);
        m_desk->Select("Capitals");
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->Content("Home/Capitals"), QByteArray("q_1_2_3_4_1_\r\n"));
    }

    void anotherDriveTakesTheCopy()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->Choose("STICK");
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Stick());
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->OnDisk("stick"), QStringList{ "bears" });
        QCOMPARE(m_desk->OnDisk("Home"), QStringList());
    }

    void atTheRootTheSeparatorIsDoubled()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->Folder()->SetPath("/");
        QCOMPARE(m_desk->Folder()->Path(), "/");
        // Up to the root and down again, without writing there.
        const QString below = m_desk->folder.path().mid(1) + "/Home/bears";
        m_desk->Type("txtName", below);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->OnDisk("Home"), QStringList{ "bears" });
        m_desk->boxes.Expect("The file /\\" + below + " already exists. Do you wish to overwrite it?",
                             BoxAnswer::No);
        m_desk->Press("cmdExport");
    }

    void aFileThatIsThereIsReplacedAfterAYes_data()
    {
        QTest::addColumn<QString>("there");
        QTest::addColumn<QString>("name");
        QTest::newRow("same name") << "bears"
                                   << "bears";
        QTest::newRow("other letter case") << "BEARS"
                                           << "bears";
    }
    void aFileThatIsThereIsReplacedAfterAYes()
    {
        QFETCH(QString, there);
        QFETCH(QString, name);
        m_desk->WriteFile("Home/" + there, "older and longer than what replaces it, by far");
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(Overwrite(name), BoxAnswer::Yes);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QVERIFY(m_desk->boxes.All().at(0).buttons == platform::BoxButtons::YesNo);
        QVERIFY(m_desk->boxes.All().at(0).HasProgramTitle());
        QCOMPARE(m_desk->OnDisk("Home"), QStringList{ name });
        QCOMPARE(m_desk->Content("Home/" + name), m_desk->Content("Lists/bears"));
    }

    void aNoChangesNothing()
    {
        m_desk->WriteFile("Home/bears", "old");
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::No);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->Content("Home/bears"), QByteArray("old"));
    }

    void aRefusedNameIsTold_data() { TransferDesk::RefusedRows(); }
    void aRefusedNameIsTold()
    {
        QFETCH(QString, name);
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->Name()->setText(name);
        m_desk->boxes.Expect(kRefused);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->OnDisk("Home"), QStringList());
        QVERIFY(frmExpList::Shared().IsActive());
    }

    void anyOtherFailureIsSilent_data() { TransferDesk::FaultRows(); }
    void anyOtherFailureIsSilent()
    {
        QFETCH(Operation, operation);
        QFETCH(qint32, number);
        m_desk->WriteFile("Home/bears", "old");
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->files.Fail(operation, number);
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::Yes);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->files.Failed(), 1);
        // The old copy has gone with its deletion.
        QCOMPARE(m_desk->OnDisk("Home"),
                 operation == Operation::Kill ? QStringList{ "bears" } : QStringList());
        QVERIFY(frmExpList::Shared().IsActive());
    }

    void aFullDiskLeavesNoHalfList()
    {
        m_desk->WriteFile("Lists/bears", QByteArray(300'000, 'a'));
        Open(kSpellList);
        m_desk->Select("bears");
        {
            const FullDisk full(100'000);
            m_desk->Press("cmdExport");
        }
        QCOMPARE(m_desk->OnDisk("Home"), QStringList());
    }

    void aFolderThatGoesIsSilent()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->Go("Documents");
        QVERIFY(QDir(m_desk->Home("/Documents")).removeRecursively());
        m_desk->Press("cmdExport");
        QVERIFY(!QFile::exists(m_desk->Home("/Documents")));
    }

    void aListThatGoesIsSilentAndTheOldCopyIsLost()
    {
        m_desk->WriteFile("Home/bears", "old");
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::Yes,
                             [&] { QVERIFY(QFile::remove(m_desk->folder.filePath("Lists/bears"))); });
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->OnDisk("Home"), QStringList());
    }

    void aListOntoItselfIsLost()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->Folder()->SetPath(m_desk->folder.filePath("Lists"));
        m_desk->boxes.Expect("The file " + m_desk->folder.filePath("Lists") +
                                 "\\bears already exists. Do you wish to overwrite it?",
                             BoxAnswer::Yes);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList{ "Ants" });
    }

    void aDriveThatIsThereButCannotBeListedIsReported()
    {
        Open(kSpellList);
        m_desk->files.Fail(Operation::FolderNames, 75);
        m_desk->boxes.Expect(ReportText(75));
        m_desk->Choose("STICK");
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Home());
    }

    void aDriveThatHasGoneIsToldAndAnotherOneWorks()
    {
        Open(kSpellList);
        m_desk->Go("Documents");
        m_desk->drives.gone << m_desk->Stick();
        m_desk->boxes.Expect(support::kDriveGone);
        m_desk->Choose("STICK");
        QCOMPARE(m_desk->Drive()->currentText(), "STICK");
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Home("/Documents"));
        m_desk->Choose("Home folder");
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Home());
        m_desk->drives.gone.clear();
        m_desk->Choose("STICK");
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Stick());
    }

    void aHomeThatHasGoneLeavesTheComputer()
    {
        m_desk->drives.gone << m_desk->Home();
        m_desk->boxes.Expect(support::kDriveGone);
        Open(kSpellList);
        QCOMPARE(m_desk->Folder()->Path(), "/");
        QCOMPARE(m_desk->Names(), QStringList({ "Ants", "bears" }));
    }

    void aMissingListFolderIsReported()
    {
        QVERIFY(QDir(m_desk->folder.filePath("Lists")).removeRecursively());
        m_desk->boxes.Expect(ReportText(76));
        Open(kSpellList);
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Home());
    }

    void enterInTheNameExports()
    {
        Open(kSpellList);
        QCOMPARE(m_desk->Focus(), "FileList");
        QTest::keyClick(m_desk->Files(), Qt::Key_Down);
        QCOMPARE(m_desk->Name()->text(), "Ants");
        m_desk->Name()->setFocus();
        m_desk->boxes.Expect(kDone);
        QTest::keyClick(m_desk->Name(), Qt::Key_Return);
        m_desk->Settle();
        QCOMPARE(m_desk->OnDisk("Home"), QStringList{ "Ants" });
    }

    void theContextMenuExports()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        m_desk->boxes.Expect(kDone);
        m_desk->ChooseFromMenu("&Export");
        QCOMPARE(m_desk->OnDisk("Home"), QStringList{ "bears" });
    }

    void itComesBackToTheHome() { m_desk->ComesBackToTheHome<frmExpList>(); }

    void itLeadsBackAndHomeAndLetsGo() { m_desk->LeadsBackAndHome<frmExpList>(); }

private:
    void Open(const QString &kind) { m_desk->Open<frmExpList>(kind); }
    QString Overwrite(const QString &name) const
    {
        return "The file " + m_desk->Home() + "\\" + name + " already exists. Do you wish to overwrite it?";
    }

    std::optional<TransferDesk> m_desk;
};

QTEST_MAIN(TestfrmExpList)
#include "TestfrmExpList.moc"
