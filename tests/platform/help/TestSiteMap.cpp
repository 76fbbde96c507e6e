// The table of contents and the index of a compiled help file.

#include "platform/help/SiteMap.h"

#include <QTest>

using namespace platform;

namespace {

QString Line(const QString &title, const QString &page)
{
    return QStringLiteral("<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"%1\">"
                          "<param name=\"Local\" value=\"%2\"></OBJECT>\n")
        .arg(title, page);
}

QString Told(const std::vector<SiteMapLine> &lines)
{
    QStringList told;
    for (const SiteMapLine &line : lines)
        told << QString(line.depth, '>') + line.title + '=' + line.page;
    return told.join('|');
}

} // namespace

class TestSiteMap : public QObject {
    Q_OBJECT

private slots:
    void linesAreRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("lines");
        QTest::newRow("nothing") << ""
                                 << "";
        QTest::newRow("two on one level") << "<UL>" + Line("A", "a.htm") + Line("B", "b.htm#c") + "</UL>"
                                          << "A=a.htm|B=b.htm#c";
        QTest::newRow("levels") << "<UL>" + Line("A", "a.htm") + "<UL>" + Line("B", "b.htm") + "</UL>" +
                                       Line("C", "c.htm") + "</UL>"
                                << "A=a.htm|>B=b.htm|C=c.htm";
        QTest::newRow("a level left out") << "<UL><UL><UL>" + Line("A", "a.htm") + "</UL></UL></UL>"
                                          << "A=a.htm";
        QTest::newRow("more ends than beginnings") << "</UL></UL><UL>" + Line("A", "a.htm") << "A=a.htm";
        QTest::newRow("signs in a title")
            << "<UL>" + Line("&quot;A&quot; &amp; B", "a.htm") << "\"A\" & B=a.htm";
        QTest::newRow("a heading alone") << "<ul><li><object><param name=Name value='A'></object></ul>"
                                         << "A=";
        QTest::newRow("no title") << "<UL><OBJECT><param name=\"Local\" value=\"a.htm\"></OBJECT></UL>"
                                  << "";
        QTest::newRow("never closed") << "<UL><OBJECT><param name=\"Name\" value=\"A\">"
                                      << "";
        QTest::newRow("rubbish") << "<<<UL <param =\"\"> </object></object> & \x01"
                                 << "";
    }
    void linesAreRead()
    {
        QFETCH(QString, text);
        QFETCH(QString, lines);
        QCOMPARE(Told(ReadSiteMap(text)), lines);
    }

    void thereIsAnEndToAllThings()
    {
        QString text;
        for (int level = 0; level < 20000; ++level)
            text += "<UL>" + Line("A", "a.htm");
        const auto lines = ReadSiteMap(text);
        QVERIFY(lines.size() >= 1000 && lines.size() <= 5000);
        QVERIFY(lines.back().depth <= 12);
    }
};

QTEST_GUILESS_MAIN(TestSiteMap)
#include "TestSiteMap.moc"
