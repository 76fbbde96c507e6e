#include "game/Turns.h"

#include <QTest>

using namespace tumblewick;

// How many questions a game has, and whose turn it is.
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
        QTest::newRow("one short of another round") << 9 << 5 << 5;
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
        QTest::newRow("four") << 4 << "00 11 22 03 10 21 02";
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
        QCOMPARE(int(turns.QuestionsAsked), 0);
        QVERIFY(!turns.ListDone());
    }
};

QTEST_APPLESS_MAIN(TestTurns)
#include "TestTurns.moc"
