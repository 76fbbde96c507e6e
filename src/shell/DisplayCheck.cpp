#include "shell/DisplayCheck.h"

namespace tumblewick {

platform::Integer16 DisplayWidthFor(int width, int bitsPerPixel)
{
    return width == 800 && bitsPerPixel >= 8 ? 800 : 0;
}

} // namespace tumblewick
