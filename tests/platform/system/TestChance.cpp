#include "platform/system/SystemChance.h"
#include "support/FakeChance.h"

#include <QSet>
#include <QTest>

#include <array>
#include <cmath>
#include <stdexcept>

using platform::Drawn;

// The random generator and what is drawn with it.
class TestChance : public QObject {
    Q_OBJECT
private slots:
    void numbersAreAtLeastZeroAndBelowOne();
    void numbersAreSpreadEvenly();
    void everyRandomizeSeedsAnew();
    void drawIsTheWholePart_data();
    void drawIsTheWholePart();
    void drawNeverReachesTheCount();

    void fakeGivesWhatWasQueued();
    void fakeRecordsRandomize();
    void fakeRefusesWhatIsNoRandomNumber();
};

void TestChance::numbersAreAtLeastZeroAndBelowOne()
{
    platform::SystemChance chance;
    chance.Randomize();
    for (int draw = 0; draw < 1'000'000; ++draw) {
        const float number = chance.Next();
        QVERIFY(number >= 0.0F && number < 1.0F);
    }
}

void TestChance::numbersAreSpreadEvenly()
{
    platform::SystemChance chance; // not seeded from the clock, so the outcome is the same each time
    std::array<int, 10> counts{};
    for (int draw = 0; draw < 100'000; ++draw)
        ++counts[static_cast<size_t>(Drawn(chance, 10))];
    for (const int count : counts)
        QVERIFY2(std::abs(count - 10'000) < 500, qPrintable(QString::number(count)));
}

void TestChance::everyRandomizeSeedsAnew()
{
    platform::SystemChance chance;
    QSet<QString> courses;
    for (int round = 0; round < 200; ++round) {
        chance.Randomize();
        QString course;
        for (int draw = 0; draw < 4; ++draw)
            course += QString::number(chance.Next(), 'g', 9) + ' ';
        courses << course;
    }
    QCOMPARE(courses.size(), 200);
}

void TestChance::drawIsTheWholePart_data()
{
    QTest::addColumn<float>("number");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("base");
    QTest::addColumn<int>("drawn");
    QTest::newRow("least") << 0.0F << 4 << 1 << 1;
    QTest::newRow("just below a step") << 0.2499F << 4 << 1 << 1;
    QTest::newRow("on a step") << 0.25F << 4 << 1 << 2;
    QTest::newRow("most") << 0.99999994F << 4 << 1 << 4;
    QTest::newRow("from 0") << 0.5F << 7 << 0 << 3;
    QTest::newRow("one only") << 0.9F << 1 << 0 << 0;
    QTest::newRow("none") << 0.9F << 0 << 0 << 0;
}

void TestChance::drawIsTheWholePart()
{
    QFETCH(float, number);
    QFETCH(int, count);
    QFETCH(int, base);
    support::FakeChance chance;
    chance.Queue(number);
    QTEST(Drawn(chance, count, base), "drawn");
}

void TestChance::drawNeverReachesTheCount()
{
    support::FakeChance chance;
    for (int count = 1; count <= 32767; ++count) {
        chance.Queue(std::nextafter(1.0F, 0.0F));
        QCOMPARE(Drawn(chance, count), count - 1);
    }
}

void TestChance::fakeGivesWhatWasQueued()
{
    support::FakeChance chance;
    chance.Queue(0.75F);
    chance.QueueDraw(3, 8, 1);
    QCOMPARE(chance.Left(), 2);
    QCOMPARE(chance.Next(), 0.75F);
    QCOMPARE(Drawn(chance, 8, 1), 3);
    for (int tenth = 0; tenth < 25; ++tenth)
        QCOMPARE(chance.Next(), static_cast<float>(tenth % 10) / 10.0F);
    QCOMPARE(chance.Given(), 27);
    for (int count = 1; count < 300; ++count) {
        for (int drawn = 0; drawn < count; ++drawn) {
            chance.QueueDraw(drawn, count);
            QCOMPARE(Drawn(chance, count), drawn);
        }
    }
}

void TestChance::fakeRecordsRandomize()
{
    support::FakeChance chance;
    chance.Randomize();
    chance.Next();
    chance.Next();
    chance.Randomize();
    QCOMPARE(chance.Next(), 0.2F);
    QCOMPARE(chance.Randomized(), 2);
    QCOMPARE(chance.RandomizedAfter(), std::vector<int>({ 0, 2 }));
}

void TestChance::fakeRefusesWhatIsNoRandomNumber()
{
    support::FakeChance chance;
    QVERIFY_EXCEPTION_THROWN(chance.Queue(1.0F), std::invalid_argument);
    QVERIFY_EXCEPTION_THROWN(chance.Queue(-0.1F), std::invalid_argument);
    QVERIFY_EXCEPTION_THROWN(chance.QueueDraw(9, 8, 1), std::invalid_argument);
}

QTEST_APPLESS_MAIN(TestChance)
#include "TestChance.moc"
