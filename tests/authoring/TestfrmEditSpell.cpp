#include "authoring/SpellDesk.h"
#include "authoring/frmEdit.h"
#include "authoring/frmEditSpell.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Captions.h"
#include "support/CoverAndUncover.h"
#include "support/ReportText.h"

#include <QDir>
#include <QFile>

using namespace tumblewick;
using platform::BoxAnswer;
using platform::BoxButtons;
using support::CheckCaptions;
using support::FaultyFiles;
using support::kSoundUnderscored;
using support::kWordUnderscored;
using support::ReportText;
using support::SpellDesk;

namespace {

const QString kNotChosen = "You need to double click on a word from the list before you can edit it. ";
const QString kMissing = "Please enter the spelling for the new word. ";

} // namespace

// The screen on which a spelling list is edited, and its file at each step.
class TestfrmEditSpell : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace("List");
        State().MenuShown = true;
        m_desk->WriteFile("Lists/Pets", "cat\r\nknight_nite\r\ndog\r\n");
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void theListIsThere()
    {
        Open();
        QCOMPARE(frmEditSpell::Shared().Window()->windowTitle(), QString("Edit Spelling List"));
        QCOMPARE(m_desk->Words(), QStringList({ "cat|", "knight|nite", "dog|" }));
        QCOMPARE(m_desk->Titles(), QStringList({ "Spell this way", "Say it this way" }));
        QCOMPARE(m_desk->Focus(), QString("List"));
        const int half = (List()->width() * 15 / 2 - 100) / 15 * 15;
        QCOMPARE(List()->ColumnTwips(1), half);
        QCOMPARE(List()->ColumnTwips(2), half);
    }

    void captions()
    {
        Open();
        CheckCaptions(
            *m_desk,
            { { "lblHead", "Edit Spelling List" },
              { "lblNote", "Double click on the word in the list you want to edit" },
              { "Frame1", "Edit a Word" },
              { "lblESpell", "Correct the spelling if necessary" },
              { "lblEPronounce", "Correct the pronunciation if necessary" },
              { "Frame2", "Add a Word" },
              { "lblASpell", "Enter spelling for word" },
              { "lblAPronounce", "Optional - enter a different pronunciation and test the pronunciation till "
                                 "you are satisfied" },
              { "Frame3", "Delete a Word" },
              { "lblD1", "Click on the word in the list you want to delete" },
              { "cmdETest", "Test Pronunciation" },
              { "cmdETest2", "Test Pronunciation" },
              { "cmdATest", "Test Pronunciation" },
              { "cmdATest2", "Test Pronunciation" },
              { "cmdSave", "&Save Changes" },
              { "cmdAdd", "&Add to List" },
              { "cmdDelete", "&Delete" },
              { "cmdback", "&Back" },
              { "cmdMenu", "&Main Menu" },
              { "cmdHelp", "&Help !" },
              { "cmdTips", "? &Tips on Pronunciation" } });
    }

    void theBoxesHoldOneLine()
    {
        Open();
        for (const char *box : { "txtESpell", "txtEPronounce", "txtASpell", "txtAPronounce" }) {
            m_desk->Type(box, "two\r\nlines");
            QCOMPARE(m_desk->Find<QLineEdit>(box)->text(), QString("two lines"));
            m_desk->Type(box, "");
        }
    }

    void linesOfOthersAreTaken()
    {
        m_desk->WriteFile("Lists/Pets", "a_b_c\r\n\r\n_x\ncat_\r\nlast");
        Open();
        QCOMPARE(m_desk->Words(), QStringList({ "a|b_c", "|", "|x", "cat|", "last|" }));
    }

    void aMissingListIsReported()
    {
        m_desk->boxes.Expect(ReportText(53));
        Open("Nobody");
        QVERIFY(frmEditSpell::Shared().IsActive());
        QCOMPARE(List()->Count(), 0);
        // Without a file there is nothing to write to.
        m_desk->Type("txtASpell", "cow");
        m_desk->boxes.Expect(ReportText(91));
        m_desk->Press("cmdAdd");
        QVERIFY(!QFile::exists(m_desk->folder.filePath("Lists/Nobody")));
    }

    void aListThatBreaksOffIsReportedAndHasWhatStoodBefore()
    {
        m_desk->files.Fail(FaultyFiles::Operation::ReadLine, 57, 1, 2);
        m_desk->boxes.Expect(ReportText(57));
        Open();
        QCOMPARE(m_desk->Words(), QStringList({ "cat|", "knight|nite" }));
    }

    void beingActiveAgainFillsTheListOnceAndKeepsTheEdit()
    {
        Open();
        Choose(2);
        support::CoverAndUncover(*m_desk);
        QCOMPARE(m_desk->Words(), QStringList({ "cat|", "knight|nite", "dog|" }));
        QCOMPARE(Boxes(), QStringList({ "knight", "nite", "", "" }));
        m_desk->Type("txtESpell", "night");
        m_desk->Press("cmdSave");
        QCOMPARE(Content(), QByteArray("cat\r\nnight_nite\r\ndog\r\n"));
    }

    void aDoubleClickFillsTheBoxes()
    {
        Open();
        Choose(2);
        QCOMPARE(Boxes(), QStringList({ "knight", "nite", "", "" }));
        for (const char *box : { "txtESpell", "txtEPronounce" })
            QCOMPARE(m_desk->Find<QLineEdit>(box)->cursorPosition(),
                     0); // a long text is seen from its beginning
        Choose(1);
        QCOMPARE(Boxes(), QStringList({ "cat", "", "", "" }));
        Click(3);
        QCOMPARE(Boxes(), QStringList({ "", "", "", "" }));
        m_desk->boxes.Expect(kNotChosen);
        m_desk->Press("cmdSave");
    }

    void enterDoesWhatADoubleClickDoes()
    {
        Open();
        QTest::keyClick(List(), Qt::Key_Down);
        QTest::keyClick(List(), Qt::Key_Return);
        QCOMPARE(Boxes(), QStringList({ "knight", "nite", "", "" }));
        QTest::keyClick(List(), Qt::Key_Up); // another word: the boxes are empty again
        QCOMPARE(Boxes(), QStringList({ "", "", "", "" }));
    }

    void saveNeedsADoubleClick()
    {
        Open();
        m_desk->boxes.Expect(kNotChosen);
        m_desk->Press("cmdSave");
        m_desk->Type("txtESpell", "cow");
        m_desk->boxes.Expect(kNotChosen);
        m_desk->Press("cmdSave");
        QCOMPARE(Content(), QByteArray("cat\r\nknight_nite\r\ndog\r\n"));
    }

    void saveRewritesTheFile()
    {
        Open();
        Choose(1);
        m_desk->Type("txtESpell", "caf\u00e9");
        m_desk->Type("txtEPronounce", "kaffay");
        m_desk->Press("cmdSave");
        QCOMPARE(Content(), QByteArray("caf\xe9_kaffay\r\nknight_nite\r\ndog\r\n"));
        QCOMPARE(m_desk->Words(), QStringList({ "caf\u00e9|kaffay", "knight|nite", "dog|" }));
        QCOMPARE(Boxes(), QStringList({ "", "", "", "" }));
        m_desk->boxes.Expect(kNotChosen); // the next change needs its own double click
        m_desk->Press("cmdSave");
        Choose(2);
        m_desk->Type("txtEPronounce", "");
        m_desk->Press("cmdSave");
        QCOMPARE(Content(), QByteArray("caf\xe9_kaffay\r\nknight\r\ndog\r\n"));
        m_desk->Press("cmdMenu"); // nothing is pending
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void faultsOfAnEditAreTold_data() { SpellDesk::FaultRows(kMissing); }
    void faultsOfAnEditAreTold()
    {
        QFETCH(QString, word);
        QFETCH(QString, pronunciation);
        QFETCH(QString, message);
        Open();
        Choose(1);
        m_desk->Type("txtESpell", word);
        m_desk->Type("txtEPronounce", pronunciation);
        m_desk->boxes.Expect(message);
        m_desk->Press("cmdSave");
        m_desk->Type("txtASpell", word);
        m_desk->Type("txtAPronounce", pronunciation);
        m_desk->boxes.Expect(message);
        m_desk->Press("cmdAdd");
        QVERIFY(m_desk->boxes.All().back().HasProgramTitle());
        QCOMPARE(Boxes(), QStringList({ "", "", word, pronunciation }));
        QCOMPARE(Content(), QByteArray("cat\r\nknight_nite\r\ndog\r\n"));
    }

    void addAppendsToTheFileAndTheList()
    {
        Open();
        Add("cow");
        Add("yacht", "yot");
        QCOMPARE(Content(), QByteArray("cat\r\nknight_nite\r\ndog\r\ncow\r\nyacht_yot\r\n"));
        QCOMPARE(m_desk->Words(), QStringList({ "cat|", "knight|nite", "dog|", "cow|", "yacht|yot" }));
        QCOMPARE(Boxes(), QStringList({ "", "", "", "" }));
    }

    void aWordThatIsAddedIsSeen()
    {
        Open();
        for (int number = 1; number <= 30; ++number)
            Add(QString::number(number));
        QVERIFY(m_desk->IsSeen(33));
    }

    void aWordThatIsAddedFindsItsPlaceInTheOrderShown()
    {
        Open();
        List()->sortByColumn(0, Qt::AscendingOrder); // cat, dog, knight
        Add("cow");
        QCOMPARE(List()->model()->index(1, 0).data().toString(), QString("cow"));
        QCOMPARE(m_desk->Words().last(), QString("cow|"));
    }

    void addThrowsAnEditAway()
    {
        Open();
        Choose(1);
        m_desk->Type("txtESpell", "cats");
        Add("cow");
        QCOMPARE(Boxes(), QStringList({ "", "", "", "" }));
        QCOMPARE(m_desk->Words(), QStringList({ "cat|", "knight|nite", "dog|", "cow|" }));
        m_desk->boxes.Expect(kNotChosen);
        m_desk->Press("cmdSave");
        Choose(1);
        m_desk->Type("txtESpell", "cats");
        m_desk->boxes.Expect(kMissing); // an add that is refused does so too
        m_desk->Press("cmdAdd");
        QCOMPARE(Boxes(), QStringList({ "", "", "", "" }));
    }

    void deleteWritesAnUnderscoreBehindEachWord()
    {
        Open();
        Delete(1, "cat");
        QCOMPARE(Content(), QByteArray("knight_nite\r\ndog_\r\n"));
        QCOMPARE(m_desk->Words(), QStringList({ "knight|nite", "dog|" }));
        Reopen();
        QCOMPARE(m_desk->Words(), QStringList({ "knight|nite", "dog|" }));
        Choose(1);
        m_desk->Press("cmdSave");
        QCOMPARE(Content(), QByteArray("knight_nite\r\ndog\r\n"));
    }

    void deleteEmptiesTheEdit()
    {
        Open();
        Choose(2);
        m_desk->boxes.Expect(SpellDesk::DeleteQuestion("knight"), BoxAnswer::No);
        m_desk->Press("cmdDelete");
        QVERIFY(m_desk->boxes.All().back().HasNoTitle());
        QCOMPARE(m_desk->boxes.All().back().buttons, BoxButtons::YesNo);
        QCOMPARE(Boxes(), QStringList({ "knight", "nite", "", "" }));
        m_desk->boxes.Expect(SpellDesk::DeleteQuestion("knight"), BoxAnswer::Yes);
        m_desk->Press("cmdDelete");
        QCOMPARE(Boxes(), QStringList({ "", "", "", "" }));
        m_desk->boxes.Expect(kNotChosen);
        m_desk->Press("cmdSave");
    }

    void theDeleteKeyAsksTheSame()
    {
        Open();
        m_desk->boxes.Expect(SpellDesk::DeleteQuestion("cat"), BoxAnswer::Yes);
        QTest::keyClick(List(), Qt::Key_Delete);
        QCOMPARE(Content(), QByteArray("knight_nite\r\ndog_\r\n"));
    }

    void theLastWordLeavesAnEmptyFile()
    {
        m_desk->WriteFile("Lists/Pets", "cat\r\n");
        Open();
        Delete(1, "cat");
        QVERIFY(QFile::exists(m_desk->folder.filePath("Lists/Pets")));
        QCOMPARE(Content(), QByteArray());
        m_desk->boxes.Expect(ReportText(91)); // nothing is selected any more
        m_desk->Press("cmdDelete");
        m_desk->boxes.Expect(ReportText(91));
        QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, QPoint(30, 60));
        Add("dog");
        QCOMPARE(Content(), QByteArray("dog\r\n"));
    }

    void aWordAddedAndDeletedIsInNoFormInTheFile()
    {
        Open();
        Add("zebra", "zeebra");
        Delete(4, "zebra");
        QCOMPARE(Content(), QByteArray("cat_\r\nknight_nite\r\ndog_\r\n"));
    }

    void sortingDoesNotReachTheFile()
    {
        Open();
        List()->sortByColumn(0, Qt::DescendingOrder); // knight, dog, cat
        Delete(3, "dog");
        QCOMPARE(Content(), QByteArray("cat_\r\nknight_nite\r\n"));
        Choose(1);
        m_desk->Type("txtESpell", "bat");
        m_desk->Press("cmdSave");
        QCOMPARE(Content(), QByteArray("bat\r\nknight_nite\r\n"));
    }

    // Pending is what was typed since the last double click, save or add, as long as it is there.
    void aFilledEditAloneIsNotAskedFor()
    {
        Open();
        Choose(2);
        m_desk->Press("cmdMenu");
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void emptiedBoxesAreNotAskedFor()
    {
        Open();
        Choose(2);
        m_desk->Type("txtESpell", "");
        m_desk->Type("txtEPronounce", "");
        m_desk->Type("txtASpell", "x");
        m_desk->Type("txtASpell", "");
        m_desk->Press("cmdMenu");
        QVERIFY(frmMenu1::Shared().IsActive());
    }

    void yesWithoutADoubleClickStays()
    {
        Open();
        m_desk->Type("txtEPronounce", "cow");
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Yes);
        m_desk->boxes.Expect(kNotChosen);
        m_desk->Press("cmdback");
        QVERIFY(frmEditSpell::Shared().IsActive());
        QCOMPARE(m_desk->boxes.All().front().buttons, BoxButtons::YesNoCancel);
        QVERIFY(m_desk->boxes.All().front().HasNoTitle());
    }

    void yesSavesTheEditFirstAndThenAdds()
    {
        Open();
        Choose(1);
        m_desk->Type("txtESpell", "cats");
        m_desk->Type("txtASpell", "cow");
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Yes);
        m_desk->Press("cmdMenu");
        QVERIFY(frmMenu1::Shared().IsActive());
        QCOMPARE(Content(), QByteArray("cats\r\nknight_nite\r\ndog\r\ncow\r\n"));
    }

    void yesStaysWhenEitherFails()
    {
        Open();
        Choose(1);
        m_desk->Type("txtESpell", "a_b");
        m_desk->Type("txtASpell", "cow");
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Yes);
        m_desk->boxes.Expect(kWordUnderscored);
        m_desk->Press("cmdMenu");
        QVERIFY(frmEditSpell::Shared().IsActive());
        // The word has been added all the same, and that has thrown the edit away.
        QCOMPARE(Content(), QByteArray("cat\r\nknight_nite\r\ndog\r\ncow\r\n"));
        QCOMPARE(Boxes(), QStringList({ "", "", "", "" }));
    }

    void backHandsTheKindToTheChoice()
    {
        Open();
        frmEdit::Shared().ListType = kQuizList;
        m_desk->Press("cmdback");
        QVERIFY(frmEdit::Shared().IsActive());
        QCOMPARE(frmEdit::Shared().ListType, kSpellList);
        QVERIFY(!frmEditSpell::Exists());
    }

    void noAndCancel()
    {
        Open();
        m_desk->Type("txtAPronounce", "x");
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Cancel);
        m_desk->Press("cmdMenu");
        QVERIFY(frmEditSpell::Shared().IsActive());
        QCOMPARE(Boxes(), QStringList({ "", "", "", "x" }));
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::No);
        m_desk->Press("cmdMenu");
        QVERIFY(frmMenu1::Shared().IsActive());
        QCOMPARE(Content(), QByteArray("cat\r\nknight_nite\r\ndog\r\n"));
    }

    void aFileThatWasTakenAwayIsReportedAndNotMadeAnew()
    {
        Open();
        QVERIFY(QFile::remove(m_desk->folder.filePath("Lists/Pets")));
        m_desk->Type("txtASpell", "cow");
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Words(), QStringList({ "cat|", "knight|nite", "dog|" }));
        Choose(1);
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdSave");
        m_desk->boxes.Expect(SpellDesk::DeleteQuestion("cat"), BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdDelete");
        QVERIFY(frmEditSpell::Shared().IsActive());
        QVERIFY(!QFile::exists(m_desk->folder.filePath("Lists/Pets")));
    }

    void aFolderThatWasTakenAwayIsReported()
    {
        Open();
        QVERIFY(QDir(m_desk->folder.filePath("Lists")).removeRecursively());
        m_desk->Type("txtASpell", "cow");
        m_desk->boxes.Expect(ReportText(76));
        m_desk->Press("cmdAdd");
    }

    void faultsOfTheDiskAreReportedAndTheScreenStays_data() { support::DiskFaultRows(); }
    void faultsOfTheDiskAreReportedAndTheScreenStays()
    {
        QFETCH(FaultyFiles::Operation, operation);
        QFETCH(qint32, number);
        Open();
        m_desk->Type("txtASpell", "cow");
        Expect(operation, number);
        m_desk->Press("cmdAdd");
        QCOMPARE(Boxes(), QStringList({ "", "", "cow", "" }));
        m_desk->Type("txtASpell", "");
        Choose(1);
        m_desk->Type("txtESpell", "cats");
        Expect(operation, number);
        m_desk->Press("cmdSave");
        QCOMPARE(Boxes(), QStringList({ "cats", "", "", "" }));
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Yes);
        Expect(operation, number);
        m_desk->Press("cmdMenu");
        QVERIFY(frmEditSpell::Shared().IsActive());
        // What is in the list goes to the file as soon as it can.
        m_desk->Press("cmdSave");
        QVERIFY(Content().startsWith("cats\r\nknight_nite\r\ndog\r\n"));
    }

    void aFullDiskLeavesTheFileAsFarAsItWasWritten()
    {
        Open();
        Choose(1);
        m_desk->files.Fail(FaultyFiles::Operation::Write, 61, 1, 1);
        m_desk->boxes.Expect(ReportText(61));
        m_desk->Press("cmdSave");
        QCOMPARE(Content(), QByteArray("cat\r\n"));
    }

    void helpOpensItsTopicsAndGoesWithTheScreen()
    {
        Open();
        m_desk->Press("cmdHelp");
        m_desk->Press("cmdTips");
        QCOMPARE(m_desk->help.Open()[0].topic, QString("Edit a Spelling List.htm"));
        QCOMPARE(m_desk->help.Open()[1].topic, QString("Tips on Pronunciation.htm"));
        m_desk->Press("cmdMenu");
        QVERIFY(m_desk->help.Open().empty());
        QVERIFY(!frmEditSpell::Exists());
        QVERIFY(State().AgentControl.IsNothing());
    }

    void longListsAreReadAndWritten()
    {
        QByteArray content;
        for (int number = 1; number <= 32767; ++number)
            content += "word" + QByteArray::number(number) + "\r\n";
        m_desk->WriteFile("Lists/Pets", content);
        QElapsedTimer time;
        time.start();
        Open();
        qInfo("opened in %lld ms", time.elapsed());
        QCOMPARE(List()->Count(), 32767);
        Choose(1);
        time.restart();
        m_desk->Press("cmdSave");
        qInfo("saved in %lld ms", time.elapsed());
        QCOMPARE(Content(), content);
        Add("onemore");
        Choose(1);
        m_desk->boxes.Expect(ReportText(6));
        m_desk->Press("cmdSave");
        QCOMPARE(Content(), QByteArray()); // the file had been opened for writing by then
    }

private:
    void Open(const QString &name = "Pets")
    {
        frmEditSpell::Shared().EditFileName = name;
        frmEditSpell::Shared().Show();
        m_desk->Settle();
    }
    void Reopen()
    {
        m_desk->Press("cmdMenu");
        Open();
    }
    platform::ListView *List() { return m_desk->List(); }
    // An entry on the screen as the user sees it, from 1.
    QPoint PlaceOf(int row) { return List()->visualRect(List()->model()->index(row - 1, 0)).center(); }
    void Click(int row) { QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, PlaceOf(row)); }
    void Choose(int index)
    {
        List()->Select(index);
        List()->Reveal(index);
        const QPoint place = List()->visualRect(List()->currentIndex()).center();
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(List()->viewport(), Qt::LeftButton, {}, place);
    }
    void Add(const QString &word, const QString &pronunciation = {})
    {
        m_desk->Type("txtASpell", word);
        m_desk->Type("txtAPronounce", pronunciation);
        m_desk->Press("cmdAdd");
    }
    void Delete(int index, const QString &word)
    {
        List()->Select(index);
        m_desk->Delete("cmdDelete", word);
    }
    void Expect(FaultyFiles::Operation operation, qint32 number)
    {
        m_desk->files.Fail(operation, number);
        m_desk->boxes.Expect(ReportText(number));
    }
    QStringList Boxes()
    {
        return m_desk->Typed({ "txtESpell", "txtEPronounce", "txtASpell", "txtAPronounce" });
    }
    QByteArray Content() { return m_desk->Content("Lists/Pets"); }

    std::optional<SpellDesk> m_desk;
};

QTEST_MAIN(TestfrmEditSpell)
#include "TestfrmEditSpell.moc"
