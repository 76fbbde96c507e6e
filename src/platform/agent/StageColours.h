#pragma once

#include <QColor>

namespace platform {

// The paper and ink of what stands beside the figures: balloons, badges and tips.
constexpr QColor kPaper(0xff, 0xf8, 0xe0);
constexpr QColor kInk(0x2a, 0x1b, 0x3d);
constexpr QColor kWood(0x6b, 0x3f, 0x2a);

} // namespace platform
