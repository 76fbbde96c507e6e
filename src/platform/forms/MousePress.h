#pragma once

#include <functional>

class QWidget;

namespace platform {

// Has `handler` called each time a mouse button goes down on `control`, before the control itself sees it; a
// screen passes Guarded(handler). Ends with the control.
void OnMousePress(QWidget &control, std::function<void()> handler);

} // namespace platform
