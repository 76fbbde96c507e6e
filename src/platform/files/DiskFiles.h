#pragma once

#include "platform/files/Files.h"

namespace platform {

class Disk;

// Text files on the disk.
class DiskFiles : public Files {
public:
    DiskFiles(); // on the disk of the system
    // `disk` has to outlive this and all that it has opened.
    explicit DiskFiles(Disk &disk) : m_disk(disk) {}

    bool FileExists(const QString &path) const override;
    bool FolderExists(const QString &path) const override;
    QString Resolve(const QString &path) const override;
    QStringList FileNames(const QString &folder) const override;
    QStringList FolderNames(const QString &folder) const override;
    std::unique_ptr<TextReader> OpenForReading(const QString &path) override;
    std::unique_ptr<TextWriter> OpenForWriting(const QString &path, FileWriting how, bool create) override;
    void Kill(const QString &path) override;
    void FileCopy(const QString &from, const QString &to) override;

private:
    Disk &m_disk;
};

// The number of an Error for an errno of the system; 57 for those that say nothing about paths, room or
// rights. 0 stays 0. A missing file is 53: the caller knows whether it is the folder that is missing.
qint32 NumberOfErrno(int error);

} // namespace platform
