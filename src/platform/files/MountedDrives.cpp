#include "platform/files/MountedDrives.h"

#include "platform/Error.h"
#include "platform/files/DiskPath.h"
#include "platform/files/MountTable.h"

#include <QFile>

#include <algorithm>
#include <cerrno>

namespace platform {

MountedDrives::MountedDrives(QString home, QString table, Disk &disk)
    : m_home(std::move(home)), m_table(std::move(table)), m_disk(disk)
{
}

std::vector<Drive> MountedDrives::All() const
{
    QFile table(m_table);
    // Without a table there are still the home and the computer.
    const QByteArray lines = table.open(QIODevice::ReadOnly) ? table.readAll() : QByteArray();
    std::vector<Drive> drives = DrivesOfMountTable(lines, m_home);
    for (const Drive &drive : drives)
        if (!m_told.contains(drive.path))
            m_told << drive.path;
    return drives;
}

void MountedDrives::CheckReady(const QString &path) const
{
    const std::vector<Drive> drives = All();
    if (!m_told.contains(path))
        return;
    // The folder of a volume often stays behind, empty.
    const bool isMounted =
        std::any_of(drives.begin(), drives.end(), [&](const Drive &drive) { return drive.path == path; });
    const DiskPath place(path, m_disk);
    int error = 0;
    if (isMounted && place.isFolder)
        FolderEntries(m_disk, place.native, EntryKind::Folder, error);
    // Somebody else's volume is there, though it cannot be looked into.
    if (!isMounted || !place.isFolder || (error != 0 && error != EACCES && error != EPERM))
        throw Error(kDeviceUnavailable);
}

} // namespace platform
