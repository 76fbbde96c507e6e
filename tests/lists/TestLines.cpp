#include "lists/QuizLine.h"
#include "lists/SpellingLine.h"
#include "platform/Error.h"

#include <QTest>

using namespace tumblewick;

// How the game takes the lines of both kinds of list apart.
class TestLines : public QObject {
    Q_OBJECT

private slots:
    void aSpellingLineSplitsAtItsFirstUnderscore_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("pronunciation");
        QTest::newRow("word alone") << "cat"
                                    << "cat"
                                    << "cat";
        QTest::newRow("word and pronunciation") << "knight_nite"
                                                << "knight"
                                                << "nite";
        QTest::newRow("empty pronunciation") << "cat_"
                                             << "cat"
                                             << "";
        QTest::newRow("empty word") << "_nite"
                                    << ""
                                    << "nite";
        QTest::newRow("blank line") << ""
                                    << ""
                                    << "";
        QTest::newRow("underscore alone") << "_"
                                          << ""
                                          << "";
        QTest::newRow("more underscores belong to the pronunciation") << "a_b_c_"
                                                                      << "a"
                                                                      << "b_c_";
        QTest::newRow("nothing is trimmed") << " cat _ kat "
                                            << " cat "
                                            << " kat ";
        QTest::newRow("quotes, signs and accents") << "caf\u00e9 \"<b>%1\\"
                                                   << "caf\u00e9 \"<b>%1\\"
                                                   << "caf\u00e9 \"<b>%1\\";
        QTest::newRow("very long") << QString(10000, 'x') + "_y" << QString(10000, 'x') << "y";
    }
    void aSpellingLineSplitsAtItsFirstUnderscore()
    {
        QFETCH(QString, line);
        const SpellingLine split = SpellingLine::ForPlay(line);
        QTEST(split.word, "word");
        QTEST(split.pronunciation, "pronunciation");
    }

    void aQuizLineHasItsFieldsByPosition_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QStringList>("fields"); // question, four answers, number
        QTest::newRow("as written by the game")
            << "What is 2+2?_1_2_3_4_4_" << QStringList({ "What is 2+2?", "1", "2", "3", "4", "4" });
        QTest::newRow("without the last underscore")
            << "Q_a_b_c_d_2" << QStringList({ "Q", "a", "b", "c", "d", "2" });
        QTest::newRow("only the first character of the number counts")
            << "Q_a_b_c_d_31 and more_" << QStringList({ "Q", "a", "b", "c", "d", "3" });
        QTest::newRow("empty fields") << "_____1_" << QStringList({ "", "", "", "", "", "1" });
        QTest::newRow("a number without an answer is a number")
            << "Q_a_b_c_d_9_" << QStringList({ "Q", "a", "b", "c", "d", "9" });
        QTest::newRow("zero") << "Q_a_b_c_d_0_" << QStringList({ "Q", "a", "b", "c", "d", "0" });
        QTest::newRow("markup and signs")
            << "<b>Q</b>?_\"a\"_%1_\\map_\u00e9_2_"
            << QStringList({ "<b>Q</b>?", "\"a\"", "%1", "\\map", "\u00e9", "2" });
        QTest::newRow("more fields than needed")
            << "Q_a_b_c_d_2_x_y" << QStringList({ "Q", "a", "b", "c", "d", "2" });
    }
    void aQuizLineHasItsFieldsByPosition()
    {
        QFETCH(QString, line);
        const QuizLine quiz = QuizLine::ForPlay(line);
        QStringList fields{ quiz.question };
        for (const QString &answer : quiz.answers)
            fields << answer;
        fields << QString::number(quiz.correct);
        QTEST(fields, "fields");
    }

    void aBadQuizLineRaises_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("number");
        QTest::newRow("blank line") << "" << 5;
        QTest::newRow("no underscore") << "What is 2+2?" << 5;
        QTest::newRow("one underscore") << "Q_a" << 5;
        QTest::newRow("two underscores") << "Q_a_b" << 5;
        QTest::newRow("three underscores") << "Q_a_b_c" << 5;
        QTest::newRow("four underscores") << "Q_a_b_c_d" << 5;
        QTest::newRow("nothing behind the fifth") << "Q_a_b_c_d_" << 13;
        QTest::newRow("a letter for the number") << "Q_a_b_c_d_x_" << 13;
        QTest::newRow("a blank for the number") << "Q_a_b_c_d_ 1_" << 13;
        QTest::newRow("an underscore for the number") << "Q_a_b_c_d__" << 13;
        QTest::newRow("a minus for the number") << "Q_a_b_c_d_-1_" << 13;
        QTest::newRow("a digit of another script") << QString("Q_a_b_c_d_\u0663_") << 13;
    }
    void aBadQuizLineRaises()
    {
        QFETCH(QString, line);
        int raised = 0;
        try {
            QuizLine::ForPlay(line);
        } catch (const platform::Error &error) {
            raised = error.Number();
        }
        QTEST(raised, "number");
    }

    void anAnswerThatIsNotThereRaises()
    {
        const QuizLine quiz = QuizLine::ForPlay("Q_a_b_c_d_9_");
        QCOMPARE(quiz.Answer(4), QString("d"));
        for (const int number : { 0, 5, 9 }) {
            try {
                quiz.Answer(number);
                QFAIL("there is no such answer");
            } catch (const platform::Error &error) {
                QCOMPARE(error.Number(), qint32(platform::kSubscriptOutOfRange));
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestLines)
#include "TestLines.moc"
