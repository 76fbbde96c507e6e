#include "support/FaultyCalls.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <utility>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace support {

namespace {

constexpr useconds_t kSlowness = 1000; // microseconds for a call

// The faults in force. Any thread may call.
struct Faults {
    std::mutex mutex;
    std::atomic<bool> isOn = false;
    DiskFault fault = DiskFault::NoSpace;
    int after = 0;
    int hits = 0;
    bool isInterrupted = false; // the last call was
    QByteArray folder;
    std::set<int> files;           // that are open and lie inside
    std::set<int> written;         // those of them that are open for writing
    std::set<const DIR *> folders; // that are open and lie inside

    bool IsInside(const char *path) const
    {
        return path && (folder == path || QByteArrayView(path).startsWith(folder + '/'));
    }
    bool Strikes(bool canSuffer)
    {
        if (!canSuffer)
            return false;
        if (after > 0) {
            --after;
            return false;
        }
        ++hits;
        return true;
    }
    bool Suffers(DiskFault which, bool canSuffer) { return fault == which && Strikes(canSuffer); }

    // The errno with which a call on a path fails now, or 0.
    int ErrorOfPath(const char *path)
    {
        if (Suffers(DiskFault::Slow, IsInside(path)))
            usleep(kSlowness);
        if (Suffers(DiskFault::Gone, IsInside(path)))
            return ENOENT;
        return Suffers(DiskFault::NoPermission, IsInside(path)) ? EACCES : 0;
    }
    // The same for one that makes something there.
    int ErrorOfMaking(const char *path)
    {
        const int error = ErrorOfPath(path);
        return error == 0 && Suffers(DiskFault::NoSpace, IsInside(path)) ? ENOSPC : error;
    }
    // The errno with which a file is not read or written now, or 0.
    int ErrorOfFile(int file)
    {
        const bool isInside = files.count(file) > 0;
        if (Suffers(DiskFault::Gone, isInside))
            return EIO;
        if (Suffers(DiskFault::Slow, isInside))
            usleep(kSlowness);
        if (fault == DiskFault::Interrupted && !std::exchange(isInterrupted, false) && Strikes(isInside)) {
            isInterrupted = true;
            return EINTR;
        }
        return 0;
    }
    template <class Count>
    Count MostRead(int file, Count most)
    {
        return Suffers(DiskFault::ShortReads, files.count(file) > 0) ? std::min<Count>(most, 1) : most;
    }
    template <class Count>
    Count MostWritten(int file, Count count)
    {
        if (Suffers(DiskFault::NoSpace, files.count(file) > 0))
            return hits > 1 ? 0 : count / 2;
        return Suffers(DiskFault::ShortWrites, files.count(file) > 0) ? std::min<Count>(count, 1) : count;
    }
};

// Never destroyed: the last calls come after everything else.
Faults &TheFaults()
{
    static auto *faults = new Faults;
    return *faults;
}

template <class Result>
Result Failed(int error)
{
    errno = error;
    return Result(-1);
}

template <class Function>
Function *Real(const char *name)
{
    return reinterpret_cast<Function *>(dlsym(RTLD_NEXT, name));
}

// Does `call`, unless `judge` gives an errno for it.
template <class Judge, class Call>
auto Judged(const Judge &judge, const Call &call) -> decltype(call())
{
    Faults &faults = TheFaults();
    if (faults.isOn) {
        const std::lock_guard lock(faults.mutex);
        if (const int error = judge(faults); error != 0)
            return Failed<decltype(call())>(error);
    }
    return call();
}

template <class Call>
auto OnPath(const char *path, const Call &call)
{
    return Judged([&](Faults &faults) { return faults.ErrorOfPath(path); }, call);
}

template <class Call>
auto Making(const char *path, const Call &call)
{
    return Judged([&](Faults &faults) { return faults.ErrorOfMaking(path); }, call);
}

template <class Call>
auto FromTo(const char *from, const char *to, const Call &call)
{
    return Judged(
        [&](Faults &faults) {
            const int error = faults.ErrorOfPath(from);
            return error != 0 ? error : faults.ErrorOfPath(to);
        },
        call);
}

template <class Call>
int Opening(const char *path, int flags, const Call &call)
{
    Faults &faults = TheFaults();
    if (!faults.isOn)
        return call();
    const std::lock_guard lock(faults.mutex);
    struct statx status {};
    const bool makes = (flags & O_TMPFILE) == O_TMPFILE ||
                       ((flags & O_CREAT) != 0 &&
                        Real<decltype(statx)>("statx")(AT_FDCWD, path, 0, STATX_TYPE, &status) != 0);
    if (const int error = makes ? faults.ErrorOfMaking(path) : faults.ErrorOfPath(path); error != 0)
        return Failed<int>(error);
    const int file = call();
    if (file >= 0 && faults.IsInside(path)) {
        faults.files.insert(file);
        if ((flags & O_ACCMODE) != O_RDONLY)
            faults.written.insert(file);
    }
    return file;
}

template <class Read>
ssize_t Reading(int file, size_t most, const Read &call)
{
    Faults &faults = TheFaults();
    if (!faults.isOn)
        return call(most);
    {
        const std::lock_guard lock(faults.mutex);
        if (const int error = faults.ErrorOfFile(file); error != 0)
            return Failed<ssize_t>(error);
        most = faults.MostRead(file, most);
    }
    return call(most);
}

template <class Write>
ssize_t Writing(int file, size_t count, const Write &call)
{
    Faults &faults = TheFaults();
    if (!faults.isOn)
        return call(count);
    {
        const std::lock_guard lock(faults.mutex);
        if (const int error = faults.ErrorOfFile(file); error != 0)
            return Failed<ssize_t>(error);
        const size_t most = faults.MostWritten(file, count);
        if (most == 0 && count > 0)
            return Failed<ssize_t>(ENOSPC);
        count = most;
    }
    return call(count);
}

mode_t ModeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

FaultyCalls::FaultyCalls(DiskFault fault, int after, const QByteArray &folder)
{
    Faults &faults = TheFaults();
    const std::lock_guard lock(faults.mutex);
    faults.fault = fault;
    faults.after = after;
    faults.hits = 0;
    faults.isInterrupted = false;
    faults.folder = folder;
    faults.files.clear();
    faults.written.clear();
    faults.folders.clear();
    faults.isOn = true;
}

FaultyCalls::~FaultyCalls()
{
    TheFaults().isOn = false;
}

int FaultyCalls::Hits() const
{
    const std::lock_guard lock(TheFaults().mutex);
    return TheFaults().hits;
}

} // namespace support

using namespace support;

// The calls themselves.
extern "C" {

#define OPEN_OF(name)                                                                                        \
    int name(const char *path, int flags, ...)                                                               \
    {                                                                                                        \
        va_list arguments;                                                                                   \
        va_start(arguments, flags);                                                                          \
        const mode_t mode = ModeOf(flags, arguments);                                                        \
        va_end(arguments);                                                                                   \
        static auto *const real = Real<decltype(name)>(#name);                                               \
        return Opening(path, flags, [&] { return real(path, flags, mode); });                                \
    }
OPEN_OF(open)
OPEN_OF(open64)
#undef OPEN_OF

#define FOPEN_OF(name)                                                                                       \
    FILE *name(const char *path, const char *mode)                                                           \
    {                                                                                                        \
        static auto *const real = Real<decltype(name)>(#name);                                               \
        const bool failed = OnPath(path, [] { return 0; }) != 0;                                             \
        return failed ? nullptr : real(path, mode);                                                          \
    }
FOPEN_OF(fopen)
FOPEN_OF(fopen64)
#undef FOPEN_OF

int close(int file)
{
    static auto *const real = Real<decltype(close)>("close");
    Faults &faults = TheFaults();
    if (!faults.isOn)
        return real(file);
    const std::lock_guard lock(faults.mutex);
    faults.files.erase(file);
    const bool wasWritten = faults.written.erase(file) > 0;
    const int result = real(file);
    if (faults.Suffers(DiskFault::NoSpace, wasWritten))
        return Failed<int>(ENOSPC);
    return faults.Suffers(DiskFault::Gone, wasWritten) ? Failed<int>(EIO) : result;
}

ssize_t read(int file, void *bytes, size_t most)
{
    static auto *const real = Real<decltype(read)>("read");
    return Reading(file, most, [&](size_t count) { return real(file, bytes, count); });
}

ssize_t pread64(int file, void *bytes, size_t most, off64_t place)
{
    static auto *const real = Real<decltype(pread64)>("pread64");
    return Reading(file, most, [&](size_t count) { return real(file, bytes, count, place); });
}

ssize_t write(int file, const void *bytes, size_t count)
{
    static auto *const real = Real<decltype(write)>("write");
    return Writing(file, count, [&](size_t most) { return real(file, bytes, most); });
}

ssize_t sendfile(int to, int from, off_t *place, size_t count) noexcept
{
    static auto *const real = Real<decltype(sendfile)>("sendfile");
    return Reading(from, count, [&](size_t readable) {
        return Writing(to, readable, [&](size_t most) { return real(to, from, place, most); });
    });
}

int fdatasync(int file)
{
    static auto *const real = Real<decltype(fdatasync)>("fdatasync");
    return Judged([&](Faults &faults) { return faults.ErrorOfFile(file); }, [&] { return real(file); });
}

int ftruncate64(int file, off64_t length) noexcept
{
    static auto *const real = Real<decltype(ftruncate64)>("ftruncate64");
    return Judged([&](Faults &faults) { return faults.ErrorOfFile(file); },
                  [&] { return real(file, length); });
}

DIR *opendir(const char *path)
{
    static auto *const real = Real<decltype(opendir)>("opendir");
    Faults &faults = TheFaults();
    if (!faults.isOn)
        return real(path);
    const std::lock_guard lock(faults.mutex);
    if (const int error = faults.ErrorOfPath(path); error != 0) {
        errno = error;
        return nullptr;
    }
    DIR *folder = real(path);
    if (folder && faults.IsInside(path))
        faults.folders.insert(folder);
    return folder;
}

#define READDIR_OF(name, Entry)                                                                              \
    Entry *name(DIR *folder)                                                                                 \
    {                                                                                                        \
        static auto *const real = Real<decltype(name)>(#name);                                               \
        Faults &faults = TheFaults();                                                                        \
        if (!faults.isOn)                                                                                    \
            return real(folder);                                                                             \
        const std::lock_guard lock(faults.mutex);                                                            \
        if (faults.Suffers(DiskFault::Gone, faults.folders.count(folder) > 0)) {                             \
            errno = EIO;                                                                                     \
            return nullptr;                                                                                  \
        }                                                                                                    \
        return real(folder);                                                                                 \
    }
READDIR_OF(readdir, dirent)
READDIR_OF(readdir64, dirent64)
#undef READDIR_OF

int closedir(DIR *folder)
{
    static auto *const real = Real<decltype(closedir)>("closedir");
    if (TheFaults().isOn) {
        const std::lock_guard lock(TheFaults().mutex);
        TheFaults().folders.erase(folder);
    }
    return real(folder);
}

#define STAT_OF(name, Status)                                                                                \
    int name(const char *path, struct Status *status) noexcept                                               \
    {                                                                                                        \
        static auto *const real = Real<int(const char *, struct Status *)>(#name);                           \
        return OnPath(path, [&] { return real(path, status); });                                             \
    }
STAT_OF(stat, stat)
STAT_OF(lstat, stat)
STAT_OF(stat64, stat64)
STAT_OF(lstat64, stat64)
#undef STAT_OF

int statx(int folder, const char *path, int flags, unsigned int mask, struct statx *status) noexcept
{
    static auto *const real = Real<int(int, const char *, int, unsigned int, struct statx *)>("statx");
    return OnPath(path, [&] { return real(folder, path, flags, mask, status); });
}

int access(const char *path, int mode) noexcept
{
    static auto *const real = Real<decltype(access)>("access");
    return OnPath(path, [&] { return real(path, mode); });
}

int chmod(const char *path, mode_t mode) noexcept
{
    static auto *const real = Real<decltype(chmod)>("chmod");
    return OnPath(path, [&] { return real(path, mode); });
}

ssize_t readlink(const char *path, char *bytes, size_t most) noexcept
{
    static auto *const real = Real<decltype(readlink)>("readlink");
    return OnPath(path, [&] { return real(path, bytes, most); });
}

int unlink(const char *path) noexcept
{
    static auto *const real = Real<decltype(unlink)>("unlink");
    return OnPath(path, [&] { return real(path); });
}

int rmdir(const char *path) noexcept
{
    static auto *const real = Real<decltype(rmdir)>("rmdir");
    return OnPath(path, [&] { return real(path); });
}

int mkdir(const char *path, mode_t mode) noexcept
{
    static auto *const real = Real<decltype(mkdir)>("mkdir");
    return Making(path, [&] { return real(path, mode); });
}

int symlink(const char *target, const char *path) noexcept
{
    static auto *const real = Real<decltype(symlink)>("symlink");
    return Making(path, [&] { return real(target, path); });
}

int link(const char *from, const char *to) noexcept
{
    static auto *const real = Real<decltype(link)>("link");
    return Making(to, [&] { return real(from, to); });
}

int linkat(int fromFolder, const char *from, int toFolder, const char *to, int flags) noexcept
{
    static auto *const real = Real<decltype(linkat)>("linkat");
    return Making(to, [&] { return real(fromFolder, from, toFolder, to, flags); });
}

int rename(const char *from, const char *to) noexcept
{
    static auto *const real = Real<decltype(rename)>("rename");
    return FromTo(from, to, [&] { return real(from, to); });
}

int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned int flags) noexcept
{
    static auto *const real = Real<decltype(renameat2)>("renameat2");
    return FromTo(from, to, [&] { return real(fromFolder, from, toFolder, to, flags); });
}

} // extern "C"
