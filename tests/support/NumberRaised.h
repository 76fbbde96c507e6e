#pragma once

#include "platform/Error.h"

namespace support {

// The number of the Error that `work` raises, 0 when it raises none.
template <class Work>
qint32 NumberRaised(Work work)
{
    try {
        work();
    } catch (const platform::Error &error) {
        return error.Number();
    }
    return 0;
}

} // namespace support
