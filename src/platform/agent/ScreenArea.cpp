#include "platform/agent/ScreenArea.h"

#include "platform/agent/BalloonPlace.h"

#include <QGuiApplication>
#include <QScreen>

namespace platform {

QRect ScreenAreaAt(const QPoint &point)
{
    std::vector<QRect> areas;
    for (const QScreen *screen : QGuiApplication::screens())
        areas.push_back(screen->availableGeometry());
    return areas.empty() ? QRect(0, 0, 1024, 768) : NearestScreen(point, areas);
}

} // namespace platform
