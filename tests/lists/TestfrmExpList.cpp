#include "lists/frmExpList.h"

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

const QString kNoList =
    QStringLiteral("Please select a list to export by clicking on the name of the list. ");
const QString kNoName = QStringLiteral("Please enter a name for the list to be saved as. ");
const QString kRefused =
    QStringLiteral("A file name cannot contain any of the following characters: / \\ : * ? \" <> | ");
const QString kDone = QStringLiteral("Export Successful");

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
        m_desk->WriteQuiz("Capitals", { "q_1_2_3_4_1_" });
        QVERIFY(QDir().mkpath(Home("/Documents/School")));
        QVERIFY(QDir().mkpath(m_desk->folder.filePath("stick")));
        m_desk->drives.all.push_back({ m_desk->folder.filePath("stick"), "STICK", Drive::Kind::Removable });
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
        QTEST(Names(*Files()), "names");
        QCOMPARE(m_desk->Find<DriveList>("Drive1")->Drive(), Home());
        QCOMPARE(Folder()->Path(), Home());
        QCOMPARE(Names(*Folder()), QStringList({ "Home folder", "Documents" }));
        QCOMPARE(frmExpList::Shared().Window()->windowTitle(), "Lists");
        QCOMPARE(m_desk->Find<QLabel>("lblHead")->text(), "Select a List to Export");
        QCOMPARE(m_desk->Find<QLabel>("Label1")->text(), "&Save as:");
        QCOMPARE(m_desk->Find<QLabel>("Label2")->text(), "Export &To:");
        QCOMPARE(Name()->text(), QString());
    }

    void aClickFillsTheName()
    {
        Open(kSpellList);
        Select("bears");
        QCOMPARE(Name()->text(), "bears");
        m_desk->Type("txtName", "mine");
        Select("Ants");
        QCOMPARE(Name()->text(), "Ants");
    }

    void whatIsMissingIsToldInOneBoxWithoutATitle_data()
    {
        QTest::addColumn<bool>("isSelected");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("both") << false << "" << kNoList + kNoName;
        QTest::newRow("list") << false << "mine" << kNoList;
        QTest::newRow("name") << true << "" << kNoName;
    }
    void whatIsMissingIsToldInOneBoxWithoutATitle()
    {
        QFETCH(bool, isSelected);
        QFETCH(QString, name);
        QFETCH(QString, message);
        Open(kSpellList);
        if (isSelected)
            Select("bears");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(message);
        m_desk->Press("cmdExport");
        QVERIFY(m_desk->boxes.All().at(0).HasNoTitle());
        QCOMPARE(OnDisk("Home"), QStringList());
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
        Select("bears");
        Go("Documents");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QCOMPARE(Bytes(file), bytes);
        QCOMPARE(Bytes("Lists/bears"), bytes);
        QVERIFY(m_desk->boxes.All().at(0).HasProgramTitle());
        QVERIFY(frmExpList::Shared().IsActive());
        QCOMPARE(Name()->text(), name);
    }

    void aQuizIsCopied()
    {
        Open(kQuizList);
        Select("Capitals");
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QCOMPARE(Bytes("Home/Capitals"), QByteArray("q_1_2_3_4_1_\r\n"));
    }

    void anotherDriveTakesTheCopy()
    {
        Open(kSpellList);
        Select("bears");
        Choose("STICK");
        QCOMPARE(Folder()->Path(), m_desk->folder.filePath("stick"));
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QCOMPARE(OnDisk("stick"), QStringList{ "bears" });
        QCOMPARE(OnDisk("Home"), QStringList());
    }

    void atTheRootTheSeparatorIsDoubled()
    {
        Open(kSpellList);
        Select("bears");
        Folder()->SetPath("/");
        QCOMPARE(Folder()->Path(), "/");
        // Up to the root and down again, without writing there.
        const QString below = m_desk->folder.path().mid(1) + "/Home/bears";
        m_desk->Type("txtName", below);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QCOMPARE(OnDisk("Home"), QStringList{ "bears" });
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
        Select("bears");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(Overwrite(name), BoxAnswer::Yes);
        m_desk->boxes.Expect(kDone);
        m_desk->Press("cmdExport");
        QVERIFY(m_desk->boxes.All().at(0).buttons == platform::BoxButtons::YesNo);
        QVERIFY(m_desk->boxes.All().at(0).HasProgramTitle());
        QCOMPARE(OnDisk("Home"), QStringList{ name });
        QCOMPARE(Bytes("Home/" + name), Bytes("Lists/bears"));
    }

    void aNoChangesNothing()
    {
        m_desk->WriteFile("Home/bears", "old");
        Open(kSpellList);
        Select("bears");
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::No);
        m_desk->Press("cmdExport");
        QCOMPARE(Bytes("Home/bears"), QByteArray("old"));
    }

    void aRefusedNameIsTold_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : { "what?", "a*", "a:b", "\"a\"", "<a>", "a|b", "con", "NUL.txt", "a\tb" })
            QTest::newRow(name) << QString::fromLatin1(name);
        QTest::newRow("too long") << QString(300, 'a');
    }
    void aRefusedNameIsTold()
    {
        QFETCH(QString, name);
        Open(kSpellList);
        Select("bears");
        Name()->setText(name);
        m_desk->boxes.Expect(kRefused);
        m_desk->Press("cmdExport");
        QCOMPARE(OnDisk("Home"), QStringList());
        QVERIFY(frmExpList::Shared().IsActive());
    }

    void anyOtherFailureIsSilent_data()
    {
        QTest::addColumn<int>("operation");
        QTest::addColumn<qint32>("number");
        for (const qint32 number : { 53, 57, 61, 68, 70, 75, 76 })
            QTest::addRow("copy %d", number) << static_cast<int>(Operation::FileCopy) << number;
        for (const qint32 number : { 53, 70, 75 })
            QTest::addRow("kill %d", number) << static_cast<int>(Operation::Kill) << number;
    }
    void anyOtherFailureIsSilent()
    {
        QFETCH(int, operation);
        QFETCH(qint32, number);
        m_desk->WriteFile("Home/bears", "old");
        Open(kSpellList);
        Select("bears");
        m_desk->files.Fail(static_cast<Operation>(operation), number);
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::Yes);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->files.Failed(), 1);
        // The old copy has gone with its deletion.
        QCOMPARE(OnDisk("Home"),
                 operation == static_cast<int>(Operation::Kill) ? QStringList{ "bears" } : QStringList());
        QVERIFY(frmExpList::Shared().IsActive());
    }

    void aFullDiskLeavesNoHalfList()
    {
        m_desk->WriteFile("Lists/bears", QByteArray(300'000, 'a'));
        Open(kSpellList);
        Select("bears");
        {
            const FullDisk full(100'000);
            m_desk->Press("cmdExport");
        }
        QCOMPARE(OnDisk("Home"), QStringList());
    }

    void aFolderThatGoesIsSilent()
    {
        Open(kSpellList);
        Select("bears");
        Go("Documents");
        QVERIFY(QDir(Home("/Documents")).removeRecursively());
        m_desk->Press("cmdExport");
        QVERIFY(!QFile::exists(Home("/Documents")));
    }

    void aListThatGoesIsSilentAndTheOldCopyIsLost()
    {
        m_desk->WriteFile("Home/bears", "old");
        Open(kSpellList);
        Select("bears");
        m_desk->boxes.Expect(Overwrite("bears"), BoxAnswer::Yes,
                             [&] { QVERIFY(QFile::remove(m_desk->folder.filePath("Lists/bears"))); });
        m_desk->Press("cmdExport");
        QCOMPARE(OnDisk("Home"), QStringList());
    }

    void aListOntoItselfIsLost()
    {
        Open(kSpellList);
        Select("bears");
        Folder()->SetPath(m_desk->folder.filePath("Lists"));
        m_desk->boxes.Expect("The file " + m_desk->folder.filePath("Lists") +
                                 "\\bears already exists. Do you wish to overwrite it?",
                             BoxAnswer::Yes);
        m_desk->Press("cmdExport");
        QCOMPARE(OnDisk("Lists"), QStringList{ "Ants" });
    }

    void aDriveThatHasGoneIsToldAndAnotherOneWorks()
    {
        Open(kSpellList);
        Go("Documents");
        m_desk->drives.gone << m_desk->folder.filePath("stick");
        m_desk->boxes.Expect("This drive is not accessable");
        Choose("STICK");
        QCOMPARE(m_desk->Find<DriveList>("Drive1")->currentText(), "STICK");
        QCOMPARE(Folder()->Path(), Home("/Documents"));
        Choose("Home folder");
        QCOMPARE(Folder()->Path(), Home());
        m_desk->drives.gone.clear();
        Choose("STICK");
        QCOMPARE(Folder()->Path(), m_desk->folder.filePath("stick"));
    }

    void aHomeThatHasGoneLeavesTheComputer()
    {
        m_desk->drives.gone << Home();
        m_desk->boxes.Expect("This drive is not accessable");
        Open(kSpellList);
        QCOMPARE(Folder()->Path(), "/");
        QCOMPARE(Names(*Files()), QStringList({ "Ants", "bears" }));
    }

    void aMissingListFolderIsReported()
    {
        QVERIFY(QDir(m_desk->folder.filePath("Lists")).removeRecursively());
        m_desk->boxes.Expect(ReportText(76));
        Open(kSpellList);
        QCOMPARE(Folder()->Path(), Home());
    }

    void enterInTheNameExports()
    {
        Open(kSpellList);
        QCOMPARE(m_desk->Focus(), "FileList");
        QTest::keyClick(Files(), Qt::Key_Down);
        QCOMPARE(Name()->text(), "Ants");
        Name()->setFocus();
        m_desk->boxes.Expect(kDone);
        QTest::keyClick(Name(), Qt::Key_Return);
        m_desk->Settle();
        QCOMPARE(OnDisk("Home"), QStringList{ "Ants" });
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
        QVERIFY(!frmExpList::Exists());
        QVERIFY(State().AgentControl == nullptr);
        QVERIFY(m_desk->help.Open().empty());
        Open(kQuizList);
        m_desk->Press("cmdExit");
        QVERIFY(frmMenu1::Shared().IsActive());
        QVERIFY(!frmExpList::Exists());
    }

private:
    void Open(const QString &kind)
    {
        frmExpList::Shared().ListType = kind;
        frmExpList::Shared().Show();
        m_desk->Settle();
    }
    QString Home(const QString &path = QString()) const { return m_desk->folder.filePath("Home") + path; }
    QString Overwrite(const QString &name) const
    {
        return "The file " + Home() + "\\" + name + " already exists. Do you wish to overwrite it?";
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

QTEST_MAIN(TestfrmExpList)
#include "TestfrmExpList.moc"
