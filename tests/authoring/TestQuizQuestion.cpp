#include "authoring/QuizQuestion.h"

#include <QTest>

using namespace tumblewick;

// What is asked of a question before it goes into a quiz.
class TestQuizQuestion : public QObject {
    Q_OBJECT

private slots:
    void faultsAreToldInTheOrderOfTheBoxes_data()
    {
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QString>("faults");
        QTest::newRow("sound") << QStringList({ "Q", "a", "b", "c", "d", "1" }) << "";
        QTest::newRow("nothing typed")
            << QStringList({ "", "", "", "", "", "" })
            << "Please enter a question. Please enter an answer 1. Please enter an answer 2. Please enter an "
               "answer 3. Please enter an answer 4. Please enter the number of the correct answer. ";
        QTest::newRow("underscores everywhere")
            << QStringList({ "_", "2_3", "_b", "c_", "__", "_" })
            << "The question cannot contain an underscore. Answer 1 cannot contain an underscore. Answer 2 "
               "cannot contain an underscore. Answer 3 cannot contain an underscore. Answer 4 cannot contain "
               "an underscore. The number of the correct answer must be 1,2,3 or 4. ";
        QTest::newRow("some of each")
            << QStringList({ "Q", "", "b_", "c", "", "4" })
            << "Please enter an answer 1. Answer 2 cannot contain an underscore. Please enter an answer 4. ";
        QTest::newRow("four equal answers") << QStringList({ "Q", "a", "a", "a", "a", "4" }) << "";
        QTest::newRow("blanks are text") << QStringList({ " ", " ", " ", " ", " ", "2" }) << "";
        QTest::newRow("a line break is text") << QStringList({ "a\r\nb", "a", "b", "c", "d", "3" }) << "";
        QTest::newRow("markup and percent signs")
            << QStringList({ "<b>%1", "%1", "%2", "%3", "%4", "3" }) << "";
        const QString number = "The number of the correct answer must be 1,2,3 or 4. ";
        for (const char *text : { "5", "0", "1 ", " 1", "01", "12", "one", "-1", "\u0661", "\u00b2" })
            QTest::newRow(text) << QStringList({ "Q", "a", "b", "c", "d", text }) << number;
    }
    void faultsAreToldInTheOrderOfTheBoxes()
    {
        QFETCH(QStringList, fields);
        QuizEntry entry{ fields[0], {}, {} };
        for (int number = 1; number <= QuizEntry::kSubItems; ++number)
            entry.SubItem(number) = fields[number];
        QTEST(FaultsOfQuestion(entry), "faults");
    }

    void aListHoldsAllSixTexts()
    {
        platform::ListItems items;
        items.SetTitles({ "1", "2", "3", "4", "5", "6" });
        const QuizEntry entry{ "Q", { "a", "b", "c", "d" }, "31" };
        const platform::ListItemReference item = items.Add(QString());
        ShowIn(item, entry);
        QCOMPARE(QuestionIn(item).Line(), "Q_a_b_c_d_31_");
        QCOMPARE(item->Text(), "Q");
        QCOMPARE(item->SubItem(4), "d");
        QCOMPARE(item->SubItem(5), "31");
    }
};

QTEST_APPLESS_MAIN(TestQuizQuestion)
#include "TestQuizQuestion.moc"
