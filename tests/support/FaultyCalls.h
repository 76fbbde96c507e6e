#pragma once

#include "support/FaultyDisk.h"

#include <memory>

namespace support {

// What FaultyDisk does for those who ask a Disk, for libraries that open files by themselves: their calls of
// the C library end here in every program that FaultyCalls.cpp is a source of, and fail as long as one of
// these lives. There is one at a time. Everything that can suffer the fault in `folder`, which counts as
// inside, succeeds `after` times and fails from then on. What streams of the C library and mapped memory read
// is not seen here.
class FaultyCalls {
public:
    FaultyCalls(DiskFault fault, int after, const QByteArray &folder);
    ~FaultyCalls();
    FaultyCalls(const FaultyCalls &) = delete;
    FaultyCalls &operator=(const FaultyCalls &) = delete;

    // How many calls have failed, or have been made worse.
    int Hits() const;
};

} // namespace support
