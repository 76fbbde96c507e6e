#pragma once

#include "platform/files/Disk.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace platform {

// Whether a file must not have this name, so that every list can travel to any system: it holds one of
// / \ : * ? " < > | or a control character, or it is the name of a device, such as con or Lpt1.txt.
bool IsRefusedName(const QString &name);

enum class EntryKind { File, Folder };

// The names of the files, or of the folders without hidden ones, in a folder as text, in no order. `error`
// receives the errno of the failure when the folder cannot be read, or 0.
QStringList FolderEntries(Disk &disk, const QByteArray &folder, EntryKind kind, int &error);

// Where a path leads on the disk.
struct DiskPath {
    // Follows `path` component by component, each in any letter case when it is not there exactly as written.
    explicit DiskPath(const QString &path, Disk &disk = SystemDisk());
    QString Text() const; // the native path

    QByteArray native;         // with the letter case of the disk as far as it is there, then as written
    bool exists = false;       // something is there
    bool isFolder = false;     // and it is a folder
    bool folderExists = false; // what should hold it is there and is a folder
    bool isRefused = false;    // holds a refused name that is not a folder already there
    bool namesNoFile = false;  // empty, or ends in a separator
};

} // namespace platform
