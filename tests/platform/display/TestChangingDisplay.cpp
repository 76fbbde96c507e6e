#include "platform/display/Scale.h"
#include "platform/display/XcbDisplay.h"
#include "shell/ScreenInfo.h"
#include "support/Desk.h"
#include "support/DisplayServer.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

using namespace platform;
using support::PixelsOfDisplay;
using tumblewick::ScreenInfo;

namespace {

// The desk with the real display in place of the fake one.
struct RealDisplayDesk : support::Desk {
    RealDisplayDesk() { InstallServices(&real); }
    XcbDisplay screen;
    Services real{ time, time, chance, process, files, boxes, help, agent, screen, desktop, media, drives };
};

int IndexOf(const ScreenInfo &info, const QString &size)
{
    for (int index = 0; index < info.DisplayModesCount(); ++index)
        if (info.DisplayModesText(index).startsWith(size + " pixels,"))
            return index;
    return -1;
}

} // namespace

// The real display where its mode can be changed; 1024 x 768 in 32 bits at first.
class TestChangingDisplay : public QObject {
    Q_OBJECT

private slots:
    void cleanup()
    {
        // Each begins on the display as it was.
        XcbDisplay display;
        QCOMPARE(display.ChangeMode({ 32, 1024, 768, 0, 60 }), qint32(kDisplayChanged));
        QTRY_COMPARE(QGuiApplication::primaryScreen()->size(), QSize(1024, 768));
    }

    void theModesAreThoseOfTheDisplay()
    {
        const XcbDisplay display;
        const DisplayMode running{ 32, 1024, 768, 0, 60 };
        QVERIFY(display.Current() == running);
        QVERIFY(display.DotsPerInchX() > 0 && display.DotsPerInchY() > 0);
        std::vector<DisplayMode> modes;
        while (const auto mode = display.Mode(int(modes.size())))
            modes.push_back(*mode);
        QCOMPARE(std::count(modes.begin(), modes.end(), running), 1);
        QCOMPARE(std::count(modes.begin(), modes.end(), DisplayMode{ 32, 640, 480, 0, 60 }), 1);
        QCOMPARE(std::count(modes.begin(), modes.end(), DisplayMode{ 32, 1920, 1080, 0, 60 }), 1);
        QVERIFY(!display.Mode(-1));
    }

    void theModeIsChanged_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("smaller") << QSize(800, 600);
        QTest::newRow("larger") << QSize(1920, 1080);
        QTest::newRow("narrower and higher than it is wide now") << QSize(1280, 1024);
        QTest::newRow("the one that runs") << QSize(1024, 768);
    }
    void theModeIsChanged()
    {
        QFETCH(QSize, size);
        const DisplayMode wanted{ 32, size.width(), size.height(), 0, 60 };
        XcbDisplay display;
        QCOMPARE(display.ChangeMode(wanted), qint32(kDisplayChanged));
        QCOMPARE(PixelsOfDisplay(), size);
        QVERIFY(display.Current() == wanted);
        // The program itself is told too.
        QTRY_COMPARE(QGuiApplication::primaryScreen()->size(), size);
    }

    void aModeThatTheDisplayLacksIsRefused_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("frequency");
        QTest::newRow("size") << 32 << QSize(801, 601) << 60;
        QTest::newRow("depth") << 16 << QSize(800, 600) << 60;
        QTest::newRow("frequency") << 32 << QSize(800, 600) << 75;
    }
    void aModeThatTheDisplayLacksIsRefused()
    {
        QFETCH(int, depth);
        QFETCH(QSize, size);
        QFETCH(int, frequency);
        XcbDisplay display;
        QCOMPARE(display.ChangeMode({ depth, size.width(), size.height(), 0, frequency }),
                 qint32(kDisplayBadMode));
        QCOMPARE(PixelsOfDisplay(), QSize(1024, 768));
    }

    void theChoiceGoesByTheDisplayAndLeavesNothing_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QByteArray>("given"); // by the user
        QTest::addColumn<QByteArray>("scale");
        QTest::newRow("as it is") << QSize(1024, 768) << QByteArray() << QByteArray();
        QTest::newRow("scaled") << QSize(1920, 1080) << QByteArray() << QByteArray("1.25");
        QTest::newRow("scaled by the user") << QSize(1920, 1080) << QByteArray("2") << QByteArray("2");
    }
    void theChoiceGoesByTheDisplayAndLeavesNothing()
    {
        QFETCH(QSize, size);
        QFETCH(QByteArray, given);
        QCOMPARE(XcbDisplay().ChangeMode({ 32, size.width(), size.height(), 0, 60 }),
                 qint32(kDisplayChanged));
        if (!given.isEmpty())
            qputenv("QT_SCALE_FACTOR", given);
        {
            const DisplayChoice choice;
            QVERIFY(choice.HasDisplay());
            QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("xcb"));
            QTEST(qgetenv("QT_SCALE_FACTOR"), "scale");
        }
        QVERIFY(!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
        QCOMPARE(qgetenv("QT_SCALE_FACTOR"), given);
        qunsetenv("QT_SCALE_FACTOR");
    }

    void theScaleIsChosenTooWhereTheUserHasAskedForX()
    {
        QCOMPARE(XcbDisplay().ChangeMode({ 32, 1920, 1080, 0, 60 }), qint32(kDisplayChanged));
        qputenv("QT_QPA_PLATFORM", "xcb");
        {
            const DisplayChoice choice;
            QCOMPARE(qgetenv("QT_SCALE_FACTOR"), QByteArray("1.25"));
        }
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("xcb"));
        qunsetenv("QT_QPA_PLATFORM");
    }

    void whatLiesBesideTheDisplayDoesNotCount_data()
    {
        QTest::addColumn<QSize>("display");
        QTest::addColumn<QByteArray>("scale");
        QTest::newRow("small beside a large one") << QSize(1024, 768) << QByteArray();
        QTest::newRow("scaled for itself") << QSize(1920, 1080) << QByteArray("1.25");
    }
    void whatLiesBesideTheDisplayDoesNotCount()
    {
        QFETCH(QSize, display);
        QCOMPARE(XcbDisplay().ChangeMode({ 32, display.width(), display.height(), 0, 60 }),
                 qint32(kDisplayChanged));
        QVERIFY(support::StretchDesktop(QSize(display.width() + 2560, 1440)));
        QCOMPARE(PixelsOfDisplay().height(), 1440);
        {
            const DisplayChoice choice;
            QTEST(qgetenv("QT_SCALE_FACTOR"), "scale");
        }
        QVERIFY(support::StretchDesktop(display));
    }

    void theProgramsOwnClassChangesIt()
    {
        RealDisplayDesk desk;
        ScreenInfo info;
        QCOMPARE(info.DisplayModesText(info.CurrentDisplayMode()),
                 QString("1024 by 768 pixels,  True Color, 60Hz"));
        QCOMPARE(info.WidthInPixels(), 1024);
        const int small = IndexOf(info, "800 by 600");
        QVERIFY(small >= 0);
        QCOMPARE(info.SetDisplayMode(small), qint32(kDisplayChanged));
        QCOMPARE(PixelsOfDisplay(), QSize(800, 600));
        // What was taken stock of stays; a new one finds the new mode.
        QCOMPARE(info.WidthInPixels(), 1024);
        const ScreenInfo anew;
        QCOMPARE(anew.WidthInPixels(), 800);
        QCOMPARE(anew.DisplayModesText(anew.CurrentDisplayMode()),
                 QString("800 by 600 pixels,  True Color, 60Hz"));
        const int large = IndexOf(info, "1920 by 1080");
        QVERIFY(large >= 0);
        QCOMPARE(info.ChangeDisplayMode(large), qint32(kDisplayChanged)); // and no box
        QCOMPARE(PixelsOfDisplay(), QSize(1920, 1080));
        QVERIFY(desk.boxes.AllAnswered());
    }
};

QTEST_MAIN(TestChangingDisplay)
#include "TestChangingDisplay.moc"
