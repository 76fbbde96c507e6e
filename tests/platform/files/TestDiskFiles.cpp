#include "platform/files/DiskFiles.h"

#include "platform/Error.h"
#include "support/AsOrdinaryUser.h"
#include "support/NumberRaised.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <chrono>
#include <future>
#include <optional>

#include <sys/stat.h>
#include <unistd.h>

using platform::DiskFiles;
using platform::FileWriting;
using platform::NumberOfErrno;
using support::AsOrdinaryUser;
using support::NumberRaised;
using namespace std::chrono_literals;

// Text files on the disk.
class TestDiskFiles : public QObject {
    Q_OBJECT
private slots:
    void init();

    void linesAreRead_data();
    void linesAreRead();
    void linesAcrossTheBuffersEdgeAreRead();
    void readingPastTheEndRaises62();
    void longListIsReadAtOnce();
    void longLinesAreReadAtOnce();

    void linesAreWritten();
    void emptyListIsAFileOfNoBytes();
    void replacingEmptiesTheFileAtOnce();
    void aReaderWaitsForTheWriter();
    void aWriterWaitsForTheOther();
    void aReaderKeepsNobodyWaiting();
    void aWriterThatDoesNotEndIsNotWaitedForForEver();
    void appendingAddsToTheEnd();
    void lineThatIsWrittenInPiecesIsCodedWhole();
    void whateverIsWrittenComesBack_data();
    void whateverIsWrittenComesBack();
    void writingAfterCloseRaises52();
    void closingTwiceIsFine();
    void fullDiskRaises61();
    void fullDiskDuringACopyRaises61();

    void failingCallsRaise_data();
    void failingCallsRaise();
    void missingRightsRaise70();
    void unreadableFolderRaises75();
    void pipeRaises75AndDoesNotHang();

    void existenceIsTold();
    void realPathIsGiven();
    void folderIsListed();
    void foldersOfAFolderAreListed();
    void killRemovesInAnyLetterCase();
    void copyIsExactAndReplaces();
    void copyOntoItselfLeavesItAlone();

    void errnoHasANumber_data();
    void errnoHasANumber();

private:
    QString At(const QString &path) const { return m_folder->path() + path; }
    void Make(const QString &path, const QByteArray &bytes) const;
    QByteArray Bytes(const QString &path) const;
    QStringList Lines(const QString &path);

    std::optional<QTemporaryDir> m_folder;
    DiskFiles m_files;
};

void TestDiskFiles::init()
{
    m_folder.emplace();
    chmod(qPrintable(m_folder->path()), 0755);
    QVERIFY(QDir(m_folder->path()).mkpath("Lists"));
}

void TestDiskFiles::Make(const QString &path, const QByteArray &bytes) const
{
    QFile file(At(path));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray TestDiskFiles::Bytes(const QString &path) const
{
    QFile file(At(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
}

QStringList TestDiskFiles::Lines(const QString &path)
{
    QStringList lines;
    const auto reader = m_files.OpenForReading(At(path));
    while (!reader->AtEnd())
        lines << reader->ReadLine();
    return lines;
}

void TestDiskFiles::linesAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("empty file") << QByteArray() << QStringList();
    QTest::newRow("one line") << QByteArray("cat\r\n") << QStringList{ "cat" };
    QTest::newRow("last line without an end") << QByteArray("cat\r\ndog") << QStringList{ "cat", "dog" };
    QTest::newRow("blank lines") << QByteArray("\r\n\r\ncat\r\n\r\n") << QStringList{ "", "", "cat", "" };
    QTest::newRow("lone line feeds") << QByteArray("cat\ndog\n") << QStringList{ "cat", "dog" };
    QTest::newRow("lone carriage returns") << QByteArray("cat\rdog\r") << QStringList{ "cat", "dog" };
    QTest::newRow("all mixed") << QByteArray("a\r\nb\nc\rd\n\re\r\r\nf")
                               << QStringList{ "a", "b", "c", "d", "", "e", "", "f" };
    QTest::newRow("each line by itself") << QByteArray("Zo\xEB\r\nZo\xC3\xAB\r\n")
                                         << QStringList{ QString::fromUtf8("Zoë"), QString::fromUtf8("Zoë") };
    QTest::newRow("mark at the start") << QByteArray("\xEF\xBB\xBF"
                                                     "cat\r\n")
                                       << QStringList{ "cat" };
    QTest::newRow("nothing but a mark") << QByteArray("\xEF\xBB\xBF") << QStringList();
    QTest::newRow("blanks stay") << QByteArray(" a b \t\r\n") << QStringList{ " a b \t" };
    QTest::newRow("null and end-of-text characters") << QByteArray("a\0b\r\n\x1A"
                                                                   "c\r\n",
                                                                   9)
                                                     << QStringList{ QString("a") + QChar(0) + "b", "\x1A"
                                                                                                    "c" };
}

void TestDiskFiles::linesAreRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, lines);
    Make("/list", bytes);
    QCOMPARE(Lines("\\LIST"), lines);
}

void TestDiskFiles::linesAcrossTheBuffersEdgeAreRead()
{
    // The CR and the LF of a line lie to either side of every place where a chunk may end.
    for (int length = 65530; length < 65542; ++length) {
        Make("/list", QByteArray(length, 'a') + "\r\nb\r\n");
        QCOMPARE(Lines("/list"), QStringList({ QString(length, 'a'), "b" }));
        Make("/list", QByteArray(length, 'a') + "\r\n");
        QCOMPARE(Lines("/list"), QStringList({ QString(length, 'a') }));
        Make("/list", QByteArray(length, 'a') + "\r");
        QCOMPARE(Lines("/list"), QStringList({ QString(length, 'a') }));
        Make("/list", QByteArray(length, 'a') + "\rb");
        QCOMPARE(Lines("/list"), QStringList({ QString(length, 'a'), "b" }));
    }
}

void TestDiskFiles::readingPastTheEndRaises62()
{
    Make("/list", "cat\r\n");
    const auto reader = m_files.OpenForReading(At("/list"));
    QCOMPARE(reader->ReadLine(), "cat");
    QCOMPARE(NumberRaised([&] { reader->ReadLine(); }), 62);
    QCOMPARE(NumberRaised([&] { reader->ReadLine(); }), 62);
}

void TestDiskFiles::longListIsReadAtOnce()
{
    QByteArray bytes;
    for (int line = 0; line < 32767; ++line)
        bytes += "word" + QByteArray::number(line) + "_how to say it, caf\xE9\r\n";
    Make("/list", bytes);
    QElapsedTimer clock;
    clock.start();
    const QStringList lines = Lines("/list");
    const auto taken = clock.elapsed();
    QCOMPARE(lines.size(), 32767);
    QCOMPARE(lines.last(), QString::fromUtf8("word32766_how to say it, café"));
    QVERIFY2(taken < 1000, qPrintable(QString("%1 ms").arg(taken)));
}

void TestDiskFiles::longLinesAreReadAtOnce()
{
    QByteArray bytes;
    for (int line = 0; line < 500; ++line)
        bytes += QByteArray(10000, 'a') + "\r\n";
    bytes += QByteArray(5'000'000, 'b');
    Make("/list", bytes);
    QElapsedTimer clock;
    clock.start();
    const QStringList lines = Lines("/list");
    const auto taken = clock.elapsed();
    QCOMPARE(lines.size(), 501);
    QCOMPARE(lines.first().size(), 10000);
    QCOMPARE(lines.last().size(), 5'000'000);
    QVERIFY2(taken < 2000, qPrintable(QString("%1 ms").arg(taken)));
}

void TestDiskFiles::linesAreWritten()
{
    const auto writer = m_files.OpenForWriting(At("\\lists\\Animals"), FileWriting::Replace, true);
    writer->WriteLine("cat");
    writer->WriteLine(QString::fromUtf8("Zoë"));
    writer->WriteLine(QString::fromUtf8("кот"));
    writer->WriteLine("");
    writer->Close();
    QCOMPARE(Bytes("/Lists/Animals"), QByteArray("cat\r\nZo\xEB\r\n\xD0\xBA\xD0\xBE\xD1\x82\r\n\r\n"));
}

void TestDiskFiles::emptyListIsAFileOfNoBytes()
{
    m_files.OpenForWriting(At("/list"), FileWriting::Replace, true)->Close();
    QCOMPARE(Bytes("/list"), QByteArray());
}

void TestDiskFiles::replacingEmptiesTheFileAtOnce()
{
    Make("/list", "old\r\n");
    const auto writer = m_files.OpenForWriting(At("/LIST"), FileWriting::Replace, false);
    QCOMPARE(Bytes("/list"), QByteArray());
    writer->WriteLine("new");
    writer->Close();
    QCOMPARE(Bytes("/list"), QByteArray("new\r\n"));
    QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList{ "list" });
}

// Two programs may work on the same files; here they are threads with files of their own.
void TestDiskFiles::aReaderWaitsForTheWriter()
{
    Make("/Set", "Intro\r\nold\r\n");
    auto writer = m_files.OpenForWriting(At("/Set"), FileWriting::Replace, false);
    auto reading = std::async(std::launch::async, [path = At("/Set")] {
        DiskFiles files;
        const auto reader = files.OpenForReading(path);
        return QStringList{ reader->ReadLine(), reader->ReadLine() };
    });
    QCOMPARE(reading.wait_for(30ms), std::future_status::timeout);
    writer->WriteLine("No Intro");
    writer->WriteLine("new");
    writer->Close();
    QCOMPARE(reading.get(), QStringList({ "No Intro", "new" }));
}

void TestDiskFiles::aWriterWaitsForTheOther()
{
    auto writer = m_files.OpenForWriting(At("/Set"), FileWriting::Replace, true);
    auto writing = std::async(std::launch::async, [path = At("/Set")] {
        DiskFiles files;
        const auto other = files.OpenForWriting(path, FileWriting::Replace, false);
        other->WriteLine("short");
        other->Close();
    });
    QCOMPARE(writing.wait_for(30ms), std::future_status::timeout);
    writer->WriteLine("a long line");
    writer->Close();
    writing.get();
    QCOMPARE(Bytes("/Set"), QByteArray("short\r\n"));
}

void TestDiskFiles::aReaderKeepsNobodyWaiting()
{
    Make("/list", "one\r\ntwo\r\n");
    const auto reader = m_files.OpenForReading(At("/list"));
    QElapsedTimer time;
    time.start();
    const auto writer = m_files.OpenForWriting(At("/list"), FileWriting::Replace, false);
    writer->WriteLine("three");
    writer->Close();
    QVERIFY(time.elapsed() < 500);
    QCOMPARE(reader->ReadLine(), QString("one"));
    QCOMPARE(reader->ReadLine(), QString("two"));
    QVERIFY(reader->AtEnd());
}

void TestDiskFiles::aWriterThatDoesNotEndIsNotWaitedForForEver()
{
    Make("/list", "one\r\n");
    const auto writer = m_files.OpenForWriting(At("/list"), FileWriting::Replace, false);
    const auto reader = m_files.OpenForReading(At("/list"));
    QVERIFY(reader->AtEnd());
}

void TestDiskFiles::appendingAddsToTheEnd()
{
    Make("/list", "a\r\nb");
    {
        const auto writer = m_files.OpenForWriting(At("/list"), FileWriting::Append, false);
        writer->WriteLine("c"); // an unfinished line goes on
    }
    QCOMPARE(Bytes("/list"), QByteArray("a\r\nbc\r\n"));
}

void TestDiskFiles::lineThatIsWrittenInPiecesIsCodedWhole()
{
    const auto writer = m_files.OpenForWriting(At("/list"), FileWriting::Replace, true);
    writer->Write(QString::fromUtf8("é"));
    writer->Write(QString::fromUtf8(" ł"));
    writer->WriteLine("!");
    writer->Write(QString::fromUtf8("é\r\nł\n"));
    writer->Write("end");
    writer->Close();
    QCOMPARE(Bytes("/list"), QByteArray("\xC3\xA9 \xC5\x82!\r\n\xE9\r\n\xC5\x82\nend"));
}

void TestDiskFiles::whateverIsWrittenComesBack_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("plain") << QStringList{ "cat", "dog" };
    QTest::newRow("blank ones") << QStringList{ "", "", "" };
    QTest::newRow("any letters") << QStringList{ QString::fromUtf8("Ã©"), QString::fromUtf8("€uro"),
                                                 QString::fromUtf8("世界"), QString::fromUtf8("🦜 ë") };
    QTest::newRow("long") << QStringList{ QString(10000, QChar(0xEB)), QString(200000, 'x') };
}

void TestDiskFiles::whateverIsWrittenComesBack()
{
    QFETCH(QStringList, lines);
    const auto writer = m_files.OpenForWriting(At("/list"), FileWriting::Replace, true);
    for (const QString &line : lines)
        writer->WriteLine(line);
    writer->Close();
    QCOMPARE(Lines("/list"), lines);
}

void TestDiskFiles::writingAfterCloseRaises52()
{
    const auto writer = m_files.OpenForWriting(At("/list"), FileWriting::Replace, true);
    writer->Close();
    QCOMPARE(NumberRaised([&] { writer->WriteLine("late"); }), 52);
    QCOMPARE(NumberRaised([&] { writer->Write("late"); }), 52);
    QCOMPARE(Bytes("/list"), QByteArray());
}

void TestDiskFiles::closingTwiceIsFine()
{
    const auto writer = m_files.OpenForWriting(At("/list"), FileWriting::Replace, true);
    writer->WriteLine("a");
    writer->Close();
    writer->Close();
    QCOMPARE(Bytes("/list"), QByteArray("a\r\n"));
}

void TestDiskFiles::fullDiskRaises61()
{
    QVERIFY(QFile::exists("/dev/full"));
    auto writer = m_files.OpenForWriting("/dev/full", FileWriting::Append, false);
    writer->WriteLine("a"); // still on its way
    QCOMPARE(NumberRaised([&] { writer->Close(); }), 61);
    writer = m_files.OpenForWriting("/dev/full", FileWriting::Append, false);
    QCOMPARE(NumberRaised([&] {
                 for (int line = 0; line < 100; ++line)
                     writer->WriteLine(QString(10000, 'a'));
             }),
             61);
    writer.reset(); // quietly
}

void TestDiskFiles::fullDiskDuringACopyRaises61()
{
    QVERIFY(QFile::exists("/dev/full"));
    Make("/list", "a\r\n");
    QVERIFY(QFile::link("/dev/full", At("/full")));
    QCOMPARE(NumberRaised([&] { m_files.FileCopy(At("/list"), At("/full")); }), 61);
    QVERIFY(QFile::exists("/dev/full"));
    QCOMPARE(Bytes("/list"), QByteArray("a\r\n"));
}

void TestDiskFiles::failingCallsRaise_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<qint32>("read");
    QTest::addColumn<qint32>("write");
    QTest::addColumn<qint32>("create");
    QTest::addColumn<qint32>("kill");
    const auto row = [](const char *name, const QString &path, qint32 read, qint32 write, qint32 create,
                        qint32 kill) { QTest::newRow(name) << path << read << write << create << kill; };
    row("missing file", "\\Lists\\Plants", 53, 53, 0, 53);
    row("missing folder", "\\Nothing\\Plants", 76, 76, 76, 76);
    row("file for a folder", "\\Set\\Plants", 76, 76, 76, 76);
    row("folder", "\\Lists", 75, 75, 75, 75);
    row("folder with separator", "\\lists\\", 75, 75, 75, 75);
    row("file with separator", "\\Set\\", 75, 75, 75, 75);
    row("missing with separator", "\\Lists\\Plants\\", 75, 75, 75, 75);
    row("question mark", "\\Lists\\What?", 52, 52, 52, 52);
    row("asterisk", "\\Lists\\*", 52, 52, 52, 52);
    row("colon", "\\Lists\\a:b", 52, 52, 52, 52);
    row("quote", "\\Lists\\\"a\"", 52, 52, 52, 52);
    row("device", "\\Lists\\con", 52, 52, 52, 52);
    row("device with ending", "\\Lists\\NUL.txt", 52, 52, 52, 52);
    row("control character", "\\Lists\\a\tb", 52, 52, 52, 52);
    row("too long", "\\Lists\\" + QString(300, 'a'), 53, 53, 52, 53);
    row("one folder up", "\\Lists\\..", 75, 75, 75, 75);
}

void TestDiskFiles::failingCallsRaise()
{
    QFETCH(QString, path);
    QFETCH(qint32, read);
    QFETCH(qint32, write);
    QFETCH(qint32, create);
    QFETCH(qint32, kill);
    Make("/Set", "x");
    const QString full = At(path);
    QCOMPARE(NumberRaised([&] { m_files.OpenForReading(full); }), read);
    QCOMPARE(NumberRaised([&] { m_files.OpenForWriting(full, FileWriting::Append, false); }), write);
    QCOMPARE(NumberRaised([&] { m_files.OpenForWriting(full, FileWriting::Replace, false); }), write);
    QCOMPARE(NumberRaised([&] { m_files.Kill(full); }), kill);
    QCOMPARE(NumberRaised([&] { m_files.FileCopy(full, At("/copy")); }), read);
    QVERIFY(!QFile::exists(At("/copy")));
    QCOMPARE(NumberRaised([&] { m_files.FileCopy(At("/Set"), full); }), create);
    QCOMPARE(NumberRaised([&] { m_files.OpenForWriting(full, FileWriting::Replace, true); }), create);
    QCOMPARE(NumberRaised([&] { m_files.OpenForReading(QString()); }), 75);
}

void TestDiskFiles::missingRightsRaise70()
{
    Make("/list", "a");
    chmod(qPrintable(At("/list")), 0);
    const AsOrdinaryUser user;
    QCOMPARE(NumberRaised([&] { m_files.OpenForReading(At("/list")); }), 70);
    QCOMPARE(NumberRaised([&] { m_files.OpenForWriting(At("/list"), FileWriting::Append, false); }), 70);
    if (geteuid() == 65534) { // the folder belongs to somebody else
        QCOMPARE(NumberRaised([&] { m_files.OpenForWriting(At("/new"), FileWriting::Replace, true); }), 70);
        QCOMPARE(NumberRaised([&] { m_files.Kill(At("/list")); }), 70);
    }
}

void TestDiskFiles::unreadableFolderRaises75()
{
    chmod(qPrintable(At("/Lists")), 0);
    const AsOrdinaryUser user;
    QCOMPARE(NumberRaised([&] { m_files.FileNames(At("/Lists")); }), 75);
}

void TestDiskFiles::pipeRaises75AndDoesNotHang()
{
    QCOMPARE(mkfifo(qPrintable(At("/pipe")), 0600), 0);
    QCOMPARE(NumberRaised([&] { m_files.OpenForReading(At("/pipe")); }), 75);
    QCOMPARE(NumberRaised([&] { m_files.OpenForWriting(At("/pipe"), FileWriting::Append, false); }), 68);
}

void TestDiskFiles::existenceIsTold()
{
    Make("/Lists/Animals", "x");
    Make("/Lists/What?", "x");
    QVERIFY(m_files.FileExists(At("\\lists\\ANIMALS")));
    QVERIFY(!m_files.FileExists(At("\\lists\\Plants")));
    QVERIFY(!m_files.FileExists(At("\\lists")));
    QVERIFY(!m_files.FileExists(At("\\lists\\")));
    QVERIFY(!m_files.FileExists(At("\\lists\\What?")));
    QVERIFY(!m_files.FileExists(QString()));
    QVERIFY(m_files.FolderExists(At("\\lists")));
    QVERIFY(m_files.FolderExists(At("\\lists\\")));
    QVERIFY(!m_files.FolderExists(At("\\lists\\Animals")));
    QVERIFY(!m_files.FolderExists(QString()));
}

void TestDiskFiles::realPathIsGiven()
{
    Make("/fireworks.mpg", "x");
    QCOMPARE(m_files.Resolve(At("\\Fireworks.MPG")), At("/fireworks.mpg"));
    QCOMPARE(m_files.Resolve(At("\\lists\\")), At("/Lists"));
    QCOMPARE(m_files.Resolve(At("\\Missing.mpg")), At("\\Missing.mpg"));
}

void TestDiskFiles::folderIsListed()
{
    QCOMPARE(m_files.FileNames(At("\\Lists")), QStringList());
    for (const char *name : { "zebra", "Apple", "apple", "Banana.txt", ".net", "no ending", "Zoo" })
        Make(QString("/Lists/") + name, "x");
    QVERIFY(QDir(At("/Lists")).mkdir("Folder"));
    QVERIFY(QFile::link(At("/Lists/zebra"), At("/Lists/link")));
    QVERIFY(QFile::link(At("/Lists/nothing"), At("/Lists/dangling")));
    QCOMPARE(m_files.FileNames(At("\\lists")),
             QStringList({ ".net", "Apple", "apple", "Banana.txt", "link", "no ending", "zebra", "Zoo" }));
    QCOMPARE(m_files.FileNames(At("\\lists\\")).size(), 8);
    QCOMPARE(NumberRaised([&] { m_files.FileNames(At("\\Nothing")); }), 76);
    QCOMPARE(NumberRaised([&] { m_files.FileNames(At("\\Lists\\Zoo")); }), 76);
    QCOMPARE(NumberRaised([&] { m_files.FileNames(QString()); }), 76);
}

void TestDiskFiles::foldersOfAFolderAreListed()
{
    for (const char *name : { "/Lists/b", "/Lists/A", "/Lists/.hidden" })
        QVERIFY(QDir().mkpath(At(name)));
    Make("/Lists/file", "x");
    QVERIFY(QFile::link(At("/Lists/A"), At("/Lists/link")));
    QVERIFY(QFile::link(At("/Lists/file"), At("/Lists/other")));
    QCOMPARE(m_files.FolderNames(At("\\lists")), QStringList({ "A", "b", "link" }));
    QCOMPARE(m_files.FileNames(At("\\lists")), QStringList({ "file", "other" }));
    QCOMPARE(NumberRaised([&] { m_files.FolderNames(At("/Nothing")); }), 76);
    QCOMPARE(NumberRaised([&] { m_files.FolderNames(At("/Lists/file")); }), 76);
}

void TestDiskFiles::killRemovesInAnyLetterCase()
{
    Make("/Lists/Animals", "x");
    m_files.Kill(At("\\LISTS\\animals"));
    QVERIFY(!QFile::exists(At("/Lists/Animals")));
}

void TestDiskFiles::copyIsExactAndReplaces()
{
    QByteArray junk;
    for (unsigned byte = 0; byte < 300'000; ++byte)
        junk += static_cast<char>((byte * 7919) >> 3);
    Make("/junk", junk);
    Make("/Lists/Target", QByteArray(500'000, 'x'));
    m_files.FileCopy(At("\\JUNK"), At("\\lists\\target"));
    QCOMPARE(Bytes("/Lists/Target"), junk);
    m_files.FileCopy(At("\\junk"), At("\\lists\\New"));
    QCOMPARE(Bytes("/Lists/New"), junk);
    Make("/empty", "");
    m_files.FileCopy(At("\\empty"), At("\\lists\\New"));
    QCOMPARE(Bytes("/Lists/New"), QByteArray());
}

void TestDiskFiles::copyOntoItselfLeavesItAlone()
{
    Make("/Lists/Animals", "cat\r\n");
    QCOMPARE(NumberRaised([&] { m_files.FileCopy(At("\\Lists\\Animals"), At("\\lists\\animals")); }), 70);
    QCOMPARE(Bytes("/Lists/Animals"), QByteArray("cat\r\n"));
}

void TestDiskFiles::errnoHasANumber_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<qint32>("number");
    const auto row = [](const char *name, int error, qint32 number) {
        QTest::newRow(name) << error << number;
    };
    row("no error", 0, 0);
    row("ENOENT", ENOENT, 53);
    row("ENOTDIR", ENOTDIR, 76);
    row("EACCES", EACCES, 70);
    row("EPERM", EPERM, 70);
    row("EROFS", EROFS, 70);
    row("ETXTBSY", ETXTBSY, 70);
    row("EBUSY", EBUSY, 70);
    row("EISDIR", EISDIR, 75);
    row("ELOOP", ELOOP, 75);
    row("ENOTEMPTY", ENOTEMPTY, 75);
    row("EMFILE", EMFILE, 75);
    row("ENFILE", ENFILE, 75);
    row("EEXIST", EEXIST, 58);
    row("ENAMETOOLONG", ENAMETOOLONG, 52);
    row("EINVAL", EINVAL, 52);
    row("EILSEQ", EILSEQ, 52);
    row("EBADF", EBADF, 52);
    row("ENOSPC", ENOSPC, 61);
    row("EDQUOT", EDQUOT, 61);
    row("EFBIG", EFBIG, 61);
    row("ENODEV", ENODEV, 68);
    row("ENXIO", ENXIO, 68);
    row("ENOMEDIUM", ENOMEDIUM, 68);
    row("ESTALE", ESTALE, 68);
    row("EIO", EIO, 57);
    row("ENOMEM", ENOMEM, 57);
}

void TestDiskFiles::errnoHasANumber()
{
    QFETCH(int, error);
    QFETCH(qint32, number);
    QCOMPARE(NumberOfErrno(error), number);
}

QTEST_APPLESS_MAIN(TestDiskFiles)
#include "TestDiskFiles.moc"
