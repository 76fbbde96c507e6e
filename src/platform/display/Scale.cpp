#include "platform/display/Scale.h"

#include "platform/display/RandrDisplay.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr double kStep = 0.25;
constexpr QSize kLeastUnits(1024, 768);
constexpr char kWindowSystem[] = "QT_QPA_PLATFORM";
constexpr char kX[] = "xcb";
constexpr char kScale[] = "QT_SCALE_FACTOR";

// Desktops of many dots to the inch have Qt draw larger by one of these, which would come on top.
constexpr char kDesktopScale[] = "QT_ENABLE_HIGHDPI_SCALING";
constexpr char kDesktopScales[] = "QT_SCREEN_SCALE_FACTORS";
// Type is measured in pixels here; what Qt itself measures by the inch goes with it.
constexpr char kDotsPerInch[] = "QT_FONT_DPI";

} // namespace

double ScaleFor(const QSize &display)
{
    const double room = std::min(static_cast<double>(display.width()) / kLeastUnits.width(),
                                 static_cast<double>(display.height()) / kLeastUnits.height());
    return std::max(1.0, std::floor(room / kStep) * kStep);
}

DisplayChoice::DisplayChoice()
{
    const QByteArray given = qgetenv(kWindowSystem);
    if (!given.isEmpty() && given != kX)
        return;
    const QSize pixels = RandrDisplay().Pixels();
    m_hasDisplay = !pixels.isEmpty();
    if (!m_hasDisplay)
        return;
    // Characters stand at places of their own choosing, which only the X window system allows.
    Set(kWindowSystem, kX);
    if (qEnvironmentVariableIsSet(kScale))
        return;
    if (ScaleFor(pixels) > 1.0)
        Set(kScale, QByteArray::number(ScaleFor(pixels)));
    Set(kDesktopScale, "0");
    Set(kDesktopScales, "");
    Set(kDotsPerInch, "96");
}

DisplayChoice::~DisplayChoice()
{
    for (const auto &[variable, before] : m_before) {
        if (before.isNull())
            qunsetenv(variable);
        else
            qputenv(variable, before);
    }
}

void DisplayChoice::Set(const char *variable, const QByteArray &value)
{
    m_before.emplace_back(variable, qgetenv(variable));
    qputenv(variable, value);
}

} // namespace platform
