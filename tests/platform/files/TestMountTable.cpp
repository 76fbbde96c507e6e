#include "platform/files/MountTable.h"

#include <QTest>

using platform::Drive;
using platform::DrivesOfMountTable;

// What a table of mounts makes of drives.
class TestMountTable : public QObject {
    Q_OBJECT
private slots:
    void lineMakesADrive_data();
    void lineMakesADrive();
    void homeIsFirstAndTheComputerLast();
    void tableThatCannotBeReadLeavesHomeAndComputer();
    void homeAtTheRootIsTheComputer();
};

void TestMountTable::lineMakesADrive_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("drive"); // kind and path; empty: none
    const auto row = [](const char *name, const char *line, const QString &drive) {
        QTest::newRow(name) << QByteArray(line) << drive;
    };
    row("stick", "99 25 8:17 / /media/ann/STICK rw,nosuid - vfat /dev/sdb1 rw",
        "removable STICK /media/ann/STICK");
    row("stick elsewhere", "99 25 8:17 / /run/media/ann/A rw shared:1 - exfat /dev/sdb1 rw",
        "removable A /run/media/ann/A");
    row("several optional fields", "99 25 8:17 / /media/A rw shared:1 master:2 - vfat /dev/sdb1 rw",
        "removable A /media/A");
    row("disc", "99 25 11:0 / /media/cdrom0 ro - iso9660 /dev/sr0 ro", "removable cdrom0 /media/cdrom0");
    row("blanks in the name", "99 25 8:17 / /media/ann/My\\040Stick\\0117 rw - vfat /dev/sdb1 rw",
        "removable My Stick\t7 /media/ann/My Stick\t7");
    row("backslash at the end", "99 25 8:17 / /media/a\\ rw - vfat /dev/sdb1 rw", "removable a\\ /media/a\\");
    row("letters of any kind", "99 25 8:17 / /media/Zo\xC3\xAB rw - vfat /dev/sdb1 rw",
        QString::fromUtf8("removable Zoë /media/Zoë"));
    row("memory where media are", "99 25 0:50 / /mnt/quick rw - tmpfs tmpfs rw",
        "removable quick /mnt/quick");
    row("share", "99 25 0:51 / /net/school rw - nfs4 server:/lists rw", "network school /net/school");
    row("share of another kind", "99 25 0:51 / /srv/s rw - cifs //server/s rw", "network s /srv/s");
    row("second disk", "99 25 8:33 / /data rw - ext4 /dev/sdc1 rw", "fixed data /data");
    row("root", "25 1 8:1 / / rw - ext4 /dev/sda1 rw", "");
    row("start-up files", "99 25 8:2 / /boot/efi rw - vfat /dev/sda2 rw", "");
    row("log files", "99 25 8:2 / /var/log rw - ext4 /dev/sda2 rw", "");
    row("where homes are", "99 25 8:3 / /home rw - ext4 /dev/sda3 rw", "");
    row("the home itself", "99 25 8:3 / /home/ann rw - ext4 /dev/sda3 rw", "");
    row("processes", "22 27 0:21 / /proc rw,relatime - proc proc rw", "");
    row("program in a box", "99 25 7:1 / /snap/core/1 ro - squashfs /dev/loop1 ro", "");
    row("automatic mounting", "99 25 0:40 / /mnt/auto rw - autofs systemd-1 rw", "");
    row("memory elsewhere", "99 25 0:52 / /scratch rw - tmpfs tmpfs rw", "");
    row("no end", "99 25 8:17 / /media/A rw shared:1", "");
    row("too short", "99 - vfat /dev/sdb1", "");
    row("no path", "99 25 8:17 / media rw - vfat /dev/sdb1 rw", "");
    row("nothing", "", "");
}

void TestMountTable::lineMakesADrive()
{
    QFETCH(QByteArray, line);
    static constexpr std::array kKinds = { "home", "removable", "network", "fixed" };
    QString found;
    for (const Drive &drive : DrivesOfMountTable(line + '\n', "/home/ann"))
        if (drive.path != "/home/ann" && drive.path != "/")
            found +=
                QLatin1String(kKinds[static_cast<size_t>(drive.kind)]) + ' ' + drive.name + ' ' + drive.path;
    QTEST(found, "drive");
}

void TestMountTable::homeIsFirstAndTheComputerLast()
{
    const auto drives = DrivesOfMountTable("1 2 8:1 / / rw - ext4 /dev/sda1 rw\n"
                                           "1 2 8:1 / /data rw - ext4 /dev/sda2 rw\n"
                                           "1 2 0:9 / /net/school rw - nfs server:/ rw\n"
                                           "1 2 8:9 / /media/b rw - vfat /dev/sdb1 rw\n"
                                           "1 2 8:9 / /media/A rw - vfat /dev/sdc1 rw\n"
                                           "1 2 8:9 / /media/A rw - vfat /dev/sdc1 rw\n",
                                           "/home/ann");
    QStringList paths;
    for (const Drive &drive : drives)
        paths << drive.path;
    QCOMPARE(paths, QStringList({ "/home/ann", "/media/A", "/media/b", "/net/school", "/data", "/" }));
    QCOMPARE(drives.front().name, "Home folder");
    QCOMPARE(drives.back().name, "Computer");
}

void TestMountTable::tableThatCannotBeReadLeavesHomeAndComputer()
{
    const auto drives = DrivesOfMountTable(QByteArray(), "/home/ann");
    QCOMPARE(drives.size(), 2U);
    QCOMPARE(drives[1].path, "/");
}

void TestMountTable::homeAtTheRootIsTheComputer()
{
    QCOMPARE(DrivesOfMountTable(QByteArray(), "/").size(), 1U);
}

QTEST_APPLESS_MAIN(TestMountTable)
#include "TestMountTable.moc"
