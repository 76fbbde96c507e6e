#pragma once

#include <QByteArray>
#include <QDirIterator>
#include <QFile>
#include <QString>

#include <map>

// The files in a folder and below it, hidden ones too and those that links lead to, by their paths from
// there. Folders are there with nothing in them, under names that end in a slash.
inline std::map<QString, QByteArray> FolderContent(const QString &folder)
{
    std::map<QString, QByteArray> content;
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    while (entries.hasNext()) {
        const QString path = entries.next();
        const QString name = path.mid(folder.size() + 1);
        QFile file(path);
        if (entries.fileInfo().isDir())
            content[name + u'/'] = QByteArray();
        else if (file.open(QIODevice::ReadOnly))
            content[name] = file.readAll();
    }
    return content;
}
