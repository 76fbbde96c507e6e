#include "platform/display/Scale.h"

#include <QtGlobal>

#include <xcb/xcb.h>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr double kStep = 0.25;
constexpr QSize kLeastUnits(1024, 768);

// The pixels of the X display, empty when it cannot be reached.
QSize DisplayPixels()
{
    int number = 0;
    xcb_connection_t *connection = xcb_connect(nullptr, &number);
    QSize size;
    if (xcb_connection_has_error(connection) == 0) {
        xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
        for (; number > 0 && screens.rem > 1; --number)
            xcb_screen_next(&screens);
        if (screens.rem > 0)
            size = QSize(screens.data->width_in_pixels, screens.data->height_in_pixels);
    }
    xcb_disconnect(connection);
    return size;
}

} // namespace

double ScaleFor(const QSize &display)
{
    const double room = std::min(static_cast<double>(display.width()) / kLeastUnits.width(),
                                 static_cast<double>(display.height()) / kLeastUnits.height());
    return std::max(1.0, std::floor(room / kStep) * kStep);
}

bool PrepareDisplay()
{
    if (qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return true;
    const QSize pixels = DisplayPixels();
    if (pixels.isEmpty())
        return false;
    // Characters stand at places of their own choosing, which only the X window system allows.
    qputenv("QT_QPA_PLATFORM", "xcb");
    if (!qEnvironmentVariableIsSet("QT_SCALE_FACTOR") && ScaleFor(pixels) > 1.0)
        qputenv("QT_SCALE_FACTOR", QByteArray::number(ScaleFor(pixels)));
    return true;
}

} // namespace platform
