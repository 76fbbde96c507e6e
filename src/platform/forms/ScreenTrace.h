#pragma once

#include <QLoggingCategory>

namespace platform {

// One line for every load, activation and unload of a screen and for every box. Off by default.
Q_DECLARE_LOGGING_CATEGORY(ScreenTrace)

} // namespace platform
