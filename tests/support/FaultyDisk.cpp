#include "support/FaultyDisk.h"

#include <QThread>

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace support {

namespace {

constexpr unsigned long kSlowness = 2; // milliseconds for a call

template <class Result>
Result Failed(int error)
{
    errno = error;
    return Result(-1);
}

} // namespace

void FaultyDisk::Fail(DiskFault fault, int after, const QByteArray &folder)
{
    m_fault = fault;
    m_after = after;
    m_folder = folder;
    m_hits = 0;
    m_isOn = true;
    m_isInterrupted = false;
}

bool FaultyDisk::IsInside(const QByteArray &path) const
{
    return path.startsWith(m_folder + '/');
}

// Counts a call that can suffer the fault, and tells whether it does.
bool FaultyDisk::Strikes(bool canSuffer)
{
    if (!m_isOn || !canSuffer)
        return false;
    if (m_after > 0) {
        --m_after;
        return false;
    }
    ++m_hits;
    return true;
}

int FaultyDisk::ErrorOfPath(const QByteArray &path)
{
    if (m_fault == DiskFault::Slow && Strikes(IsInside(path)))
        QThread::msleep(kSlowness);
    const bool isPathFault = m_fault == DiskFault::NoPermission || m_fault == DiskFault::Gone;
    if (!Strikes(isPathFault && IsInside(path)))
        return 0;
    return m_fault == DiskFault::Gone ? ENOENT : EACCES;
}

int FaultyDisk::Open(const QByteArray &path, int flags)
{
    if (const int error = ErrorOfPath(path); error != 0)
        return Failed<int>(error);
    struct stat status {};
    const bool makes = (flags & O_CREAT) != 0 && m_disk.Status(path, status) != 0;
    if (m_fault == DiskFault::NoSpace && Strikes(makes && IsInside(path)))
        return Failed<int>(ENOSPC);
    const int file = m_disk.Open(path, flags);
    if (file >= 0 && IsInside(path)) {
        m_files.insert(file);
        if ((flags & O_ACCMODE) != O_RDONLY)
            m_written[file] = m_disk.StatusOf(file, status) == 0 ? status.st_size : 0;
    }
    return file;
}

int FaultyDisk::Close(int file)
{
    m_files.erase(file);
    const auto written = m_written.find(file);
    const bool wasWritten = written != m_written.end();
    const qint64 safe = wasWritten ? written->second : 0;
    if (wasWritten)
        m_written.erase(written);
    const bool isFull = m_fault == DiskFault::NoSpace && Strikes(wasWritten);
    const bool isGone = m_fault == DiskFault::Gone && Strikes(wasWritten);
    // It was only taken on trust.
    if ((isFull || isGone) && ftruncate(file, safe) != 0)
        qFatal("a file cannot be cut off");
    const int result = m_disk.Close(file);
    if (isFull)
        return Failed<int>(ENOSPC);
    return isGone ? Failed<int>(EIO) : result;
}

int FaultyDisk::Truncate(int file)
{
    if (m_fault == DiskFault::Gone && Strikes(m_files.count(file) > 0))
        return Failed<int>(EIO);
    if (const auto written = m_written.find(file); written != m_written.end())
        written->second = 0;
    return m_disk.Truncate(file);
}

qint64 FaultyDisk::Read(int file, char *bytes, qint64 most)
{
    const bool isInside = m_files.count(file) > 0;
    if (m_fault == DiskFault::Gone && Strikes(isInside))
        return Failed<qint64>(EIO);
    if (m_fault == DiskFault::Slow && Strikes(isInside))
        QThread::msleep(kSlowness);
    if (m_fault == DiskFault::Interrupted && !std::exchange(m_isInterrupted, false) && Strikes(isInside)) {
        m_isInterrupted = true;
        return Failed<qint64>(EINTR);
    }
    if (m_fault == DiskFault::ShortReads && Strikes(isInside))
        most = std::min<qint64>(most, 1);
    return m_disk.Read(file, bytes, most);
}

qint64 FaultyDisk::Write(int file, const char *bytes, qint64 count)
{
    const bool isInside = m_files.count(file) > 0;
    if (m_fault == DiskFault::Gone && Strikes(isInside))
        return Failed<qint64>(EIO);
    if (m_fault == DiskFault::NoSpace && Strikes(isInside)) {
        if (m_hits > 1 || count < 2)
            return Failed<qint64>(ENOSPC);
        return m_disk.Write(file, bytes, count / 2);
    }
    if (m_fault == DiskFault::Slow && Strikes(isInside))
        QThread::msleep(kSlowness);
    if (m_fault == DiskFault::Interrupted && !std::exchange(m_isInterrupted, false) && Strikes(isInside)) {
        m_isInterrupted = true;
        return Failed<qint64>(EINTR);
    }
    if (m_fault == DiskFault::ShortWrites && Strikes(isInside))
        count = std::min<qint64>(count, 1);
    return m_disk.Write(file, bytes, count);
}

int FaultyDisk::Status(const QByteArray &path, struct stat &status)
{
    if (const int error = ErrorOfPath(path); error != 0)
        return Failed<int>(error);
    return m_disk.Status(path, status);
}

int FaultyDisk::StatusOf(int file, struct stat &status)
{
    if (m_fault == DiskFault::Gone && Strikes(m_files.count(file) > 0))
        return Failed<int>(EIO);
    return m_disk.StatusOf(file, status);
}

int FaultyDisk::Unlink(const QByteArray &path)
{
    if (const int error = ErrorOfPath(path); error != 0)
        return Failed<int>(error);
    return m_disk.Unlink(path);
}

std::vector<platform::Disk::Entry> FaultyDisk::Entries(const QByteArray &folder, int &error)
{
    error = ErrorOfPath(folder);
    if (error != 0)
        return {};
    return m_disk.Entries(folder, error);
}

} // namespace support
