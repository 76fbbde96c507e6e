#pragma once

class QPushButton;
class QWidget;

namespace platform {

// Makes Enter press the focused button of `window` or, when something else has the focus, `defaultButton`,
// unless that one is disabled or hidden. `defaultButton` may be null.
void InstallEnterKey(QWidget &window, QPushButton *defaultButton = nullptr);

} // namespace platform
