#pragma once

#include "platform/Error.h"
#include "platform/files/Drives.h"

#include <QStringList>

namespace support {

// Drives as a test wants them. At first there is the home alone.
class FakeDrives : public platform::Drives {
public:
    // The first is the home.
    std::vector<platform::Drive> all = { { QStringLiteral("/"), QStringLiteral("Home folder"),
                                           platform::Drive::Kind::Home } };
    QStringList gone; // the paths of drives that cannot be read

    std::vector<platform::Drive> All() const override { return all; }
    void CheckReady(const QString &path) const override
    {
        if (gone.contains(path))
            throw platform::Error(platform::kDeviceUnavailable);
    }
};

} // namespace support
