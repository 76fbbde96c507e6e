// A help file as its reader sees it: contents, index, pages, pictures and a search.

#include "Fuzz.h"

#include "platform/help/HelpBook.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

using platform::HelpBook;
using platform::SiteMapLine;

namespace {

// The library that fetches the pages wants a path.
QString FileWith(const QByteArray &bytes)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = { name, nullptr };
    static const QGuiApplication application(count, arguments);
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Any.chm"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("no room for the help");
    return path;
}

void CheckLines(const std::vector<SiteMapLine> &lines)
{
    int before = -1;
    for (const SiteMapLine &line : lines) {
        PROMISE(line.depth >= 0 && line.depth <= before + 1);
        before = line.depth;
    }
}

} // namespace

void Try(const QByteArray &bytes)
{
    CheckLines(platform::ReadSiteMap(QString::fromUtf8(bytes)));

    const HelpBook book(FileWith(bytes));
    CheckLines(book.Contents());
    CheckLines(book.Index());
    PROMISE(!book.Page(book.StartPage()).isEmpty());
    PROMISE(!book.Page(QStringLiteral("no such page.htm")).isEmpty());
    for (const SiteMapLine &line : book.Contents())
        book.Page(line.page);
    book.Bytes(QStringLiteral("pictures/menu.png"));
    for (const platform::HelpHit &hit : book.Search(QStringLiteral("the lists")))
        PROMISE(!hit.page.isEmpty());
}
