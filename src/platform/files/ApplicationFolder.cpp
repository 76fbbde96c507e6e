#include "platform/files/ApplicationFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace platform {

namespace {

// What the program writes to.
const QStringList kWritten{ QStringLiteral("Lists"), QStringLiteral("QList"), QStringLiteral("Set"),
                            QStringLiteral("Lintro") };

bool CopyFile(const QString &from, const QString &to)
{
    return QFile::copy(from, to) &&
           QFile::setPermissions(to, QFile::permissions(to) | QFileDevice::WriteOwner);
}

bool CopyTree(const QString &from, const QString &to)
{
    if (!QFileInfo(from).isDir())
        return CopyFile(from, to);
    if (!QDir().mkpath(to))
        return false;
    const auto entries = QDir(from).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    return std::all_of(entries.begin(), entries.end(),
                       [&](const QString &name) { return CopyTree(from + u'/' + name, to + u'/' + name); });
}

// Copies `name` into `folder` unless it is there, under another name at first: a copy that is broken off must
// not pass for the user's own.
bool CopyWhereMissing(const QString &beside, const QString &folder, const QString &name)
{
    const QString to = folder + u'/' + name;
    const QString from = beside + u'/' + name;
    if (QFileInfo::exists(to) || !QFileInfo::exists(from))
        return true;
    const QTemporaryDir work(folder + QStringLiteral("/.first-start"));
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

bool MakeUsersFolder(const QString &beside, const QString &folder)
{
    if (!QDir().mkpath(folder))
        return false;
    for (const QString &name : kWritten) {
        if (!CopyWhereMissing(beside, folder, name))
            return false;
    }
    // Links of an older version to what this one has no more.
    for (const QFileInfo &entry : QDir(folder).entryInfoList(QDir::System | QDir::NoDotAndDotDot)) {
        if (entry.isSymLink() && !entry.exists())
            QFile::remove(entry.filePath());
    }
    for (const QFileInfo &entry : QDir(beside).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        const QString name = entry.fileName();
        const bool shared = !kWritten.contains(name) && name != QLatin1String(kForEveryUser);
        if (shared && !Link(entry.filePath(), folder + u'/' + name))
            return false;
    }
    return true;
}

} // namespace

QString ApplicationFolder(const QString &beside, const QString &dataHome)
{
    if (QFileInfo(beside).isWritable() && !QFileInfo::exists(beside + u'/' + QLatin1String(kForEveryUser)))
        return beside;
    const QString folder = dataHome + QStringLiteral("/Tumblewick");
    return !dataHome.isEmpty() && MakeUsersFolder(beside, folder) ? folder : beside;
}

} // namespace platform
