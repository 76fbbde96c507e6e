#include "platform/Error.h"
#include "platform/files/MountedDrives.h"
#include "support/AsOrdinaryUser.h"
#include "support/FakeDrives.h"
#include "support/FaultyDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

#include <sys/stat.h>

using platform::Drive;
using platform::Drives;

namespace {

qint32 NumberRaised(const Drives &drives, const QString &path)
{
    try {
        drives.CheckReady(path);
    } catch (const platform::Error &error) {
        return error.Number();
    }
    return 0;
}

} // namespace

// Drives, as they are and in their fake: each test runs with both.
class TestDrives : public QObject {
    Q_OBJECT
private slots:
    void init();
    void theHomeIsTheStartingDrive_data() { Both(); }
    void theHomeIsTheStartingDrive();
    void aDriveThatIsThereIsReady_data() { Both(); }
    void aDriveThatIsThereIsReady();
    void aDriveThatHasGoneRaises68_data() { Both(); }
    void aDriveThatHasGoneRaises68();
    void anyOtherPathIsLetPass_data() { Both(); }
    void anyOtherPathIsLetPass();
    void aVolumeWhoseFolderStaysBehindRaises68();
    void aHomeThatHasGoneRaises68();
    void aTableThatIsMissingLeavesTheHome();
    void aStickPulledOutWhileItIsLookedAtRaises68();
    void somebodyElsesVolumeIsReady();

private:
    static void Both()
    {
        QTest::addColumn<bool>("isReal");
        QTest::newRow("real") << true;
        QTest::newRow("fake") << false;
    }
    Drives &Chosen()
    {
        QFETCH(bool, isReal);
        return isReal ? static_cast<Drives &>(*m_real) : m_fake;
    }
    void Mount(bool isThere)
    {
        QFile table(m_folder->filePath("table"));
        QVERIFY(table.open(QIODevice::WriteOnly));
        if (isThere)
            table.write("1 2 0:9 / " + m_stick.toUtf8() + " rw - nfs server:/ rw\n");
        m_fake.gone = isThere ? QStringList() : QStringList{ m_stick };
    }

    std::optional<QTemporaryDir> m_folder;
    QString m_home;
    QString m_stick;
    std::optional<platform::MountedDrives> m_real;
    support::FakeDrives m_fake;
};

void TestDrives::init()
{
    m_folder.emplace();
    m_home = m_folder->filePath("home");
    m_stick = m_folder->filePath("stick");
    QVERIFY(QDir().mkpath(m_home) && QDir().mkpath(m_stick));
    m_real.emplace(m_home, m_folder->filePath("table"));
    m_fake.all = { { m_home, "Home folder", Drive::Kind::Home }, { m_stick, "stick", Drive::Kind::Network } };
    Mount(true);
}

void TestDrives::theHomeIsTheStartingDrive()
{
    QCOMPARE(Chosen().Starting(), m_home);
    QVERIFY(Chosen().All().front().kind == Drive::Kind::Home);
    QCOMPARE(Chosen().All()[1].path, m_stick);
}

void TestDrives::aDriveThatIsThereIsReady()
{
    Chosen().All();
    QCOMPARE(NumberRaised(Chosen(), m_stick), 0);
    QCOMPARE(NumberRaised(Chosen(), m_home), 0);
}

void TestDrives::aDriveThatHasGoneRaises68()
{
    Chosen().All();
    Mount(false);
    QVERIFY(QDir().rmdir(m_stick));
    QCOMPARE(NumberRaised(Chosen(), m_stick), 68);
    QCOMPARE(NumberRaised(Chosen(), m_home), 0);
    Mount(true);
    QVERIFY(QDir().mkpath(m_stick));
    QCOMPARE(NumberRaised(Chosen(), m_stick), 0);
}

void TestDrives::anyOtherPathIsLetPass()
{
    Chosen().All();
    Mount(false);
    QCOMPARE(NumberRaised(Chosen(), m_stick + "/deep"), 0);
    QCOMPARE(NumberRaised(Chosen(), m_folder->path()), 0);
    QCOMPARE(NumberRaised(Chosen(), "/no/such/folder"), 0);
}

void TestDrives::aVolumeWhoseFolderStaysBehindRaises68()
{
    m_real->All();
    Mount(false);
    QCOMPARE(NumberRaised(*m_real, m_stick), 68);
}

void TestDrives::aHomeThatHasGoneRaises68()
{
    m_real->All();
    QVERIFY(QDir().rmdir(m_home));
    QCOMPARE(NumberRaised(*m_real, m_home), 68);
    QCOMPARE(m_real->Starting(), m_home);
}

void TestDrives::aTableThatIsMissingLeavesTheHome()
{
    QVERIFY(QFile::remove(m_folder->filePath("table")));
    QCOMPARE(m_real->Starting(), m_home);
    QCOMPARE(m_real->All().back().path, "/");
}

void TestDrives::aStickPulledOutWhileItIsLookedAtRaises68()
{
    support::FaultyDisk disk;
    const platform::MountedDrives drives(m_home, m_folder->filePath("table"), disk);
    drives.All();
    int steps = 0;
    for (;; ++steps) {
        disk.Fail(support::DiskFault::Gone, steps, QFile::encodeName(m_folder->path()));
        const qint32 number = NumberRaised(drives, m_stick);
        if (disk.Hits() == 0)
            break;
        QVERIFY2(number == 68, QByteArray::number(steps + 1));
    }
    QVERIFY(steps >= 2);
    disk.Heal();
    QCOMPARE(NumberRaised(drives, m_stick), 0);
}

// It cannot be looked into, but it has not gone.
void TestDrives::somebodyElsesVolumeIsReady()
{
    m_real->All();
    QCOMPARE(chmod(QFile::encodeName(m_folder->path()).constData(), 0755), 0);
    QCOMPARE(chmod(QFile::encodeName(m_stick).constData(), 0), 0);
    {
        const support::AsOrdinaryUser user;
        QCOMPARE(NumberRaised(*m_real, m_stick), 0);
    }
    QCOMPARE(chmod(QFile::encodeName(m_stick).constData(), 0755), 0);
}

QTEST_APPLESS_MAIN(TestDrives)
#include "TestDrives.moc"
