#pragma once

#include "platform/Error.h"

namespace platform {

// Runs `statement`; when it raises `number`, runs `repair` and then the statement again, as often as it
// takes. Any other error passes, and so does one that `repair` raises.
template <class Statement, class Repair>
void Retry(qint32 number, Statement statement, Repair repair)
{
    for (;;) {
        try {
            statement();
            return;
        } catch (const Error &error) {
            if (error.Number() != number)
                throw;
        }
        repair();
    }
}

} // namespace platform
