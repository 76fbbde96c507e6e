#include "platform/files/DiskFiles.h"

#include "platform/Error.h"
#include "platform/files/Disk.h"
#include "platform/files/DiskPath.h"
#include "platform/files/TextCode.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr qsizetype kChunk = 64 * 1024;

// An open file of the system, closed by its destruction. Opening does not hang on a pipe that somebody left
// in the folder.
class Descriptor {
public:
    Descriptor(Disk &disk, const DiskPath &path, int flags)
        : m_disk(disk), m_number(disk.Open(path.native, flags | O_CLOEXEC | O_NONBLOCK))
    {
    }
    ~Descriptor() { Close(); }
    Descriptor(Descriptor &&other) noexcept
        : m_disk(other.m_disk), m_number(std::exchange(other.m_number, -1))
    {
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    Descriptor &operator=(Descriptor &&) = delete;

    bool IsOpen() const { return m_number >= 0; }
    // The errno of the failure, or 0. A file system may report a full disk only here.
    int Close()
    {
        const int number = std::exchange(m_number, -1);
        return number >= 0 && m_disk.Close(number) != 0 ? errno : 0;
    }

    bool Look(struct stat &status) const { return m_disk.StatusOf(m_number, status) == 0; }
    int Lock(int how) const { return m_disk.Lock(m_number, how); }
    int Empty() const { return m_disk.Truncate(m_number); }
    qint64 Read(char *bytes, qint64 most) const { return m_disk.Read(m_number, bytes, most); }
    qint64 Write(QByteArrayView bytes) const { return m_disk.Write(m_number, bytes.data(), bytes.size()); }

private:
    Disk &m_disk;
    int m_number;
};

// Appends up to a chunk to `bytes`. Gives the errno of the failure, or 0; at the end nothing is appended.
int ReadChunk(const Descriptor &file, QByteArray &bytes)
{
    const qsizetype before = bytes.size();
    bytes.resize(before + kChunk);
    qint64 count = 0;
    do {
        count = file.Read(bytes.data() + before, kChunk);
    } while (count < 0 && errno == EINTR);
    const int error = count < 0 ? errno : 0;
    bytes.resize(before + std::max<qint64>(count, 0));
    return error;
}

int WriteAll(const Descriptor &file, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const qint64 count = file.Write(bytes);
        if (count < 0 && errno != EINTR)
            return errno;
        bytes = bytes.sliced(std::max<qint64>(count, 0));
    }
    return 0;
}

// What goes wrong while a stream is in use is 61 or 57; there is no path to complain about any more.
void CheckStream(int error)
{
    if (error != 0)
        throw Error(NumberOfErrno(error) == kDiskFull ? kDiskFull : kDeviceError);
}

// Raises what the path alone gives away. `mustExist` is for what is not made by opening it.
void CheckPath(const DiskPath &path, bool mustExist)
{
    if (path.isRefused)
        throw Error(kBadFileName);
    if (!path.folderExists && !path.exists)
        throw Error(path.native.isEmpty() ? kPathFileAccess : kPathNotFound);
    if (path.isFolder || path.namesNoFile)
        throw Error(kPathFileAccess);
    if (mustExist && !path.exists)
        throw Error(kFileNotFound);
}

// Two programs may work on the same files. Whoever writes has emptied the file and fills it in moments, so
// the other one waits for that, but not for ever: whoever holds the file may have been stopped.
void WaitForTheOther(const Descriptor &file, int lock)
{
    constexpr int kAttempts = 250;
    constexpr useconds_t kPause = 4000; // microseconds
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (file.Lock(lock | LOCK_NB) == 0 || errno != EWOULDBLOCK)
            return;
        usleep(kPause);
    }
}

Descriptor OpenToRead(Disk &disk, const DiskPath &path)
{
    CheckPath(path, true);
    Descriptor file(disk, path, O_RDONLY);
    if (!file.IsOpen())
        throw Error(NumberOfErrno(errno));
    struct stat status {};
    if (!file.Look(status) || !S_ISREG(status.st_mode))
        throw Error(kPathFileAccess);
    WaitForTheOther(file, LOCK_SH);
    return file;
}

Descriptor OpenToWrite(Disk &disk, const DiskPath &path, FileWriting how, bool create)
{
    CheckPath(path, !create);
    const bool isAppended = how == FileWriting::Append;
    Descriptor file(disk, path, O_WRONLY | (create ? O_CREAT : 0) | (isAppended ? O_APPEND : 0));
    if (!file.IsOpen())
        throw Error(NumberOfErrno(errno));
    WaitForTheOther(file, LOCK_EX);
    // A device has no length to take away.
    if (!isAppended && file.Empty() != 0 && errno != EINVAL)
        throw Error(NumberOfErrno(errno));
    return file;
}

class DiskReader : public TextReader {
public:
    explicit DiskReader(Descriptor file) : m_file(std::move(file))
    {
        Fill();
        // What is read is not changed any more; a long list may be read all through a game.
        m_file.Lock(LOCK_UN);
        // Nobody asked for the mark that some other program put there.
        if (m_buffer.startsWith("\xEF\xBB\xBF"))
            m_at = 3;
        LookAhead();
    }

    // With a failure pending it is not the end: the next line raises it.
    bool AtEnd() const override { return m_at == m_buffer.size() && m_isWhole && m_error == 0; }

    QString ReadLine() override
    {
        if (AtEnd())
            throw Error(kInputPastEnd);
        qsizetype end = m_at;
        while (true) {
            end = LineEnd(end);
            // Whether a CR stands alone is seen only with what follows.
            const bool isClear =
                end < m_buffer.size() && (m_buffer[end] == '\n' || end + 1 < m_buffer.size());
            if (isClear || m_isWhole)
                break;
            const qsizetype length = end - m_at;
            Fill();
            end = m_at + length;
        }
        if (end == m_buffer.size() && m_error != 0)
            CheckStream(m_error);
        QString line = DecodedLine(QByteArrayView(m_buffer).sliced(m_at, end - m_at));
        m_at = end;
        if (m_at < m_buffer.size()) {
            const bool isPair =
                m_buffer[m_at] == '\r' && m_at + 1 < m_buffer.size() && m_buffer[m_at + 1] == '\n';
            m_at += isPair ? 2 : 1;
        }
        LookAhead();
        return line;
    }

private:
    qsizetype LineEnd(qsizetype from) const
    {
        return std::find_if(m_buffer.begin() + from, m_buffer.end(),
                            [](char byte) { return byte == '\r' || byte == '\n'; }) -
               m_buffer.begin();
    }

    void Fill()
    {
        m_buffer.remove(0, m_at);
        m_at = 0;
        const qsizetype before = m_buffer.size();
        m_error = ReadChunk(m_file, m_buffer);
        m_isWhole = m_error != 0 || m_buffer.size() == before;
    }

    // AtEnd has to know whether anything follows.
    void LookAhead()
    {
        while (m_at == m_buffer.size() && !m_isWhole)
            Fill();
    }

    Descriptor m_file;
    QByteArray m_buffer;
    qsizetype m_at = 0;     // in the buffer, the start of the next line
    bool m_isWhole = false; // nothing more comes
    int m_error = 0;
};

class DiskWriter final : public TextWriter {
public:
    explicit DiskWriter(Descriptor file) : m_file(std::move(file)) {}
    ~DiskWriter() override
    {
        try {
            Close();
        } catch (const Error &) {
            // Who wants to know calls Close.
        }
    }

    void WriteLine(const QString &line) override
    {
        CheckOpen();
        m_line += line;
        EndLine();
        m_bytes += "\r\n";
        if (m_bytes.size() >= kChunk)
            Flush();
    }

    void Write(const QString &text) override
    {
        CheckOpen();
        m_line += text;
    }

    void Close() override
    {
        if (!m_file.IsOpen())
            return;
        EndLine();
        Flush();
        CheckStream(m_file.Close());
    }

private:
    void CheckOpen() const
    {
        if (!m_file.IsOpen())
            throw Error(kBadFileName);
    }

    // A line is put into bytes whole, since its code depends on all of it; line ends within it end lines too.
    void EndLine()
    {
        qsizetype start = 0;
        for (qsizetype at = 0; at < m_line.size(); ++at) {
            if (m_line[at] != QLatin1Char('\r') && m_line[at] != QLatin1Char('\n'))
                continue;
            m_bytes += EncodedLine(m_line.mid(start, at - start));
            m_bytes += static_cast<char>(m_line[at].unicode());
            start = at + 1;
        }
        m_bytes += EncodedLine(start == 0 ? m_line : m_line.mid(start));
        m_line.clear();
    }

    void Flush()
    {
        const QByteArray bytes = std::exchange(m_bytes, {});
        CheckStream(WriteAll(m_file, bytes));
    }

    Descriptor m_file;
    QString m_line; // begun by Write
    QByteArray m_bytes;
};

bool IsRegularFile(Disk &disk, const DiskPath &path)
{
    struct stat status {};
    return disk.Status(path.native, status) == 0 && S_ISREG(status.st_mode);
}

bool IsSameFile(Disk &disk, const Descriptor &file, const DiskPath &path)
{
    struct stat first {};
    struct stat second {};
    return file.Look(first) && disk.Status(path.native, second) == 0 && first.st_dev == second.st_dev &&
           first.st_ino == second.st_ino;
}

QStringList SortedEntries(Disk &disk, const QString &folder, EntryKind kind)
{
    const DiskPath place(folder, disk);
    if (!place.exists || !place.isFolder)
        throw Error(kPathNotFound);
    int error = 0;
    QStringList names = FolderEntries(disk, place.native, kind, error);
    if (error != 0)
        throw Error(kPathFileAccess);
    std::sort(names.begin(), names.end(), [](const QString &left, const QString &right) {
        const int order = left.compare(right, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : left < right;
    });
    return names;
}

} // namespace

qint32 NumberOfErrno(int error)
{
    switch (error) {
    case 0:
        return 0;
    case ENOENT:
        return kFileNotFound;
    case ENOTDIR:
        return kPathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY:
    case EBUSY:
        return kPermissionDenied;
    case EISDIR:
    case ELOOP:
    case ENOTEMPTY:
    case EMFILE:
    case ENFILE:
        return kPathFileAccess;
    case EEXIST:
        return kFileAlreadyExists;
    case ENAMETOOLONG:
    case EINVAL:
    case EILSEQ:
    case EBADF:
        return kBadFileName;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return kDiskFull;
    case ENODEV:
    case ENXIO:
    case ENOMEDIUM:
    case ESTALE:
        return kDeviceUnavailable;
    default:
        return kDeviceError;
    }
}

DiskFiles::DiskFiles() : DiskFiles(SystemDisk()) {}

bool DiskFiles::FileExists(const QString &path) const
{
    const DiskPath place(path, m_disk);
    return place.exists && !place.isFolder && !place.isRefused && !place.namesNoFile;
}

bool DiskFiles::FolderExists(const QString &path) const
{
    const DiskPath place(path, m_disk);
    return place.exists && place.isFolder;
}

QString DiskFiles::Resolve(const QString &path) const
{
    const DiskPath place(path, m_disk);
    return place.exists ? place.Text() : path;
}

QStringList DiskFiles::FileNames(const QString &folder) const
{
    return SortedEntries(m_disk, folder, EntryKind::File);
}

QStringList DiskFiles::FolderNames(const QString &folder) const
{
    return SortedEntries(m_disk, folder, EntryKind::Folder);
}

std::unique_ptr<TextReader> DiskFiles::OpenForReading(const QString &path)
{
    return std::make_unique<DiskReader>(OpenToRead(m_disk, DiskPath(path, m_disk)));
}

std::unique_ptr<TextWriter> DiskFiles::OpenForWriting(const QString &path, FileWriting how, bool create)
{
    return std::make_unique<DiskWriter>(OpenToWrite(m_disk, DiskPath(path, m_disk), how, create));
}

void DiskFiles::Kill(const QString &path)
{
    const DiskPath place(path, m_disk);
    CheckPath(place, true);
    if (m_disk.Unlink(place.native) != 0)
        throw Error(NumberOfErrno(errno));
}

void DiskFiles::FileCopy(const QString &from, const QString &to)
{
    const DiskPath source(from, m_disk);
    const DiskPath target(to, m_disk);
    if (source.isRefused || target.isRefused)
        throw Error(kBadFileName);
    const Descriptor reader = OpenToRead(m_disk, source);
    CheckPath(target, false);
    // Opening it for writing would empty it.
    if (IsSameFile(m_disk, reader, target))
        throw Error(kPermissionDenied);
    Descriptor writer = OpenToWrite(m_disk, target, FileWriting::Replace, true);
    int error = 0;
    QByteArray bytes;
    do {
        bytes.clear();
        error = ReadChunk(reader, bytes);
        if (error == 0)
            error = WriteAll(writer, bytes);
    } while (error == 0 && !bytes.isEmpty());
    const int closing = writer.Close();
    if (error == 0)
        error = closing;
    if (error != 0) {
        // Half a list is worse than none.
        if (IsRegularFile(m_disk, target))
            m_disk.Unlink(target.native);
        CheckStream(error);
    }
}

} // namespace platform
