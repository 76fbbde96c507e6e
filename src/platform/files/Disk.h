#pragma once

#include <QByteArray>

#include <vector>

struct stat;

namespace platform {

// What the operating system does with files; all that DiskFiles, DiskPath and MountedDrives do goes through
// one of these, so that a test can stand between them and the disk. Each call is the system's own of that
// name: it gives what that gives and leaves its errno, and nothing is retried or raised here. Paths are
// native. A file is told by its number, which belongs to the caller until Close.
//
// All of it may take as long as the disk takes, and no events run inside.
class Disk {
public:
    struct Entry {
        QByteArray name; // without the folder; never . or ..
        unsigned char
            type; // DT_REG, DT_DIR and so on; DT_UNKNOWN or DT_LNK when only a closer look would tell
    };

    virtual ~Disk() = default;

    virtual int Open(const QByteArray &path, int flags) = 0; // makes files that everybody may write
    virtual int Close(int file) = 0;                         // a full disk may be told only here
    virtual int Lock(int file, int how) = 0;                 // flock
    virtual int Truncate(int file) = 0;                      // to nothing
    // Up to `most` bytes; fewer do not mean that the end is near, none do.
    virtual qint64 Read(int file, char *bytes, qint64 most) = 0;
    // Up to `count` bytes; fewer are no failure.
    virtual qint64 Write(int file, const char *bytes, qint64 count) = 0;
    virtual int Status(const QByteArray &path, struct stat &status) = 0;
    virtual int StatusOf(int file, struct stat &status) = 0;
    virtual int Unlink(const QByteArray &path) = 0;
    // What is in a folder, in no order. `error` receives the errno of the failure, or 0; with a failure on
    // the way there is what was read until then.
    virtual std::vector<Entry> Entries(const QByteArray &folder, int &error) = 0;
};

// The disk itself.
Disk &SystemDisk();

} // namespace platform
