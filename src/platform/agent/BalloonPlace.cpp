#include "platform/agent/BalloonPlace.h"

#include <algorithm>
#include <cstdlib>

namespace platform {

namespace {

// How near to its ends a bubble may have its tail.
constexpr int kTailRoom = 32;
// How far above or below the mouth a bubble beside a figure may end.
constexpr int kTailReach = 48;

int Between(int least, int wanted, int most)
{
    return std::max(least, std::min(wanted, most));
}

class Places {
public:
    Places(QSize bubble, const BalloonOwner &owner, const QRect &screen)
        : m_size(bubble), m_owner(owner), m_screen(screen)
    {
    }

    // Centred on the mouth, with its lower edge at `bottom`.
    QRect AboveAt(int bottom) const { return At(MiddleX(), bottom - m_size.height()); }
    QRect BelowAt(int top) const { return At(MiddleX(), top); }
    QRect LeftOf(int right) const { return At(right - m_size.width(), MiddleY()); }
    QRect RightOf(int left) const { return At(left, MiddleY()); }

    bool IsGood(const QRect &place) const
    {
        return m_screen.contains(place) && !place.intersects(m_owner.face);
    }
    // How good it is to stand there; a greater reason outweighs all the lesser ones.
    int Worth(const BalloonPlace &place, std::optional<BalloonPlace::Side> kept) const
    {
        const QRect &bubble = place.bubble;
        return 1 + (place.side == kept ? 8 : 0) + (IsFree(bubble, m_owner.others) ? 4 : 0) +
               (IsFree(bubble, m_owner.controls) ? 2 : 0) + (bubble.intersects(m_owner.body) ? 0 : 1);
    }
    // How much of the controls is covered there.
    int Covered(const QRect &place) const
    {
        int area = 0;
        for (const QRect &control : m_owner.controls) {
            const QRect common = place & control;
            area += common.width() * common.height();
        }
        return area;
    }
    // Moved off the controls by as little as need be, so far sideways and so far up or down at the most; as
    // it was if that does not help.
    QRect OffControls(const QRect &place, int sideways, int upOrDown) const
    {
        if (IsFree(place, m_owner.controls))
            return place;
        std::vector<int> lefts{ place.left() };
        std::vector<int> tops{ place.top() };
        for (const QRect &control : m_owner.controls) {
            for (const int left : { control.left() - m_size.width(), control.right() + 1 })
                if (std::abs(left - place.left()) <= sideways)
                    lefts.push_back(left);
            for (const int top : { control.top() - m_size.height(), control.bottom() + 1 })
                if (std::abs(top - place.top()) <= upOrDown)
                    tops.push_back(top);
        }
        QRect best = place;
        int least = sideways + upOrDown + 1;
        for (const int left : lefts) {
            for (const int top : tops) {
                const QRect moved = At(left, top);
                const int way = (moved.topLeft() - place.topLeft()).manhattanLength();
                if (way < least && IsGood(moved) && IsFree(moved, m_owner.controls)) {
                    best = moved;
                    least = way;
                }
            }
        }
        return best;
    }
    // Moved into the screen by as little as need be.
    QRect Inside(const QRect &place) const
    {
        const int left = Between(m_screen.left(), place.left(), m_screen.right() + 1 - m_size.width());
        const int top = Between(m_screen.top(), place.top(), m_screen.bottom() + 1 - m_size.height());
        return QRect(QPoint(left, top), m_size);
    }

private:
    static bool IsFree(const QRect &place, const std::vector<QRect> &of)
    {
        return std::none_of(of.begin(), of.end(),
                            [&place](const QRect &area) { return place.intersects(area); });
    }
    QRect At(int left, int top) const { return QRect(QPoint(left, top), m_size); }
    int MiddleX() const
    {
        return Between(m_screen.left(), m_owner.mouth.x() - m_size.width() / 2,
                       m_screen.right() + 1 - m_size.width());
    }
    int MiddleY() const
    {
        return Between(m_screen.top(), m_owner.mouth.y() - m_size.height() / 2,
                       m_screen.bottom() + 1 - m_size.height());
    }

    const QSize m_size;
    const BalloonOwner &m_owner;
    const QRect &m_screen;
};

int Beyond(int least, int value, int most)
{
    return std::max({ least - value, 0, value - most });
}

} // namespace

QRect NearestScreen(const QPoint &point, const std::vector<QRect> &screens)
{
    const auto distance = [&point](const QRect &screen) {
        return Beyond(screen.left(), point.x(), screen.right()) +
               Beyond(screen.top(), point.y(), screen.bottom());
    };
    return *std::min_element(
        screens.begin(), screens.end(),
        [&distance](const QRect &one, const QRect &other) { return distance(one) < distance(other); });
}

BalloonPlace PlaceBalloon(QSize bubble, const BalloonOwner &owner, const QRect &screen,
                          std::optional<BalloonPlace::Side> kept)
{
    using Side = BalloonPlace::Side;
    const Places places(bubble, owner, screen);
    const QRect &body = owner.body;
    const QRect &face = owner.face;

    // Above the hat; if the screen ends there and no other place is better, as low as the face allows.
    const int lowest = face.top() - kBalloonGap / 2;
    const int wanted = std::min(body.top() - kBalloonGap, lowest);
    const int bottom = Between(wanted, screen.top() + bubble.height(), lowest);
    const QRect above = places.AboveAt(std::min(bottom, screen.bottom() + 1));

    // Beside the body where more of the screen is free; beside the face when the screen is narrow.
    const bool leftFirst = body.center().x() - screen.left() > screen.right() - body.center().x();
    const QRect left = places.Inside(places.LeftOf(body.left() - kBalloonGap));
    const QRect right = places.Inside(places.RightOf(body.right() + kBalloonGap));
    const QRect below = places.Inside(places.BelowAt(body.bottom() + kBalloonGap));
    const QRect beforeBody = places.Inside(places.BelowAt(face.bottom() + kBalloonGap / 2));
    const int sideways = bubble.width() / 2 - kTailRoom;
    const int upOrDown = bubble.height() / 2 + kTailReach;
    const auto offControls = [&](const QRect &place, Side side) {
        const bool isBeside = side == Side::Left || side == Side::Right;
        return BalloonPlace{ places.OffControls(place, isBeside ? 0 : sideways, isBeside ? upOrDown : 0),
                             side };
    };
    const BalloonPlace candidates[] = {
        { above, Side::Above },
        offControls(above, Side::Above),
        offControls(leftFirst ? left : right, leftFirst ? Side::Left : Side::Right),
        offControls(leftFirst ? right : left, leftFirst ? Side::Right : Side::Left),
        offControls(below, Side::Below),
        { places.OffControls(beforeBody, sideways, kBalloonGap / 2 - 2), Side::Below },
        { places.Inside(above), Side::Above },
    };
    const BalloonPlace *best = nullptr;
    int bestWorth = 0;
    for (const BalloonPlace &place : candidates) {
        if (!places.IsGood(place.bubble))
            continue;
        const int worth = places.Worth(place, kept);
        const bool isBetter = worth > bestWorth || (worth == bestWorth && places.Covered(place.bubble) <
                                                                              places.Covered(best->bubble));
        if (isBetter) {
            best = &place;
            bestWorth = worth;
        }
    }
    if (best)
        return *best;
    // No room at all: where the least of the face is covered.
    const auto covered = [&face](const BalloonPlace &place) {
        const QRect common = place.bubble & face;
        return common.width() * common.height();
    };
    BalloonPlace least{ places.Inside(above), Side::Above };
    for (const BalloonPlace &place : candidates) {
        const BalloonPlace inside{ places.Inside(place.bubble), place.side };
        if (covered(inside) < covered(least))
            least = inside;
    }
    return least;
}

} // namespace platform
