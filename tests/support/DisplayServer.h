#pragma once

#include <QSize>

#include <cstdlib>

#include <xcb/randr.h>
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

// Lets the desktop reach beyond the display, as another display beside it does. False when it cannot.
inline bool StretchDesktop(const QSize &pixels)
{
    xcb_connection_t *connection = xcb_connect(nullptr, nullptr);
    bool isDone = false;
    if (xcb_connection_has_error(connection) == 0) {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        xcb_generic_error_t *error = xcb_request_check(
            connection, xcb_randr_set_screen_size_checked(
                            connection, root, static_cast<uint16_t>(pixels.width()),
                            static_cast<uint16_t>(pixels.height()), static_cast<uint32_t>(pixels.width()),
                            static_cast<uint32_t>(pixels.height())));
        isDone = error == nullptr;
        std::free(error);
    }
    xcb_disconnect(connection);
    return isDone;
}

} // namespace support
