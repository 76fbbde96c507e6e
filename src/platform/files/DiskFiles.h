#pragma once

#include "platform/files/Files.h"

namespace platform {

// Text files on the disk.
class DiskFiles : public Files {
public:
    bool FileExists(const QString &path) const override;
    bool FolderExists(const QString &path) const override;
    QString Resolve(const QString &path) const override;
    QStringList FileNames(const QString &folder) const override;
    QStringList FolderNames(const QString &folder) const override;
    std::unique_ptr<TextReader> OpenForReading(const QString &path) override;
    std::unique_ptr<TextWriter> OpenForWriting(const QString &path, FileWriting how, bool create) override;
    void Kill(const QString &path) override;
    void FileCopy(const QString &from, const QString &to) override;
};

// The number of an Error for an errno of the system; 57 for those that say nothing about paths, room or
// rights. 0 stays 0. A missing file is 53: the caller knows whether it is the folder that is missing.
qint32 NumberOfErrno(int error);

} // namespace platform
