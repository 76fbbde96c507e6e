// The help as it is shipped: every page that a screen asks for is there, and nothing points nowhere.

#include "platform/help/ChmFile.h"
#include "platform/help/SiteMap.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>

using namespace platform;

namespace {

// What the screens ask for.
const QStringList kTopics = {
    "Introduction.htm",
    "Playing the Game.htm",
    "Settings1.htm",
    "Adding, Editing and Deleting Lists.htm",
    "Add a New Spelling List.htm",
    "Tips on Pronunciation.htm",
    "Edit a Spelling List.htm",
    "Add a New Quiz.htm",
    "Edit a Quiz.htm",
    "Exporting and Importing Lists.htm",
};

QByteArray BytesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read", qPrintable(path));
    return file.readAll();
}

QStringList Matches(const QString &text, const QString &pattern)
{
    QStringList matches;
    auto found =
        QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption).globalMatch(text);
    while (found.hasNext())
        matches << found.next().captured(1);
    return matches;
}

} // namespace

class TestHelp : public QObject {
    Q_OBJECT

private slots:
    void everyTopicOfAScreenIsThere()
    {
        for (const QString &topic : kTopics) {
            QVERIFY2(m_help.Pages().contains(topic), qPrintable(topic));
            QTextDocument page;
            page.setHtml(m_help.ReadText(topic));
            QVERIFY2(page.toPlainText().size() > 800, qPrintable(topic));
        }
    }

    // A name in the code that is none of those above would be asked for in vain.
    void theCodeAsksForNothingElse()
    {
        const QString code = QString::fromUtf8(BytesOf(SOURCE_FOLDER "/shell/HelpTopics.h"));
        const QStringList topics = Matches(code, "Topic = QStringLiteral\\(\"([^\"]*)\"\\)");
        QVERIFY(topics.size() >= 4);
        for (const QString &topic : topics)
            QVERIFY2(kTopics.contains(topic), qPrintable(topic));
    }

    void theFileHoldsThePagesByteForByte()
    {
        QDirIterator walk(HELP_FOLDER, QDir::Files, QDirIterator::Subdirectories);
        int files = 0;
        while (walk.hasNext()) {
            const QString path = walk.next();
            const QString name = QDir(HELP_FOLDER).relativeFilePath(path);
            if (name.endsWith(".txt"))
                continue;
            QCOMPARE(m_help.Read(name), BytesOf(path));
            ++files;
        }
        QVERIFY(files > 12);
    }

    void everyLinkLeadsSomewhere()
    {
        int links = 0;
        for (const QString &page : m_help.Pages()) {
            for (const QString &link : Matches(m_help.ReadText(page), "<a [^>]*href=\"([^\"]*)\"")) {
                CheckTarget(page, QUrl::fromPercentEncoding(link.toUtf8()));
                ++links;
            }
        }
        QVERIFY(links > 20);
    }

    void contentsAndIndexLeadSomewhere()
    {
        const auto contents = ReadSiteMap(m_help.ReadText(m_help.ContentsFile()));
        const auto index = ReadSiteMap(m_help.ReadText(m_help.IndexFile()));
        QVERIFY(qsizetype(contents.size()) >= kTopics.size());
        QVERIFY(index.size() >= 40);
        for (const auto &lines : { contents, index })
            for (const SiteMapLine &line : lines)
                CheckTarget(line.title, line.page);
        QStringList titles;
        for (const SiteMapLine &line : index)
            titles << line.title.toLower();
        QStringList sorted = titles;
        sorted.sort();
        QCOMPARE(titles, sorted);
    }

    void everyPageStandsInTheContents()
    {
        QStringList reached;
        for (const SiteMapLine &line : ReadSiteMap(m_help.ReadText(m_help.ContentsFile())))
            reached << line.page.section('#', 0, 0);
        for (const QString &page : m_help.Pages())
            QVERIFY2(reached.contains(page), qPrintable(page));
        QCOMPARE(m_help.StartPage(), QString("Introduction.htm"));
    }

    void everyPictureCanBeSeenAndIsUsed()
    {
        QStringList used;
        for (const QString &page : m_help.Pages()) {
            const QString text = m_help.ReadText(page);
            for (const QString &tag : Matches(text, "(<img [^>]*>)")) {
                const QStringList source = Matches(tag, "src=\"([^\"]*)\"");
                QCOMPARE(source.size(), 1);
                const QImage picture = QImage::fromData(m_help.Read(source.front()));
                QVERIFY2(!picture.isNull() && picture.width() <= 500, qPrintable(source.front()));
                QVERIFY2(Matches(tag, "alt=\"([^\"]{8,})\"").size() == 1, qPrintable(tag));
                used << source.front();
            }
            for (const QString &sheet : Matches(text, "<link [^>]*href=\"([^\"]*)\""))
                QVERIFY2(m_help.Has(sheet), qPrintable(sheet));
        }
        for (const QString &picture : QDir(HELP_FOLDER "/pictures").entryList(QDir::Files))
            QVERIFY2(used.contains("pictures/" + picture), qPrintable(picture));
    }

    void everyPageHasATitleAndAHeadingAlike()
    {
        for (const QString &page : m_help.Pages()) {
            const QString text = m_help.ReadText(page);
            QCOMPARE(Matches(text, "<title>(.*)</title>").size(), 1);
            QCOMPARE(Matches(text, "<h1>(.*)</h1>"), Matches(text, "<title>(.*)</title>"));
        }
    }

private:
    void CheckTarget(const QString &from, const QString &target)
    {
        const QString page = target.section('#', 0, 0);
        const QString place = target.section('#', 1);
        const QString told = from + " -> " + target;
        QVERIFY2(m_help.Pages().contains(page), qPrintable(told));
        QVERIFY2(place.isEmpty() || m_help.ReadText(page).contains("<a name=\"" + place + "\">"),
                 qPrintable(told));
    }

    ChmFile m_help{ HELP_FILE };
};

QTEST_MAIN(TestHelp)
#include "TestHelp.moc"
