#include "platform/agent/Ticker.h"

#include <QTest>

#include <vector>

using platform::QtTicker;

// The real ticker, by which everything that moves is drawn.
class TestTicker : public QObject {
    Q_OBJECT
private slots:
    void callsComeAtTheirRateAndStop()
    {
        QtTicker ticker;
        std::vector<double> calls;
        ticker.tick = [&] { calls.push_back(ticker.Now()); };
        const double start = ticker.Now();
        ticker.SetRate(50);
        QVERIFY(calls.empty());
        QTRY_VERIFY(calls.size() >= 10);
        // None comes too early; how late they come is the machine's affair.
        QVERIFY2(calls.front() - start > 0.015, qPrintable(QString::number(calls.front() - start)));
        QVERIFY2(calls.back() - start > 0.18, qPrintable(QString::number(calls.back() - start)));
        ticker.SetRate(0);
        const auto before = calls.size();
        QTest::qSleep(60);
        QCoreApplication::processEvents();
        QCOMPARE(calls.size(), before);
    }

    // Whoever asks at every picture for what he has would never get the first one.
    void askingForTheSameRateDoesNotBeginAnew()
    {
        QtTicker ticker;
        int calls = 0;
        ticker.tick = [&] { ++calls; };
        ticker.SetRate(10);
        for (int time = 0; time < 100 && calls == 0; ++time) {
            QTest::qSleep(10);
            ticker.SetRate(10);
            QCoreApplication::processEvents();
        }
        QVERIFY(calls > 0);
    }

    void aTickMayStopIt()
    {
        QtTicker ticker;
        int calls = 0;
        ticker.tick = [&] {
            ++calls;
            ticker.SetRate(0);
        };
        ticker.SetRate(100);
        QTRY_COMPARE(calls, 1);
        QTest::qSleep(50);
        QCoreApplication::processEvents();
        QCOMPARE(calls, 1);
        ticker.SetRate(100);
        QTRY_COMPARE(calls, 2);
    }
};

QTEST_GUILESS_MAIN(TestTicker)
#include "TestTicker.moc"
