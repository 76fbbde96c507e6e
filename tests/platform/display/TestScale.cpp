#include "platform/display/Scale.h"

#include <QtTest>

// How large the game is drawn on displays of many sizes.
class TestScale : public QObject {
    Q_OBJECT

private slots:
    void theScaleLeavesRoomForTheGame_data()
    {
        QTest::addColumn<QSize>("display");
        QTest::addColumn<double>("scale");
        QTest::newRow("small") << QSize(800, 600) << 1.0;
        QTest::newRow("just enough") << QSize(1024, 768) << 1.0;
        QTest::newRow("wide but low") << QSize(1366, 768) << 1.0;
        QTest::newRow("high but narrow") << QSize(1080, 1920) << 1.0;
        QTest::newRow("one quarter more") << QSize(1280, 960) << 1.25;
        QTest::newRow("full") << QSize(1920, 1080) << 1.25;
        QTest::newRow("1440 lines") << QSize(2560, 1440) << 1.75;
        QTest::newRow("four times full") << QSize(3840, 2160) << 2.75;
        QTest::newRow("nothing") << QSize(0, 0) << 1.0;
    }
    void theScaleLeavesRoomForTheGame()
    {
        QFETCH(QSize, display);
        QTEST(platform::ScaleFor(display), "scale");
    }
};

QTEST_APPLESS_MAIN(TestScale)
#include "TestScale.moc"
