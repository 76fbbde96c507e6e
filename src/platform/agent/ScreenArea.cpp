#include "platform/agent/ScreenArea.h"

#include "platform/agent/BalloonPlace.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace platform {

QRect ScreenAreaAt(const QPoint &point)
{
    std::vector<QRect> areas;
    for (const QScreen *screen : QGuiApplication::screens())
        areas.push_back(screen->availableGeometry());
    return areas.empty() ? QRect(0, 0, 1024, 768) : NearestScreen(point, areas);
}

QPoint MovedInto(const QRect &area, const QPoint &wanted, const QSize &size)
{
    const int left = std::min(wanted.x(), area.right() + 1 - size.width());
    const int top = std::min(wanted.y(), area.bottom() + 1 - size.height());
    return { std::max(left, area.left()), std::max(top, area.top()) };
}

} // namespace platform
