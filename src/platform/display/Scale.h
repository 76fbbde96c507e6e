#pragma once

#include <QSize>

namespace platform {

// How much larger everything is drawn on a display of that many pixels: the largest quarter step that leaves
// at least 1024 x 768 units, never less than 1.
double ScaleFor(const QSize &display);

// To be called before the application object is made: chooses the window system and the scale. Qt's own
// variables are left as they are when the user has set them. False when there is no display at all.
[[nodiscard]] bool PrepareDisplay();

} // namespace platform
