#include "authoring/QuizDesk.h"
#include "authoring/frmDelete.h"
#include "authoring/frmEdit.h"
#include "authoring/frmEditQuiz.h"
#include "authoring/frmEditSpell.h"
#include "authoring/frmQuiz1.h"
#include "authoring/frmSpelling1.h"
#include "lists/frmExpList.h"
#include "lists/frmImpList.h"
#include "platform/forms/FileListBox.h"
#include "setup/frmChooseList1.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "support/AsOrdinaryUser.h"
#include "support/FullDisk.h"
#include "support/ReportText.h"

#include <QDir>

#include <sys/stat.h>

using namespace tumblewick;
using platform::BoxAnswer;
using support::AsOrdinaryUser;
using support::FullDisk;
using support::QuizDesk;
using support::ReportText;
using support::RunTimeText;

namespace {

enum class Kind { Spelling, Quiz };
enum class Work { Add, Save, Delete };

const QByteArray kWords = "cat\r\nknight_nite\r\ndog\r\n";
const QByteArray kQuestions = "Q1_a_b_c_d_1_\r\nQ2_a_b_c_d_2_\r\nQ3_a_b_c_d_3_\r\n";

} // namespace

// What goes wrong with real files below the screens that handle lists: rights, room, other programs.
class TestListFaults : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace();
        State().MenuShown = true;
        // An ordinary user has to reach what the superuser has made.
        SetRights("", 0755);
        m_desk->WriteFile("Lists/Pets", kWords);
        m_desk->WriteFile("QList/Pets", kQuestions);
    }
    void cleanup()
    {
        for (const char *path : { "Lists", "QList", "Home" })
            SetRights(path, 0755);
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    // While a list is being edited.
    void anEditThatTheFileDoesNotTakeIsReported_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<Work>("work");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<qint32>("number");
        const QList<QPair<QString, qint32>> faults{ { "deleted", 53 },   { "folder deleted", 76 },
                                                    { "read-only", 70 }, { "without rights", 70 },
                                                    { "a folder", 75 },  { "full disk", 61 } };
        for (const auto &[fault, number] : faults)
            for (const Kind kind : { Kind::Spelling, Kind::Quiz })
                for (const Work work : { Work::Add, Work::Save, Work::Delete })
                    QTest::addRow("%s, %s, %s", qPrintable(fault), kind == Kind::Quiz ? "quiz" : "spelling",
                                  NameOf(work))
                        << kind << work << fault << number;
    }
    void anEditThatTheFileDoesNotTakeIsReported()
    {
        QFETCH(Kind, kind);
        QFETCH(Work, work);
        QFETCH(QString, fault);
        QFETCH(qint32, number);
        OpenEdit(kind);
        const QString file = FolderOf(kind) + "/Pets";
        const QByteArray before = m_desk->Content(file);
        Break(kind, fault);
        {
            const AsOrdinaryUser user;
            std::optional<FullDisk> full;
            if (fault == "full disk")
                full.emplace(work == Work::Add ? before.size() : 10);
            Prepare(kind, work);
            m_desk->boxes.Expect(ReportText(number));
            Press(work);
        }
        QVERIFY(IsInFront(kind));
        QVERIFY(!m_desk->process.Ended());
        Heal(kind, fault);
        // The file is as it was, or as far as it could be written; it was not made anew.
        const QByteArray after = m_desk->Content(file);
        if (fault == "deleted" || fault == "folder deleted" || fault == "a folder")
            QCOMPARE(after, QByteArray("no such file"));
        else if (fault == "full disk" && work != Work::Add)
            QCOMPARE(after, Wanted(kind, work).left(10));
        else
            QCOMPARE(after, before);
        // Once the disk takes it, the same work is done.
        if (work == Work::Delete || after == "no such file")
            return;
        Prepare(kind, work);
        Press(work);
        QCOMPARE(m_desk->Content(file), Wanted(kind, work));
    }

    void aListThatCannotBeReadIsReportedAndEmpty_data() { Kinds(); }
    void aListThatCannotBeReadIsReportedAndEmpty()
    {
        QFETCH(Kind, kind);
        SetRights(FolderOf(kind) + "/Pets", 0);
        const AsOrdinaryUser user;
        m_desk->boxes.Expect(ReportText(70));
        OpenEdit(kind);
        QVERIFY(IsInFront(kind));
        QCOMPARE(ListOf(kind)->Count(), 0);
    }

    // A name that another system has let in: it is offered, and no more.
    void aListWithARefusedNameIsReported_data() { Kinds(); }
    void aListWithARefusedNameIsReported()
    {
        QFETCH(Kind, kind);
        m_desk->WriteFile(FolderOf(kind) + "/a:b", "x");
        m_desk->boxes.Expect(ReportText(53));
        OpenEdit(kind, "a:b");
        QVERIFY(IsInFront(kind));
        frmDelete::Shared().ListType = TypeOf(kind);
        Show<frmDelete>();
        SelectIn("File1", "a:b");
        m_desk->boxes.Expect("Are you sure you want to delete a:b?", BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(52));
        m_desk->Press("cmdDel");
        QCOMPARE(m_desk->OnDisk(FolderOf(kind)), QStringList({ "Pets", "a:b" }));
    }

    // Of two that write the same list the last one wins; nobody is told.
    void whatAnotherProgramAddsStandsBeforeOurs_data() { Kinds(); }
    void whatAnotherProgramAddsStandsBeforeOurs()
    {
        QFETCH(Kind, kind);
        OpenEdit(kind);
        const QString file = FolderOf(kind) + "/Pets";
        const QByteArray theirs = m_desk->Content(file) + "theirs_a_b_c_d_1_\r\n";
        m_desk->WriteFile(file, theirs);
        Prepare(kind, Work::Add);
        Press(Work::Add);
        QCOMPARE(m_desk->Content(file), theirs + LineOf(kind));
        // The screen knows nothing of it, and a change is written from the screen.
        QCOMPARE(ListOf(kind)->Count(), 4);
        Prepare(kind, Work::Save);
        Press(Work::Save);
        QCOMPARE(m_desk->Content(file), Wanted(kind, Work::Save) + LineOf(kind));
    }

    void aFileThatAnotherProgramPutsInItsPlaceIsWrittenTo_data() { Kinds(); }
    void aFileThatAnotherProgramPutsInItsPlaceIsWrittenTo()
    {
        QFETCH(Kind, kind);
        OpenEdit(kind);
        const QString file = FolderOf(kind) + "/Pets";
        m_desk->WriteFile(FolderOf(kind) + "/new", "theirs\r\n");
        QVERIFY(QFile::remove(m_desk->folder.filePath(file)));
        QVERIFY(
            QFile::rename(m_desk->folder.filePath(FolderOf(kind) + "/new"), m_desk->folder.filePath(file)));
        Prepare(kind, Work::Add);
        Press(Work::Add);
        QCOMPARE(m_desk->Content(file), "theirs\r\n" + LineOf(kind));
    }

    // While a new list is being saved: the program ends, and what is there was never half ours.
    void aNewListThatTheDiskDoesNotTakeEndsTheProgram_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<qint32>("number");
        const QList<QPair<QString, qint32>> faults{
            { "read-only", 70 }, { "read-only folder", 70 }, { "folder deleted", 76 }, { "full disk", 61 }
        };
        for (const auto &[fault, number] : faults)
            for (const Kind kind : { Kind::Spelling, Kind::Quiz })
                QTest::addRow("%s, %s", qPrintable(fault), kind == Kind::Quiz ? "quiz" : "spelling")
                    << kind << fault << number;
    }
    void aNewListThatTheDiskDoesNotTakeEndsTheProgram()
    {
        QFETCH(Kind, kind);
        QFETCH(QString, fault);
        QFETCH(qint32, number);
        const QString name = fault == "read-only" ? "Pets" : "New";
        const QString file = FolderOf(kind) + '/' + name;
        const QByteArray before = m_desk->Content(file);
        if (kind == Kind::Spelling) {
            Show<frmSpelling1>();
            m_desk->Type("txtNew", "elephant");
            m_desk->Press("Command1");
        } else {
            Show<frmQuiz1>();
            m_desk->TypeQuestion("", "Elephant|a|b|c|d|1");
            m_desk->Press("cmdAdd");
        }
        m_desk->Type("txtName", name);
        Break(kind, fault);
        {
            const AsOrdinaryUser user;
            std::optional<FullDisk> full;
            if (fault == "full disk") {
                full.emplace(5);
                if (kind == Kind::Quiz) // it says so before the file is closed
                    m_desk->boxes.Expect("Your quiz has been saved.");
            }
            if (fault == "read-only")
                m_desk->boxes.Expect("There is already a list called Pets. Do you want to overwrite it with "
                                     "this list?",
                                     BoxAnswer::Yes);
            m_desk->boxes.Expect(RunTimeText(number));
            m_desk->Press(kind == Kind::Spelling ? "Command3" : "cmdSave");
        }
        QCOMPARE(m_desk->process.ExitCode().value_or(0), 1);
        Heal(kind, fault);
        QCOMPARE(m_desk->Content(file), fault != "full disk"     ? before
                                        : kind == Kind::Spelling ? QByteArray("eleph")
                                                                 : QByteArray("Eleph"));
    }

    void aFolderThatCannotBeListedIsReported_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<qint32>("number");
        for (const char *screen : { "frmEdit", "frmDelete", "frmExpList", "frmChooseList1" })
            for (const Kind kind : { Kind::Spelling, Kind::Quiz }) {
                const char *type = kind == Kind::Quiz ? "quiz" : "spelling";
                QTest::addRow("%s, %s, deleted", screen, type) << screen << kind << "folder deleted" << 76;
                QTest::addRow("%s, %s, unreadable", screen, type)
                    << screen << kind << "unreadable folder" << 75;
            }
    }
    void aFolderThatCannotBeListedIsReported()
    {
        QFETCH(QString, screen);
        QFETCH(Kind, kind);
        QFETCH(QString, fault);
        QFETCH(qint32, number);
        Break(kind, fault);
        const AsOrdinaryUser user;
        m_desk->boxes.Expect(ReportText(number));
        State().GameMode = kind == Kind::Quiz ? kQuizMode : kSpellingMode;
        frmEdit::Shared().ListType = frmDelete::Shared().ListType = frmExpList::Shared().ListType =
            TypeOf(kind);
        if (screen == "frmEdit")
            Show<frmEdit>();
        else if (screen == "frmDelete")
            Show<frmDelete>();
        else if (screen == "frmExpList")
            Show<frmExpList>();
        else
            Show<frmChooseList1>();
        QVERIFY(!m_desk->process.Ended());
        const QWidget *window = platform::WindowInFront();
        QCOMPARE(window->findChild<platform::FileListBox *>()->count(), 0);
        QVERIFY(window->isVisible());
    }

    void aListThatMayNotBeDeletedStays_data() { Kinds(); }
    void aListThatMayNotBeDeletedStays()
    {
        QFETCH(Kind, kind);
        frmDelete::Shared().ListType = TypeOf(kind);
        Show<frmDelete>();
        SelectIn("File1", "Pets");
        Break(kind, "read-only folder");
        const AsOrdinaryUser user;
        m_desk->boxes.Expect("Are you sure you want to delete Pets?", BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(70));
        m_desk->Press("cmdDel");
        QCOMPARE(m_desk->OnDisk(FolderOf(kind)), QStringList{ "Pets" });
        QCOMPARE(m_desk->Find<platform::FileListBox>("File1")->FileName(), "Pets");
    }

    void anExportThatTheFolderDoesNotTakeIsSilent_data()
    {
        QTest::addColumn<QString>("old");
        QTest::newRow("a new copy") << QString();
        QTest::newRow("one that is there") << "Pets";
    }
    void anExportThatTheFolderDoesNotTakeIsSilent()
    {
        QFETCH(QString, old);
        if (!old.isEmpty())
            m_desk->WriteFile("Home/" + old, "old");
        frmExpList::Shared().ListType = kSpellList;
        Show<frmExpList>();
        SelectIn("FileList", "Pets");
        SetRights("Home", 0555);
        const AsOrdinaryUser user;
        if (!old.isEmpty())
            m_desk->boxes.Expect("The file " + m_desk->folder.filePath("Home") +
                                     "\\Pets already exists. Do you wish to overwrite it?",
                                 BoxAnswer::Yes);
        m_desk->Press("cmdExport");
        QCOMPARE(m_desk->OnDisk("Home").join(' '), old);
        QVERIFY(frmExpList::Shared().IsActive());
    }

    void anImportThatTheFolderDoesNotTakeIsReported_data() { Kinds(); }
    void anImportThatTheFolderDoesNotTakeIsReported()
    {
        QFETCH(Kind, kind);
        OpenImport(kind);
        Break(kind, "read-only folder");
        const AsOrdinaryUser user;
        m_desk->boxes.Expect(ReportText(70));
        m_desk->Press("cmdImport");
        QCOMPARE(m_desk->OnDisk(FolderOf(kind)), QStringList{ "Pets" });
    }

    void anImportOfAFileWithoutRightsHasLostTheOldList_data() { Kinds(); }
    void anImportOfAFileWithoutRightsHasLostTheOldList()
    {
        QFETCH(Kind, kind);
        OpenImport(kind);
        m_desk->Type("txtName", "Pets");
        SetRights("Home/birds", 0);
        SetRights(FolderOf(kind), 0777);
        const AsOrdinaryUser user;
        m_desk->boxes.Expect("The file Pets already exists. Do you wish to overwrite it?", BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(70));
        m_desk->Press("cmdImport");
        QCOMPARE(m_desk->OnDisk(FolderOf(kind)), QStringList());
    }

    void theNameOfAFolderIsReported_data() { Kinds(); }
    void theNameOfAFolderIsReported()
    {
        QFETCH(Kind, kind);
        QVERIFY(QDir(m_desk->folder.path()).mkpath(FolderOf(kind) + "/birds"));
        OpenImport(kind);
        m_desk->boxes.Expect(ReportText(75));
        m_desk->Press("cmdImport");
        QVERIFY(QDir(m_desk->folder.filePath(FolderOf(kind) + "/birds")).exists());
    }

private:
    static void Kinds()
    {
        QTest::addColumn<Kind>("kind");
        QTest::newRow("spelling") << Kind::Spelling;
        QTest::newRow("quiz") << Kind::Quiz;
    }
    static const char *NameOf(Work work)
    {
        return work == Work::Add ? "add" : work == Work::Save ? "save" : "delete";
    }
    static QString FolderOf(Kind kind) { return kind == Kind::Quiz ? "QList" : "Lists"; }
    static QString TypeOf(Kind kind) { return kind == Kind::Quiz ? kQuizList : kSpellList; }
    // What is added, and how the file looks behind each work.
    static QByteArray LineOf(Kind kind) { return kind == Kind::Quiz ? "New_a_b_c_d_4_\r\n" : "cow_kau\r\n"; }
    static QByteArray Wanted(Kind kind, Work work)
    {
        const bool isQuiz = kind == Kind::Quiz;
        const QByteArray &all = isQuiz ? kQuestions : kWords;
        const QByteArray rest = all.mid(all.indexOf('\n') + 1);
        switch (work) {
        case Work::Add:
            return all + LineOf(kind);
        case Work::Save:
            return (isQuiz ? "Changed_a_b_c_d_1_\r\n" : "changed\r\n") + rest;
        case Work::Delete:
            return isQuiz ? rest : QByteArray("knight_nite\r\ndog_\r\n");
        }
        return {};
    }

    void SetRights(const QString &path, mode_t rights)
    {
        chmod(m_desk->folder.filePath(path).toLocal8Bit().constData(), rights);
    }
    void Break(Kind kind, const QString &fault)
    {
        const QString folder = FolderOf(kind);
        const QString file = m_desk->folder.filePath(folder + "/Pets");
        SetRights(folder, 0777);
        SetRights(folder + "/Pets", 0666);
        if (fault == "deleted" || fault == "a folder")
            QVERIFY(QFile::remove(file));
        if (fault == "a folder")
            QVERIFY(QDir().mkdir(file));
        if (fault == "folder deleted")
            QVERIFY(QDir(m_desk->folder.filePath(folder)).removeRecursively());
        if (fault == "read-only")
            SetRights(folder + "/Pets", 0444);
        if (fault == "without rights")
            SetRights(folder + "/Pets", 0);
        if (fault == "read-only folder")
            SetRights(folder, 0555);
        if (fault == "unreadable folder")
            SetRights(folder, 0111);
    }
    void Heal(Kind kind, const QString &fault)
    {
        if (fault == "folder deleted")
            QVERIFY(QDir(m_desk->folder.path()).mkdir(FolderOf(kind)));
        SetRights(FolderOf(kind), 0777);
        if (fault != "a folder")
            SetRights(FolderOf(kind) + "/Pets", 0666);
    }

    template <class Screen>
    void Show()
    {
        Screen::Shared().Show();
        m_desk->Settle();
    }
    void OpenEdit(Kind kind, const QString &name = "Pets")
    {
        frmEditQuiz::Shared().EditFileName = frmEditSpell::Shared().EditFileName = name;
        if (kind == Kind::Quiz)
            Show<frmEditQuiz>();
        else
            Show<frmEditSpell>();
    }
    void OpenImport(Kind kind)
    {
        m_desk->WriteFile("Home/birds", "robin\r\n");
        frmImpList::Shared().ListType = TypeOf(kind);
        Show<frmImpList>();
        SelectIn("FileList", "birds");
    }
    static bool IsInFront(Kind kind)
    {
        return kind == Kind::Quiz ? frmEditQuiz::Shared().IsActive() : frmEditSpell::Shared().IsActive();
    }
    platform::ListView *ListOf(Kind kind)
    {
        return m_desk->Find<platform::ListView>(kind == Kind::Quiz ? "lvwList" : "List");
    }
    void SelectIn(const QString &list, const QString &file)
    {
        auto *files = m_desk->Find<platform::FileListBox>(list);
        const auto found = files->findItems(file, Qt::MatchExactly);
        QCOMPARE(found.size(), 1);
        QTest::mouseClick(files->viewport(), Qt::LeftButton, {}, files->visualItemRect(found[0]).center());
        m_desk->Settle();
    }
    // Everything but the button; a deletion is answered with Yes.
    void Prepare(Kind kind, Work work)
    {
        const bool isQuiz = kind == Kind::Quiz;
        if (work == Work::Add) {
            if (isQuiz) {
                m_desk->TypeQuestion("A", "New|a|b|c|d|4");
            } else {
                m_desk->Type("txtASpell", "cow");
                m_desk->Type("txtAPronounce", "kau");
            }
            return;
        }
        auto *list = ListOf(kind);
        list->Select(1);
        if (work == Work::Delete) {
            m_desk->boxes.Expect(isQuiz ? "Are you sure you want to delete the question 'Q1' from the list?"
                                        : "Are you sure you want to delete cat from the list?",
                                 BoxAnswer::Yes);
            return;
        }
        QTest::keyClick(list, Qt::Key_Return);
        m_desk->Settle();
        if (isQuiz) {
            m_desk->TypeQuestion("E", "Changed|a|b|c|d|1");
        } else {
            m_desk->Type("txtESpell", "changed");
        }
    }
    void Press(Work work)
    {
        m_desk->Press(work == Work::Add ? "cmdAdd" : work == Work::Save ? "cmdSave" : "cmdDelete");
    }

    std::optional<QuizDesk> m_desk;
};

QTEST_MAIN(TestListFaults)
#include "TestListFaults.moc"
