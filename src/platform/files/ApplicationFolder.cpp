#include "platform/files/ApplicationFolder.h"

#include "platform/files/Disk.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cerrno>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

// What the program writes to.
const QStringList kWritten{ QStringLiteral("Lists"), QStringLiteral("QList"), QStringLiteral("Set"),
                            QStringLiteral("Lintro") };

// Copies grow in folders of this name before they are moved to their places.
const QString kWorkFolder = QStringLiteral(".first-start");

// The user's folder while it is being made, which several starts may do at once.
class Making {
public:
    explicit Making(const QString &folder)
        : m_folder(open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        // Alone here, so whatever has a working name belongs to a start that was broken off.
        if (flock(m_folder, LOCK_EX | LOCK_NB) == 0)
            ClearWorkFolders(folder);
        flock(m_folder, LOCK_SH);
    }
    ~Making()
    {
        if (m_folder >= 0)
            close(m_folder); // which lets go of the lock too
    }
    Making(const Making &) = delete;
    Making &operator=(const Making &) = delete;

private:
    static void ClearWorkFolders(const QString &folder)
    {
        const auto left =
            QDir(folder).entryList({ kWorkFolder + u'*' }, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
        for (const QString &name : left)
            QDir(folder + u'/' + name).removeRecursively();
    }

    const int m_folder;
};

bool CopyFile(const QString &from, const QString &to)
{
    return QFile::copy(from, to) &&
           QFile::setPermissions(to, QFile::permissions(to) | QFileDevice::WriteOwner);
}

// Whether something is there. Gives false too when that cannot be told, and leaves the errno.
bool IsThere(const QString &path)
{
    struct stat status {};
    return SystemDisk().Status(QFile::encodeName(path), status) == 0;
}

// What cannot be listed or looked at is no empty folder: a copy without it would stay like that for ever.
bool CopyTree(const QString &from, const QString &to)
{
    if (!QFileInfo(from).isDir())
        return CopyFile(from, to);
    if (!QDir().mkpath(to))
        return false;
    int error = 0;
    const std::vector<Disk::Entry> entries = SystemDisk().Entries(QFile::encodeName(from), error);
    return error == 0 && std::all_of(entries.begin(), entries.end(), [&](const Disk::Entry &entry) {
               const QString name = u'/' + QFile::decodeName(entry.name);
               const bool leadsNowhere = entry.type == DT_LNK && !IsThere(from + name) && errno == ENOENT;
               return leadsNowhere || CopyTree(from + name, to + name);
           });
}

// Copies `name` into `folder` unless it is there, under another name at first: a copy that is broken off must
// not pass for the user's own.
bool CopyWhereMissing(const QString &beside, const QString &folder, const QString &name)
{
    const QString to = folder + u'/' + name;
    const QString from = beside + u'/' + name;
    if (QFileInfo::exists(to))
        return true;
    if (!IsThere(from))
        return errno == ENOENT;
    const QTemporaryDir work(folder + u'/' + kWorkFolder);
    if (!work.isValid() || !CopyTree(from, work.filePath(name)))
        return false;
    // Another run may have been quicker.
    return QDir().rename(work.filePath(name), to) || QFileInfo::exists(to);
}

bool Link(const QString &target, const QString &link)
{
    const QFileInfo there(link);
    if (there.isSymLink()) {
        if (there.symLinkTarget() == target)
            return true;
        QFile::remove(link);
    } else if (there.exists()) {
        return true;
    }
    return QFile::link(target, link) || QFileInfo::exists(link);
}

bool MakeUsersFolder(const QFileInfo &program, const QString &folder)
{
    if (!QDir().mkpath(folder))
        return false;
    const QString beside = program.path();
    const Making making(folder);
    for (const QString &name : kWritten) {
        if (!CopyWhereMissing(beside, folder, name))
            return false;
    }
    // Links of an older version to what this one has no more, or does not link to.
    const QDir::Filters kinds = QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo &entry : QDir(folder).entryInfoList(kinds)) {
        if (entry.isSymLink() && (!entry.exists() || entry.fileName() == program.fileName()))
            QFile::remove(entry.filePath());
    }
    int error = 0;
    for (const Disk::Entry &entry : SystemDisk().Entries(QFile::encodeName(beside), error)) {
        const QString name = QFile::decodeName(entry.name);
        const bool isShared = !name.startsWith(u'.') && !kWritten.contains(name) &&
                              name != QLatin1String(kForEveryUser) && name != program.fileName();
        if (isShared && !Link(beside + u'/' + name, folder + u'/' + name))
            return false;
    }
    return error == 0;
}

} // namespace

QString ApplicationFolder(const QString &program, const QString &dataHome)
{
    const QFileInfo file(program);
    const QString beside = file.path();
    if (QFileInfo(beside).isWritable() && !QFileInfo::exists(beside + u'/' + QLatin1String(kForEveryUser)))
        return beside;
    const QString folder = dataHome + QStringLiteral("/Tumblewick");
    return !dataHome.isEmpty() && MakeUsersFolder(file, folder) ? folder : beside;
}

} // namespace platform
