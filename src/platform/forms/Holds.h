#pragma once

#include "platform/forms/Resizer.h"

#include <QStringList>

namespace platform {

// Hooks for screens on which controls of some types keep what they have.

// Only the left edge is scaled; top, width, height and type size stay.
Resizer::Hook HoldAllButLeft(const QStringList &types);

// The control moves; width, height and type size stay.
Resizer::Hook HoldSize(const QStringList &types);

} // namespace platform
