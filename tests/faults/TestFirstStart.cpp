#include "FolderContent.h"
#include "support/AsOrdinaryUser.h"
#include "support/FaultyCalls.h"
#include "support/FullDisk.h"
#include "support/InstalledFolder.h"

#include <sys/stat.h>
#include <unistd.h>

using support::DiskFault;
using support::FaultyCalls;

Q_DECLARE_METATYPE(DiskFault)

namespace {

using Content = std::map<QString, QByteArray>;

const QStringList kWritten{ "Lists", "QList", "Set", "Lintro" };

bool IsBelow(const QString &name, const QString &top)
{
    return name == top || name.startsWith(top + u'/');
}

// What of it lies in a folder of that name, or is the file of that name.
Content Below(const Content &content, const QString &top)
{
    Content below;
    for (const auto &[name, bytes] : content)
        if (IsBelow(name, top))
            below[name] = bytes;
    return below;
}

} // namespace

// The user's own folder is made on a disk that fails at each step. Whatever the program works in then is
// whole: the user's own folder, or the one beside the program. Nothing that passes for the user's own is half
// a copy, since no later start would touch it, and the next start on a sound disk has everything.
class TestFirstStart : public QObject, private support::InstalledFolder {
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_work.reset(); }

    void whatCanBeBorneIsNotNoticed_data();
    void whatCanBeBorneIsNotNoticed();
    void nothingIsHalfMade_data();
    void nothingIsHalfMade();
    void whatTheUserHasStaysOnADiskThatFails_data() { Faults(); }
    void whatTheUserHasStaysOnADiskThatFails();
    void listsThatMayNotBeReadAreNotTakenForNone_data();
    void listsThatMayNotBeReadAreNotTakenForNone();
    void onAFullDiskTheProgramWorksBesideItself();
    void aHomeThatMayNotBeWrittenLeavesTheFolderBesideTheProgram();

private:
    static void Faults();
    // Asks while calls below that folder fail. Gives how many did.
    int AskDuring(DiskFault fault, int after, const QString &where, QString &folder) const;
    void CheckWhole(const QByteArray &where) const;
    void CheckNothingHalf(const QByteArray &where) const;

    Content m_installed;
};

void TestFirstStart::init()
{
    Install();
    // Long enough to be written in part.
    Write(m_beside + "/Lists/Animals", QByteArray("cat\r\n").repeated(1000));
    m_installed = FolderContent(m_beside);
}

void TestFirstStart::Faults()
{
    QTest::addColumn<DiskFault>("fault");
    QTest::addColumn<QString>("where");
    for (const QString where : { "home", "lib" }) {
        const auto row = [&](const char *what, DiskFault fault) {
            QTest::addRow("%s, %s", what, qPrintable(where)) << fault << where;
        };
        if (where == "home")
            row("no space", DiskFault::NoSpace);
        row("no permission", DiskFault::NoPermission);
        row("gone", DiskFault::Gone);
    }
}

int TestFirstStart::AskDuring(DiskFault fault, int after, const QString &where, QString &folder) const
{
    const FaultyCalls calls(fault, after, QFile::encodeName(m_work->filePath(where)));
    folder = Ask();
    return calls.Hits();
}

// The user's folder has everything that belongs there and no more.
void TestFirstStart::CheckWhole(const QByteArray &where) const
{
    Content wanted = m_installed;
    wanted.erase("tumblewick");
    wanted.erase("ForEveryUser");
    const Content content = FolderContent(m_users);
    for (const auto &[name, bytes] : wanted)
        QVERIFY2(content.count(name) && content.at(name) == bytes, where + ", not whole: " + name.toUtf8());
    for (const auto &[name, bytes] : content)
        QVERIFY2(wanted.count(name), where + ", left behind: " + name.toUtf8());
}

// What bears the name of something that the program writes to is all of it, or is not there.
void TestFirstStart::CheckNothingHalf(const QByteArray &where) const
{
    const Content content = FolderContent(m_users);
    for (const QString &name : kWritten) {
        const Content copy = Below(content, name);
        QVERIFY2(copy.empty() || copy == Below(m_installed, name), where + ", half a copy: " + name.toUtf8());
    }
    QVERIFY2(FolderContent(m_beside) == m_installed, where + ", the installed folder has changed");
}

void TestFirstStart::whatCanBeBorneIsNotNoticed_data()
{
    QTest::addColumn<DiskFault>("fault");
    QTest::newRow("slow") << DiskFault::Slow;
    QTest::newRow("short reads") << DiskFault::ShortReads;
    QTest::newRow("short writes") << DiskFault::ShortWrites;
    QTest::newRow("interrupted") << DiskFault::Interrupted;
}

void TestFirstStart::whatCanBeBorneIsNotNoticed()
{
    QFETCH(DiskFault, fault);
    for (const QString where : { "home", "lib" }) {
        QString folder;
        // What is only copied there is not always read by calls of their own.
        QVERIFY(AskDuring(fault, 0, where, folder) > 0 || fault != DiskFault::Slow);
        QCOMPARE(folder, m_users);
        CheckWhole(where.toUtf8());
        QVERIFY(QDir(m_users).removeRecursively());
    }
}

void TestFirstStart::nothingIsHalfMade_data()
{
    Faults();
}

void TestFirstStart::nothingIsHalfMade()
{
    QFETCH(DiskFault, fault);
    QFETCH(QString, where);
    int besideItself = 0;
    int steps = 0;
    for (;; ++steps) {
        cleanup();
        init();
        QString folder;
        const int hits = AskDuring(fault, steps, where, folder);
        const QByteArray step = "step " + QByteArray::number(steps + 1);
        if (hits == 0)
            break;
        QVERIFY2(steps < 2000, step);
        CheckNothingHalf(step);
        // Without the installed folder there may be less, which the next start brings.
        const bool isInstalledGone = where == "lib" && fault == DiskFault::Gone;
        if (folder == m_users) {
            if (!isInstalledGone)
                CheckWhole(step);
        } else {
            QCOMPARE(folder, m_beside);
            ++besideItself;
        }
        QVERIFY2(Ask() == m_users, step);
        CheckWhole(step + ", the next start");
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(besideItself > 0 && steps > 10);
    qInfo("%d steps failed, after %d of them the program works beside itself", steps, besideItself);
}

void TestFirstStart::whatTheUserHasStaysOnADiskThatFails()
{
    QFETCH(DiskFault, fault);
    QFETCH(QString, where);
    QCOMPARE(Ask(), m_users);
    Write(m_users + "/Lists/Mine", "tower\r\n");
    Write(m_users + "/Lists/Animals", "dog\r\n");
    Write(m_users + "/Set", "No Intro\r\nsesame\r\n");
    Write(m_users + "/notes", "for myself");
    QVERIFY(QFile::remove(m_users + "/Lists/Colours"));
    const Content before = FolderContent(m_users);
    for (int steps = 0;; ++steps) {
        QString folder;
        if (AskDuring(fault, steps, where, folder) == 0)
            break;
        const QByteArray step = "step " + QByteArray::number(steps + 1);
        QVERIFY2(steps < 2000, step);
        const Content during = FolderContent(m_users);
        for (const QString &name : kWritten + QStringList("notes"))
            QVERIFY2(Below(during, name) == Below(before, name), step + ", changed: " + name.toUtf8());
        QVERIFY2(FolderContent(m_beside) == m_installed, step);
        QVERIFY2(Ask() == m_users, step);
        QVERIFY2(FolderContent(m_users) == before, step);
    }
}

void TestFirstStart::listsThatMayNotBeReadAreNotTakenForNone_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("the folder of the lists") << "Lists";
    QTest::newRow("one list") << "Lists/Animals";
    QTest::newRow("the settings") << "Set";
    QTest::newRow("the whole folder") << ".";
}

// Somebody has installed the program with rights that are too narrow, and mends it later.
void TestFirstStart::listsThatMayNotBeReadAreNotTakenForNone()
{
    QFETCH(QString, name);
    QCOMPARE(chmod(QFile::encodeName(m_work->path()).constData(), 0777), 0);
    const QByteArray path = QFile::encodeName(m_beside + u'/' + name);
    struct stat status {};
    QCOMPARE(stat(path.constData(), &status), 0);
    // The whole folder can still be walked through, but not looked into.
    QCOMPARE(chmod(path.constData(), name == "." ? 0711 : 0), 0);
    {
        const support::AsOrdinaryUser user;
        QCOMPARE(Ask(), m_beside);
    }
    QVERIFY(!QFileInfo::exists(m_users + "/Lists") ||
            Below(FolderContent(m_users), "Lists") == Below(m_installed, "Lists"));
    QCOMPARE(chmod(path.constData(), status.st_mode), 0);
    {
        const support::AsOrdinaryUser user;
        QCOMPARE(Ask(), m_users);
    }
    CheckWhole("mended");
}

void TestFirstStart::onAFullDiskTheProgramWorksBesideItself()
{
    {
        const support::FullDisk disk(1000);
        QCOMPARE(Ask(), m_beside);
    }
    CheckNothingHalf("full");
    QCOMPARE(Ask(), m_users);
    CheckWhole("emptied");
}

void TestFirstStart::aHomeThatMayNotBeWrittenLeavesTheFolderBesideTheProgram()
{
    QCOMPARE(chmod(QFile::encodeName(m_work->path()).constData(), 0555), 0);
    QString folder;
    {
        const support::AsOrdinaryUser user;
        folder = Ask();
    }
    QCOMPARE(chmod(QFile::encodeName(m_work->path()).constData(), 0755), 0);
    QCOMPARE(folder, m_beside);
    QVERIFY(!QFileInfo::exists(m_home));
}

QTEST_APPLESS_MAIN(TestFirstStart)
#include "TestFirstStart.moc"
