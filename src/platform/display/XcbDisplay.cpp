#include "platform/display/XcbDisplay.h"

#include "platform/display/RandrDisplay.h"
#include "platform/files/TextCode.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace platform {

namespace {

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
