#include "platform/system/SystemClock.h"
#include "support/FakeTime.h"

#include <QTest>
#include <QTime>

using namespace std::chrono_literals;

// The clock, the real one and the one for tests.
class TestClock : public QObject {
    Q_OBJECT
private slots:
    void secondsAreThoseOfTheLocalDay();
    void elapsedTimeNeverGoesBack();
    void fakeClockGoesRoundAtMidnight();
};

void TestClock::secondsAreThoseOfTheLocalDay()
{
    const platform::SystemClock clock;
    const int before = QTime::currentTime().msecsSinceStartOfDay();
    const double seconds = clock.SecondsSinceMidnight();
    const int after = QTime::currentTime().msecsSinceStartOfDay();
    QVERIFY(seconds >= 0 && seconds < 24 * 3600);
    if (before <= after) // not at midnight
        QVERIFY(seconds >= before / 1000.0 && seconds <= after / 1000.0);
}

void TestClock::elapsedTimeNeverGoesBack()
{
    const platform::SystemClock clock;
    QVERIFY(clock.Elapsed() >= 0ms && clock.Elapsed() < 1h);
    auto last = clock.Elapsed();
    while (last < 20ms) {
        const auto now = clock.Elapsed();
        QVERIFY(now >= last);
        last = now;
    }
}

void TestClock::fakeClockGoesRoundAtMidnight()
{
    support::FakeTime time;
    QCOMPARE(time.SecondsSinceMidnight(), 12 * 3600.0);
    time.SetStartOfClock(24 * 3600.0 - 1.5);
    time.Run(1s);
    QCOMPARE(time.SecondsSinceMidnight(), 24 * 3600.0 - 0.5);
    time.Run(1s);
    QCOMPARE(time.SecondsSinceMidnight(), 0.5);
    QCOMPARE(time.Elapsed(), 2s);
}

QTEST_APPLESS_MAIN(TestClock)
#include "TestClock.moc"
