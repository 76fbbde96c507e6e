#include "platform/display/XcbDisplay.h"

#include "platform/files/TextCode.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

#include <xcb/randr.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>

namespace platform {

bool operator==(const DisplayMode &one, const DisplayMode &other)
{
    return one.bitsPerPixel == other.bitsPerPixel && one.width == other.width && one.height == other.height &&
           one.flags == other.flags && one.frequency == other.frequency;
}

namespace {

template <class Reply>
using ReplyPointer = std::unique_ptr<Reply, decltype(&std::free)>;

template <class Reply>
ReplyPointer<Reply> Owned(Reply *reply)
{
    return { reply, &std::free };
}

// The primary display as RandR tells of it.
class RandrDisplay {
public:
    RandrDisplay() : m_connection(xcb_connect(nullptr, &m_screenNumber))
    {
        if (xcb_connection_has_error(m_connection) == 0)
            Read();
    }
    ~RandrDisplay() { xcb_disconnect(m_connection); }
    RandrDisplay(const RandrDisplay &) = delete;
    RandrDisplay &operator=(const RandrDisplay &) = delete;

    // Whether there is a display and it tells its modes.
    bool TellsModes() const { return m_current.has_value(); }
    const DisplayMode &Current() const { return *m_current; }

    std::vector<DisplayMode> Modes() const
    {
        std::vector<DisplayMode> modes;
        for (const auto &[id, mode] : m_modes)
            modes.push_back(mode);
        return modes;
    }

    qint32 ChangeTo(const DisplayMode &wanted)
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

private:
    void Read()
    {
        const xcb_setup_t *setup = xcb_get_setup(m_connection);
        xcb_screen_iterator_t screens = xcb_setup_roots_iterator(setup);
        for (int number = m_screenNumber; number > 0 && screens.rem > 1; --number)
            xcb_screen_next(&screens);
        if (screens.rem == 0)
            return;
        m_screen = screens.data;
        for (auto format = xcb_setup_pixmap_formats_iterator(setup); format.rem > 0; xcb_format_next(&format))
            if (format.data->depth == m_screen->root_depth)
                m_bitsPerPixel = format.data->bits_per_pixel;
        const xcb_query_extension_reply_t *randr = xcb_get_extension_data(m_connection, &xcb_randr_id);
        if (randr && randr->present)
            ReadModes();
    }

    void ReadModes()
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
    PrimaryOutput(const xcb_randr_get_screen_resources_current_reply_t &resources)
    {
        const auto primary = Owned(xcb_randr_get_output_primary_reply(
            m_connection, xcb_randr_get_output_primary(m_connection, m_screen->root), nullptr));
        if (primary && primary->output != 0)
            return primary->output;
        // None is named: the first one that shows something.
        const xcb_randr_output_t *outputs = xcb_randr_get_screen_resources_current_outputs(&resources);
        for (int index = 0; index < resources.num_outputs; ++index) {
            const auto about = Owned(xcb_randr_get_output_info_reply(
                m_connection,
                xcb_randr_get_output_info(m_connection, outputs[index], resources.config_timestamp),
                nullptr));
            if (about && about->crtc != 0)
                return outputs[index];
        }
        return std::nullopt;
    }

    DisplayMode Described(const xcb_randr_mode_info_t &info, bool isOnItsSide) const
    {
        DisplayMode mode;
        mode.bitsPerPixel = m_bitsPerPixel;
        mode.width = isOnItsSide ? info.height : info.width;
        mode.height = isOnItsSide ? info.width : info.height;
        const double dots = static_cast<double>(info.htotal) * info.vtotal;
        mode.frequency = dots > 0 ? static_cast<qint32>(std::lround(info.dot_clock / dots)) : 0;
        return mode;
    }

    bool SetScreenSize(const DisplayMode &mode)
    {
        constexpr double kMillimetresPerDot = 25.4 / 96;
        const auto request = xcb_randr_set_screen_size_checked(
            m_connection, m_screen->root, static_cast<quint16>(mode.width), static_cast<quint16>(mode.height),
            static_cast<quint32>(mode.width * kMillimetresPerDot),
            static_cast<quint32>(mode.height * kMillimetresPerDot));
        return !Owned(xcb_request_check(m_connection, request));
    }

    bool SetMode(xcb_randr_mode_t mode)
    {
        const auto reply = Owned(xcb_randr_set_crtc_config_reply(
            m_connection,
            xcb_randr_set_crtc_config(m_connection, m_crtc, XCB_CURRENT_TIME, m_timestamp, 0, 0, mode,
                                      m_rotation, 1, &m_output),
            nullptr));
        return reply && reply->status == XCB_RANDR_SET_CONFIG_SUCCESS;
    }

    int m_screenNumber = 0;
    xcb_connection_t *const m_connection;
    xcb_screen_t *m_screen = nullptr;
    xcb_timestamp_t m_timestamp = 0;
    xcb_randr_output_t m_output = 0;
    xcb_randr_crtc_t m_crtc = 0;
    quint16 m_rotation = XCB_RANDR_ROTATION_ROTATE_0;
    qint32 m_bitsPerPixel = 0;
    std::vector<std::pair<xcb_randr_mode_t, DisplayMode>> m_modes;
    std::optional<DisplayMode> m_current;
};

// What Qt knows of the screen, in real pixels.
std::optional<DisplayMode> ModeOfScreen()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return std::nullopt;
    const QSizeF pixels = QSizeF(screen->size()) * screen->devicePixelRatio();
    DisplayMode mode;
    mode.width = qRound(pixels.width());
    mode.height = qRound(pixels.height());
    mode.bitsPerPixel = screen->depth() == 24 ? 32 : screen->depth();
    mode.frequency = qRound(screen->refreshRate());
    return mode;
}

bool IsX()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

LogicalFont Described(const QString &family)
{
    constexpr qint32 kNormalWeight = 400;
    constexpr quint8 kDefaultCharacters = 1;
    LogicalFont font;
    font.height = 16;
    font.weight = kNormalWeight;
    font.charSet = kDefaultCharacters;
    font.pitchAndFamily = QFontDatabase::isFixedPitch(family) ? 1 : 2;
    const QByteArray name = EncodedLine(family);
    std::copy_n(name.begin(), std::min<std::size_t>(name.size(), font.faceName.size() - 1),
                font.faceName.begin());
    return font;
}

} // namespace

std::optional<DisplayMode> XcbDisplay::Current() const
{
    if (IsX()) {
        const RandrDisplay display;
        if (display.TellsModes())
            return display.Current();
    }
    return ModeOfScreen();
}

int XcbDisplay::DotsPerInchX() const
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? qRound(screen->logicalDotsPerInchX()) : 0;
}

int XcbDisplay::DotsPerInchY() const
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? qRound(screen->logicalDotsPerInchY()) : 0;
}

std::optional<DisplayMode> XcbDisplay::Mode(int index) const
{
    if (index == 0) {
        m_modes.clear();
        if (IsX())
            m_modes = RandrDisplay().Modes();
        const auto current = Current();
        if (current && std::find(m_modes.begin(), m_modes.end(), *current) == m_modes.end())
            m_modes.push_back(*current);
    }
    if (index < 0 || index >= static_cast<int>(m_modes.size()))
        return std::nullopt;
    return m_modes[static_cast<std::size_t>(index)];
}

void XcbDisplay::EnumerateFonts(const std::function<int(const LogicalFont &, qint32 type)> &take) const
{
    constexpr qint32 kScalable = 4;
    constexpr qint32 kRaster = 1;
    for (const QString &family : QFontDatabase::families())
        if (take(Described(family), QFontDatabase::isSmoothlyScalable(family) ? kScalable : kRaster) == 0)
            return;
}

qint32 XcbDisplay::ChangeMode(const DisplayMode &mode)
{
    if (IsX()) {
        RandrDisplay display;
        if (display.TellsModes())
            return display.ChangeTo(mode);
    }
    return mode == ModeOfScreen() ? kDisplayChanged : kDisplayBadMode;
}

} // namespace platform
