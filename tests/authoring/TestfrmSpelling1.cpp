#include "authoring/SpellDesk.h"
#include "authoring/frmList.h"
#include "authoring/frmSpelling1.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Captions.h"
#include "support/ReportText.h"

#include <QDir>
#include <QFile>

using namespace tumblewick;
using platform::BoxAnswer;
using platform::BoxButtons;
using support::CheckCaptions;
using support::FaultyFiles;
using support::RunTimeText;
using support::SpellDesk;

namespace {

const QString kOverwrite = "There is already a list called Pets. Do you want to overwrite it with this list?";
const QString kSaved = "Your list has been saved.";

} // namespace

// The screen on which a spelling list is made.
class TestfrmSpelling1 : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace("List1");
        frmSpelling1::Shared().Show();
        m_desk->Settle();
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void theScreenStartsEmpty()
    {
        QCOMPARE(frmSpelling1::Shared().Window()->windowTitle(), QString("Create a Spell List"));
        QCOMPARE(List()->Count(), 0);
        QCOMPARE(m_desk->Titles(), QStringList({ "Spell this way", "Say it this way" }));
        QCOMPARE(m_desk->Focus(), QString("txtName"));
        m_desk->Press("cmdback");
        QVERIFY(frmList::Shared().IsActive());
        QVERIFY(!frmSpelling1::Exists());
    }

    void theHubLeadsHere()
    {
        m_desk->Press("cmdback");
        m_desk->Press("cmdNewSpell");
        QVERIFY(frmSpelling1::Shared().IsActive());
        QVERIFY(!frmList::Exists());
    }

    void captionsAndTabOrder()
    {
        CheckCaptions(
            *m_desk,
            { { "lblHead", "Create a New Spelling List" },
              { "lblName", "Enter list name" },
              { "lblNew", "Enter spelling for word" },
              { "lblPronounce", "Optional - enter a different pronunciation and test the pronunciation till "
                                "you are satisfied" },
              { "lblRepeat", "Repeat steps 2 to 5 till you have added all of the words" },
              { "lblDelete", "To remove a word from the list click on it then click Delete" },
              { "cmdTestit", "Test Pronunciation" },
              { "cmdTest", "Test Pronunciation" },
              { "Command1", "&Add to List" },
              { "Command3", "&Save List" },
              { "Command2", "&Delete Word" },
              { "Command4", "&Main Menu" },
              { "cmdback", "&Back" },
              { "cmdHelp", "&Help !" },
              { "Command5", "? &Tips on Pronunciation" } });
        for (int step = 1; step <= 7; ++step)
            CheckCaptions(*m_desk, { { "Label" + QString::number(step), QString::number(step) } });
        QStringList order;
        QWidget *control = m_desk->Find<QWidget>("txtName");
        for (int step = 0; step < 9; ++step) {
            order << control->objectName();
            do {
                control = control->nextInFocusChain();
            } while (!(control->focusPolicy() & Qt::TabFocus) || control->objectName().startsWith("qt_"));
        }
        QCOMPARE(order, QStringList({ "txtName", "txtNew", "cmdTestit", "txtPronounce", "cmdTest", "Command1",
                                      "Command3", "Command2", "Command4" }));
    }

    void addTellsAllFaultsAtOnce_data() { SpellDesk::FaultRows("Please enter the spelling for the word. "); }
    void addTellsAllFaultsAtOnce()
    {
        QFETCH(QString, word);
        QFETCH(QString, pronunciation);
        QFETCH(QString, message);
        m_desk->Type("txtNew", word);
        m_desk->Type("txtPronounce", pronunciation);
        m_desk->boxes.Expect(message);
        m_desk->Press("Command1");
        QVERIFY(m_desk->boxes.All().front().HasNoTitle());
        QCOMPARE(m_desk->boxes.All().front().buttons, BoxButtons::Ok);
        QCOMPARE(m_desk->Typed({ "txtNew", "txtPronounce" }), QStringList({ word, pronunciation }));
        QCOMPARE(List()->Count(), 0);
        m_desk->Press("cmdback"); // nothing to save
        QVERIFY(frmList::Shared().IsActive());
    }

    void addPutsTheWordAtTheEnd()
    {
        Add("knight", "nite");
        Add(" two words ", "");
        Add("knight", "k night");
        QCOMPARE(m_desk->Words(), QStringList({ "knight|nite", " two words |", "knight|k night" }));
        QCOMPARE(m_desk->Find<QLineEdit>("txtNew")->text(), QString());
        QCOMPARE(m_desk->Find<QLineEdit>("txtPronounce")->text(), QString());
        QCOMPARE(m_desk->Focus(), QString("txtNew"));
    }

    void aWordThatIsAddedIsSeen()
    {
        for (int number = 1; number <= 30; ++number)
            Add(QString::number(number));
        QVERIFY(m_desk->IsSeen(30));
    }

    // A list has a line for each word.
    void theBoxesHoldOneLine()
    {
        for (const char *box : { "txtName", "txtNew", "txtPronounce" }) {
            m_desk->Type(box, "two\r\nlines");
            QCOMPARE(m_desk->Find<QLineEdit>(box)->text(), QString("two lines"));
        }
    }

    void theFileIsExact()
    {
        Add("cat");
        Save("Pets");
        QCOMPARE(Content("Pets"), QByteArray("cat\r\n"));
    }

    void wordsAndPronunciationsInTheirOrder()
    {
        Add("knight", "nite");
        Add("caf\u00e9");
        Add("\u0434\u043e\u043c", "dom");
        List()->sortByColumn(0, Qt::AscendingOrder);
        Save("Pets");
        QCOMPARE(Content("Pets"), QByteArray("knight_nite\r\ncaf\xe9\r\n\xd0\xb4\xd0\xbe\xd0\xbc_dom\r\n"));
    }

    void aListWithoutWordsIsAnEmptyFile()
    {
        Save("Pets");
        QCOMPARE(Content("Pets"), QByteArray());
    }

    void aNameIsNeeded()
    {
        Add("cat");
        m_desk->boxes.Expect("Please enter a name for this Quiz list");
        m_desk->Press("Command3");
        QCOMPARE(m_desk->Focus(), QString("txtName"));
        QVERIFY(frmSpelling1::Shared().IsActive());
    }

    void savingTwiceAsksTheSecondTime()
    {
        Add("cat");
        Save("Pets");
        Add("dog");
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::Yes);
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("Command3");
        QCOMPARE(m_desk->boxes.All()[1].title, QString("List Already Exists"));
        QCOMPARE(m_desk->boxes.All()[1].buttons, BoxButtons::YesNo);
        QCOMPARE(Content("Pets"), QByteArray("cat\r\ndog\r\n"));
    }

    void aTakenNameIsFoundWhateverItsCaseAndTheFolders()
    {
        m_desk->WriteSpelling("PETS", { "cow" });
        Add("cat");
        m_desk->Type("txtName", "Pets");
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::No);
        m_desk->Press("Command3");
        QCOMPARE(Content("PETS"), QByteArray("cow\r\n"));
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::Yes);
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("Command3");
        QCOMPARE(Content("PETS"), QByteArray("cat\r\n"));
        QVERIFY(!QFile::exists(m_desk->folder.filePath("Lists/Pets")));
    }

    void leavingAfterAddAsks_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("Back") << "cmdback";
        QTest::newRow("Main Menu") << "Command4";
    }
    void leavingAfterAddAsks()
    {
        QFETCH(QString, button);
        State().MenuShown = true;
        Add("cat");
        m_desk->boxes.Expect("Save list?", BoxAnswer::Cancel);
        m_desk->Press(button);
        QVERIFY(frmSpelling1::Shared().IsActive());
        QCOMPARE(m_desk->Words(), QStringList({ "cat|" }));

        m_desk->boxes.Expect("Save list?", BoxAnswer::Yes);
        m_desk->boxes.Expect("Please enter a name for this Quiz list");
        m_desk->Press(button);
        QVERIFY(frmSpelling1::Shared().IsActive());

        m_desk->WriteSpelling("Pets", { "cow" });
        m_desk->Type("txtName", "Pets");
        m_desk->boxes.Expect("Save list?", BoxAnswer::Yes);
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::No);
        m_desk->Press(button);
        QVERIFY(frmSpelling1::Shared().IsActive());
        QCOMPARE(Content("Pets"), QByteArray("cow\r\n"));

        m_desk->boxes.Expect("Save list?", BoxAnswer::Yes);
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::Yes);
        m_desk->boxes.Expect(kSaved);
        m_desk->Press(button);
        QVERIFY(!frmSpelling1::Exists());
        QVERIFY(button == "cmdback" ? frmList::Shared().IsActive() : frmMenu1::Shared().IsActive());
        QCOMPARE(Content("Pets"), QByteArray("cat\r\n"));
    }

    void noLosesTheList()
    {
        Add("cat");
        m_desk->Type("txtName", "Pets");
        m_desk->boxes.Expect("Save list?", BoxAnswer::No);
        m_desk->Press("cmdback");
        QVERIFY(frmList::Shared().IsActive());
        QVERIFY(!QFile::exists(m_desk->folder.filePath("Lists/Pets")));
        m_desk->Press("cmdNewSpell");
        QCOMPARE(List()->Count(), 0);
        QCOMPARE(m_desk->Find<QLineEdit>("txtName")->text(), QString());
        m_desk->Press("cmdback"); // the new screen has nothing to save
    }

    void backAfterASaveAsksNothingUntilAWordIsAdded()
    {
        Add("cat");
        Save("Pets");
        Add("dog");
        m_desk->boxes.Expect("Save list?", BoxAnswer::Cancel);
        m_desk->Press("cmdback");
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::Yes);
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("Command3");
        m_desk->Press("cmdback");
        QVERIFY(frmList::Shared().IsActive());
    }

    void deletingLeavesTheQuestionAsItIs()
    {
        Add("cat");
        Save("Pets");
        Delete("cat");
        QCOMPARE(List()->Count(), 0);
        m_desk->Press("cmdback"); // a deletion alone is not offered for saving
        QVERIFY(frmList::Shared().IsActive());
        QCOMPARE(Content("Pets"), QByteArray("cat\r\n"));
        m_desk->Press("cmdNewSpell");
        Add("cat");
        Delete("cat");
        m_desk->boxes.Expect("Save list?", BoxAnswer::No);
        m_desk->Press("cmdback");
    }

    void deleteAsksForTheSelectedWord()
    {
        Add("cat");
        Add("dog");
        List()->Select(2);
        m_desk->boxes.Expect(SpellDesk::DeleteQuestion("dog"), BoxAnswer::No);
        m_desk->Press("Command2");
        QVERIFY(m_desk->boxes.All().front().HasNoTitle());
        QCOMPARE(m_desk->boxes.All().front().buttons, BoxButtons::YesNo);
        QCOMPARE(List()->Count(), 2);
        Delete("dog");
        QCOMPARE(m_desk->Words(), QStringList({ "cat|" }));
    }

    void theDeleteKeyAsksTheSame()
    {
        Add("cat");
        m_desk->boxes.Expect(SpellDesk::DeleteQuestion("cat"), BoxAnswer::Yes);
        QTest::keyClick(List(), Qt::Key_Delete);
        QCOMPARE(List()->Count(), 0);
        QTest::keyClick(List(), Qt::Key_Delete);
    }

    void deleteInAnEmptyListEndsTheProgram()
    {
        m_desk->boxes.Expect(RunTimeText(91));
        m_desk->Press("Command2");
        QVERIFY(m_desk->process.Ended());
    }

    void theColumnsShareTheWidth()
    {
        for (const QSize &size : { QSize(800, 600), QSize(1024, 768), QSize(1537, 864) }) {
            frmSpelling1::Shared().Window()->resize(size);
            m_desk->Settle();
            const int half = List()->width() * 15 / 2;
            QCOMPARE(List()->ColumnTwips(1), half / 15 * 15);
            QCOMPARE(List()->ColumnTwips(2), half / 15 * 15);
        }
    }

    void whatTheFilesRefuseEndsTheProgram_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<qint32>("number");
        QTest::newRow("a slash") << "a/b" << 76;
        QTest::newRow("a colon") << "a:b" << 52;
        QTest::newRow("a star") << "a*" << 52;
        QTest::newRow("a device") << "con" << 52;
        QTest::newRow("a folder") << "Folder" << 75;
    }
    void whatTheFilesRefuseEndsTheProgram()
    {
        QFETCH(QString, name);
        QFETCH(qint32, number);
        QVERIFY(QDir(m_desk->folder.path()).mkpath("Lists/Folder"));
        Add("cat");
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(RunTimeText(number));
        m_desk->Press("Command3");
        QVERIFY(m_desk->process.Ended());
    }

    void aMissingFolderEndsTheProgram()
    {
        QVERIFY(QDir(m_desk->folder.path()).rmdir("Lists"));
        Add("cat");
        m_desk->Type("txtName", "Pets");
        m_desk->boxes.Expect(RunTimeText(76));
        m_desk->Press("Command3");
        QVERIFY(m_desk->process.Ended());
    }

    void aFullOrProtectedDiskEndsTheProgram_data() { support::DiskFaultRows(); }
    void aFullOrProtectedDiskEndsTheProgram()
    {
        QFETCH(FaultyFiles::Operation, operation);
        QFETCH(qint32, number);
        Add("cat");
        Add("dog");
        m_desk->Type("txtName", "Pets");
        m_desk->files.Fail(operation, number);
        m_desk->boxes.Expect(RunTimeText(number));
        m_desk->Press("Command3");
        QVERIFY(m_desk->process.Ended());
    }

    void helpOpensItsTopicsAndGoesWithTheScreen()
    {
        m_desk->Press("cmdHelp");
        m_desk->Press("Command5");
        QCOMPARE(m_desk->help.Open()[0].topic, QString("Add a New Spelling List.htm"));
        QCOMPARE(m_desk->help.Open()[1].topic, QString("Tips on Pronunciation.htm"));
        m_desk->Press("cmdback");
        QVERIFY(m_desk->help.Open().empty());
    }

private:
    platform::ListView *List() { return m_desk->List(); }
    void Add(const QString &word, const QString &pronunciation = {})
    {
        m_desk->Type("txtNew", word);
        m_desk->Type("txtPronounce", pronunciation);
        m_desk->Press("Command1");
    }
    void Save(const QString &name)
    {
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("Command3");
    }
    void Delete(const QString &word) { m_desk->Delete("Command2", word); }
    QByteArray Content(const QString &name) { return m_desk->Content("Lists/" + name); }

    std::optional<SpellDesk> m_desk;
};

QTEST_MAIN(TestfrmSpelling1)
#include "TestfrmSpelling1.moc"
