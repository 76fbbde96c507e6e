#include "TestScreens.h"
#include "platform/forms/Timer.h"
#include "support/NumberRaised.h"
#include "support/PlainDesk.h"

#include <QTest>

#include <optional>

using support::PlainDesk;
using namespace std::chrono_literals;

// Timers of screens, and other calls that die with the window of their screen.
class TestTimer : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_desk.emplace();
        g_log.clear();
    }
    void cleanup() { m_desk.reset(); }

    void guardedCallsAreDeadAfterTheUnload();
    void guardedCallsOfTheLastWindowAreDeadAfterLoadingAnew();
    void timerTicksUntilTheUnload();
    void timerLeavesOutTicksWhileItsHandlerRuns();
    void timerHandlerMayLoadItsScreenAnew();
    void timerGoesOnAfterAHandlerThatFails();
    void timerOfZeroStandsStill();

private:
    std::optional<PlainDesk> m_desk;
};

void TestTimer::guardedCallsAreDeadAfterTheUnload()
{
    int calls = 0;
    const auto early = One::Shared().Guarded([&] { ++calls; });
    early();
    QCOMPARE(calls, 0);
    Two::Shared().Show();
    One::Shared().Load();
    const auto call = One::Shared().Guarded([&] { ++calls; });
    call();
    QCOMPARE(calls, 1);
    One::Shared().Unload();
    call();
    QCOMPARE(calls, 1);
    One::Release();
    call();
    QCOMPARE(calls, 1);
}

void TestTimer::guardedCallsOfTheLastWindowAreDeadAfterLoadingAnew()
{
    int calls = 0;
    Two::Shared().Show();
    One::Shared().Load();
    const auto call = One::Shared().Guarded([&] { ++calls; });
    One::Shared().Unload();
    One::Shared().Load();
    call();
    QCOMPARE(calls, 0);
}

void TestTimer::timerTicksUntilTheUnload()
{
    Two::Shared().Show();
    One &one = One::Shared();
    int ticks = 0;
    one.timer_Timer = [&] { ++ticks; };
    one.Load();
    one.timer->SetInterval(100);
    m_desk->time.Run(350ms);
    QCOMPARE(ticks, 3);
    one.timer->SetInterval(100); // begins anew
    m_desk->time.Run(90ms);
    QCOMPARE(ticks, 3);
    m_desk->time.Run(10ms);
    QCOMPARE(ticks, 4);
    one.Unload();
    QVERIFY(m_desk->time.RunUntilIdle(10s)); // it does not go on ticking unheard
    QCOMPARE(ticks, 4);
}

void TestTimer::timerLeavesOutTicksWhileItsHandlerRuns()
{
    One &one = One::Shared();
    int ticks = 0;
    bool done = false;
    one.timer_Timer = [&] {
        if (++ticks == 1)
            WaitUntil(done);
    };
    one.Show();
    one.timer->SetInterval(100);
    const auto finish = m_desk->time.After(1050ms, [&] { done = true; });
    m_desk->time.Run(1050ms);
    QVERIFY(done);
    QCOMPARE(ticks, 1);
    m_desk->time.Run(100ms);
    QCOMPARE(ticks, 2);
}

// Beyond a screen there is no door that catches it.
void TestTimer::timerGoesOnAfterAHandlerThatFails()
{
    int ticks = 0;
    platform::Timer timer([&] {
        if (++ticks == 1)
            throw platform::Error(platform::kFileNotFound);
    });
    timer.SetInterval(100);
    QCOMPARE(support::NumberRaised([&] { m_desk->time.Run(100ms); }), 53);
    QCOMPARE(ticks, 1);
    m_desk->time.Run(200ms);
    QCOMPARE(ticks, 3);
}

void TestTimer::timerHandlerMayLoadItsScreenAnew()
{
    Two::Shared().Show();
    One &one = One::Shared();
    int ticks = 0;
    one.timer_Timer = [&] {
        ++ticks;
        one.Unload();
        one.Load(); // puts a new timer in the place of the one that ticks
    };
    one.Load();
    one.timer->SetInterval(100);
    m_desk->time.Run(1s);
    QCOMPARE(ticks, 1);
}

void TestTimer::timerOfZeroStandsStill()
{
    One &one = One::Shared();
    int ticks = 0;
    one.timer_Timer = [&] { ++ticks; };
    one.Load();
    m_desk->time.Run(1s);
    one.timer->SetInterval(100);
    one.timer->SetInterval(0);
    m_desk->time.Run(1s);
    one.timer->SetInterval(-5);
    m_desk->time.Run(1s);
    QCOMPARE(ticks, 0);
}

QTEST_MAIN(TestTimer)
#include "TestTimer.moc"
