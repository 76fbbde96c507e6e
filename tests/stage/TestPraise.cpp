#include "platform/Error.h"
#include "stage/Praise.h"
#include "support/FakeChance.h"

#include <QtTest>

using namespace tumblewick;
using platform::Integer16;

// Which praise is drawn, and who cheers how.
class TestPraise : public QObject {
    Q_OBJECT

private slots:
    void eighteenPhrasesEndInABlank()
    {
        const QStringList phrases = PraisePhrases();
        QCOMPARE(phrases.size(), kPraiseCount);
        for (const QString &phrase : phrases)
            QVERIFY2(phrase.endsWith(' ') && !phrase.endsWith("  "), qPrintable(phrase));
        QCOMPARE(phrases[3], QString("You got that one right "));
        QCOMPARE(phrases[17], QString("Cute and clever too "));
    }

    void spellingNeverPraisesTwiceTheSame_data()
    {
        QTest::addColumn<int>("last");
        QTest::addColumn<int>("drawn");
        QTest::addColumn<int>("praise");
        QTest::newRow("another one") << 3 << 4 << 4;
        QTest::newRow("one again") << 1 << 1 << 2;
        QTest::newRow("five again") << 5 << 5 << 6;
        QTest::newRow("six again") << 6 << 6 << 5;
        QTest::newRow("eighteen again") << 18 << 18 << 17;
        QTest::newRow("the first praise") << 0 << 1 << 1;
    }
    void spellingNeverPraisesTwiceTheSame()
    {
        QFETCH(int, last);
        QFETCH(int, drawn);
        QFETCH(int, praise);
        support::FakeChance chance;
        chance.QueueDraw(drawn, kPraiseCount, 1);
        Integer16 lastPraise = last;
        QCOMPARE(DrawSpellingPraise(chance, lastPraise), praise);
        QCOMPARE(int(lastPraise), praise);
        QCOMPARE(chance.Randomized(), 1);
    }

    void aQuizComparesButDoesNotRemember_data()
    {
        QTest::addColumn<int>("last");
        QTest::addColumn<int>("drawn");
        QTest::addColumn<int>("praise");
        QTest::newRow("the first praise") << 0 << 7 << 7;
        QTest::newRow("left over from a spelling game") << 7 << 7 << 8;
        QTest::newRow("left over, the last phrase") << 18 << 18 << 17;
        QTest::newRow("left over, six") << 6 << 6 << 7;
    }
    void aQuizComparesButDoesNotRemember()
    {
        QFETCH(int, last);
        QFETCH(int, drawn);
        QFETCH(int, praise);
        support::FakeChance chance;
        chance.QueueDraw(drawn, kPraiseCount, 1);
        chance.QueueDraw(drawn, kPraiseCount, 1);
        QCOMPARE(DrawQuizPraise(chance, last), praise);
        QCOMPARE(DrawQuizPraise(chance, last), praise);
        QCOMPARE(chance.Randomized(), 2);
    }

    void cheeringSets_data()
    {
        QTest::addColumn<bool>("spelling");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("cheers");
        const char *second = "0 Congratulate, 1 Congratulate_2, 2 Congratulate";
        const char *third = "1 Congratulate_2, 2 Congratulate, 0 Congratulate_2";
        QTest::newRow("spelling 1") << true << 1 << "0 Congratulate_2, 1 Congratulate, 2 Congratulate";
        QTest::newRow("quiz 1") << false << 1 << "0 Congratulate, 1 Congratulate, 2 Congratulate";
        QTest::newRow("spelling 2") << true << 2 << second;
        QTest::newRow("quiz 2") << false << 2 << second;
        QTest::newRow("spelling 3") << true << 3 << third;
        QTest::newRow("quiz 3") << false << 3 << third;
        QTest::newRow("spelling 4") << true << 4 << second;
        QTest::newRow("quiz 4") << false << 4 << second;
    }
    void cheeringSets()
    {
        QFETCH(bool, spelling);
        QFETCH(int, number);
        QStringList cheers;
        for (const Cheer &cheer : CheeringSetFor(spelling ? GameKind::Spelling : GameKind::Quiz, number))
            cheers << QString::number(cheer.who) + ' ' + cheer.animation;
        QTEST(cheers.join(", "), "cheers");
    }

    void theSetIsDrawnFromFour()
    {
        support::FakeChance chance;
        for (const float number : { 0.0F, 0.2499F, 0.25F, 0.5F, 0.75F, 0.9999F })
            chance.Queue(number);
        QList<int> drawn;
        for (int draw = 0; draw < 6; ++draw)
            drawn << DrawCheeringSet(chance);
        QCOMPARE(drawn, QList<int>({ 1, 1, 2, 3, 4, 4 }));
        QCOMPARE(chance.Randomized(), 6);
    }
};

QTEST_APPLESS_MAIN(TestPraise)
#include "TestPraise.moc"
