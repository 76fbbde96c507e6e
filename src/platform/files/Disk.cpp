#include "platform/files/Disk.h"

#include <cerrno>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

class TheDisk : public Disk {
public:
    int Open(const QByteArray &path, int flags) override { return open(path.constData(), flags, 0666); }
    int Close(int file) override { return close(file); }
    int Lock(int file, int how) override { return flock(file, how); }
    int Truncate(int file) override { return ftruncate(file, 0); }
    qint64 Read(int file, char *bytes, qint64 most) override
    {
        return read(file, bytes, static_cast<size_t>(most));
    }
    qint64 Write(int file, const char *bytes, qint64 count) override
    {
        return write(file, bytes, static_cast<size_t>(count));
    }
    int Status(const QByteArray &path, struct stat &status) override
    {
        return stat(path.constData(), &status);
    }
    int StatusOf(int file, struct stat &status) override { return fstat(file, &status); }
    int Unlink(const QByteArray &path) override { return unlink(path.constData()); }

    std::vector<Entry> Entries(const QByteArray &folder, int &error) override
    {
        std::vector<Entry> entries;
        error = 0;
        DIR *stream = opendir(folder.constData());
        if (!stream) {
            error = errno;
            return entries;
        }
        while (true) {
            errno = 0;
            const dirent *entry = readdir(stream);
            if (!entry) {
                error = errno;
                break;
            }
            const QByteArray name(entry->d_name);
            if (name != "." && name != "..")
                entries.push_back({ name, entry->d_type });
        }
        closedir(stream);
        return entries;
    }
};

} // namespace

Disk &SystemDisk()
{
    static TheDisk disk;
    return disk;
}

} // namespace platform
