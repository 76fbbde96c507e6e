#include "platform/files/DiskPath.h"

#include "platform/files/TextCode.h"

#include <algorithm>
#include <array>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>

namespace platform {

namespace {

// A name that is not UTF-8 comes from a foreign disk and is read like a line of text.
QString TextOf(const Disk::Entry &entry)
{
    return DecodedLine(entry.name);
}

// The name in `folder` that `name` stands for: in any letter case, the first in order when there are several.
QByteArray Matching(Disk &disk, const QByteArray &folder, const QString &name)
{
    int error = 0;
    const QString wanted = name.normalized(QString::NormalizationForm_C);
    const Disk::Entry *best = nullptr;
    const std::vector<Disk::Entry> entries = disk.Entries(folder, error);
    for (const Disk::Entry &entry : entries) {
        const QString text = TextOf(entry);
        if (text.normalized(QString::NormalizationForm_C).compare(wanted, Qt::CaseInsensitive) != 0)
            continue;
        if (text == name)
            return entry.name;
        if (!best || entry.name < best->name)
            best = &entry;
    }
    return best ? best->name : QByteArray();
}

bool Look(Disk &disk, const QByteArray &path, bool &isFolder)
{
    struct stat status {};
    if (disk.Status(path, status) != 0)
        return false;
    isFolder = S_ISDIR(status.st_mode);
    return true;
}

} // namespace

bool IsRefusedName(const QString &name)
{
    static const QString forbidden = QStringLiteral("/\\:*?\"<>|");
    if (std::any_of(name.begin(), name.end(), [](QChar character) {
            return character.unicode() < 0x20 || character.unicode() == 0x7F || forbidden.contains(character);
        }))
        return true;
    // A device's name stays one with anything behind a full stop.
    const QString stem = name.section(QLatin1Char('.'), 0, 0).trimmed().toLower();
    static constexpr std::array kDevices = { "con", "prn", "aux", "nul" };
    if (std::any_of(kDevices.begin(), kDevices.end(),
                    [&](const char *device) { return stem == QLatin1String(device); }))
        return true;
    return stem.size() == 4 &&
           (stem.startsWith(QLatin1String("com")) || stem.startsWith(QLatin1String("lpt"))) &&
           stem[3] >= QLatin1Char('1') && stem[3] <= QLatin1Char('9');
}

QStringList FolderEntries(Disk &disk, const QByteArray &folder, EntryKind kind, int &error)
{
    const bool wantsFolders = kind == EntryKind::Folder;
    QStringList names;
    for (const Disk::Entry &entry : disk.Entries(folder, error)) {
        if (wantsFolders && entry.name.startsWith('.'))
            continue;
        // A look at each of thousands of files takes its time, on a network above all.
        bool isWanted = entry.type == (wantsFolders ? DT_DIR : DT_REG);
        if (entry.type == DT_UNKNOWN || entry.type == DT_LNK) {
            struct stat status {};
            isWanted = disk.Status(folder + '/' + entry.name, status) == 0 &&
                       (wantsFolders ? S_ISDIR(status.st_mode) : S_ISREG(status.st_mode));
        }
        if (isWanted)
            names << TextOf(entry);
    }
    return names;
}

DiskPath::DiskPath(const QString &path, Disk &disk)
{
    QString slashed = path;
    slashed.replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QStringList components = slashed.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    const bool isAbsolute = slashed.startsWith(QLatin1Char('/'));
    native = isAbsolute ? QByteArrayLiteral("/") : QByteArray();
    namesNoFile = components.isEmpty() || slashed.endsWith(QLatin1Char('/'));
    exists = isFolder = folderExists = isAbsolute || !components.isEmpty();

    for (const QString &component : components) {
        folderExists = exists && isFolder;
        const QByteArray folder = native.isEmpty() ? QByteArrayLiteral(".") : native;
        const QByteArray start = native.isEmpty() || native.endsWith('/') ? native : native + '/';
        native = start + component.toUtf8();
        exists = folderExists && !component.contains(QChar(0)) && Look(disk, native, isFolder);
        if (folderExists && !exists) {
            const QByteArray match = Matching(disk, folder, component);
            if (!match.isEmpty()) {
                native = start + match;
                exists = Look(disk, native, isFolder);
            }
        }
        isFolder = exists && isFolder;
        // A folder of such a name that is there already is nothing that a list's name has brought about.
        if (!isFolder && IsRefusedName(component))
            isRefused = true;
    }
}

QString DiskPath::Text() const
{
    return DecodedLine(native);
}

} // namespace platform
