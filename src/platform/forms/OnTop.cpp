#include "platform/forms/OnTop.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

std::vector<const OnTop *> g_all;

} // namespace

OnTop::OnTop()
{
    g_all.push_back(this);
}

OnTop::~OnTop()
{
    std::erase(g_all, this);
}

std::vector<QRect> OnTop::Areas()
{
    std::vector<QRect> areas;
    for (const OnTop *each : g_all) {
        if (const QRect hidden = each->Hidden(); !hidden.isEmpty())
            areas.push_back(hidden);
    }
    return areas;
}

QRect FreePlace(const QRect &wanted, const std::vector<QRect> &taken, const QRect &space)
{
    const QSize size = wanted.size();
    const auto within = [](int least, int value, int length, int room) {
        return std::max(least, std::min(value, least + room - length));
    };
    const auto inside = [&](int left, int top) {
        return QRect(QPoint(within(space.left(), left, size.width(), space.width()),
                            within(space.top(), top, size.height(), space.height())),
                     size);
    };
    std::vector<int> lefts{ wanted.left(), space.left(), space.right() };
    std::vector<int> tops{ wanted.top(), space.top(), space.bottom() };
    for (const QRect &area : taken) {
        lefts.insert(lefts.end(), { area.left() - size.width(), area.right() + 1 });
        tops.insert(tops.end(), { area.top() - size.height(), area.bottom() + 1 });
    }
    // First what is covered, then how far it is.
    const auto harm = [&](const QRect &place) {
        qint64 covered = 0;
        for (const QRect &area : taken) {
            const QRect common = place & area;
            covered += qint64(common.width()) * common.height();
        }
        const QPoint way = place.topLeft() - wanted.topLeft();
        return std::pair(covered, qint64(way.x()) * way.x() + qint64(way.y()) * way.y());
    };
    QRect best = inside(wanted.left(), wanted.top());
    for (const int left : lefts) {
        for (const int top : tops) {
            if (const QRect place = inside(left, top); harm(place) < harm(best))
                best = place;
        }
    }
    return best;
}

} // namespace platform
