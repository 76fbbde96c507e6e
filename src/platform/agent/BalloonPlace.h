#pragma once

#include <QPoint>
#include <QRect>

#include <optional>
#include <vector>

namespace platform {

// Where a balloon stands, in screen units.
struct BalloonPlace {
    enum class Side { Above, Left, Right, Below };
    QRect bubble;
    Side side = Side::Above;
};

// What a balloon belongs to, in screen units.
struct BalloonOwner {
    QRect body;                  // where the figure is seen at rest
    QRect face;                  // not to be covered
    QPoint mouth;                // what the tail points to
    std::vector<QRect> others;   // faces of other figures, better left free
    std::vector<QRect> controls; // what the user may want to press or read, left free if that costs no face
};

// Room between bubble and figure, for the tail.
constexpr int kBalloonGap = 16;

// The place of a bubble of that size: above the figure when there is room, else beside it, below it or before
// its body; on the side `kept` as long as that is possible, otherwise where it leaves free the faces of
// others, then the controls, then the body, and covers little of the controls where it cannot be off them
// all. The bubble is always within `screen`, and off the face whenever any place of the screen allows it.
// Pure.
BalloonPlace PlaceBalloon(QSize bubble, const BalloonOwner &owner, const QRect &screen,
                          std::optional<BalloonPlace::Side> kept = std::nullopt);

// Which of the screens, of which there is at least one, a balloon for a figure around `point` belongs on: the
// one that holds it, else the nearest.
QRect NearestScreen(const QPoint &point, const std::vector<QRect> &screens);

} // namespace platform
