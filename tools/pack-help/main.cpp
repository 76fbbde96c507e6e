// Packs the pages of the help into the file that the program shows. Contents and index are written as plain
// text: a line each of "Title = Page.htm#place", two blanks deeper for each level.

#include "ChmWriter.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

#include <cstdio>
#include <stdexcept>

namespace {

const QString kContentsSource = QStringLiteral("contents.txt");
const QString kIndexSource = QStringLiteral("index.txt");
const QString kTitle = QStringLiteral("Tumblewick Help");

[[noreturn]] void Refuse(const QString &message)
{
    throw std::runtime_error(message.toStdString());
}

std::map<QString, QByteArray> ReadFolder(const QString &folder)
{
    std::map<QString, QByteArray> files;
    const QDir top(QFileInfo(folder).absoluteFilePath());
    QDirIterator walk(top.path(), QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        QFile file(walk.next());
        if (!file.open(QIODevice::ReadOnly))
            Refuse(QStringLiteral("%1 cannot be read").arg(file.fileName()));
        files[top.relativeFilePath(file.fileName())] = file.readAll();
    }
    return files;
}

QByteArray Take(std::map<QString, QByteArray> &files, const QString &name)
{
    const auto found = files.find(name);
    if (found == files.end())
        Refuse(name + QStringLiteral(" is missing"));
    const QByteArray content = found->second;
    files.erase(found);
    return content;
}

// The table of contents or the index in the form that readers of compiled help know.
QByteArray SiteMap(const QString &source, const QByteArray &text, const std::map<QString, QByteArray> &files,
                   QString *firstPage)
{
    QByteArray map("<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n<HTML>\n<HEAD>\n"
                   "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\n"
                   "</HEAD>\n<BODY>\n<UL>\n");
    int depth = 0;
    const QStringList lines = QString::fromUtf8(text).split('\n');
    for (qsizetype number = 0; number < lines.size(); ++number) {
        const QString &line = lines[number];
        if (line.trimmed().isEmpty())
            continue;
        const auto refuse = [&](const QString &why) {
            Refuse(QStringLiteral("%1:%2: %3").arg(source).arg(number + 1).arg(why));
        };
        const qsizetype blanks = line.size() - QString(line).remove(QRegularExpression("^ +")).size();
        const qsizetype equals = line.lastIndexOf(QStringLiteral(" = "));
        if (equals < 0 || blanks % 2 != 0 || blanks / 2 > depth + 1)
            refuse(QStringLiteral("wanted is \"Title = Page.htm\", at most one level deeper than before"));
        const QString page = line.mid(equals + 3).trimmed();
        if (files.find(page.section('#', 0, 0)) == files.end())
            refuse(QStringLiteral("there is no page %1").arg(page));
        if (firstPage && firstPage->isEmpty())
            *firstPage = page;
        for (; depth < blanks / 2; ++depth)
            map += "<UL>\n";
        for (; depth > blanks / 2; --depth)
            map += "</UL>\n";
        map += QStringLiteral("<LI><OBJECT type=\"text/sitemap\">\n<param name=\"Name\" value=\"%1\">\n"
                              "<param name=\"Local\" value=\"%2\">\n</OBJECT>\n")
                   .arg(line.left(equals).trimmed().toHtmlEscaped(), page.toHtmlEscaped())
                   .toUtf8();
    }
    for (; depth > 0; --depth)
        map += "</UL>\n";
    return map + "</UL>\n</BODY>\n</HTML>\n";
}

void Pack(const QString &folder, const QString &path)
{
    std::map<QString, QByteArray> files = ReadFolder(folder);
    const QByteArray contents = Take(files, kContentsSource);
    const QByteArray index = Take(files, kIndexSource);
    HelpHeader header;
    header.title = kTitle;
    header.baseName = QFileInfo(path).completeBaseName();
    header.contentsFile = header.baseName + QStringLiteral(".hhc");
    header.indexFile = header.baseName + QStringLiteral(".hhk");
    const QByteArray contentsMap = SiteMap(kContentsSource, contents, files, &header.startTopic);
    const QByteArray indexMap = SiteMap(kIndexSource, index, files, nullptr);
    files[header.contentsFile] = contentsMap;
    files[header.indexFile] = indexMap;

    const QByteArray bytes = WriteChm(header, files);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        Refuse(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
}

} // namespace

int main(int argumentCount, char **arguments)
{
    QCoreApplication application(argumentCount, arguments);
    if (argumentCount != 3) {
        std::fputs("usage: pack-help FOLDER FILE.chm\n", stderr);
        return 1;
    }
    try {
        Pack(QString::fromLocal8Bit(arguments[1]), QString::fromLocal8Bit(arguments[2]));
    } catch (const std::exception &failure) {
        std::fprintf(stderr, "pack-help: %s\n", failure.what());
        return 1;
    }
    return 0;
}
