#include "platform/display/Scale.h"

#include <QtGlobal>

#include <xcb/xcb.h>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr double kStep = 0.25;
constexpr QSize kLeastUnits(1024, 768);
constexpr char kWindowSystem[] = "QT_QPA_PLATFORM";
constexpr char kScale[] = "QT_SCALE_FACTOR";

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

DisplayChoice::DisplayChoice()
{
    if (qEnvironmentVariableIsSet(kWindowSystem))
        return;
    const QSize pixels = DisplayPixels();
    m_hasDisplay = !pixels.isEmpty();
    if (!m_hasDisplay)
        return;
    // Characters stand at places of their own choosing, which only the X window system allows.
    Set(kWindowSystem, "xcb");
    if (!qEnvironmentVariableIsSet(kScale) && ScaleFor(pixels) > 1.0)
        Set(kScale, QByteArray::number(ScaleFor(pixels)));
}

DisplayChoice::~DisplayChoice()
{
    for (const char *variable : m_set)
        qunsetenv(variable);
}

void DisplayChoice::Set(const char *variable, const QByteArray &value)
{
    qputenv(variable, value);
    m_set.push_back(variable);
}

} // namespace platform
