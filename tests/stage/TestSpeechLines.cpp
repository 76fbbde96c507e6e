#include "platform/voice/SpeechText.h"
#include "shell/Players.h"
#include "stage/SpeechLines.h"

#include <QTest>

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
        QTest::newRow("opening, a list from elsewhere")
            << OpeningLine("my \"50%\" list_1.txt") << "Here we go. Get ready to play my \"50%\" list_1.txt.";
        QTest::newRow("first question")
            << FirstQuestionLine("Ann", "nite") << "Ann, how do you spell: \\map=\"nite\"=\"*****\"\\?";
        QTest::newRow("question again")
            << QuestionAgainLine("nite") << "How do you spell: \\map=\"nite\"=\"*****\"\\?";
        QTest::newRow("a quote in the pronunciation goes in as it is")
            << QuestionAgainLine("a\"b") << "How do you spell: \\map=\"a\"b\"=\"*****\"\\?";
        QTest::newRow("a backslash in a name is not escaped")
            << FirstQuestionLine("A\\B", "x") << "A\\B, how do you spell: \\map=\"x\"=\"*****\"\\?";
        QTest::newRow("first question without a name")
            << FirstQuestionLine("", "cat") << ", how do you spell: \\map=\"cat\"=\"*****\"\\?";
        QTest::newRow("a word without a pronunciation is not heard")
            << QuestionAgainLine("") << "How do you spell: \\map=\"\"=\"*****\"\\?";
        QTest::newRow("a pronunciation of several words")
            << QuestionAgainLine("knight, who_wears armour")
            << "How do you spell: \\map=\"knight, who_wears armour\"=\"*****\"\\?";
        QTest::newRow("quiz question") << QuizQuestionLine("Ann", "What is 2+2?") << "Ann, What is 2+2?";
        QTest::newRow("quiz question, signs go in as they are")
            << QuizQuestionLine("%1", "<b>%2</b> \\ \"?\"") << "%1, <b>%2</b> \\ \"?\"";
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
            << SpelledOut(QString::fromUtf8("a\xF0\x9F\x90\xB1"))
            << QString::fromUtf8("A, ,\xF0\x9F\x90\xB1, ,");
        QTest::newRow("spelled out, a family is one emoji")
            << SpelledOut(QString("\U0001f468\u200d\U0001f469\u200d\U0001f467a"))
            << QString("\U0001f468\u200d\U0001f469\u200d\U0001f467, ,A, ,");
        QTest::newRow("spelled out, a flag is one emoji")
            << SpelledOut(QString("\U0001f1ec\U0001f1e7a")) << QString("\U0001f1ec\U0001f1e7, ,A, ,");
        QTest::newRow("spelled out, a sharp s becomes what its capitals are")
            << SpelledOut(QString("gro\u00df")) << "G, ,R, ,O, ,SS, ,";
        QTest::newRow("spelled out, blanks and signs are letters too")
            << SpelledOut("a b_\"\\") << "A, , , ,B, ,_, ,\", ,\\, ,";
        QTest::newRow("spelled out, capitals stay") << SpelledOut("McX") << "M, ,C, ,X, ,";
        QTest::newRow("spelled out, very long")
            << SpelledOut(QString(10000, 'x')) << QString("X, ,").repeated(10000);
        QTest::newRow("spelled out line, nothing") << SpelledOutLine("") << "\\map=\"\"=\"\"\\";
        QTest::newRow("spelled out line, the word stands as it is written")
            << SpelledOutLine(QString("Stra\u00dfe"))
            << QString("\\map=\"S, ,T, ,R, ,A, ,SS, ,E, ,\"=\"Stra\u00dfe\"\\");
        QTest::newRow("spelled out line") << SpelledOutLine("cat") << "\\map=\"C, ,A, ,T, ,\"=\"cat\"\\";
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
        QCOMPARE(FinalScoreLine(players, 1), QString("Bob, you scored 1 out of 2. "));
        QCOMPARE(FinalScoreLine(players, 0), QString("Ann, you scored 0 out of 0. "));
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
};

QTEST_APPLESS_MAIN(TestSpeechLines)
#include "TestSpeechLines.moc"
