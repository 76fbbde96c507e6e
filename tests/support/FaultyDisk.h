#pragma once

#include "platform/files/Disk.h"

#include <map>
#include <set>

namespace support {

// What may go wrong on a disk.
enum class DiskFault {
    NoSpace,      // nothing more can be made or written; of the first write half is still done, and what a
                  // closing file has taken is lost when it is only then told
    NoPermission, // nothing can be looked at, opened, listed or removed; what is open stays so
    Gone,         // the disk was pulled out: no path leads anywhere, what is open fails
    Slow,         // each call takes a while
    ShortReads,   // each read gives one byte
    ShortWrites,  // each write takes one byte
    Interrupted,  // each read and each write is interrupted by a signal once
};

// The real disk, with faults on demand in a folder and what lies below it; what lies elsewhere is left alone.
class FaultyDisk : public platform::Disk {
public:
    // Everything that can suffer the fault from now on succeeds `after` times and fails from then on, until
    // Heal.
    void Fail(DiskFault fault, int after, const QByteArray &folder);
    void Heal() { m_isOn = false; }
    // How many calls have failed, or have been made worse, since the last Fail.
    int Hits() const { return m_hits; }

    int Open(const QByteArray &path, int flags) override;
    int Close(int file) override;
    int Lock(int file, int how) override { return m_disk.Lock(file, how); }
    int Truncate(int file) override;
    qint64 Read(int file, char *bytes, qint64 most) override;
    qint64 Write(int file, const char *bytes, qint64 count) override;
    int Status(const QByteArray &path, struct stat &status) override;
    int StatusOf(int file, struct stat &status) override;
    int Unlink(const QByteArray &path) override;
    std::vector<Entry> Entries(const QByteArray &folder, int &error) override;

private:
    bool IsInside(const QByteArray &path) const;
    bool Strikes(bool canSuffer);
    // The errno with which a call on a path fails now, or 0.
    int ErrorOfPath(const QByteArray &path);

    platform::Disk &m_disk = platform::SystemDisk();
    std::set<int> m_files;           // that are open and lie inside
    std::map<int, qint64> m_written; // those of them that are open for writing, and how much of each is safe
    QByteArray m_folder;
    DiskFault m_fault = DiskFault::NoSpace;
    bool m_isOn = false;
    bool m_isInterrupted = false; // the last call was
    int m_after = 0;
    int m_hits = 0;
};

} // namespace support
