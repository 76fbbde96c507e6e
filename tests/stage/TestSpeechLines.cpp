#include "game/Hints.h"
#include "platform/voice/SpeechText.h"
#include "shell/Players.h"
#include "stage/SpeechLines.h"

#include <QtTest>

using namespace tumblewick;

// What is said, letter by letter.
class TestSpeechLines : public QObject {
    Q_OBJECT

private slots:
    void linesAreComposedAsTheyAreSaid_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<QString>("expected");
        QTest::newRow("opening") << OpeningLine("Animals") << "Here we go. Get ready to play Animals.";
        QTest::newRow("first question")
            << FirstQuestionLine("Ann", "nite") << "Ann, how do you spell: \\map=\"nite\"=\"*****\"\\?";
        QTest::newRow("question again") << QuestionAgainLine("nite") << "How do you spell: \\map=\"nite\"=\"*****\"\\?";
        QTest::newRow("a quote in the pronunciation goes in as it is")
            << QuestionAgainLine("a\"b") << "How do you spell: \\map=\"a\"b\"=\"*****\"\\?";
        QTest::newRow("a backslash in a name is not escaped")
            << FirstQuestionLine("A\\B", "x") << "A\\B, how do you spell: \\map=\"x\"=\"*****\"\\?";
        QTest::newRow("quiz question") << QuizQuestionLine("Ann", "What is 2+2?") << "Ann, What is 2+2?";
        QTest::newRow("praise") << PraiseLine("Well done ", "Ann") << "Well done  Ann.";
        QTest::newRow("praise without a name") << PraiseLine("Well done ", "") << "Well done  .";
        QTest::newRow("sorry") << SorryLine("Ann") << "Sorry Ann.";
        QTest::newRow("try again") << TryAgainLine("Ann") << "Sorry Ann. Try again";
        QTest::newRow("passed") << PassedLine("Ann") << "You passed on that one Ann";
        QTest::newRow("correct answer") << CorrectAnswerLine("Eight") << "The correct answer was Eight.";
        QTest::newRow("correct spelling") << CorrectSpellingLine("cat") << "The correct spelling for cat is";
        QTest::newRow("spelled out") << SpelledOut("cat") << "C, ,A, ,T, ,";
        QTest::newRow("spelled out, one letter") << SpelledOut("a") << "A, ,";
        QTest::newRow("spelled out, nothing") << SpelledOut("") << "";
        QTest::newRow("spelled out, accents stay on their letter")
            << SpelledOut(QString::fromUtf8("e\xCC\x81t")) << QString::fromUtf8("E\xCC\x81, ,T, ,");
        QTest::newRow("spelled out, an emoji stays whole")
            << SpelledOut(QString::fromUtf8("a\xF0\x9F\x90\xB1")) << QString::fromUtf8("A, ,\xF0\x9F\x90\xB1, ,");
        QTest::newRow("spelled out line") << SpelledOutLine("cat") << "\\map=\"C, ,A, ,T, ,\"=\"cat\"\\";
        QTest::newRow("hint, first letter") << HintLine(1, "cat") << "The first letter of \\map=\"cat\"=\"*****\"\\ is: C.";
        QTest::newRow("hint, two letters")
            << HintLine(2, "cat") << "The first 2 letters of \\map=\"cat\"=\"*****\"\\ are: C,A.";
        QTest::newRow("hint, the whole word")
            << HintLine(3, "cat") << "The first 3 letters of \\map=\"cat\"=\"*****\"\\ are: C,A,T.";
        QTest::newRow("hint, an empty word loses the blank")
            << HintLine(0, "") << "The first 0 letters of \\map=\"\"=\"*****\"\\ are:.";
    }
    void linesAreComposedAsTheyAreSaid()
    {
        QFETCH(QString, line);
        QTEST(line, "expected");
    }

    void aScoreIsReadOut()
    {
        Players players(QStringList{ "Ann", "Bob" });
        players.AddOne(1, Players::kCorrect);
        players.AddOne(1, Players::kAsked);
        players.AddOne(1, Players::kAsked);
        QCOMPARE(ScoreReadOutLine(players, 1), QString("Bob, your score is 1 out of 2. "));
    }

    void aNameNeverUncoversTheWord_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : { "A\\B", "\\", "\\\\", "\\map=", "\"", "Ann\\map=\"x", "_", "%1", "<b>" })
            QTest::newRow(name) << QString::fromLatin1(name);
    }
    void aNameNeverUncoversTheWord()
    {
        QFETCH(QString, name);
        const auto text = platform::SpeechText::Parse(FirstQuestionLine(name, "zebra"));
        if (!name.contains("map="))
            QVERIFY2(text.Spoken().contains("zebra"), qPrintable(text.Spoken()));
        QVERIFY2(!text.Shown().contains("zebra"), qPrintable(text.Shown()));
    }

    void hintsGiveOneLetterMoreUntilTheWholeWord()
    {
        platform::Integer16 given;
        QList<int> seen;
        for (int press = 0; press < 5; ++press) {
            given = NextHintLetters(given, "cat");
            seen << given;
        }
        QCOMPARE(seen, QList<int>({ 1, 2, 3, 3, 3 }));
        QCOMPARE(int(NextHintLetters(0, "")), 0);
        QCOMPARE(int(NextHintLetters(1, "a")), 1);
    }
};

QTEST_APPLESS_MAIN(TestSpeechLines)
#include "TestSpeechLines.moc"
