#include "platform/voice/HeardClock.h"

#include <QTest>

#include <functional>

using namespace std::chrono_literals;
using platform::HeardClock;
using Duration = HeardClock::Duration;

// The clock that mouths and balloons follow while a line plays.
class TestHeardClock : public QObject {
    Q_OBJECT
private slots:
    void clockIsSmoothAndTrue_data();
    void clockIsSmoothAndTrue();
    void clockStandsUntilTheSoundBegins();
    void clockStandsWhileTheSoundHasStopped();
    void clockFollowsAJump();
    void clockBeginsAnew();
};

namespace {

// A device that has truly played `now` - 50 ms and tells it in its own way.
Duration Exact(Duration now)
{
    return std::max(now - 50ms, Duration(0ms));
}
Duration InSteps(Duration now)
{
    return Exact(now) / 20'000 * 20'000;
}
Duration LateByTurns(Duration now)
{
    const auto late = Duration(now / 300ms % 3 * 30ms);
    return std::max(Exact(now) - late, Duration(0ms));
}
Duration WithRests(Duration now)
{
    return Exact(now) / 70'000 * 70'000;
}
Duration SlightlyFast(Duration now)
{
    return Duration(static_cast<qint64>(static_cast<double>(Exact(now).count()) * 1.0005));
}

} // namespace

void TestHeardClock::clockIsSmoothAndTrue_data()
{
    QTest::addColumn<Duration (*)(Duration)>("device");
    QTest::addColumn<int>("latest");
    QTest::newRow("exact") << &Exact << 8;
    QTest::newRow("in steps") << &InSteps << 25;
    QTest::newRow("late by turns") << &LateByTurns << 25;
    QTest::newRow("with rests") << &WithRests << 45;
    QTest::newRow("slightly fast") << &SlightlyFast << 8;
}

void TestHeardClock::clockIsSmoothAndTrue()
{
    using Device = Duration (*)(Duration);
    QFETCH(Device, device);
    QFETCH(int, latest);
    HeardClock clock;
    const Duration start = 7'000s;
    clock.Start(start);
    Duration last{ 0 };
    for (Duration now{ 0 }; now < 20s; now += 16ms) {
        const auto heard = clock.At(start + now, device(now));
        QVERIFY(heard >= last);
        if (now > 1s) {
            QVERIFY2(heard - last >= 10ms && heard - last <= 30ms,
                     qPrintable(QString::number(heard.count())));
            const auto truth = device == &SlightlyFast ? SlightlyFast(now) : Exact(now);
            QVERIFY2(heard <= truth + 25ms && heard >= truth - std::chrono::milliseconds(latest),
                     qPrintable(QString::number((heard - truth).count())));
        }
        last = heard;
    }
}

void TestHeardClock::clockStandsUntilTheSoundBegins()
{
    HeardClock clock;
    clock.Start(0ms);
    QCOMPARE(clock.At(2s, 0ms), Duration(0ms));
    QCOMPARE(clock.StandsStillFor(2s), Duration(2s));
    QCOMPARE(clock.At(2010ms, 10ms), Duration(10ms));
    QCOMPARE(clock.At(2026ms, 26ms), Duration(26ms));
}

void TestHeardClock::clockStandsWhileTheSoundHasStopped()
{
    HeardClock clock;
    clock.Start(0ms);
    Duration heard{ 0 };
    for (Duration now{ 16ms }; now < 5s; now += 16ms)
        heard = clock.At(now, std::min(now, Duration(1s)));
    QVERIFY(heard >= 1s && heard <= 1150ms);
    QVERIFY(clock.StandsStillFor(5s) > 3900ms);
    // It goes on when the sound has come to where the clock stands.
    for (Duration now{ 5s }; now < 7s; now += 16ms)
        heard = clock.At(now, now - 4s);
    QVERIFY(heard >= 2900ms && heard <= 3050ms);
}

void TestHeardClock::clockFollowsAJump()
{
    HeardClock clock;
    clock.Start(0ms);
    QCOMPARE(clock.At(16ms, 16ms), Duration(16ms));
    QVERIFY(clock.At(32ms, 900ms) >= 900ms);
}

void TestHeardClock::clockBeginsAnew()
{
    HeardClock clock;
    clock.Start(0ms);
    QVERIFY(clock.At(900ms, 900ms) > 0ms);
    clock.Start(2s);
    QCOMPARE(clock.At(2016ms, 0ms), Duration(0ms));
    QCOMPARE(clock.At(2032ms, 8ms), Duration(8ms));
}

QTEST_APPLESS_MAIN(TestHeardClock)
#include "TestHeardClock.moc"
