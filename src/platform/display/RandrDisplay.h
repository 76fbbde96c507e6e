#pragma once

#include "platform/display/Display.h"

#include <QSize>

#include <optional>
#include <utility>
#include <vector>

#include <xcb/randr.h>
#include <xcb/xcb.h>

namespace platform {

// The primary display of the X desktop as it is at this moment, told by the window system and its RandR
// extension over a connection of its own. Needs no application object. No error is raised.
class RandrDisplay {
public:
    RandrDisplay();
    ~RandrDisplay();
    RandrDisplay(const RandrDisplay &) = delete;
    RandrDisplay &operator=(const RandrDisplay &) = delete;

    // The pixels that it shows, where it is not told apart those of the whole desktop; empty when there is no
    // display.
    QSize Pixels() const { return m_pixels; }

    // Whether it tells its modes.
    bool TellsModes() const { return m_current.has_value(); }
    // The mode that runs. Only for one that tells its modes.
    const DisplayMode &Current() const { return *m_current; }
    // All that it offers, none for one that does not tell.
    std::vector<DisplayMode> Modes() const;
    // Changes to one of the modes, at once. A DisplayChange. Only for one that tells its modes; what this
    // object tells stays as it was.
    qint32 ChangeTo(const DisplayMode &wanted);

private:
    void Read();
    void ReadModes();
    std::optional<xcb_randr_output_t>
    PrimaryOutput(const xcb_randr_get_screen_resources_current_reply_t &resources) const;
    DisplayMode Described(const xcb_randr_mode_info_t &info, bool isOnItsSide) const;
    bool SetScreenSize(const DisplayMode &mode);
    bool SetMode(xcb_randr_mode_t mode);

    int m_screenNumber = 0;
    xcb_connection_t *const m_connection;
    xcb_screen_t *m_screen = nullptr;
    xcb_timestamp_t m_timestamp = 0;
    xcb_randr_output_t m_output = 0;
    xcb_randr_crtc_t m_crtc = 0;
    quint16 m_rotation = XCB_RANDR_ROTATION_ROTATE_0;
    qint32 m_bitsPerPixel = 0;
    QSize m_pixels;
    std::vector<std::pair<xcb_randr_mode_t, DisplayMode>> m_modes;
    std::optional<DisplayMode> m_current;
};

} // namespace platform
