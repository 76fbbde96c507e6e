#include "authoring/QuizColumns.h"
#include "authoring/QuizDesk.h"
#include "authoring/frmList.h"
#include "authoring/frmQuiz1.h"
#include "platform/forms/Twips.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Captions.h"
#include "support/CoverAndUncover.h"
#include "support/ReportText.h"

#include <QDir>

using namespace tumblewick;
using platform::BoxAnswer;
using platform::BoxButtons;
using support::CheckCaptions;
using support::CoverAndUncover;
using support::kBees;
using support::kBeesLine;
using support::kSpider;
using support::kSpiderLine;
using support::QuizDesk;
using support::RunTimeText;
using Operation = support::FaultyFiles::Operation;

namespace {

const QString kSaved = "Your quiz has been saved.";
const QString kOverwrite = "There is already a list called Zoo. Do you want to overwrite it with this list?";

} // namespace

// A quiz that is made and saved.
class TestfrmQuiz1 : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace();
        State().MenuShown = true;
        frmQuiz1::Shared().Show();
        m_desk->Settle();
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void itSaysWhatItIs()
    {
        QCOMPARE(frmQuiz1::Shared().Window()->windowTitle(), "Create a Quiz");
        CheckCaptions(
            *m_desk,
            { { "lblHead", "Create a New Quiz" },
              { "lblName", "Enter quiz name" },
              { "lblQuest", "Type your Question here" },
              { "lblAnsw", "Enter 4 different answers including the correct answer" },
              { "lblCorrect", "Type the number of the correct answer" },
              { "lblRepeat", "Repeat steps 2 to 5 for each quiz question" },
              { "lblDelete", "To remove a question from the list click on the question in the list and then "
                             "click Delete Question" },
              { "cmdAdd", "&Add to Quiz" },
              { "cmdSave", "&Save List" },
              { "cmdDel", "&Delete Question" },
              { "cmdback", "&Back" },
              { "Command2", "&Main Menu" },
              { "cmdHelp", "&Help !" } });
        QStringList titles;
        for (int column = 0; column < 6; ++column)
            titles << m_desk->List()->model()->headerData(column, Qt::Horizontal).toString();
        QCOMPARE(titles,
                 QStringList({ "Question", "Answer 1", "Answer 2", "Answer 3", "Answer 4", "Correct" }));
        const QList<QImage> shapes = m_desk->AnswerShapes(1);
        for (int one = 0; one < 4; ++one) {
            QVERIFY(!shapes[one].isNull());
            for (int other = 0; other < one; ++other)
                QVERIFY(shapes[one] != shapes[other]);
        }
        QCOMPARE(m_desk->Entries(), QStringList());
        QCOMPARE(m_desk->Focus(), "txtName");
    }

    void theColumnsShareWhatTheFirstLeaves()
    {
        auto *list = m_desk->List();
        const int each = (platform::Twips(*list).width - list->ColumnTwips(1)) / 5;
        // The question has the most room.
        QVERIFY(qAbs(list->ColumnTwips(1) - platform::Twips(*list).width * 2 / 5) <= 15);
        // Twips are told in whole pixels.
        for (int column = 2; column <= 6; ++column)
            QCOMPARE(list->ColumnTwips(column), each / 15 * 15);
        list->SetColumnTwips(1, list->ColumnTwips(1) + 1500);
        CoverAndUncover(*m_desk);
        for (int column = 2; column <= 6; ++column)
            QCOMPARE(list->ColumnTwips(column), (each - 300) / 15 * 15);
    }

    void theColumnsFollowTheirList() { m_desk->TheColumnsFollowTheirList(); }

    void aVeryWideListKeepsItsShares()
    {
        platform::ListView list;
        list.resize(5000, 100);
        QuizColumns columns(list);
        list.resize(5100, 100);
        columns.FollowList();
        QVERIFY(qAbs(list.ColumnTwips(1) - 5100 * 15 * 2 / 5) <= 15);
    }

    void aListTooWideForTheCounterEndsTheProgram()
    {
        auto *list = m_desk->List();
        list->resize(4000, list->height());
        m_desk->boxes.Expect(RunTimeText(6));
        CoverAndUncover(*m_desk);
        QCOMPARE(m_desk->process.ExitCode().value_or(0), 1);
    }

    void everythingEmptyGivesOneBoxWithSixMessages()
    {
        m_desk->boxes.Expect(
            "Please enter a question. Please enter an answer 1. Please enter an answer 2. Please enter an "
            "answer 3. Please enter an answer 4. Please enter the number of the correct answer. ");
        m_desk->Press("cmdAdd");
        QVERIFY(m_desk->boxes.All().front().buttons == BoxButtons::Ok);
        QVERIFY(m_desk->boxes.All().front().HasNoTitle());
        QCOMPARE(m_desk->Entries(), QStringList());
        LeavesWithoutAQuestion();
    }

    void underscoresAreRefusedAndTheFieldsKept()
    {
        m_desk->TypeQuestion("", "Q_|2_3|b|c_|d|1");
        m_desk->boxes.Expect("The question cannot contain an underscore. Answer 1 cannot contain an "
                             "underscore. Answer 3 cannot contain an underscore. ");
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Typed(""), "Q_|2_3|b|c_|d|1");
        QCOMPARE(m_desk->Entries(), QStringList());
    }

    void aNumberThatIsNoneOfTheFourIsRefused_data()
    {
        QTest::addColumn<QString>("number");
        for (const char *number : { "5", "0", "1 ", " 1", "01", "one" })
            QTest::newRow(number) << number;
    }
    void aNumberThatIsNoneOfTheFourIsRefused()
    {
        QFETCH(QString, number);
        m_desk->TypeQuestion("", "Q|a|b|c|d|" + number);
        m_desk->boxes.Expect("The number of the correct answer must be 1,2,3 or 4. ");
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Typed(""), "Q|a|b|c|d|" + number);
    }

    void aQuestionGoesToTheEndOfTheListAndTheBoxesAreEmptied()
    {
        Add(kSpider);
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider }));
        QCOMPARE(m_desk->Typed(""), "|||||");
        QCOMPARE(m_desk->Focus(), "txtQuest");
        Add(kBees);
        Add("Same?|a|a|a|a|1");
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider, kBees, "Same?|a|a|a|a|1" }));
    }

    void aQuestionThatIsAddedIsSeen()
    {
        for (int number = 1; number <= 30; ++number)
            Add(QString::number(number) + "|a|b|c|d|1");
        QVERIFY(m_desk->IsSeen(30));
    }

    // Only the question may have more than one line.
    void theOtherBoxesHoldOneLine()
    {
        QCOMPARE(m_desk->TwoLinesInEachBox(""), QStringList{ "two lines" });
        m_desk->Type("txtName", "two\r\nlines");
        QCOMPARE(m_desk->Find<QLineEdit>("txtName")->text(), QString("two lines"));
    }

    void aSavedQuizIsExact()
    {
        Add("What is 2+2?|1|2|3|4|4");
        Add(kBees);
        Save("Zoo");
        QCOMPARE(m_desk->Content("QList/Zoo"), QByteArray("What is 2+2?_1_2_3_4_4_\r\n") + kBeesLine);
        QVERIFY(m_desk->boxes.All().back().HasProgramTitle());
        LeavesWithoutAQuestion();
    }

    void aQuizWithoutQuestionsIsAnEmptyFile()
    {
        Save("Zoo");
        QCOMPARE(m_desk->Content("QList/Zoo"), QByteArray());
        QVERIFY(QFile::exists(m_desk->folder.filePath("QList/Zoo")));
    }

    void aLineBreakInAQuestionIsSavedAsItStands()
    {
        auto *question = m_desk->Find<platform::MultiLineBox>("txtQuest");
        m_desk->TypeQuestion("", "|a|b|c|d|1");
        QTest::keyClicks(question, "What");
        QTest::keyClick(question, Qt::Key_Return);
        QTest::keyClicks(question, "is it?");
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Entries(), QStringList({ "What\r\nis it?|a|b|c|d|1" }));
        Save("Zoo");
        QCOMPARE(m_desk->Content("QList/Zoo"), QByteArray("What\r\nis it?_a_b_c_d_1_\r\n"));
    }

    void aNameMayBeThatOfASpellingList()
    {
        m_desk->WriteSpelling("Zoo", { "cat" });
        Add(kBees);
        Save("Zoo");
        QCOMPARE(m_desk->Content("Lists/Zoo"), QByteArray("cat\r\n"));
        QCOMPARE(m_desk->Content("QList/Zoo"), kBeesLine);
    }

    void aNameIsAskedFor()
    {
        Add(kBees);
        m_desk->boxes.Expect("Please enter a name for this Quiz.");
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Focus(), "txtName");
        QCOMPARE(QDir(m_desk->folder.filePath("QList")).entryList(QDir::Files), QStringList());
        LeavesWithAQuestion();
    }

    void aTakenNameIsAskedAbout_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("as it is") << "Zoo";
        QTest::newRow("in other letter cases") << "zOO";
    }
    void aTakenNameIsAskedAbout()
    {
        QFETCH(QString, file);
        m_desk->WriteQuiz(file, { "old" });
        Add(kBees);
        m_desk->Type("txtName", "Zoo");
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::No);
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Content("QList/" + file), QByteArray("old\r\n"));
        QCOMPARE(m_desk->boxes.All().front().title, "List Already Exists");
        QVERIFY(m_desk->boxes.All().front().buttons == BoxButtons::YesNo);
        QCOMPARE(m_desk->Entries(), QStringList({ kBees }));
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::Yes);
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Content("QList/" + file), kBeesLine);
        QCOMPARE(QDir(m_desk->folder.filePath("QList")).entryList(QDir::Files), QStringList({ file }));
    }

    void savingTwiceAsksTheSecondTime()
    {
        Add(kBees);
        Save("Zoo");
        Add(kSpider);
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::Yes);
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Content("QList/Zoo"), kBeesLine + kSpiderLine);
    }

    void theMessageComesBeforeTheFileIsClosed()
    {
        Add(kBees);
        m_desk->Type("txtName", "Zoo");
        QByteArray meanwhile = "not asked";
        m_desk->boxes.Expect(kSaved, BoxAnswer::Ok, [&] { meanwhile = m_desk->Content("QList/Zoo"); });
        m_desk->Press("cmdSave");
        // The few lines are still on their way.
        QCOMPARE(meanwhile, QByteArray());
        QCOMPARE(m_desk->Content("QList/Zoo"), kBeesLine);
    }

    void aQuestionIsTakenAwayAfterAYes()
    {
        Add(kSpider);
        Add(kBees);
        m_desk->ClickEntry(1);
        m_desk->boxes.Expect(DeleteQuestion("How many legs has a spider?"), BoxAnswer::No);
        m_desk->Press("cmdDel");
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider, kBees }));
        m_desk->boxes.Expect(DeleteQuestion("How many legs has a spider?"), BoxAnswer::Yes);
        m_desk->Press("cmdDel");
        QCOMPARE(m_desk->Entries(), QStringList({ kBees }));
        QVERIFY(m_desk->boxes.All().front().buttons == BoxButtons::YesNo);
        QVERIFY(m_desk->boxes.All().front().HasNoTitle());
    }

    void theDeleteKeyAndTheMenuDoTheSame()
    {
        Add(kSpider);
        Add(kBees);
        m_desk->ClickEntry(2);
        m_desk->boxes.Expect(DeleteQuestion("What do bees make?"), BoxAnswer::Yes);
        m_desk->KeyOnList(Qt::Key_Delete);
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider }));
        m_desk->boxes.Expect(DeleteQuestion("How many legs has a spider?"), BoxAnswer::Yes);
        QCOMPARE(m_desk->MenuOfList(0), QStringList({ "&Delete Question" }));
        QCOMPARE(m_desk->Entries(), QStringList());
        m_desk->KeyOnList(Qt::Key_Delete);
        QCOMPARE(m_desk->MenuOfList(), QStringList());
    }

    void nothingToTakeAwayEndsTheProgram()
    {
        m_desk->boxes.Expect(RunTimeText(91));
        m_desk->Press("cmdDel");
        QCOMPARE(m_desk->process.ExitCode().value_or(0), 1);
    }

    void takingAwayWhatWasAddedStillAsks()
    {
        Add(kBees);
        m_desk->boxes.Expect(DeleteQuestion("What do bees make?"), BoxAnswer::Yes);
        m_desk->Press("cmdDel");
        LeavesWithAQuestion();
    }

    void takingAwayBehindASaveAsksNothing()
    {
        Add(kBees);
        Save("Zoo");
        m_desk->boxes.Expect(DeleteQuestion("What do bees make?"), BoxAnswer::Yes);
        m_desk->Press("cmdDel");
        LeavesWithoutAQuestion();
    }

    void anotherScreenInFrontMakesItForgetThatItIsNotSaved()
    {
        Add(kBees);
        CoverAndUncover(*m_desk);
        QCOMPARE(m_desk->Entries(), QStringList({ kBees }));
        LeavesWithoutAQuestion();
    }

    void leaving_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<BoxAnswer>("answer");
        QTest::addColumn<bool>("leaves");
        for (const char *button : { "cmdback", "Command2" }) {
            QTest::addRow("%s yes", button) << button << BoxAnswer::Yes << true;
            QTest::addRow("%s no", button) << button << BoxAnswer::No << true;
            QTest::addRow("%s cancel", button) << button << BoxAnswer::Cancel << false;
        }
    }
    void leaving()
    {
        QFETCH(QString, button);
        QFETCH(BoxAnswer, answer);
        QFETCH(bool, leaves);
        Add(kBees);
        m_desk->Type("txtName", "Zoo");
        m_desk->boxes.Expect("Save list?", answer);
        if (answer == BoxAnswer::Yes)
            m_desk->boxes.Expect(kSaved);
        m_desk->Press(button);
        QVERIFY(m_desk->boxes.All().front().buttons == BoxButtons::YesNoCancel);
        QVERIFY(m_desk->boxes.All().front().HasNoTitle());
        QCOMPARE(QFile::exists(m_desk->folder.filePath("QList/Zoo")), answer == BoxAnswer::Yes);
        QCOMPARE(frmQuiz1::Exists() && frmQuiz1::Shared().IsActive(), !leaves);
        if (leaves)
            QVERIFY(button == "cmdback" ? frmList::Shared().IsActive() : frmMenu1::Shared().IsActive());
        else
            QCOMPARE(m_desk->Entries(), QStringList({ kBees }));
    }

    void aYesThatCannotSaveStays()
    {
        Add(kBees);
        m_desk->boxes.Expect("Save list?", BoxAnswer::Yes);
        m_desk->boxes.Expect("Please enter a name for this Quiz.");
        m_desk->Press("Command2");
        m_desk->WriteQuiz("Zoo", { "old" });
        m_desk->Type("txtName", "Zoo");
        m_desk->boxes.Expect("Save list?", BoxAnswer::Yes);
        m_desk->boxes.Expect(kOverwrite, BoxAnswer::No);
        m_desk->Press("cmdback");
        QVERIFY(frmQuiz1::Shared().IsActive());
        QCOMPARE(m_desk->Content("QList/Zoo"), QByteArray("old\r\n"));
        QCOMPARE(m_desk->Entries(), QStringList({ kBees }));
    }

    void theNextVisitStartsAfresh()
    {
        Add(kBees);
        m_desk->TypeQuestion("", kSpider);
        m_desk->boxes.Expect("Save list?", BoxAnswer::No);
        m_desk->Press("cmdback");
        QVERIFY(!frmQuiz1::Exists());
        m_desk->Press("cmdAddQuiz");
        QVERIFY(frmQuiz1::Shared().IsActive());
        QCOMPARE(m_desk->Entries(), QStringList());
        QCOMPARE(m_desk->Typed(""), "|||||");
    }

    void leavingClosesHelp()
    {
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().size(), std::size_t(1));
        QCOMPARE(m_desk->help.Open().front().topic, "Add a New Quiz.htm");
        LeavesWithoutAQuestion();
        QCOMPARE(m_desk->help.Open().size(), std::size_t(0));
    }

    void itLeavesTheCharactersAlone()
    {
        State().AgentControl = m_desk->agent.CreateControl();
        LeavesWithoutAQuestion();
        QVERIFY(!State().AgentControl.IsNothing());
    }

    void aFileThatCannotBeWrittenEndsTheProgram_data()
    {
        QTest::addColumn<int>("operation");
        QTest::addColumn<int>("number");
        QTest::addColumn<bool>("saidSaved"); // the message comes first
        QTest::newRow("refused by the folder") << int(Operation::OpenForWriting) << 70 << false;
        QTest::newRow("full disk at once") << int(Operation::Write) << 61 << false;
        QTest::newRow("full disk at the end") << int(Operation::Close) << 61 << true;
    }
    void aFileThatCannotBeWrittenEndsTheProgram()
    {
        QFETCH(int, operation);
        QFETCH(int, number);
        QFETCH(bool, saidSaved);
        Add(kBees);
        m_desk->Type("txtName", "Zoo");
        m_desk->files.Fail(static_cast<Operation>(operation), number);
        if (saidSaved)
            m_desk->boxes.Expect(kSaved);
        m_desk->boxes.Expect(RunTimeText(number));
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->process.ExitCode().value_or(0), 1);
    }

    void aNameThatNoFileMayHaveEndsTheProgram_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("number");
        for (const char *name : { "a?", "a*", "a:b", "a<b", "a>b", "a|b", "a\"b", "con" })
            QTest::newRow(name) << name << 52;
        QTest::newRow("a folder that is not there") << "a\\b" << 76;
    }
    void aNameThatNoFileMayHaveEndsTheProgram()
    {
        QFETCH(QString, name);
        QFETCH(int, number);
        Add(kBees);
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(RunTimeText(number));
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->process.ExitCode().value_or(0), 1);
        QCOMPARE(QDir(m_desk->folder.filePath("QList")).entryList(QDir::Files), QStringList());
    }

    void aMissingFolderEndsTheProgram()
    {
        QVERIFY(QDir(m_desk->folder.path()).rmdir("QList"));
        Add(kBees);
        m_desk->Type("txtName", "Zoo");
        m_desk->boxes.Expect(RunTimeText(76));
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->process.ExitCode().value_or(0), 1);
        QVERIFY(!QDir(m_desk->folder.filePath("QList")).exists());
    }

    void theKeysGoThroughTheSteps()
    {
        const QStringList steps = { "txtQuest",   "txtAnsw_0", "txtAnsw_1", "txtAnsw_2", "txtAnsw_3",
                                    "txtCorrect", "cmdAdd",    "cmdSave",   "cmdDel",    "lvwList",
                                    "cmdback",    "Command2",  "cmdHelp",   "txtName" };
        QWidget *window = frmQuiz1::Shared().Window();
        for (const QString &step : steps) {
            QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
            QCOMPARE(m_desk->Focus(), step);
        }
    }

private:
    static QString DeleteQuestion(const QString &question)
    {
        return "Are you sure you want to delete the question '" + question + "' from the quiz?";
    }
    void Add(const QString &fields)
    {
        m_desk->TypeQuestion("", fields);
        m_desk->Press("cmdAdd");
    }
    void Save(const QString &name)
    {
        m_desk->Type("txtName", name);
        m_desk->boxes.Expect(kSaved);
        m_desk->Press("cmdSave");
    }
    void LeavesWithoutAQuestion()
    {
        const auto boxes = m_desk->boxes.All().size();
        m_desk->Press("cmdback");
        QCOMPARE(m_desk->boxes.All().size(), boxes);
        QVERIFY(frmList::Shared().IsActive());
    }
    void LeavesWithAQuestion()
    {
        m_desk->boxes.Expect("Save list?", BoxAnswer::No);
        m_desk->Press("cmdback");
        QVERIFY(frmList::Shared().IsActive());
    }

    std::optional<QuizDesk> m_desk;
};

QTEST_MAIN(TestfrmQuiz1)
#include "TestfrmQuiz1.moc"
