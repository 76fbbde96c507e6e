#include "authoring/QuizDesk.h"
#include "authoring/frmEditQuiz.h"
#include "support/ReportText.h"

#include <QDir>

using namespace tumblewick;
using platform::BoxAnswer;
using support::kBees;
using support::kBeesLine;
using support::kSpider;
using support::kSpiderLine;
using support::kSum;
using support::kSumLine;
using support::QuizDesk;
using support::QuizToEditDesk;
using support::ReportText;
using Operation = support::FaultyFiles::Operation;

namespace {

const QString kNothing = "|||||";

} // namespace

// A quiz that is edited, and what is wrong with its file.
class TestQuizFaults : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void nothingToDeleteIsReported()
    {
        m_desk->WriteFile("QList/Zoo", "");
        m_desk->OpenToEdit();
        m_desk->boxes.Expect(ReportText(91));
        m_desk->Press("cmdDelete");
        QVERIFY(frmEditQuiz::Shared().IsActive());
        QVERIFY(!m_desk->process.Ended());
    }

    void aDoubleClickOnNothingIsReported()
    {
        m_desk->WriteFile("QList/Zoo", "");
        m_desk->OpenToEdit();
        m_desk->boxes.Expect(ReportText(91));
        QTest::mouseDClick(m_desk->List()->viewport(), Qt::LeftButton, {}, QPoint(20, 20));
        m_desk->Settle();
    }

    void aLineThatIsNoQuestionIsReportedWithTheLinesSoFar()
    {
        m_desk->WriteFile("QList/Zoo", kSpiderLine + "What is this?\r\n" + kBeesLine);
        m_desk->OpenToEdit(5);
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider }));
        // The next save loses the rest.
        m_desk->DoubleClickEntry(1);
        m_desk->Press("cmdSave");
        QCOMPARE(m_desk->Content("QList/Zoo"), kSpiderLine);
    }

    void aQuestionWithALineBreakBreaksTheFile()
    {
        m_desk->OpenToEdit();
        m_desk->TypeQuestion("A", "What\r\nis it?|a|b|c|d|1");
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Content("QList/Zoo"),
                 kSpiderLine + kBeesLine + kSumLine + "What\r\nis it?_a_b_c_d_1_\r\n");
        QCOMPARE(m_desk->Entries().last(), "What\r\nis it?|a|b|c|d|1");
        m_desk->DoubleClickEntry(4);
        QCOMPARE(m_desk->Typed("E"), "What\r\nis it?|a|b|c|d|1");
        m_desk->LeaveToTheMenu();
        m_desk->OpenToEdit(5);
        QCOMPARE(m_desk->Entries(), QStringList({ kSpider, kBees, kSum }));
    }

    void aMissingFileIsReported()
    {
        QVERIFY(QFile::remove(m_desk->folder.filePath("QList/Zoo")));
        m_desk->OpenToEdit(53);
        QCOMPARE(m_desk->Entries(), QStringList());
        // There is no file to add to.
        m_desk->TypeQuestion("A", kBees);
        m_desk->boxes.Expect(ReportText(91));
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Typed("A"), kBees);
    }

    // Nothing may reach the quiz that was edited before.
    void aMissingFileBehindAnotherOneIsReported()
    {
        m_desk->OpenToEdit();
        m_desk->LeaveToTheMenu();
        m_desk->OpenToEdit(53, "Nobody");
        m_desk->TypeQuestion("A", kBees);
        m_desk->boxes.Expect(ReportText(91));
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Content("QList/Zoo"), kSpiderLine + kBeesLine + kSumLine);
    }

    void anUnreadableFileIsReported()
    {
        m_desk->files.Fail(Operation::OpenForReading, 70);
        m_desk->OpenToEdit(70);
        QCOMPARE(m_desk->Entries(), QStringList());
    }

    void aFileThatGoesMeanwhileIsReportedAtTheNextWrite()
    {
        m_desk->OpenToEdit();
        QVERIFY(QFile::remove(m_desk->folder.filePath("QList/Zoo")));
        m_desk->TypeQuestion("A", kBees);
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdAdd");
        QCOMPARE(m_desk->Entries().size(), 3);
        QCOMPARE(m_desk->Typed("A"), kBees);
        m_desk->boxes.Expect("Save Changes?", BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(53));
        m_desk->Press("cmdMenu");
        QVERIFY(frmEditQuiz::Shared().IsActive());
        QVERIFY(QDir(m_desk->folder.path()).rmdir("QList"));
        m_desk->boxes.Expect(QuizDesk::DeleteQuestion("How many legs has a spider?"), BoxAnswer::Yes);
        m_desk->boxes.Expect(ReportText(76));
        m_desk->Press("cmdDelete");
        // It has left the list before the file was asked for.
        QCOMPARE(m_desk->Entries(), QStringList({ kBees, kSum }));
        QVERIFY(!QFile::exists(m_desk->folder.filePath("QList/Zoo")));
    }

    void afterAFaultTheScreenStaysOpen_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("operation");
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("entries");
        QTest::addColumn<QString>("left"); // in the boxes that the button works on
        const QString typed = "Q|a|b|c|d|1";
        QTest::newRow("add, no permission") << "cmdAdd" << int(Operation::OpenForWriting) << 70 << 3 << typed;
        QTest::newRow("add, disk full") << "cmdAdd" << int(Operation::Write) << 61 << 3 << typed;
        // By then the question stands in the list and the boxes are empty.
        QTest::newRow("add, disk full at the end")
            << "cmdAdd" << int(Operation::Close) << 61 << 4 << kNothing;
        QTest::newRow("save, no permission")
            << "cmdSave" << int(Operation::OpenForWriting) << 70 << 3 << typed;
        QTest::newRow("save, disk full") << "cmdSave" << int(Operation::Write) << 61 << 3 << typed;
        QTest::newRow("save, disk full at the end") << "cmdSave" << int(Operation::Close) << 61 << 3 << typed;
        QTest::newRow("delete, no permission")
            << "cmdDelete" << int(Operation::OpenForWriting) << 70 << 2 << typed;
        QTest::newRow("delete, disk full") << "cmdDelete" << int(Operation::Write) << 61 << 2 << typed;
    }
    void afterAFaultTheScreenStaysOpen()
    {
        QFETCH(QString, button);
        QFETCH(int, operation);
        QFETCH(int, number);
        QFETCH(int, entries);
        m_desk->OpenToEdit();
        m_desk->DoubleClickEntry(1);
        const QString prefix = button == "cmdAdd" ? "A" : "E";
        m_desk->TypeQuestion(prefix, "Q|a|b|c|d|1");
        if (button == "cmdDelete")
            m_desk->boxes.Expect(QuizDesk::DeleteQuestion("How many legs has a spider?"), BoxAnswer::Yes);
        m_desk->files.Fail(static_cast<Operation>(operation), number);
        m_desk->boxes.Expect(ReportText(number));
        m_desk->Press(button);
        QVERIFY(frmEditQuiz::Shared().IsActive());
        QVERIFY(!m_desk->process.Ended());
        QCOMPARE(m_desk->Entries().size(), entries);
        QTEST(m_desk->Typed(prefix), "left");
        if (button == "cmdSave") // the entry was written before the file
            QCOMPARE(m_desk->Entries().first(), "Q|a|b|c|d|1");
    }

private:
    std::optional<QuizToEditDesk> m_desk;
};

QTEST_MAIN(TestQuizFaults)
#include "TestQuizFaults.moc"
