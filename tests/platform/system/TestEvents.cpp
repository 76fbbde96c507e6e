#include "platform/system/QtEvents.h"
#include "support/FakeTime.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QStringList>
#include <QTest>

#include <ctime>

using namespace std::chrono_literals;

// The event loop, the real one and the one for tests alike.
class TestEvents : public QObject {
    Q_OBJECT
private slots:
    void init() { m_log.clear(); }

    void postedWorkRunsInOrderWithThePump_data() { BothLoops(); }
    void postedWorkRunsInOrderWithThePump();
    void postWakesAPump_data() { BothLoops(); }
    void postWakesAPump();
    void timedCallsRunWhenTheyAreDue_data() { BothLoops(); }
    void timedCallsRunWhenTheyAreDue();
    void destroyedCallsAreCancelled_data() { BothLoops(); }
    void destroyedCallsAreCancelled();
    void callMayDestroyItselfOrBeginAnew_data() { BothLoops(); }
    void callMayDestroyItselfOrBeginAnew();
    void callsComeThroughInNestedPumps_data() { BothLoops(); }
    void callsComeThroughInNestedPumps();
    void pumpingWhatIsPendingReturnsAtOnce_data() { BothLoops(); }
    void pumpingWhatIsPendingReturnsAtOnce();

    void pumpDeliversWhatStandsBehindItsOwnHandler_data() { BothLoops(); }
    void pumpDeliversWhatStandsBehindItsOwnHandler();
    void realPumpDeliversWhatOthersHavePosted();
    void realPumpReturnsAfterAHandlerWithALoopOfItsOwn();
    void realPumpBlocksWithoutWorking();
    void realCallIsNeverEarly();

private:
    static void BothLoops()
    {
        QTest::addColumn<bool>("real");
        QTest::newRow("real") << true;
        QTest::newRow("for tests") << false;
    }
    platform::Events &Loop()
    {
        QFETCH(bool, real);
        m_fake = std::make_unique<support::FakeTime>();
        return real ? static_cast<platform::Events &>(m_real) : *m_fake;
    }

    platform::QtEvents m_real;
    std::unique_ptr<support::FakeTime> m_fake;
    QStringList m_log;
};

void TestEvents::postedWorkRunsInOrderWithThePump()
{
    platform::Events &events = Loop();
    events.Post([&] { m_log << "first"; });
    events.Post([&] { m_log << "second"; });
    QCOMPARE(m_log, QStringList());
    events.Pump();
    QCOMPARE(m_log, QStringList({ "first", "second" }));
}

void TestEvents::postWakesAPump()
{
    platform::Events &events = Loop();
    bool done = false;
    events.Post([&] { events.Post([&] { done = true; }); });
    while (!done)
        events.Pump();
    const auto call = events.After(5ms, [&] { events.Post([&] { m_log << "posted from a call"; }); });
    while (m_log.isEmpty())
        events.Pump();
    QCOMPARE(m_log.size(), 1);
}

void TestEvents::timedCallsRunWhenTheyAreDue()
{
    platform::Events &events = Loop();
    const auto late = events.After(40ms, [&] { m_log << "late"; });
    const auto soon = events.After(10ms, [&] { m_log << "soon"; });
    const auto past = events.After(-5ms, [&] { m_log << "past"; });
    while (m_log.size() < 3)
        events.Pump();
    QCOMPARE(m_log, QStringList({ "past", "soon", "late" }));
}

void TestEvents::destroyedCallsAreCancelled()
{
    platform::Events &events = Loop();
    auto call = events.After(5ms, [&] { m_log << "cancelled"; });
    call.reset();
    auto other = events.After(5ms, [&] { m_log << "replaced"; });
    other = events.After(10ms, [&] { m_log << "in its place"; });
    while (m_log.isEmpty())
        events.Pump();
    QCOMPARE(m_log, QStringList{ "in its place" });
}

void TestEvents::callMayDestroyItselfOrBeginAnew()
{
    platform::Events &events = Loop();
    std::unique_ptr<platform::PendingCall> call;
    std::function<void()> again;
    const QString text = "a text that has to outlive the call";
    again = [&, text] {
        call.reset();
        m_log << text;
        if (m_log.size() < 3)
            call = events.After(1ms, again);
    };
    call = events.After(1ms, again);
    while (m_log.size() < 3)
        events.Pump();
    QCOMPARE(m_log, QStringList({ text, text, text }));
    QVERIFY(!call);
}

void TestEvents::callsComeThroughInNestedPumps()
{
    platform::Events &events = Loop();
    bool done = false;
    std::unique_ptr<platform::PendingCall> inner;
    const auto outer = events.After(1ms, [&] {
        inner = events.After(1ms, [&] { done = true; });
        while (!done)
            events.Pump();
        m_log << "outer ends";
    });
    while (m_log.isEmpty())
        events.Pump();
    QVERIFY(done);
}

void TestEvents::pumpingWhatIsPendingReturnsAtOnce()
{
    platform::Events &events = Loop();
    const auto call = events.After(1h, [&] { m_log << "in an hour"; });
    events.Post([&] { m_log << "posted"; });
    events.PumpPending();
    events.PumpPending();
    QCOMPARE(m_log, QStringList{ "posted" });
}

void TestEvents::pumpDeliversWhatStandsBehindItsOwnHandler()
{
    platform::Events &events = Loop();
    bool done = false;
    // Twice, since the first wait must leave nothing behind that spoils the second.
    for (int round = 0; round < 2; ++round) {
        done = false;
        events.Post([&] {
            while (!done)
                events.Pump();
            m_log << "waited";
        });
        events.Post([&] {
            bool innerDone = false;
            events.Post([&] { innerDone = true; });
            while (!innerDone)
                events.Pump();
            m_log << "waited within";
        });
        events.Post([&] { done = true; });
        while (m_log.size() < 2 * round + 2)
            events.Pump();
    }
    QCOMPARE(m_log, QStringList({ "waited within", "waited", "waited within", "waited" }));
}

void TestEvents::realPumpDeliversWhatOthersHavePosted()
{
    QObject receiver;
    bool done = false;
    const auto waits = [&] {
        while (!done)
            m_real.Pump();
        m_log << "waited";
        QCoreApplication::exit();
    };
    QMetaObject::invokeMethod(&receiver, waits, Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        &receiver, [&] { done = true; }, Qt::QueuedConnection);
    QCoreApplication::exec();
    QCOMPARE(m_log, QStringList{ "waited" });
}

void TestEvents::realPumpReturnsAfterAHandlerWithALoopOfItsOwn()
{
    const auto alarm = m_real.After(5s, [&] { m_log << "nothing else woke it"; });
    bool done = false;
    m_real.Pump(); // so that the next one may block
    m_real.Post([&] {
        QEventLoop box;
        m_real.Post([&] { box.quit(); });
        box.exec();
        done = true;
    });
    while (!done)
        m_real.Pump();
    QCOMPARE(m_log, QStringList());
}

void TestEvents::realPumpBlocksWithoutWorking()
{
    bool done = false;
    const auto call = m_real.After(300ms, [&] { done = true; });
    const std::clock_t before = std::clock();
    int passes = 0;
    while (!done) {
        m_real.Pump();
        ++passes;
    }
    const double worked = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    QVERIFY2(passes < 20, qPrintable(QString::number(passes)));
    QVERIFY2(worked < 0.1, qPrintable(QString::number(worked)));
}

void TestEvents::realCallIsNeverEarly()
{
    for (const auto delay : { 1ms, 17ms, 50ms }) {
        QElapsedTimer clock;
        clock.start();
        bool done = false;
        const auto call = m_real.After(delay, [&] { done = true; });
        while (!done)
            m_real.Pump();
        const auto taken = std::chrono::nanoseconds(clock.nsecsElapsed());
        QVERIFY2(taken >= delay - 1ms, qPrintable(QString::number(taken.count())));
    }
}

QTEST_GUILESS_MAIN(TestEvents)
#include "TestEvents.moc"
