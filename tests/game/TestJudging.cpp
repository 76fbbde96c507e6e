#include "game/Judging.h"
#include "game/Turns.h"
#include "shell/Players.h"

#include <QTest>

using namespace tumblewick;

// What is made of an answer.
class TestJudging : public QObject {
    Q_OBJECT

private slots:
    void spellingIsComparedWithoutCapitals_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("right");
        QTest::newRow("the same") << "cat"
                                  << "cat" << true;
        QTest::newRow("capitals") << "CaT"
                                  << "cat" << true;
        QTest::newRow("capitals in the word") << "london"
                                              << "London" << true;
        QTest::newRow("blank behind") << "cat "
                                      << "cat" << false;
        QTest::newRow("blank before") << " cat"
                                      << "cat" << false;
        QTest::newRow("empty") << ""
                               << "cat" << false;
        QTest::newRow("empty word, empty answer") << ""
                                                  << "" << true;
        QTest::newRow("accents count") << "cafe" << QString("caf\u00e9") << false;
        QTest::newRow("accented capitals") << QString("CAF\u00c9") << QString("caf\u00e9") << true;
        QTest::newRow("underscore") << "c_t"
                                    << "cat" << false;
        QTest::newRow("underscore in the word") << "C_T"
                                                << "c_t" << true;
        QTest::newRow("signs like letters") << "<b>%\\"
                                            << "<B>%\\" << true;
        QTest::newRow("a quote and an apostrophe") << "IT'S \"A\""
                                                   << "it's \"a\"" << true;
        QTest::newRow("another apostrophe") << QString("it\u2019s") << "it's" << false;
        QTest::newRow("a blank alone for an empty word") << " "
                                                         << "" << false;
        QTest::newRow("blanks inside count") << "ice  cream"
                                             << "ice cream" << false;
        QTest::newRow("a hyphen is no blank") << "ice-cream"
                                              << "ice cream" << false;
        QTest::newRow("an emoji") << QString("\U0001f431") << QString("\U0001f431") << true;
        QTest::newRow("another emoji") << QString("\U0001f436") << QString("\U0001f431") << false;
        QTest::newRow("very long") << QString(10000, 'X') << QString(10000, 'x') << true;
        QTest::newRow("very long, one letter less") << QString(9999, 'x') << QString(10000, 'x') << false;
    }
    void spellingIsComparedWithoutCapitals()
    {
        QFETCH(QString, answer);
        QFETCH(QString, word);
        QTEST(IsSpelledRight(answer, word), "right");
    }

    void theCheckpointComesByChance_data()
    {
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::addColumn<int>("asked");
        QTest::addColumn<int>("praise");
        QTest::addColumn<bool>("comes");
        QTest::newRow("four points and praise four") << "4"
                                                     << "0" << 6 << 4 << true;
        QTest::newRow("three points are too few") << "3"
                                                  << "0" << 6 << 4 << false;
        QTest::newRow("only the first player counts") << "2"
                                                      << "6" << 8 << 4 << false;
        QTest::newRow("never after the last question") << "5"
                                                       << "5" << 10 << 4 << false;
        QTest::newRow("another praise") << "5"
                                        << "5" << 8 << 5 << false;
        QTest::newRow("praise three") << "5"
                                      << "5" << 8 << 3 << false;
        QTest::newRow("many points, not as text") << "10"
                                                  << "0" << 8 << 4 << true;
    }
    void theCheckpointComesByChance()
    {
        QFETCH(QString, first);
        QFETCH(QString, second);
        QFETCH(int, asked);
        QFETCH(int, praise);
        Players players(QStringList{ "Ann", "Bob" });
        players.SetText(0, Players::kCorrect, first);
        players.SetText(1, Players::kCorrect, second);
        Turns turns;
        turns.Begin(10, 2);
        turns.QuestionsAsked = asked;
        QTEST(IsCheckpoint(players, turns, praise), "comes");
    }
};

QTEST_APPLESS_MAIN(TestJudging)
#include "TestJudging.moc"
