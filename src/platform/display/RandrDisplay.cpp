#include "platform/display/RandrDisplay.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>

namespace platform {

namespace {

template <class Reply>
using ReplyPointer = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
ReplyPointer<Reply> Owned(Reply *reply)
{
    return { reply, &std::free };
}

} // namespace

RandrDisplay::RandrDisplay() : m_connection(xcb_connect(nullptr, &m_screenNumber))
{
    if (xcb_connection_has_error(m_connection) == 0)
        Read();
}

RandrDisplay::~RandrDisplay()
{
    xcb_disconnect(m_connection);
}

std::vector<DisplayMode> RandrDisplay::Modes() const
{
    std::vector<DisplayMode> modes;
    for (const auto &[id, mode] : m_modes)
        modes.push_back(mode);
    return modes;
}

qint32 RandrDisplay::ChangeTo(const DisplayMode &wanted)
{
    const auto found = std::find_if(m_modes.begin(), m_modes.end(),
                                    [&wanted](const auto &entry) { return entry.second == wanted; });
    if (found == m_modes.end())
        return kDisplayBadMode;
    if (wanted == *m_current)
        return kDisplayChanged;
    const bool grows = wanted.width > m_current->width || wanted.height > m_current->height;
    // The screen has to hold the display before and after.
    if (grows && !SetScreenSize(wanted))
        return kDisplayFailed;
    if (!SetMode(found->first))
        return kDisplayFailed;
    return grows || SetScreenSize(wanted) ? kDisplayChanged : kDisplayFailed;
}

void RandrDisplay::Read()
{
    const xcb_setup_t *setup = xcb_get_setup(m_connection);
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(setup);
    for (int number = m_screenNumber; number > 0 && screens.rem > 1; --number)
        xcb_screen_next(&screens);
    if (screens.rem == 0)
        return;
    m_screen = screens.data;
    m_pixels = QSize(m_screen->width_in_pixels, m_screen->height_in_pixels);
    for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem > 0; xcb_format_next(&format))
        if (format.data->depth == m_screen->root_depth)
            m_bitsPerPixel = format.data->bits_per_pixel;
    const xcb_query_extension_reply_t *randr = xcb_get_extension_data(m_connection, &xcb_randr_id);
    if (randr && randr->present)
        ReadModes();
}

void RandrDisplay::ReadModes()
{
    const auto resources = Owned(xcb_randr_get_screen_resources_current_reply(
        m_connection, xcb_randr_get_screen_resources_current(m_connection, m_screen->root), nullptr));
    if (!resources)
        return;
    m_timestamp = resources->config_timestamp;
    const auto output = PrimaryOutput(*resources);
    if (!output)
        return;
    m_output = *output;
    const auto about = Owned(xcb_randr_get_output_info_reply(
        m_connection, xcb_randr_get_output_info(m_connection, m_output, m_timestamp), nullptr));
    if (!about || about->crtc == 0)
        return;
    m_crtc = about->crtc;
    const auto controller = Owned(xcb_randr_get_crtc_info_reply(
        m_connection, xcb_randr_get_crtc_info(m_connection, m_crtc, m_timestamp), nullptr));
    if (!controller)
        return;
    m_pixels = QSize(controller->width, controller->height);
    m_rotation = controller->rotation;
    const bool isOnItsSide =
        (m_rotation & (XCB_RANDR_ROTATION_ROTATE_90 | XCB_RANDR_ROTATION_ROTATE_270)) != 0;
    const xcb_randr_mode_t *ids = xcb_randr_get_output_info_modes(about.get());
    const xcb_randr_mode_info_t *modes = xcb_randr_get_screen_resources_current_modes(resources.get());
    for (int index = 0; index < xcb_randr_get_output_info_modes_length(about.get()); ++index) {
        for (int known = 0; known < resources->num_modes; ++known) {
            if (modes[known].id != ids[index])
                continue;
            const DisplayMode mode = Described(modes[known], isOnItsSide);
            m_modes.emplace_back(ids[index], mode);
            if (ids[index] == controller->mode)
                m_current = mode;
        }
    }
}

std::optional<xcb_randr_output_t>
RandrDisplay::PrimaryOutput(const xcb_randr_get_screen_resources_current_reply_t &resources) const
{
    const auto primary = Owned(xcb_randr_get_output_primary_reply(
        m_connection, xcb_randr_get_output_primary(m_connection, m_screen->root), nullptr));
    if (primary && primary->output != 0)
        return primary->output;
    // None is named: the first one that shows something.
    const xcb_randr_output_t *outputs = xcb_randr_get_screen_resources_current_outputs(&resources);
    for (int index = 0; index < resources.num_outputs; ++index) {
        const auto about = Owned(xcb_randr_get_output_info_reply(
            m_connection, xcb_randr_get_output_info(m_connection, outputs[index], resources.config_timestamp),
            nullptr));
        if (about && about->crtc != 0)
            return outputs[index];
    }
    return std::nullopt;
}

DisplayMode RandrDisplay::Described(const xcb_randr_mode_info_t &info, bool isOnItsSide) const
{
    DisplayMode mode;
    mode.bitsPerPixel = m_bitsPerPixel;
    mode.width = isOnItsSide ? info.height : info.width;
    mode.height = isOnItsSide ? info.width : info.height;
    const double dots = static_cast<double>(info.htotal) * info.vtotal;
    mode.frequency = dots > 0 ? static_cast<qint32>(std::lround(info.dot_clock / dots)) : 0;
    return mode;
}

bool RandrDisplay::SetScreenSize(const DisplayMode &mode)
{
    constexpr double kMillimetresPerDot = 25.4 / 96;
    const auto request = xcb_randr_set_screen_size_checked(
        m_connection, m_screen->root, static_cast<quint16>(mode.width), static_cast<quint16>(mode.height),
        static_cast<quint32>(mode.width * kMillimetresPerDot),
        static_cast<quint32>(mode.height * kMillimetresPerDot));
    return !Owned(xcb_request_check(m_connection, request));
}

bool RandrDisplay::SetMode(xcb_randr_mode_t mode)
{
    const auto reply = Owned(xcb_randr_set_crtc_config_reply(
        m_connection,
        xcb_randr_set_crtc_config(m_connection, m_crtc, XCB_CURRENT_TIME, m_timestamp, 0, 0, mode, m_rotation,
                                  1, &m_output),
        nullptr));
    return reply && reply->status == XCB_RANDR_SET_CONFIG_SUCCESS;
}

} // namespace platform
