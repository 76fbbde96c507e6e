#include "platform/files/DiskPath.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using platform::DiskPath;
using platform::IsRefusedName;

// Where paths lead, and which names are refused.
class TestDiskPath : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void nameIsRefused_data();
    void nameIsRefused();
    void nameIsTaken_data();
    void nameIsTaken();
    void pathLeads_data();
    void pathLeads();
    void exactNameIsPreferred();
    void missingPathKeepsWhatIsThere();
    void refusedNameInAPath();
    void namesOfForeignDisksAreFound();

private:
    QString At(const QString &path) const { return m_folder.path() + path; }
    void Make(const QByteArray &path, const QByteArray &text = "x") const;

    QTemporaryDir m_folder;
};

void TestDiskPath::Make(const QByteArray &path, const QByteArray &text) const
{
    // Bytes, since some names are no text.
    FILE *file = fopen((m_folder.path().toUtf8() + path).constData(), "wb");
    QVERIFY(file);
    fwrite(text.constData(), 1, static_cast<size_t>(text.size()), file);
    fclose(file);
}

void TestDiskPath::initTestCase()
{
    QDir(m_folder.path()).mkpath("Lists/Deep");
    Make("/Lists/Animals");
    Make("/Lists/Deep/Last.txt");
    Make("/Set");
}

void TestDiskPath::nameIsRefused_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         { "a/b",   "a\\b",   "a:b",  "what*", "what?",   "\"",         "<a",   "a>",      "a|b",
           "tab\t", "line\n", "\x1F", "\x7F",  "con",     "CON",        "Prn",  "aux",     "NUL",
           "com1",  "Com9",   "lpt1", "LPT9",  "con.txt", "nul.tar.gz", "con ", "aux .txt" })
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestDiskPath::nameIsRefused()
{
    QFETCH(QString, name);
    QVERIFY(IsRefusedName(name));
}

void TestDiskPath::nameIsTaken_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : { "Animals", "two words", " ", "a.b.c", "console", "com", "com0", "com10", "lpt",
                              "acon", "my con", "Zoë's list!", "世界", "#1 & 2 (new) [x] {y} %$'`~^=+;,@" })
        QTest::newRow(name) << QString::fromUtf8(name);
}

void TestDiskPath::nameIsTaken()
{
    QFETCH(QString, name);
    QVERIFY(!IsRefusedName(name));
}

void TestDiskPath::pathLeads_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("leadsTo"); // empty: nowhere
    QTest::newRow("backslash") << "\\Set"
                               << "/Set";
    QTest::newRow("slash") << "/Set"
                           << "/Set";
    QTest::newRow("other letter case") << "\\sET"
                                       << "/Set";
    QTest::newRow("other case in every component") << "\\lists\\DEEP\\last.TXT"
                                                   << "/Lists/Deep/Last.txt";
    QTest::newRow("mixed separators") << "/lists\\deep/Last.txt"
                                      << "/Lists/Deep/Last.txt";
    QTest::newRow("doubled separators") << "\\\\Lists\\\\/Animals"
                                        << "/Lists/Animals";
    QTest::newRow("separator at the end of a folder") << "\\Lists\\"
                                                      << "/Lists";
    QTest::newRow("folder above") << "\\Lists\\..\\set"
                                  << "/Lists/../Set";
    QTest::newRow("missing file") << "\\Lists\\Plants"
                                  << "";
    QTest::newRow("missing folder") << "\\Nothing\\Animals"
                                    << "";
    QTest::newRow("file taken for a folder") << "\\Set\\Animals"
                                             << "";
    QTest::newRow("blank at the end") << "\\Lists\\Animals "
                                      << "";
    QTest::newRow("null character") << QString("\\Lists\\Animals") + QChar(0) << "";
}

void TestDiskPath::pathLeads()
{
    QFETCH(QString, path);
    QFETCH(QString, leadsTo);
    const DiskPath place(At(path));
    QCOMPARE(place.exists, !leadsTo.isEmpty());
    if (place.exists)
        QCOMPARE(place.Text(), At(leadsTo));
}

void TestDiskPath::exactNameIsPreferred()
{
    Make("/Lists/colours");
    Make("/Lists/Colours");
    QCOMPARE(DiskPath(At("\\Lists\\colours")).Text(), At("/Lists/colours"));
    QCOMPARE(DiskPath(At("\\Lists\\Colours")).Text(), At("/Lists/Colours"));
    QCOMPARE(DiskPath(At("\\Lists\\COLOURS")).Text(), At("/Lists/Colours")); // capitals come first
}

void TestDiskPath::missingPathKeepsWhatIsThere()
{
    const DiskPath file(At("\\lists\\Plants"));
    QVERIFY(!file.exists);
    QVERIFY(file.folderExists);
    QCOMPARE(file.Text(), At("/Lists/Plants")); // a new list goes to the folder that is there
    const DiskPath deep(At("\\nothing\\Plants"));
    QVERIFY(!deep.folderExists);
    QVERIFY(!DiskPath(QString()).exists);
    QVERIFY(!DiskPath(QString()).folderExists);
    QVERIFY(DiskPath("\\").isFolder);
}

void TestDiskPath::refusedNameInAPath()
{
    QVERIFY(!DiskPath(At("\\Lists\\Animals")).isRefused);
    QVERIFY(DiskPath(At("\\Lists\\What?")).isRefused);
    QVERIFY(DiskPath(At("\\con\\Animals")).isRefused);
    Make("/Lists/Who?");
    QVERIFY(DiskPath(At("\\Lists\\Who?")).isRefused); // also when it is there
    QDir(m_folder.path()).mkpath("a:b");
    Make("/a:b/Animals");
    QVERIFY(!DiskPath(At("\\a:b\\Animals")).isRefused); // a folder is passed through
    QVERIFY(DiskPath(At("\\A:C\\Animals")).isRefused);
}

void TestDiskPath::namesOfForeignDisksAreFound()
{
    Make("/Lists/Zo\xEB"); // a name in the old code page
    const DiskPath foreign(At(QString::fromUtf8("\\Lists\\Zoë")));
    QVERIFY(foreign.exists);
    QCOMPARE(foreign.native, m_folder.path().toUtf8() + "/Lists/Zo\xEB");
    Make("/Lists/Cafe\xCC\x81"); // letter and accent apart
    QVERIFY(DiskPath(At(QString::fromUtf8("\\Lists\\café"))).exists);
}

QTEST_APPLESS_MAIN(TestDiskPath)
#include "TestDiskPath.moc"
