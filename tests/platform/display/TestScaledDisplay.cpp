#include "platform/display/Scale.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>

#include <xcb/xcb.h>

#include <optional>

namespace {

constexpr char kDesktopScales[] = "QT_SCREEN_SCALE_FACTORS";
const QByteArray kTwice = "screen=2";

// Makes the desktop one of twice as many dots to the inch as usual, by all the ways in which desktops say so.
void CrowdTheDots()
{
    qputenv(kDesktopScales, kTwice);
    const QByteArray resources = "Xft.dpi:\t192\n";
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0)
        qFatal("no display");
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const auto request = xcb_change_property_checked(
        connection, XCB_PROP_MODE_REPLACE, root, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
        static_cast<uint32_t>(resources.size()), resources.constData());
    if (xcb_request_check(connection, request))
        qFatal("the display takes no resources");
    xcb_disconnect(connection);
}

} // namespace

// What the application object makes of the choice, on a display of 3840 x 2160 with many dots to the inch.
class TestScaledDisplay : public QObject {
    Q_OBJECT

private slots:
    void theDesktopAddsNoScaleOfItsOwn()
    {
        const QScreen &screen = *QGuiApplication::primaryScreen();
        QCOMPARE(screen.devicePixelRatio(), 2.75);
        QCOMPARE(screen.size(), QSize(1396, 785));
        QCOMPARE(screen.logicalDotsPerInch(), 96.0);
    }

    void typeThatIsMeasuredInPointsStaysInProportion()
    {
        QFont font;
        font.setPointSize(9);
        QCOMPARE(QFontInfo(font).pixelSize(), 12);
    }

    void otherProgramsFindWhatTheDesktopHadSet()
    {
        QCOMPARE(qgetenv(kDesktopScales), kTwice);
        for (const char *variable :
             { "QT_QPA_PLATFORM", "QT_SCALE_FACTOR", "QT_ENABLE_HIGHDPI_SCALING", "QT_FONT_DPI" })
            QVERIFY2(!qEnvironmentVariableIsSet(variable), variable);
    }
};

int main(int argc, char *argv[])
{
    CrowdTheDots();
    std::optional<platform::DisplayChoice> choice(std::in_place);
    QGuiApplication application(argc, argv);
    choice.reset();
    TestScaledDisplay test;
    return QTest::qExec(&test, argc, argv);
}
#include "TestScaledDisplay.moc"
