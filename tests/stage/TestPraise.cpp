#include "platform/Error.h"
#include "stage/Praise.h"
#include "support/FakeChance.h"

#include <QTest>

using namespace tumblewick;
using platform::Integer16;

// Which praise is drawn, and who cheers how.
class TestPraise : public QObject {
    Q_OBJECT

private slots:
    void phrasesAreWordedSo()
    {
        const QStringList expected = { "Good answer ",
                                       "Difficult, I didn't know that one myself ",
                                       "Very good ",
                                       "You got that one right ",
                                       "Excellent ",
                                       "That's correct ",
                                       "What a good answer ",
                                       "You're so clever. That was a hard one ",
                                       "That's correct. You made that one look easy ",
                                       "Correct. You're too good ",
                                       "That's another point to you ",
                                       "Well done ",
                                       "That's right ",
                                       "You're right ",
                                       "You're so smart ",
                                       "Congratulations ",
                                       "You're not just a pretty face ",
                                       "Cute and clever too " };
        QCOMPARE(PraisePhrases(), expected);
        QCOMPARE(PraisePhrases().size(), kPraiseCount);
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
        QTest::newRow("two again") << 2 << 2 << 3;
        QTest::newRow("seventeen again") << 17 << 17 << 16;
        QTest::newRow("back after another") << 6 << 5 << 5;
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
        QTest::newRow("left over, seventeen") << 17 << 17 << 18;
        QTest::newRow("left over, one") << 1 << 1 << 2;
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

    void thereIsNoOtherCheeringSet()
    {
        for (const int number : { 0, 5 }) {
            qint32 raised = 0;
            try {
                CheeringSetFor(GameKind::Quiz, number);
            } catch (const platform::Error &error) {
                raised = error.Number();
            }
            QCOMPARE(raised, qint32(platform::kSubscriptOutOfRange));
        }
    }

    void thePraiseIsDrawnFromAllEighteen()
    {
        support::FakeChance chance;
        for (const float number : { 0.0F, 0.0555F, 0.0556F, 0.9444F, 0.9445F, 0x1.fffffep-1F })
            chance.Queue(number);
        QList<int> drawn;
        for (int draw = 0; draw < 6; ++draw)
            drawn << DrawQuizPraise(chance, 0);
        QCOMPARE(drawn, QList<int>({ 1, 1, 2, 17, 18, 18 }));
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
