#pragma once

#include "platform/Integer16.h"

namespace tumblewick {

// What DisplayWidth holds for a display: 800 when it is exactly that wide and has at least 8 bits per pixel,
// else 0.
platform::Integer16 DisplayWidthFor(int width, int bitsPerPixel);

} // namespace tumblewick
