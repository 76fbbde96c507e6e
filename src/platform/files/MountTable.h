#pragma once

#include "platform/files/Drives.h"

#include <QByteArray>

namespace platform {

// The drives that a table of mounted volumes, in the form of /proc/self/mountinfo, makes for a user with that
// home. What only the system itself needs is left out, and so are lines that make no sense.
std::vector<Drive> DrivesOfMountTable(const QByteArray &table, const QString &home);

} // namespace platform
