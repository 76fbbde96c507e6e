#pragma once

#include <QRect>

namespace platform {

// What windows may use of the screen that holds `point`, else of the nearest one, in screen units. Whatever
// belongs to a figure (balloon, tip, badge) stands there, so that nothing is torn between two screens.
// Called from the thread of the windows.
QRect ScreenAreaAt(const QPoint &point);

// Where the upper left corner of something of that size comes to stand when it is moved from `wanted` into
// `area` by as little as need be. What is larger than the area begins at the area's own corner.
QPoint MovedInto(const QRect &area, const QPoint &wanted, const QSize &size);

} // namespace platform
