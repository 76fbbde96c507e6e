#pragma once

#include "platform/files/Disk.h"
#include "platform/files/Drives.h"

#include <QStringList>

namespace platform {

// The volumes that are mounted.
class MountedDrives : public Drives {
public:
    // `home` without a separator at the end; `table` is the file that lists what is mounted. `disk`, through
    // which folders are looked at, has to outlive this.
    explicit MountedDrives(QString home, QString table = QStringLiteral("/proc/self/mountinfo"),
                           Disk &disk = SystemDisk());

    std::vector<Drive> All() const override;
    void CheckReady(const QString &path) const override;

private:
    const QString m_home;
    const QString m_table;
    Disk &m_disk;
    mutable QStringList m_told; // the paths of all drives that were ever told
};

} // namespace platform
