#include "platform/Error.h"
#include "shell/Players.h"

#include <QTest>

using namespace tumblewick;

// The table of the players, whose numbers are texts.
class TestPlayers : public QObject {
    Q_OBJECT

private slots:
    void aNewTableHasNamesAndNoughts()
    {
        const Players players(QStringList{ "Ann", " ", "Ann" });
        QCOMPARE(players.Count(), 3);
        QCOMPARE(players.Text(1, Players::kName), QString(" "));
        for (const auto column : { Players::kCorrect, Players::kAsked, Players::kHints })
            QCOMPARE(players.Text(2, column), QString("0"));
    }

    void addingOneReadsAndWritesText()
    {
        Players players(QStringList{ "Ann" });
        players.SetText(0, Players::kAsked, "9");
        players.AddOne(0, Players::kAsked);
        QCOMPARE(players.Text(0, Players::kAsked), QString("10"));
    }

    void whatCannotBeRaises_data()
    {
        QTest::addColumn<int>("player");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("number");
        QTest::newRow("no number") << 0 << "many" << 13;
        QTest::newRow("empty") << 0 << "" << 13;
        QTest::newRow("too many") << 0 << "32767" << 6;
        QTest::newRow("no such player") << 1 << "0" << 9;
        QTest::newRow("before the first") << -1 << "0" << 9;
    }
    void whatCannotBeRaises()
    {
        QFETCH(int, player);
        QFETCH(QString, text);
        Players players(QStringList{ "Ann" });
        players.SetText(0, Players::kCorrect, text);
        int raised = 0;
        try {
            players.AddOne(player, Players::kCorrect);
        } catch (const platform::Error &error) {
            raised = error.Number();
        }
        QTEST(raised, "number");
    }
};

QTEST_APPLESS_MAIN(TestPlayers)
#include "TestPlayers.moc"
