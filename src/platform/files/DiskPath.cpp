#include "platform/files/DiskPath.h"

#include "platform/files/TextCode.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

#include <dirent.h>
#include <sys/stat.h>

namespace platform {

namespace {

struct Entry {
    QByteArray bytes;
    QString text;
    unsigned char type; // DT_UNKNOWN, or DT_LNK, when only a closer look would tell
};

std::vector<Entry> ReadFolder(const QByteArray &folder, int &error)
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
        const QByteArray bytes(entry->d_name);
        if (bytes != "." && bytes != "..")
            // A name that is not UTF-8 comes from a foreign disk and is read like a line of text.
            entries.push_back({ bytes, DecodedLine(bytes), entry->d_type });
    }
    closedir(stream);
    return entries;
}

// The name in `folder` that `name` stands for: in any letter case, the first in order when there are several.
QByteArray Matching(const QByteArray &folder, const QString &name)
{
    int error = 0;
    const QString wanted = name.normalized(QString::NormalizationForm_C);
    const Entry *best = nullptr;
    const std::vector<Entry> entries = ReadFolder(folder, error);
    for (const Entry &entry : entries) {
        const QString text = entry.text.normalized(QString::NormalizationForm_C);
        if (text.compare(wanted, Qt::CaseInsensitive) != 0)
            continue;
        if (entry.text == name)
            return entry.bytes;
        if (!best || entry.bytes < best->bytes)
            best = &entry;
    }
    return best ? best->bytes : QByteArray();
}

bool Look(const QByteArray &path, bool &isFolder)
{
    struct stat status {};
    if (stat(path.constData(), &status) != 0)
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

QStringList FolderEntries(const QByteArray &folder, EntryKind kind, int &error)
{
    const bool wantsFolders = kind == EntryKind::Folder;
    QStringList names;
    for (const Entry &entry : ReadFolder(folder, error)) {
        if (entry.bytes.startsWith('.'))
            continue;
        // A look at each of thousands of files takes its time, on a network above all.
        bool isWanted = entry.type == (wantsFolders ? DT_DIR : DT_REG);
        if (entry.type == DT_UNKNOWN || entry.type == DT_LNK) {
            struct stat status {};
            isWanted = stat((folder + '/' + entry.bytes).constData(), &status) == 0 &&
                       (wantsFolders ? S_ISDIR(status.st_mode) : S_ISREG(status.st_mode));
        }
        if (isWanted)
            names << entry.text;
    }
    return names;
}

DiskPath::DiskPath(const QString &path)
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
        exists = folderExists && !component.contains(QChar(0)) && Look(native, isFolder);
        if (folderExists && !exists) {
            const QByteArray match = Matching(folder, component);
            if (!match.isEmpty()) {
                native = start + match;
                exists = Look(native, isFolder);
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
