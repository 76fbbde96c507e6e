#pragma once

#include <QSize>

#include <xcb/xcb.h>

namespace support {

// The pixels of the X display as a program finds them that starts just now; not by way of what is tested.
inline QSize PixelsOfDisplay()
{
    int number = 0;
    xcb_connection_t *connection = xcb_connect(nullptr, &number);
    QSize pixels;
    if (xcb_connection_has_error(connection) == 0) {
        const xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
        pixels = QSize(screen->width_in_pixels, screen->height_in_pixels);
    }
    xcb_disconnect(connection);
    return pixels;
}

} // namespace support
