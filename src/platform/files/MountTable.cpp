#include "platform/files/MountTable.h"

#include "platform/files/TextCode.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace platform {

namespace {

// Blanks, tabs, line feeds and backslashes stand in the table as a backslash and three octal digits.
QByteArray Unescaped(const QByteArray &field)
{
    QByteArray plain;
    for (qsizetype at = 0; at < field.size(); ++at) {
        bool isCode = false;
        const int code = field[at] == '\\' ? field.mid(at + 1, 3).toInt(&isCode, 8) : 0;
        if (isCode && at + 3 < field.size()) {
            plain += static_cast<char>(code);
            at += 3;
        } else {
            plain += field[at];
        }
    }
    return plain;
}

bool IsWithin(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + QLatin1Char('/'));
}

template <class Texts>
bool IsWithinAny(const QString &path, const Texts &folders)
{
    return std::any_of(folders.begin(), folders.end(),
                       [&](const char *folder) { return IsWithin(path, QLatin1String(folder)); });
}

template <class Texts>
bool IsOneOf(const QByteArray &text, const Texts &texts)
{
    return std::any_of(texts.begin(), texts.end(), [&](const char *other) { return text == other; });
}

constexpr std::array kMediaFolders = { "/media", "/run/media", "/mnt" };
constexpr std::array kSystemFolders = { "/bin", "/boot", "/dev",  "/efi", "/etc", "/lib", "/proc",
                                        "/run", "/sbin", "/snap", "/sys", "/tmp", "/usr", "/var" };
constexpr std::array kNetworkTypes = { "nfs", "nfs4", "cifs", "smb3", "smbfs", "fuse.sshfs", "afs", "davfs" };
// Mounted where media are, these are still no media.
constexpr std::array kPseudoTypes = { "autofs", "proc",     "sysfs",   "devtmpfs", "devpts",    "cgroup",
                                      "ramfs",  "cgroup2",  "mqueue",  "debugfs",  "tracefs",   "nsfs",
                                      "bpf",    "configfs", "fusectl", "overlay",  "securityfs" };

} // namespace

std::vector<Drive> DrivesOfMountTable(const QByteArray &table, const QString &home)
{
    std::vector<Drive> drives = { { home, QStringLiteral("Home folder"), Drive::Kind::Home } };
    for (const QByteArray &line : table.split('\n')) {
        const qsizetype middle = line.indexOf(" - ");
        const QList<QByteArray> before = line.left(middle).split(' ');
        const QList<QByteArray> behind = line.mid(middle + 3).split(' ');
        if (middle < 0 || before.size() < 6 || behind.size() < 2)
            continue;
        const QString path = DecodedLine(Unescaped(before[4]));
        const QByteArray &type = behind[0];
        const bool isKnown =
            std::any_of(drives.begin(), drives.end(), [&](const Drive &drive) { return drive.path == path; });
        if (!path.startsWith(QLatin1Char('/')) || path.size() == 1 || isKnown || IsOneOf(type, kPseudoTypes))
            continue;
        Drive drive{ path, path.section(QLatin1Char('/'), -1), Drive::Kind::Fixed };
        if (IsOneOf(type, kNetworkTypes))
            drive.kind = Drive::Kind::Network;
        else if (IsWithinAny(path, kMediaFolders))
            drive.kind = Drive::Kind::Removable;
        else if (IsWithinAny(path, kSystemFolders) || !behind[1].startsWith('/') || IsWithin(home, path))
            continue; // the system's own, or what the home lies in anyway
        drives.push_back(drive);
    }
    std::stable_sort(drives.begin() + 1, drives.end(), [](const Drive &left, const Drive &right) {
        if (left.kind != right.kind)
            return left.kind < right.kind;
        return left.name.compare(right.name, Qt::CaseInsensitive) < 0;
    });
    if (home != QLatin1String("/"))
        drives.push_back({ QStringLiteral("/"), QStringLiteral("Computer"), Drive::Kind::Fixed });
    return drives;
}

} // namespace platform
