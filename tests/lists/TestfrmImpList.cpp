#include "lists/frmImpList.h"

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
using support::kNoName;
using support::kRefused;
using support::ReportText;
using support::TransferDesk;
using Operation = support::FaultyFiles::Operation;

namespace {

const QString kNoList = QStringLiteral("Please select a list to import. ");
const QString kDone = QStringLiteral("Import Successful");

const QByteArray kNoText("\xD0\xCF\x11\xE0\0\0no list\n", 14);

} // namespace

// Files that are copied into the program, and what goes wrong with it.
class TestfrmImpList : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace();
        m_desk->WriteSpelling("bears", { "old" });
        m_desk->WriteFile("Home/rivers", "rhine\r\n");
        m_desk->WriteFile("Home/Documents/bears", "panda\r\n");
        m_desk->WriteFile("Home/Documents/letter.doc", kNoText);
        m_desk->WriteFile("stick/birds.txt", "robin\r\n");
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void itShowsTheHomeWhateverTheKind_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("spelling") << kSpellList;
        QTest::newRow("quiz") << kQuizList;
        QTest::newRow("neither") << "List";
    }
    void itShowsTheHomeWhateverTheKind()
    {
        QFETCH(QString, kind);
        Open(kind);
        QCOMPARE(m_desk->Drive()->Drive(), m_desk->Home());
        QCOMPARE(TransferDesk::Names(*m_desk->Folder()), QStringList({ "Home folder", "Documents" }));
        QCOMPARE(m_desk->Names(), QStringList{ "rivers" });
        QCOMPARE(m_desk->Name()->text(), QString());
        QCOMPARE(frmImpList::Shared().Window()->windowTitle(), "Import List");
        QCOMPARE(m_desk->Find<QLabel>("lblHead")->text(), "Select a List to Import");
        QCOMPARE(m_desk->Find<QLabel>("Label1")->text(), "&Save as:");
    }

    void theFilesFollowTheFolderAndTheDrive()
    {
        Open(kSpellList);
        m_desk->Select("rivers");
        m_desk->Go("Documents");
        QCOMPARE(m_desk->Names(), QStringList({ "bears", "letter.doc" }));
        // The selection goes, the name stays.
        QCOMPARE(m_desk->Files()->FileName(), QString());
        QCOMPARE(m_desk->Name()->text(), "rivers");
        m_desk->Choose("STICK");
        QCOMPARE(m_desk->Names(), QStringList{ "birds.txt" });
    }

    void whatIsMissingIsToldInOneBox_data() { TransferDesk::MissingRows(kNoList); }
    void whatIsMissingIsToldInOneBox()
    {
        QFETCH(bool, isSelected);
        QFETCH(QString, name);
        QFETCH(QString, message);
        Open(kSpellList);
        if (isSelected)
            m_desk->Select("rivers");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(message);
        m_desk->Press("cmdImport");
        QVERIFY(m_desk->boxes.All().at(0).HasProgramTitle());
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList{ "bears" });
    }

    void theFileIsCopiedByteByByte_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("file");
        QTest::newRow("spelling list") << kSpellList << "letter.doc"
                                       << "Lists/letter.doc";
        QTest::newRow("quiz") << kQuizList << "letter.doc"
                              << "QList/letter.doc";
        QTest::newRow("under another name") << kSpellList << "My letter"
                                            << "Lists/My letter";
        QTest::newRow("with blanks") << kQuizList << " x "
                                     << "QList/ x ";
    }
    void theFileIsCopiedByteByByte()
    {
        QFETCH(QString, kind);
        QFETCH(QString, name);
        QFETCH(QString, file);
        Open(kind);
        m_desk->Go("Documents");
        m_desk->Select("letter.doc");
        QCOMPARE(m_desk->Name()->text(), "letter.doc");
        QCOMPARE(m_desk->Name()->cursorPosition(), 0); // a long name is seen from its beginning
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdImport");
        QCOMPARE(m_desk->Content(file), kNoText);
        QCOMPARE(m_desk->Content("Home/Documents/letter.doc"), kNoText);
        QVERIFY(frmImpList::Shared().IsActive());
        QCOMPARE(m_desk->boxes.Busy(), QStringList{ "Copying letter.doc ..." });
    }

    void anUnknownKindImportsNothing()
    {
        Open("Spelling");
        m_desk->Select("rivers");
        m_desk->Press("cmdImport");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList{ "bears" });
        QCOMPARE(m_desk->OnDisk("QList"), QStringList{ "Capitals" });
        // What is missing is told all the same.
        m_desk->Type("txtName", "");
        m_desk->boxes.Expect(kNoName);
        m_desk->Press("cmdImport");
    }

    void aListThatIsThereIsReplacedAfterAYes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("same name") << "bears";
        QTest::newRow("other letter case") << "Bears";
    }
    void aListThatIsThereIsReplacedAfterAYes()
    {
        QFETCH(QString, name);
        Open(kSpellList);
        m_desk->Go("Documents");
        m_desk->Select("bears");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(Overwrite(name), BoxAnswer::Yes);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdImport");
        QVERIFY(m_desk->boxes.All().at(0).buttons == platform::BoxButtons::YesNo);
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList{ name });
        QCOMPARE(m_desk->Content("Lists/" + name), QByteArray("panda\r\n"));
    }

    void aNoChangesNothing()
    {
        Open(kSpellList);
        m_desk->Go("Documents");
        m_desk->Select("bears");
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::No);
        m_desk->Press("cmdImport");
        QCOMPARE(m_desk->Content("Lists/bears"), QByteArray("old\r\n"));
    }

    void aRefusedNameIsTold_data() { TransferDesk::RefusedRows(); }
    void aRefusedNameIsTold()
    {
        QFETCH(QString, name);
        Open(kSpellList);
        m_desk->Select("rivers");
        m_desk->Name()->setText(name);
        m_desk->boxes.Expect(kRefused);
        m_desk->Press("cmdImport");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList{ "bears" });
        QVERIFY(frmImpList::Shared().IsActive());
    }

    void anyOtherFailureIsReported_data() { TransferDesk::FaultRows(); }
    void anyOtherFailureIsReported()
    {
        QFETCH(Operation, operation);
        QFETCH(qint32, number);
        Open(kSpellList);
        m_desk->Go("Documents");
        m_desk->Select("bears");
        m_desk->files.Fail(operation, number);
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(number));
        m_desk->Press("cmdImport");
        // The old list has gone with its deletion.
        QCOMPARE(m_desk->OnDisk("Lists"),
                 operation == Operation::Kill ? QStringList{ "bears" } : QStringList());
        QVERIFY(frmImpList::Shared().IsActive());
    }

    void aFolderInTheNameThatIsNotThereIsReported()
    {
        Open(kSpellList);
        m_desk->Select("rivers");
        m_desk->Type("txtName", "of/Europe");
        m_desk->boxes.Expect(ReportText(76));
        m_desk->Press("cmdImport");
    }

    void aFullDiskLeavesNoHalfList()
    {
        m_desk->WriteFile("Home/rivers", QByteArray(300'000, 'a'));
        Open(kSpellList);
        m_desk->Select("rivers");
        m_desk->boxes.Expect(ReportText(61));
        {
            const FullDisk full(100'000);
            m_desk->Press("cmdImport");
        }
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList{ "bears" });
    }

    void aFileThatGoesIsReported()
    {
        Open(kSpellList);
        m_desk->Select("rivers");
        QVERIFY(QFile::remove(m_desk->Home("/rivers")));
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdImport");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList{ "bears" });
    }

    void aFolderThatGoesIsReported()
    {
        Open(kSpellList);
        m_desk->Go("Documents");
        m_desk->Select("bears");
        QVERIFY(QDir(m_desk->Home("/Documents")).removeRecursively());
        m_desk->Type("txtName", "new");
        m_desk->boxes.Expect(ReportText(76));
        m_desk->Press("cmdImport");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList{ "bears" });
    }

    void aListOntoItselfIsLost()
    {
        Open(kSpellList);
        m_desk->Folder()->SetPath(m_desk->folder.filePath("Lists"));
        m_desk->Settle();
        m_desk->Select("bears");
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdImport");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList());
    }

    void whatTheSystemHidesIsNotOffered()
    {
        m_desk->WriteFile("Home/Documents/.settings", "x");
        Open(kSpellList);
        m_desk->Go("Documents");
        QCOMPARE(m_desk->Names(), QStringList({ "bears", "letter.doc" }));
    }

    void filesThatCannotBeListedAreReported()
    {
        Open(kSpellList);
        m_desk->files.Fail(Operation::FileNames, 75);
        m_desk->boxes.Expect(ReportText(75));
        m_desk->Go("Documents");
        QCOMPARE(m_desk->Names(), QStringList());
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Home("/Documents"));
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
        m_desk->drives.gone << m_desk->Stick();
        m_desk->boxes.Expect(support::kDriveGone);
        m_desk->Choose("STICK");
        QCOMPARE(m_desk->Drive()->currentText(), "STICK");
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Home());
        QCOMPARE(m_desk->Names(), QStringList{ "rivers" });
        m_desk->drives.gone.clear();
        m_desk->Choose("STICK");
        QCOMPARE(m_desk->Names(), QStringList{ "birds.txt" });
    }

    void aSecondActivationLeavesWhatWasChosen()
    {
        Open(kSpellList);
        m_desk->Go("Documents");
        m_desk->Select("bears");
        support::CoverAndUncover(*m_desk);
        QVERIFY(frmImpList::Shared().IsActive());
        QCOMPARE(m_desk->Folder()->Path(), m_desk->Home("/Documents"));
        QCOMPARE(m_desk->Files()->FileName(), "bears");
        QCOMPARE(m_desk->Name()->text(), "bears");
    }

    void enterInTheNameImports()
    {
        Open(kSpellList);
        QCOMPARE(m_desk->Focus(), "Dir1");
        m_desk->Select("rivers");
        m_desk->Name()->setFocus();
        m_desk->boxes.Expect(kDone);
        QTest::keyClick(m_desk->Name(), Qt::Key_Return);
        m_desk->Settle();
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList({ "bears", "rivers" }));
    }

    void theContextMenuImports()
    {
        Open(kSpellList);
        m_desk->Select("rivers");
        m_desk->boxes.Expect(kDone);
        m_desk->ChooseFromMenu("&Import");
        QCOMPARE(m_desk->OnDisk("Lists"), QStringList({ "bears", "rivers" }));
    }

    void itComesBackToTheHome() { m_desk->ComesBackToTheHome<frmImpList>(); }

    void itLeadsBackAndHomeAndLetsGo() { m_desk->LeadsBackAndHome<frmImpList>(); }

private:
    void Open(const QString &kind) { m_desk->Open<frmImpList>(kind); }
    static QString Overwrite(const QString &name)
    {
        return "The file " + name + " already exists. Do you wish to overwrite it?";
    }

    std::optional<TransferDesk> m_desk;
};

QTEST_MAIN(TestfrmImpList)
#include "TestfrmImpList.moc"
