#include "game/Scoreboard.h"
#include "shell/Players.h"

#include <QTest>

using namespace tumblewick;

namespace {

// One player a word: name, right answers, questions asked, such as "Ann:2:3".
Players PlayersFrom(const QString &text)
{
    QStringList names;
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    for (const QString &word : words)
        names << word.section(':', 0, 0);
    Players players(names);
    for (int index = 0; index < words.size(); ++index) {
        players.SetText(index, Players::kCorrect, words[index].section(':', 1, 1));
        players.SetText(index, Players::kAsked, words[index].section(':', 2, 2));
    }
    return players;
}

} // namespace

// The board: who stands where, and what it says.
class TestScoreboard : public QObject {
    Q_OBJECT

private slots:
    void ranksByRate_data()
    {
        QTest::addColumn<QString>("players");
        QTest::addColumn<QString>("order"); // name percentage, best first
        QTest::newRow("equal rates stand in the players' order") << "Ann:1:2 Bob:2:4"
                                                                 << "Ann 50, Bob 50";
        QTest::newRow("rate before points") << "Ann:4:5 Bob:1:1"
                                            << "Bob 100, Ann 80";
        QTest::newRow("two thirds are rounded up") << "Ann:1:2 Bob:2:3"
                                                   << "Bob 67, Ann 50";
        QTest::newRow("half goes to the even neighbour, down") << "Ann:1:8 Bob:0:1"
                                                               << "Ann 12, Bob 0";
        QTest::newRow("half goes to the even neighbour, up") << "Ann:3:8 Bob:0:1"
                                                             << "Ann 38, Bob 0";
        QTest::newRow("never asked") << "Ann:0:0 Bob:0:0 Cat:0:0"
                                     << "Ann 0, Bob 0, Cat 0";
        QTest::newRow("nothing right and never asked are equal") << "Ann:0:1 Bob:0:0"
                                                                 << "Ann 0, Bob 0";
        QTest::newRow("last is best") << "Ann:0:3 Bob:1:3 Cat:2:3 Dan:3:3"
                                      << "Dan 100, Cat 67, Bob 33, Ann 0";
        QTest::newRow("five with ties") << "Ann:1:2 Bob:2:2 Cat:1:2 Dan:2:2 Eve:0:2"
                                        << "Bob 100, Dan 100, Ann 50, Cat 50, Eve 0";
        QTest::newRow("ranks that round to the same keep the order") << "Ann:664:1000 Bob:2:3 Cat:663:1000"
                                                                     << "Bob 67, Ann 66, Cat 66";
    }
    void ranksByRate()
    {
        QFETCH(QString, players);
        const Players table = PlayersFrom(players);
        QStringList order;
        for (const RankedPlayer &entry : Ranked(table))
            order << table.Text(entry.player, Players::kName) + ' ' + QString::number(entry.percentage);
        QTEST(order.join(", "), "order");
    }

    void theBoardHasALineForEach()
    {
        const Players table = PlayersFrom("Ann:1:2 Bob:3:3 Cat:2:3");
        QCOMPARE(ScoreTextFor(table, Ranked(table)),
                 QString("Bob    3 out of 3 100%\nCat    2 out of 3 67%\nAnn    1 out of 2 50%\n"));
    }

    void aLonePlayerHasNoPercentage()
    {
        QCOMPARE(ScoreTextForOne(PlayersFrom("Ann:7:9")), QString("Ann    7 out of 9\n"));
    }

    void namesStandAsTheyAre()
    {
        Players table(QStringList{ "<b>A</b> & \"B\"", "%1 100%_\\" });
        QCOMPARE(ScoreTextFor(table, Ranked(table)),
                 QString("<b>A</b> & \"B\"    0 out of 0 0%\n%1 100%_\\    0 out of 0 0%\n"));
    }

    void theTypeShrinksWithThePlayers_data()
    {
        QTest::addColumn<int>("players");
        QTest::addColumn<int>("size");
        QTest::newRow("one") << 1 << 24;
        QTest::newRow("two") << 2 << 24;
        QTest::newRow("three") << 3 << 24;
        QTest::newRow("four") << 4 << 20;
        QTest::newRow("five") << 5 << 16;
    }
    void theTypeShrinksWithThePlayers()
    {
        QFETCH(int, players);
        QTEST(ScoreFontSize(players), "size");
    }
};

QTEST_APPLESS_MAIN(TestScoreboard)
#include "TestScoreboard.moc"
