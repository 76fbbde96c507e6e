#pragma once

#include "platform/files/DiskFiles.h"
#include "support/NumberRaised.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

namespace support {

// A folder of its own for the file of one list, and what its tests have in common.
class ListFiles {
public:
    ListFiles() { QDir(folder.path()).mkdir(QStringLiteral("Lists")); }

    QString Path() const { return folder.filePath(QStringLiteral("Lists/Animals")); }
    QByteArray Content() const
    {
        QFile file(Path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }
    // The file anew, without waiting for the disk as some file systems do when one is emptied.
    std::unique_ptr<platform::TextWriter> NewFile()
    {
        QFile::remove(Path());
        return disk.OpenForWriting(Path(), platform::FileWriting::Replace, true);
    }
    QStringList Lines()
    {
        QStringList lines;
        const auto reader = disk.OpenForReading(Path());
        while (!reader->AtEnd())
            lines << reader->ReadLine();
        return lines;
    }
    // As the screens do it: out under any name, the list deleted, and in again under its own.
    void ExportAndImport()
    {
        const QString copy = folder.filePath(QStringLiteral("Copy of it.txt"));
        disk.FileCopy(Path(), copy);
        disk.Kill(Path());
        disk.FileCopy(copy, folder.path() + QStringLiteral("\\lists\\Animals"));
        disk.Kill(copy);
    }

    // In memory where that can be had: ten thousand lists are much for a disk that others use too.
    QTemporaryDir folder{ (QFileInfo(QStringLiteral("/dev/shm")).isWritable() ? QStringLiteral("/dev/shm")
                                                                              : QDir::tempPath()) +
                          QStringLiteral("/lists-") };
    platform::DiskFiles disk;
};

// One to twelve letters of the western code, of all scripts, or of both, without what a box refuses or cannot
// hold.
inline QString DrawnText(QRandomGenerator &random)
{
    static constexpr char32_t kTops[] = { 0x7f, 0x100, 0x2122, 0x10000, 0x110000 };
    const char32_t top = kTops[random.bounded(5)];
    QString text;
    for (int length = 1 + static_cast<int>(random.bounded(12)); length > 0;) {
        const char32_t letter = random.bounded(static_cast<quint32>(top));
        if (letter == '_' || letter == '\r' || letter == '\n' || letter == 0xfeff ||
            (letter >= 0xd800 && letter < 0xe000))
            continue;
        text += QString::fromUcs4(&letter, 1);
        --length;
    }
    return text;
}

} // namespace support
