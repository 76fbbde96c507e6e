#pragma once

#include <QRect>

namespace platform {

// What windows may use of the screen that holds `point`, else of the nearest one, in screen units. Whatever
// belongs to a figure (balloon, tip, badge) stands there, so that nothing is torn between two screens.
// Called from the thread of the windows.
QRect ScreenAreaAt(const QPoint &point);

} // namespace platform
