#include "lists/frmImpList.h"

#include "authoring/frmList.h"
#include "platform/forms/DriveList.h"
#include "platform/forms/FileListBox.h"
#include "platform/forms/FolderList.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Desk.h"
#include "support/ReportText.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include <csignal>

#include <sys/resource.h>

using namespace tumblewick;
using platform::BoxAnswer;
using platform::Drive;
using platform::DriveList;
using platform::FileListBox;
using platform::FolderList;
using support::Desk;
using support::ReportText;
using Operation = support::FaultyFiles::Operation;

namespace {

const QString kNoList = QStringLiteral("Please select a list to import. ");
const QString kNoName = QStringLiteral("Please enter a name for the list to be saved as. ");
const QString kRefused =
    QStringLiteral("A file name cannot contain any of the following characters: / \\ : * ? \" <> | ");
const QString kDone = QStringLiteral("Import Successful");

// Lets no file grow beyond a size, as a full disk does.
class FullDisk {
public:
    explicit FullDisk(rlim_t size) : m_before(signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit small{ size, m_limit.rlim_max };
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        signal(SIGXFSZ, m_before);
    }

private:
    void (*m_before)(int);
    rlimit m_limit{};
};

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
        m_desk->WriteQuiz("Capitals", { "q_1_2_3_4_1_" });
        QVERIFY(QDir().mkpath(Home("/Documents")));
        QVERIFY(QDir().mkpath(m_desk->folder.filePath("stick")));
        m_desk->WriteFile("Home/rivers", "rhine\r\n");
        m_desk->WriteFile("Home/Documents/bears", "panda\r\n");
        m_desk->WriteFile("Home/Documents/letter.doc", kNoText);
        m_desk->WriteFile("stick/birds.txt", "robin\r\n");
        m_desk->drives.all.push_back({ m_desk->folder.filePath("stick"), "STICK", Drive::Kind::Removable });
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
        QCOMPARE(m_desk->Find<DriveList>("Drive1")->Drive(), Home());
        QCOMPARE(Names(*Folder()), QStringList({ "Home folder", "Documents" }));
        QCOMPARE(Names(*Files()), QStringList{ "rivers" });
        QCOMPARE(Name()->text(), QString());
        QCOMPARE(frmImpList::Shared().Window()->windowTitle(), "Import List");
        QCOMPARE(m_desk->Find<QLabel>("lblHead")->text(), "Select a List to Import");
        QCOMPARE(m_desk->Find<QLabel>("Label1")->text(), "&Save as:");
    }

    void theFilesFollowTheFolderAndTheDrive()
    {
        Open(kSpellList);
        Select("rivers");
        Go("Documents");
        QCOMPARE(Names(*Files()), QStringList({ "bears", "letter.doc" }));
        // The selection goes, the name stays.
        QCOMPARE(Files()->FileName(), QString());
        QCOMPARE(Name()->text(), "rivers");
        Choose("STICK");
        QCOMPARE(Names(*Files()), QStringList{ "birds.txt" });
    }

    void whatIsMissingIsToldInOneBox_data()
    {
        QTest::addColumn<bool>("isSelected");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("both") << false << "" << kNoList + kNoName;
        QTest::newRow("list") << false << "mine" << kNoList;
        QTest::newRow("name") << true << "" << kNoName;
    }
    void whatIsMissingIsToldInOneBox()
    {
        QFETCH(bool, isSelected);
        QFETCH(QString, name);
        QFETCH(QString, message);
        Open(kSpellList);
        if (isSelected)
            Select("rivers");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(message);
        m_desk->Press("cmdImport");
        QVERIFY(m_desk->boxes.All().at(0).HasProgramTitle());
        QCOMPARE(OnDisk("Lists"), QStringList{ "bears" });
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
        Go("Documents");
        Select("letter.doc");
        QCOMPARE(Name()->text(), "letter.doc");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdImport");
        QCOMPARE(Bytes(file), kNoText);
        QCOMPARE(Bytes("Home/Documents/letter.doc"), kNoText);
        QVERIFY(frmImpList::Shared().IsActive());
    }

    void anUnknownKindImportsNothing()
    {
        Open("Spelling");
        Select("rivers");
        m_desk->Press("cmdImport");
        QCOMPARE(OnDisk("Lists"), QStringList{ "bears" });
        QCOMPARE(OnDisk("QList"), QStringList{ "Capitals" });
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
        Go("Documents");
        Select("bears");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(Overwrite(name), BoxAnswer::Yes);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdImport");
        QVERIFY(m_desk->boxes.All().at(0).buttons == platform::BoxButtons::YesNo);
        QCOMPARE(OnDisk("Lists"), QStringList{ name });
        QCOMPARE(Bytes("Lists/" + name), QByteArray("panda\r\n"));
    }

    void aNoChangesNothing()
    {
        Open(kSpellList);
        Go("Documents");
        Select("bears");
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::No);
        m_desk->Press("cmdImport");
        QCOMPARE(Bytes("Lists/bears"), QByteArray("old\r\n"));
    }

    void aRefusedNameIsTold_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : { "what?", "a*", "a:b", "\"a\"", "<a>", "a|b", "con", "NUL.txt" })
            QTest::newRow(name) << QString::fromLatin1(name);
        QTest::newRow("too long") << QString(300, 'a');
    }
    void aRefusedNameIsTold()
    {
        QFETCH(QString, name);
        Open(kSpellList);
        Select("rivers");
        Name()->setText(name);
        m_desk->boxes.Expect(kRefused);
        m_desk->Press("cmdImport");
        QCOMPARE(OnDisk("Lists"), QStringList{ "bears" });
        QVERIFY(frmImpList::Shared().IsActive());
    }

    void anyOtherFailureIsReported_data()
    {
        QTest::addColumn<int>("operation");
        QTest::addColumn<qint32>("number");
        for (const qint32 number : { 53, 57, 61, 68, 70, 75, 76 })
            QTest::addRow("copy %d", number) << static_cast<int>(Operation::FileCopy) << number;
        for (const qint32 number : { 53, 70, 75 })
            QTest::addRow("kill %d", number) << static_cast<int>(Operation::Kill) << number;
    }
    void anyOtherFailureIsReported()
    {
        QFETCH(int, operation);
        QFETCH(qint32, number);
        Open(kSpellList);
        Go("Documents");
        Select("bears");
        m_desk->files.Fail(static_cast<Operation>(operation), number);
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(number));
        m_desk->Press("cmdImport");
        // The old list has gone with its deletion.
        QCOMPARE(OnDisk("Lists"),
                 operation == static_cast<int>(Operation::Kill) ? QStringList{ "bears" } : QStringList());
        QVERIFY(frmImpList::Shared().IsActive());
    }

    void aFolderInTheNameThatIsNotThereIsReported()
    {
        Open(kSpellList);
        Select("rivers");
        m_desk->Type("txtName", "of/Europe");
        m_desk->boxes.Expect(ReportText(76));
        m_desk->Press("cmdImport");
    }

    void aFullDiskLeavesNoHalfList()
    {
        m_desk->WriteFile("Home/rivers", QByteArray(300'000, 'a'));
        Open(kSpellList);
        Select("rivers");
        m_desk->boxes.Expect(ReportText(61));
        {
            const FullDisk full(100'000);
            m_desk->Press("cmdImport");
        }
        QCOMPARE(OnDisk("Lists"), QStringList{ "bears" });
    }

    void aFileThatGoesIsReported()
    {
        Open(kSpellList);
        Select("rivers");
        QVERIFY(QFile::remove(Home("/rivers")));
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdImport");
        QCOMPARE(OnDisk("Lists"), QStringList{ "bears" });
    }

    void aFolderThatGoesIsReported()
    {
        Open(kSpellList);
        Go("Documents");
        Select("bears");
        QVERIFY(QDir(Home("/Documents")).removeRecursively());
        m_desk->Type("txtName", "new");
        m_desk->boxes.Expect(ReportText(76));
        m_desk->Press("cmdImport");
        QCOMPARE(OnDisk("Lists"), QStringList{ "bears" });
    }

    void aListOntoItselfIsLost()
    {
        Open(kSpellList);
        Folder()->SetPath(m_desk->folder.filePath("Lists"));
        m_desk->Settle();
        Select("bears");
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdImport");
        QCOMPARE(OnDisk("Lists"), QStringList());
    }

    void filesThatCannotBeListedAreReported()
    {
        Open(kSpellList);
        m_desk->files.Fail(Operation::FileNames, 75);
        m_desk->boxes.Expect(ReportText(75));
        Go("Documents");
        QCOMPARE(Names(*Files()), QStringList());
        QCOMPARE(Folder()->Path(), Home("/Documents"));
    }

    void aDriveThatHasGoneIsToldAndAnotherOneWorks()
    {
        Open(kSpellList);
        m_desk->drives.gone << m_desk->folder.filePath("stick");
        m_desk->boxes.Expect("This drive is not accessable");
        Choose("STICK");
        QCOMPARE(m_desk->Find<DriveList>("Drive1")->currentText(), "STICK");
        QCOMPARE(Folder()->Path(), Home());
        QCOMPARE(Names(*Files()), QStringList{ "rivers" });
        m_desk->drives.gone.clear();
        Choose("STICK");
        QCOMPARE(Names(*Files()), QStringList{ "birds.txt" });
    }

    void aSecondActivationLeavesWhatWasChosen()
    {
        Open(kSpellList);
        Go("Documents");
        Select("bears");
        frmMenu1::Shared().Show();
        m_desk->Settle();
        frmMenu1::Shared().Unload();
        m_desk->Settle();
        QVERIFY(frmImpList::Shared().IsActive());
        QCOMPARE(Folder()->Path(), Home("/Documents"));
        QCOMPARE(Files()->FileName(), "bears");
        QCOMPARE(Name()->text(), "bears");
    }

    void itLeadsBackAndHomeAndLetsGo()
    {
        frmMenu1::Shared().Load();
        Open(kSpellList);
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().size(), 1U);
        QCOMPARE(m_desk->help.Open().at(0).topic, "Exporting and Importing Lists.htm");
        State().AgentControl = m_desk->agent.CreateControl();
        m_desk->Press("cmdback");
        QVERIFY(frmList::Shared().IsActive());
        QVERIFY(!frmImpList::Exists());
        QVERIFY(State().AgentControl == nullptr);
        QVERIFY(m_desk->help.Open().empty());
        Open(kQuizList);
        m_desk->Press("cmdExit");
        QVERIFY(frmMenu1::Shared().IsActive());
        QVERIFY(!frmImpList::Exists());
    }

private:
    void Open(const QString &kind)
    {
        frmImpList::Shared().ListType = kind;
        frmImpList::Shared().Show();
        m_desk->Settle();
    }
    QString Home(const QString &path = QString()) const { return m_desk->folder.filePath("Home") + path; }
    static QString Overwrite(const QString &name)
    {
        return "The file " + name + " already exists. Do you wish to overwrite it?";
    }
    FileListBox *Files() { return m_desk->Find<FileListBox>("FileList"); }
    FolderList *Folder() { return m_desk->Find<FolderList>("Dir1"); }
    QLineEdit *Name() { return m_desk->Find<QLineEdit>("txtName"); }
    static QStringList Names(const QListWidget &list)
    {
        QStringList names;
        for (int row = 0; row < list.count(); ++row)
            names << list.item(row)->text();
        return names;
    }
    void ClickOn(QListWidget &list, const QString &name)
    {
        const auto found = list.findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive);
        QCOMPARE(found.size(), 1);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(found[0]).center());
        m_desk->Settle();
    }
    void Select(const QString &name) { ClickOn(*Files(), name); }
    void Go(const QString &folder) { ClickOn(*Folder(), folder); }
    // As a user does.
    void Choose(const QString &drive)
    {
        auto *list = m_desk->Find<DriveList>("Drive1");
        const int place = list->findText(drive);
        QVERIFY(place >= 0);
        list->setCurrentIndex(place);
        emit list->activated(place);
        m_desk->Settle();
    }
    QByteArray Bytes(const QString &path) const
    {
        QFile file(m_desk->folder.filePath(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }
    QStringList OnDisk(const QString &folder) const
    {
        return QDir(m_desk->folder.filePath(folder)).entryList(QDir::Files, QDir::Name);
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestfrmImpList)
#include "TestfrmImpList.moc"
