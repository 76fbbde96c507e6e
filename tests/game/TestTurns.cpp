#include "game/Judging.h"
#include "game/Turns.h"
#include "shell/Players.h"

#include <QtTest>

using namespace tumblewick;

// How many questions a game has, whose turn it is, and what is made of an answer.
class TestTurns : public QObject {
    Q_OBJECT

private slots:
    void everyPlayerGetsTheSameNumber_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("players");
        QTest::addColumn<int>("total");
        QTest::newRow("three lines, two players") << 3 << 2 << 2;
        QTest::newRow("as many lines as players") << 4 << 4 << 4;
        QTest::newRow("fewer lines than players") << 3 << 4 << 0;
        QTest::newRow("one player gets all") << 17 << 1 << 17;
        QTest::newRow("five players") << 19 << 5 << 15;
        QTest::newRow("the longest list") << 32767 << 3 << 32766;
        QTest::newRow("no lines") << 0 << 1 << 0;
    }
    void everyPlayerGetsTheSameNumber()
    {
        QFETCH(int, lines);
        QFETCH(int, players);
        Turns turns;
        turns.Begin(lines, players);
        QTEST(int(turns.QuestionTotal), "total");
        QCOMPARE(int(turns.QuestionsAsked), 0);
    }

    void speakersAndPlayersWalkRoundByThemselves_data()
    {
        QTest::addColumn<int>("players");
        QTest::addColumn<QString>("turns"); // speaker and player of the first questions
        QTest::newRow("one") << 1 << "00 10 20 00 10";
        QTest::newRow("two") << 2 << "00 11 20 01 10 21 00";
        QTest::newRow("three keep their character") << 3 << "00 11 22 00 11";
        QTest::newRow("five") << 5 << "00 11 22 03 14 20 01";
    }
    void speakersAndPlayersWalkRoundByThemselves()
    {
        QFETCH(int, players);
        QFETCH(QString, turns);
        Turns rotation;
        rotation.Begin(100, players);
        QStringList seen;
        for (const auto count = turns.split(' ').size(); seen.size() < count;) {
            rotation.Advance(players);
            seen << QString::number(rotation.SpeakerIndex) + QString::number(rotation.CurrentPlayer);
        }
        QCOMPARE(seen.join(' '), turns);
    }

    void theLastQuestionFallsToTheLastPlayer()
    {
        for (int players = 1; players <= 5; ++players) {
            Turns turns;
            turns.Begin(23, players);
            while (!turns.ListDone()) {
                turns.Advance(players);
                turns.QuestionsAsked += 1;
            }
            QCOMPARE(int(turns.CurrentPlayer), players - 1);
        }
    }

    void aNewGameStartsTheRoundOver()
    {
        Turns turns;
        turns.Begin(5, 2);
        turns.Advance(2);
        turns.QuestionsAsked += 1;
        turns.Begin(5, 2);
        QCOMPARE(int(turns.CurrentPlayer), -1);
        QCOMPARE(int(turns.SpeakerIndex), -1);
        QVERIFY(!turns.ListDone());
    }

    void spellingIsComparedWithoutCapitals_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("word");
        QTest::addColumn<bool>("right");
        QTest::newRow("the same") << "cat" << "cat" << true;
        QTest::newRow("capitals") << "CaT" << "cat" << true;
        QTest::newRow("capitals in the word") << "london" << "London" << true;
        QTest::newRow("blank behind") << "cat " << "cat" << false;
        QTest::newRow("blank before") << " cat" << "cat" << false;
        QTest::newRow("empty") << "" << "cat" << false;
        QTest::newRow("empty word, empty answer") << "" << "" << true;
        QTest::newRow("accents count") << "cafe" << QString("caf\u00e9") << false;
        QTest::newRow("accented capitals") << QString("CAF\u00c9") << QString("caf\u00e9") << true;
        QTest::newRow("underscore") << "c_t" << "cat" << false;
        QTest::newRow("signs like letters") << "<b>%\\" << "<B>%\\" << true;
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
        QTest::newRow("four points and praise four") << "4" << "0" << 6 << 4 << true;
        QTest::newRow("three points are too few") << "3" << "0" << 6 << 4 << false;
        QTest::newRow("only the first player counts") << "2" << "6" << 8 << 4 << false;
        QTest::newRow("never after the last question") << "5" << "5" << 10 << 4 << false;
        QTest::newRow("another praise") << "5" << "5" << 8 << 5 << false;
        QTest::newRow("praise three") << "5" << "5" << 8 << 3 << false;
        QTest::newRow("many points, not as text") << "10" << "0" << 8 << 4 << true;
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

QTEST_APPLESS_MAIN(TestTurns)
#include "TestTurns.moc"
