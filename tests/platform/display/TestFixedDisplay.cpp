#include "platform/display/XcbDisplay.h"
#include "shell/ScreenInfo.h"
#include "support/Desk.h"
#include "support/DisplayServer.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QTest>

#include <cstring>

using namespace platform;
using support::PixelsOfDisplay;
using tumblewick::ScreenInfo;

// The real display where it has one mode; its figures come with the test's name, as TestFixedDisplay WIDTH
// HEIGHT DEPTH FREQUENCY.
class TestFixedDisplay : public QObject {
    Q_OBJECT

public:
    explicit TestFixedDisplay(const DisplayMode &mode) : m_mode(mode) {}

private slots:
    void theRunningModeIsTheOnlyOne()
    {
        const XcbDisplay display;
        const auto current = display.Current();
        QVERIFY(current);
        QCOMPARE(QSize(current->width, current->height), QSize(m_mode.width, m_mode.height));
        QCOMPARE(current->bitsPerPixel, m_mode.bitsPerPixel);
        QCOMPARE(current->frequency, m_mode.frequency);
        QVERIFY(display.Mode(0) == m_mode);
        QVERIFY(!display.Mode(1));
    }

    void theProgramFindsIt()
    {
        support::Desk desk;
        XcbDisplay display;
        Services real{ desk.time, desk.time,  desk.chance, desk.process, desk.files, desk.boxes,
                       desk.help, desk.agent, display,     desk.desktop, desk.media, desk.drives };
        InstallServices(&real);
        const ScreenInfo info;
        QCOMPARE(int(info.CurrentDisplayMode()), 0);
        QVERIFY(info.DisplayModesText(0).startsWith(
            QString("%1 by %2 pixels,  ").arg(m_mode.width).arg(m_mode.height)));
        QVERIFY(info.TwipsPerPixelX() > 0 && info.TwipsPerPixelY() > 0);
    }

    void changingToItIsNothingNewAndToAnotherIsRefused()
    {
        XcbDisplay display;
        QCOMPARE(display.ChangeMode(m_mode), qint32(kDisplayChanged));
        DisplayMode other = m_mode;
        other.width -= 200;
        QCOMPARE(display.ChangeMode(other), qint32(kDisplayBadMode));
        QCOMPARE(PixelsOfDisplay(), QSize(m_mode.width, m_mode.height));
    }

    void theFontsAreThoseThatAreInstalled()
    {
        const XcbDisplay display;
        QStringList faces;
        display.EnumerateFonts([&faces](const LogicalFont &font, qint32 type) {
            faces << QString::fromLatin1(font.faceName.data(), qsizetype(std::strlen(font.faceName.data())));
            return type == 1 || type == 4 ? int(faces.size()) : 0;
        });
        QCOMPARE(faces.size(), QFontDatabase::families().size());
        QVERIFY(faces.contains("Comic Neue"));
        int taken = 0;
        display.EnumerateFonts([&taken](const LogicalFont &, qint32) {
            ++taken;
            return 0;
        });
        QCOMPARE(taken, 1);
    }

private:
    const DisplayMode m_mode;
};

int main(int argc, char *argv[])
{
    if (argc < 5)
        qFatal("TestFixedDisplay WIDTH HEIGHT DEPTH FREQUENCY");
    QGuiApplication application(argc, argv);
    const QStringList given = QCoreApplication::arguments();
    TestFixedDisplay test({ given[3].toInt(), given[1].toInt(), given[2].toInt(), 0, given[4].toInt() });
    return QTest::qExec(&test, given.mid(0, 1) + given.mid(5));
}
#include "TestFixedDisplay.moc"
