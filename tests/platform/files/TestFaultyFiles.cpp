#include "support/FaultyFiles.h"

#include "platform/Error.h"
#include "platform/files/DiskFiles.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using platform::FileWriting;
using Operation = support::FaultyFiles::Operation;

// Files that fail on demand fail where they should and are ordinary otherwise.
class TestFaultyFiles : public QObject {
    Q_OBJECT
private slots:
    void worksLikeTheFilesItStandsOn();
    void namedOperationFails_data();
    void namedOperationFails();
    void failsAsOftenAndAsLateAsAsked();
};

void TestFaultyFiles::worksLikeTheFilesItStandsOn()
{
    const QTemporaryDir folder;
    platform::DiskFiles disk;
    support::FaultyFiles files(disk);
    const QString path = folder.path() + "\\List";
    const auto writer = files.OpenForWriting(path, FileWriting::Replace, true);
    writer->Write("a");
    writer->WriteLine("b");
    writer->Close();
    QVERIFY(files.FileExists(folder.path() + "\\list"));
    QVERIFY(files.FolderExists(folder.path()));
    QCOMPARE(files.Resolve(folder.path() + "\\list"), folder.path() + "/List");
    QCOMPARE(files.FileNames(folder.path()), QStringList{ "List" });
    const auto reader = files.OpenForReading(path);
    QCOMPARE(reader->ReadLine(), "ab");
    QVERIFY(reader->AtEnd());
    files.FileCopy(path, folder.path() + "\\Copy");
    files.Kill(path);
    QCOMPARE(files.FileNames(folder.path()), QStringList{ "Copy" });
    QCOMPARE(files.Failed(), 0);
}

void TestFaultyFiles::namedOperationFails_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::newRow("list") << Operation::FileNames;
    QTest::newRow("open for reading") << Operation::OpenForReading;
    QTest::newRow("open for writing") << Operation::OpenForWriting;
    QTest::newRow("read") << Operation::ReadLine;
    QTest::newRow("write") << Operation::Write;
    QTest::newRow("close") << Operation::Close;
    QTest::newRow("kill") << Operation::Kill;
    QTest::newRow("copy") << Operation::FileCopy;
}

void TestFaultyFiles::namedOperationFails()
{
    QFETCH(Operation, operation);
    const QTemporaryDir folder;
    platform::DiskFiles disk;
    support::FaultyFiles files(disk);
    files.Fail(operation, 57);
    const QString path = folder.path() + "\\List";
    int steps = 0;
    // Every operation once; the one that fails is left out.
    const auto step = [&](const std::function<void()> &work) {
        try {
            work();
            ++steps;
        } catch (const platform::Error &error) {
            QCOMPARE(error.Number(), 57);
        }
    };
    std::unique_ptr<platform::TextWriter> writer = disk.OpenForWriting(path, FileWriting::Replace, true);
    writer->WriteLine("a");
    step([&] { writer = files.OpenForWriting(path, FileWriting::Append, false); });
    step([&] { writer->WriteLine("a"); });
    step([&] { writer->Close(); });
    std::unique_ptr<platform::TextReader> reader = disk.OpenForReading(path);
    step([&] { reader = files.OpenForReading(path); });
    step([&] { reader->ReadLine(); });
    step([&] { files.FileNames(folder.path()); });
    step([&] { files.FileCopy(path, folder.path() + "\\Copy"); });
    step([&] { files.Kill(path); });
    QCOMPARE(files.Failed(), 1);
    QCOMPARE(steps, 7);
}

void TestFaultyFiles::failsAsOftenAndAsLateAsAsked()
{
    const QTemporaryDir folder;
    platform::DiskFiles disk;
    support::FaultyFiles files(disk);
    files.Fail(Operation::FileNames, 75, 2, 1);
    QStringList course;
    for (int call = 0; call < 5; ++call) {
        try {
            files.FileNames(folder.path());
            course << "fine";
        } catch (const platform::Error &) {
            course << "fails";
        }
    }
    QCOMPARE(course, QStringList({ "fine", "fails", "fails", "fine", "fine" }));
    files.Fail(Operation::FileNames, 75);
    files.Heal();
    files.FileNames(folder.path());
    QCOMPARE(files.Failed(), 2);
}

QTEST_APPLESS_MAIN(TestFaultyFiles)
#include "TestFaultyFiles.moc"
