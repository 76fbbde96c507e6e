#include "platform/system/Chance.h"

namespace platform {

int Drawn(Chance &chance, int count, int base)
{
    // In double precision, where the product cannot be rounded up to `count`.
    return static_cast<int>(static_cast<double>(chance.Next()) * count) + base;
}

} // namespace platform
