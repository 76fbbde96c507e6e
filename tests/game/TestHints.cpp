#include "game/Hints.h"
#include "stage/SpeechLines.h"

#include <QTest>

using namespace tumblewick;

// How much of a word each press of the button gives away, and what is said.
class TestHints : public QObject {
    Q_OBJECT

private slots:
    void everyPressGivesALetterMoreUntilTheWholeWord_data()
    {
        QTest::addColumn<QString>("word");
        QTest::addColumn<QStringList>("lines"); // one a press
        const QString cat = "\\map=\"cat\"=\"*****\"\\ ";
        QTest::newRow("cat") << "cat"
                             << QStringList({ "The first letter of " + cat + "is: C.",
                                              "The first 2 letters of " + cat + "are: C,A.",
                                              "The first 3 letters of " + cat + "are: C,A,T.",
                                              "The first 3 letters of " + cat + "are: C,A,T.",
                                              "The first 3 letters of " + cat + "are: C,A,T." });
        const QString one = "The first letter of \\map=\"a\"=\"*****\"\\ is: A.";
        QTest::newRow("one letter stays the first") << "a" << QStringList({ one, one, one });
        // The last blank goes instead of a comma.
        const QString none = "The first 0 letters of \\map=\"\"=\"*****\"\\ are:.";
        QTest::newRow("an empty word") << "" << QStringList({ none, none });
        const QString kitten = "\\map=\"\U0001f431s\"=\"*****\"\\ ";
        QTest::newRow("an emoji is one letter")
            << QString("\U0001f431s")
            << QStringList({ "The first letter of " + kitten + "is: \U0001f431.",
                             "The first 2 letters of " + kitten + "are: \U0001f431,S.",
                             "The first 2 letters of " + kitten + "are: \U0001f431,S." });
        const QString accented = "\\map=\"e\u0301t\"=\"*****\"\\ ";
        QTest::newRow("a letter keeps its accent")
            << QString("e\u0301t")
            << QStringList({ "The first letter of " + accented + "is: E\u0301.",
                             "The first 2 letters of " + accented + "are: E\u0301,T." });
        const QString sharp = "\\map=\"\u00df\"=\"*****\"\\ ";
        QTest::newRow("a sharp s") << QString("\u00df")
                                   << QStringList({ "The first letter of " + sharp + "is: SS." });
        const QString signs = "\\map=\",\"\"=\"*****\"\\ ";
        QTest::newRow("signs are letters")
            << ",\""
            << QStringList({ "The first letter of " + signs + "is: ,.",
                             "The first 2 letters of " + signs + "are: ,,\"." });
    }
    void everyPressGivesALetterMoreUntilTheWholeWord()
    {
        QFETCH(QString, word);
        QFETCH(QStringList, lines);
        platform::Integer16 given;
        for (const QString &line : lines) {
            given = NextHintLetters(given, word);
            QCOMPARE(HintLine(given, word), line);
        }
    }

    void aVeryLongWordIsGivenAwayToItsEnd()
    {
        const QString word(10000, 'x');
        QCOMPARE(int(NextHintLetters(9999, word)), 10000);
        QCOMPARE(int(NextHintLetters(10000, word)), 10000);
        QVERIFY(HintLine(10000, word).endsWith("are: " + QString("X,").repeated(9999) + "X."));
    }
};

QTEST_APPLESS_MAIN(TestHints)
#include "TestHints.moc"
