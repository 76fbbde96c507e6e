#include "authoring/QuizDesk.h"
#include "authoring/frmEdit.h"
#include "authoring/frmEditQuiz.h"
#include "platform/forms/ListView.h"
#include "platform/forms/Twips.h"
#include "shell/Appearance.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Captions.h"
#include "support/CoverAndUncover.h"
#include "support/ReportText.h"

#include <QHeaderView>
#include <QScopeGuard>

using namespace tumblewick;
using platform::BoxAnswer;
using platform::BoxButtons;
using support::CheckCaptions;
using support::CoverAndUncover;
using support::kBees;
using support::kBeesLine;
using support::kSpider;
using support::kSpiderLine;
using support::kSum;
using support::kSumLine;
using support::QuizDesk;
using support::QuizToEditDesk;
using support::ReportText;

namespace {

const QString kNoneChosen = "You need to double click on a question from the list before you can edit it. ";
const QString kNothing = "|||||";

} // namespace

// A quiz that is edited: whatever is done goes to the file at once.
class TestfrmEditQuiz : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void itSaysWhatItIs()
    {
        Open();
        QCOMPARE(frmEditQuiz::Shared().Window()->windowTitle(), "Edit Quiz");
        CheckCaptions(*m_desk, { { "lblHead", "Edit Quiz" },
                                 { "Frame1", "Edit a Question" },
                                 { "lblE1", "Double click on the question in the list you want to edit" },
                                 { "lblEQuestion", "Correct the question if necessary" },
                                 { "lblEAnsw", "Correct the answers if necessary" },
                                 { "lblECorrect", "Change the number of the correct answer if necessary" },
                                 { "Frame2", "Add a Question" },
                                 { "lblAQuestion", "Type your question here" },
                                 { "lblAAnsw", "Enter 4 different answers including the correct answer" },
                                 { "lblACorrect", "Type the number of the correct answer" },
                                 { "Frame3", "Delete a Question" },
                                 { "lblD1", "Click on the question in the list you want to delete" },
                                 { "cmdSave", "&Save Changes" },
                                 { "cmdAdd", "&Add to Quiz" },
                                 { "cmdDelete", "&Delete Question" },
                                 { "cmdback", "&Back" },
                                 { "cmdMenu", "&Main Menu" },
                                 { "cmdHelp", "&Help !" } });
        QVERIFY(!m_desk->AnswerShapes(1)[0].isNull());
        QVERIFY(m_desk->AnswerShapes(5) == m_desk->AnswerShapes(1));
        QCOMPARE(m_desk->Find<platform::MultiLineBox>("txtEQuestion")->verticalScrollBarPolicy(),
                 Qt::ScrollBarAlwaysOn);
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider, kBees, kSum }));
        auto *list = m_desk->List();
        const int each = (platform::Twips(*list).width - list->ColumnTwips(1)) / 5;
        for (int column = 2; column <= 6; ++column)
            QCOMPARE(list->ColumnTwips(column), each / 15 * 15);
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().front().topic, "Edit a Quiz.htm");
    }

    void aDoubleClickBringsAQuestionIntoTheBoxes()
    {
        Open();
        m_desk->DoubleClickEntry(2);
        QCOMPARE(m_desk->Typed("E"), kBees);
        QCOMPARE(m_desk->Find<QLineEdit>("txtEAnsw_0")->cursorPosition(), 0); // seen from its beginning
        m_desk->ClickEntry(1);
        QCOMPARE(m_desk->Typed("E"), kNothing);
        m_desk->boxes.Expect(kNoneChosen);
        m_desk->Press("cmdSave");
    }

    void theKeyboardAndTheMenuDoTheSame()
    {
        Open();
        m_desk->KeyOnList(Qt::Key_Down);
        m_desk->KeyOnList(Qt::Key_Return);
        QCOMPARE(m_desk->Typed("E"), kBees);
        m_desk->KeyOnList(Qt::Key_Down);
        QCOMPARE(m_desk->Typed("E"), kNothing);
        QCOMPARE(m_desk->MenuOfList(0), QStringList({ "&Edit Question", "&Delete Question" }));
        QCOMPARE(m_desk->Typed("E"), kSum);
        m_desk->boxes.Expect(QuizDesk::DeleteQuestion("What is 2+2?"), BoxAnswer::Yes);
        m_desk->KeyOnList(Qt::Key_Delete);
        QCOMPARE(m_desk->Content("QList/Zoo"), kSpiderLine + kBeesLine);
    }

    void aChangeGoesToTheFile()
    {
        Open();
        m_desk->DoubleClickEntry(2);
        m_desk->TypeQuestion("E", "Where is Caf\u00e9 Zoo?|a|b|c|d|1");
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Content("QList/Zoo"),
                 kSpiderLine + "Where is Caf\xe9 Zoo?_a_b_c_d_1_\r\n" + kSumLine);
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider, "Where is Caf\u00e9 Zoo?|a|b|c|d|1", kSum }));
        QCOMPARE(m_desk->Typed("E"), kNothing);
        m_desk->boxes.Expect(kNoneChosen);
        m_desk->Press("cmdSave");
    }

    void aBadNumberIsRefusedAndTheEntryKept()
    {
        Open();
        m_desk->DoubleClickEntry(2);
        m_desk->TypeQuestion("E", "Q|a|b|c|d|7");
        m_desk->boxes.Expect("The number of the correct answer must be 1,2,3 or 4. ");
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Entries()[1], kBees);
        QCOMPARE(m_desk->Typed("E"), "Q|a|b|c|d|7");
        QCOMPARE(m_desk->Content("QList/Zoo"), kSpiderLine + kBeesLine + kSumLine);
    }

    void anAddGoesToTheEndOfTheFile()
    {
        Open();
        m_desk->TypeQuestion("A", "Q|a|b|c|d|1");
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Content("QList/Zoo"), kSpiderLine + kBeesLine + kSumLine + "Q_a_b_c_d_1_\r\n");
        QCOMPARE(m_desk->Entries().last(), "Q|a|b|c|d|1");
        QCOMPARE(m_desk->Typed("A"), kNothing);
        LeavesWithoutAQuestion();
    }

    void aQuestionThatIsAddedIsSeen()
    {
        Open();
        for (int number = 1; number <= 30; ++number) {
            m_desk->TypeQuestion("A", QString::number(number) + "|a|b|c|d|1");
            m_desk->Press("cmdAdd");
        }
        QVERIFY(m_desk->IsSeen(33));
    }

    void aQuestionThatIsAddedFindsItsPlaceInTheOrderShown()
    {
        Open();
        m_desk->List()->sortByColumn(0, Qt::AscendingOrder); // How, What do, What is
        m_desk->TypeQuestion("A", "Until when?|a|b|c|d|1");
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->List()->model()->index(1, 0).data().toString(), "Until when?");
        QCOMPARE(m_desk->Entries().last(), "Until when?|a|b|c|d|1");
    }

    // Only the questions may have more than one line.
    void theOtherBoxesHoldOneLine()
    {
        Open();
        for (const char *prefix : { "E", "A" }) {
            QCOMPARE(m_desk->TwoLinesInEachBox(prefix), QStringList{ "two lines" });
            m_desk->TypeQuestion(prefix, kNothing);
        }
    }

    void theColumnsFollowTheirList()
    {
        Open();
        m_desk->TheColumnsFollowTheirList();
    }

    void anAddEmptiesTheEditBoxesAlsoWhenRefused()
    {
        Open();
        m_desk->DoubleClickEntry(1);
        m_desk->TypeQuestion("A", "Q|a_|b|c||");
        m_desk->boxes.Expect("Answer 1 cannot contain an underscore. Please enter an answer 4. Please enter "
                             "the number of the correct answer. ");
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Typed("E"), kNothing);
        QCOMPARE(m_desk->Typed("A"), "Q|a_|b|c||");
        m_desk->boxes.Expect(kNoneChosen);
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Entries().size(), 3);
    }

    void aQuestionIsDeletedFromTheFile()
    {
        Open();
        m_desk->DoubleClickEntry(2);
        m_desk->boxes.Expect(QuizDesk::DeleteQuestion("What do bees make?"), BoxAnswer::No);
        m_desk->Press("cmdDelete");
        QCOMPARE(m_desk->Typed("E"), kBees);
        m_desk->boxes.Expect(QuizDesk::DeleteQuestion("What do bees make?"), BoxAnswer::Yes);
        m_desk->Press("cmdDelete");
        QVERIFY(m_desk->boxes.All().front().buttons == BoxButtons::YesNo);
        QVERIFY(m_desk->boxes.All().front().HasNoTitle());
        QCOMPARE(m_desk->Content("QList/Zoo"), kSpiderLine + kSumLine);
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider, kSum }));
        QCOMPARE(m_desk->Typed("E"), kNothing);
        m_desk->boxes.Expect(kNoneChosen);
        m_desk->Press("cmdSave");
    }

    void theOnlyQuestionLeavesAnEmptyFile()
    {
        m_desk->WriteFile("QList/Zoo", kBeesLine);
        Open();
        m_desk->boxes.Expect(QuizDesk::DeleteQuestion("What do bees make?"), BoxAnswer::Yes);
        m_desk->Press("cmdDelete");
        QCOMPARE(m_desk->Content("QList/Zoo"), QByteArray());
        QCOMPARE(m_desk->Entries(), QStringList());
        LeavesWithoutAQuestion();
        Open();
        QCOMPARE(m_desk->Entries(), QStringList());
    }

    void aDoubleClickAndBackAsksNothing()
    {
        Open();
        m_desk->DoubleClickEntry(1);
        LeavesWithoutAQuestion();
    }

    void emptiedBoxesAskNothing()
    {
        Open();
        m_desk->DoubleClickEntry(1);
        m_desk->TypeQuestion("A", kBees);
        for (const char *prefix : { "E", "A" })
            m_desk->TypeQuestion(prefix, kNothing);
        LeavesWithoutAQuestion();
    }

    void anyChangedBoxAsks_data()
    {
        QTest::addColumn<QString>("prefix");
        QTest::addColumn<int>("field");
        for (const char *prefix : { "E", "A" })
            for (int field = 0; field < 6; ++field)
                QTest::addRow("%s %d", prefix, field) << prefix << field;
    }
    void anyChangedBoxAsks()
    {
        QFETCH(QString, prefix);
        QFETCH(int, field);
        Open();
        m_desk->TypeField(prefix, field, "x");
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Cancel);
        m_desk->Press("cmdMenu");
        QVERIFY(frmEditQuiz::Shared().IsActive());
        QCOMPARE(QuizDesk::Fields(m_desk->Typed(prefix))[field], "x");
        QVERIFY(m_desk->boxes.All().front().buttons == BoxButtons::YesNoCancel);
        QVERIFY(m_desk->boxes.All().front().HasNoTitle());
    }

    void aNoDropsWhatIsTyped()
    {
        Open();
        m_desk->TypeQuestion("A", kBees);
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::No);
        m_desk->Press("cmdMenu");
        QVERIFY(frmMenu1::Shared().IsActive());
        QCOMPARE(m_desk->Content("QList/Zoo"), kSpiderLine + kBeesLine + kSumLine);
    }

    void aYesSavesTheEditAndThenAdds()
    {
        Open();
        m_desk->DoubleClickEntry(1);
        m_desk->TypeQuestion("E", "E?|a|b|c|d|1");
        m_desk->TypeQuestion("A", "A?|a|b|c|d|2");
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Yes);
        m_desk->Press("cmdMenu");
        QVERIFY(frmMenu1::Shared().IsActive());
        QCOMPARE(m_desk->Content("QList/Zoo"),
                 QByteArray("E?_a_b_c_d_1_\r\n") + kBeesLine + kSumLine + "A?_a_b_c_d_2_\r\n");
    }

    void aYesWithoutADoubleClickStays()
    {
        Open();
        m_desk->TypeQuestion("E", kBees);
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Yes);
        m_desk->boxes.Expect(kNoneChosen);
        m_desk->Press("cmdback");
        QVERIFY(frmEditQuiz::Shared().IsActive());
        QCOMPARE(m_desk->Typed("E"), kBees);
    }

    void aYesWhoseEditFailsStillAddsAndStays()
    {
        Open();
        m_desk->DoubleClickEntry(1);
        m_desk->TypeQuestion("E", "E?|a|b|c|d|9");
        m_desk->TypeQuestion("A", "A?|a|b|c|d|2");
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Yes);
        m_desk->boxes.Expect("The number of the correct answer must be 1,2,3 or 4. ");
        m_desk->Press("cmdback");
        QVERIFY(frmEditQuiz::Shared().IsActive());
        // The add has thrown the edit away.
        QCOMPARE(m_desk->Typed("E"), kNothing);
        QCOMPARE(m_desk->Content("QList/Zoo"), kSpiderLine + kBeesLine + kSumLine + "A?_a_b_c_d_2_\r\n");
    }

    void theNextVisitFillsTheListAnewAndKeepsTheFlags()
    {
        Open();
        m_desk->DoubleClickEntry(1);
        LeavesWithoutAQuestion();
        m_desk->WriteFile("QList/Zoo", kBeesLine);
        Open();
        QCOMPARE(m_desk->Entries(), QStringList({ kBees }));
        QCOMPARE(m_desk->Typed("E"), kNothing);
        // A question still counts as chosen from the visit before.
        m_desk->boxes.Expect(
            "Please enter a question. Please enter an answer 1. Please enter an answer 2. Please enter an "
            "answer 3. Please enter an answer 4. Please enter the number of the correct answer. ");
        m_desk->Press("cmdSave");
        m_desk->DoubleClickEntry(1);
        m_desk->ClickEntry(1);
        m_desk->boxes.Expect(kNoneChosen);
        m_desk->Press("cmdSave");
    }

    void beingActiveAgainFillsTheListOnceAndKeepsTheEdit()
    {
        Open();
        m_desk->DoubleClickEntry(2);
        CoverAndUncover(*m_desk);
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider, kBees, kSum }));
        QCOMPARE(m_desk->Typed("E"), kBees);
        m_desk->TypeQuestion("E", "Q|a|b|c|d|1");
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider, "Q|a|b|c|d|1", kSum }));
    }

    void leavingClosesHelpAndLetsGoOfTheFile()
    {
        Open();
        m_desk->Press("cmdHelp");
        LeavesWithoutAQuestion();
        QCOMPARE(m_desk->help.Open().size(), std::size_t(0));
        QVERIFY(frmEditQuiz::Exists());
    }

    void backHandsTheKindToTheChooser()
    {
        Open();
        frmEdit::Shared().ListType = kSpellList;
        m_desk->Press("cmdback");
        QVERIFY(frmEdit::Shared().IsActive());
        QVERIFY(!frmEditQuiz::Shared().IsLoaded());
        QCOMPARE(frmEdit::Shared().ListType, kQuizList);
    }

    void itsEndLetsGoOfTheCharacters()
    {
        Open();
        State().AgentControl = m_desk->agent.CreateControl();
        LeavesWithoutAQuestion();
        QVERIFY(frmEditQuiz::Exists());
        frmEditQuiz::Release();
        QVERIFY(State().AgentControl.IsNothing());
    }

    void theKeysGoThroughTheSteps()
    {
        Open();
        QStringList steps;
        for (const char *prefix : { "E", "A" }) {
            steps << QStringLiteral("txt%1Question").arg(prefix);
            for (int index = 0; index < 4; ++index)
                steps << QStringLiteral("txt%1Answ_%2").arg(prefix).arg(index);
            steps << QStringLiteral("txt%1Correct").arg(prefix) << (*prefix == 'E' ? "cmdSave" : "cmdAdd");
        }
        steps << "cmdDelete"
              << "cmdback"
              << "cmdMenu"
              << "cmdHelp"
              << "lvwList";
        QCOMPARE(m_desk->Focus(), "lvwList");
        QWidget *window = frmEditQuiz::Shared().Window();
        for (const QString &step : steps) {
            QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
            QCOMPARE(m_desk->Focus(), step);
        }
    }

    void aQuizAsLongAsCanBeIsEditedAtOnce()
    {
        QByteArray lines;
        for (int number = 0; number < 32767; ++number)
            lines += kBeesLine;
        m_desk->WriteFile("QList/Zoo", lines);
        Open();
        QCOMPARE(m_desk->List()->Count(), 32767);
        m_desk->DoubleClickEntry(1);
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Content("QList/Zoo"), lines);
        // One more can be added, but not saved any more: what is emptied stays empty.
        m_desk->TypeQuestion("A", kSum);
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Content("QList/Zoo"), lines + kSumLine);
        m_desk->DoubleClickEntry(32768);
        m_desk->boxes.Expect(ReportText(6));
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Content("QList/Zoo"), QByteArray());
    }

    // A title that is cut off shows more once its column is wider.
    void theTitlesOfTheColumnsAreSeenWhole()
    {
        ApplyAppearance(*qApp);
        const auto putOff = qScopeGuard([] { qApp->setStyleSheet(QString()); });
        Open();
        QHeaderView *titles = m_desk->Find<platform::ListView>("lvwList")->header();
        for (int column = 0; column < titles->count(); ++column) {
            const auto seen = [&] {
                const QRect all(titles->sectionViewportPosition(column), 0, titles->sectionSize(column) - 3,
                                titles->height());
                return titles->viewport()->grab(all).toImage();
            };
            const QImage before = seen();
            titles->resizeSection(column, titles->sectionSize(column) + 60);
            QVERIFY2(seen().copy(before.rect()) == before, qPrintable(QString::number(column)));
            titles->resizeSection(column, titles->sectionSize(column) - 60);
        }
    }

private:
    void Open() { m_desk->OpenToEdit(); }
    void LeavesWithoutAQuestion() { m_desk->LeaveToTheMenu(); }

    std::optional<QuizToEditDesk> m_desk;
};

QTEST_MAIN(TestfrmEditQuiz)
#include "TestfrmEditQuiz.moc"
