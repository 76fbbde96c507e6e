#include "support/InstalledFolder.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

// Where the program works when it is installed for everybody.
class TestApplicationFolder : public QObject, private support::InstalledFolder {
    Q_OBJECT
private slots:
    void init() { Install(); }
    void cleanup() { m_work.reset(); }
    void aFolderOfOnesOwnIsUsedAsItIs();
    void everyUserHasACopyOfWhatIsWritten();
    void theCopyCanBeWritten();
    void whatTheUserHasChangedStays();
    void aBrokenOffFirstStartIsDoneAgain();
    void whatABrokenOffStartLeftIsClearedAway();
    void aStartThatIsStillGoingOnIsLeftAlone();
    void aLinkToTheProgramIsNotMadeAndAnOldOneGoes();
    void theRestFollowsTheInstalledVersion();
    void aFileInPlaceOfALinkStays();
    void withoutAPlaceForTheCopyTheFolderItselfIsUsed_data();
    void withoutAPlaceForTheCopyTheFolderItselfIsUsed();

private:
    static QByteArray Read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no such file");
    }
};

void TestApplicationFolder::aFolderOfOnesOwnIsUsedAsItIs()
{
    QVERIFY(QFile::remove(m_beside + "/ForEveryUser"));
    QCOMPARE(Ask(), m_beside);
    QVERIFY(!QFileInfo::exists(m_home));
}

void TestApplicationFolder::everyUserHasACopyOfWhatIsWritten()
{
    QCOMPARE(Ask(), m_users);
    QCOMPARE(QDir(m_users).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name),
             QStringList({ "Lintro", "Lists", "QList", "Set", "characters", "fireworks.mpg" }));
    QCOMPARE(Read(m_users + "/Lists/Animals"), "cat\r\n");
    QCOMPARE(Read(m_users + "/Lists/Colours"), "red\r\n");
    QCOMPARE(Read(m_users + "/QList/Numbers"), "1?_1_2_3_4_1_\r\n");
    QCOMPARE(Read(m_users + "/Set"), "Intro\r\n\r\n");
    QCOMPARE(Read(m_users + "/Lintro"), "0\r\n");
    QCOMPARE(Read(m_users + "/characters/Merlin.acs"), "Merlin");
    QVERIFY(!QFileInfo(m_users + "/Lists").isSymLink());
    QVERIFY(!QFileInfo(m_users + "/Set").isSymLink());
    QVERIFY(QFileInfo(m_users + "/fireworks.mpg").isSymLink());
}

void TestApplicationFolder::theCopyCanBeWritten()
{
    QVERIFY(QFile::setPermissions(m_beside + "/Lists/Animals", QFileDevice::ReadOwner));
    QCOMPARE(Ask(), m_users);
    QVERIFY(QFile::permissions(m_users + "/Lists/Animals") & QFileDevice::WriteOwner);
    Write(m_users + "/Lists/Animals", "dog\r\n");
    QCOMPARE(Read(m_beside + "/Lists/Animals"), "cat\r\n");
}

void TestApplicationFolder::whatTheUserHasChangedStays()
{
    QCOMPARE(Ask(), m_users);
    Write(m_users + "/Lists/Mine", "tower\r\n");
    Write(m_users + "/Lists/Animals", "dog\r\n");
    Write(m_users + "/Set", "No Intro");
    QVERIFY(QFile::remove(m_users + "/Lists/Colours"));
    QVERIFY(QFile::remove(m_users + "/QList/Numbers"));
    QCOMPARE(Ask(), m_users);
    QCOMPARE(QDir(m_users + "/Lists").entryList(QDir::Files, QDir::Name), QStringList({ "Animals", "Mine" }));
    QCOMPARE(Read(m_users + "/Lists/Animals"), "dog\r\n");
    QCOMPARE(Read(m_users + "/Set"), "No Intro");
    QVERIFY(QDir(m_users + "/QList").isEmpty());
}

void TestApplicationFolder::aBrokenOffFirstStartIsDoneAgain()
{
    // Only the lists have come over, and half of the quizzes under their working name.
    Write(m_users + "/Lists/Animals", "cat\r\n");
    Write(m_users + "/.first-start-abcdef/QList/Num", "1?_1");
    QCOMPARE(Ask(), m_users);
    QCOMPARE(QDir(m_users + "/Lists").entryList(QDir::Files), QStringList({ "Animals" }));
    QCOMPARE(Read(m_users + "/QList/Numbers"), "1?_1_2_3_4_1_\r\n");
    QCOMPARE(Read(m_users + "/Set"), "Intro\r\n\r\n");
}

void TestApplicationFolder::whatABrokenOffStartLeftIsClearedAway()
{
    const QStringList usual = { "Lintro", "Lists", "QList", "Set", "characters", "fireworks.mpg" };
    Write(m_users + "/.first-start-abcdef/QList/Num", "1?_1");
    Write(m_users + "/.first-startghijkl/Set", "Int");
    Write(m_users + "/.first-start", "a file of the user's own");
    QCOMPARE(Ask(), m_users);
    QCOMPARE(QDir(m_users).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name),
             QStringList(".first-start") + usual);
    // Also when there is nothing left to copy.
    Write(m_users + "/.first-start-mnopqr/Set", "Int");
    QCOMPARE(Ask(), m_users);
    QVERIFY(!QFileInfo::exists(m_users + "/.first-start-mnopqr"));
}

void TestApplicationFolder::aStartThatIsStillGoingOnIsLeftAlone()
{
    Write(m_users + "/.first-start-abcdef/QList/Num", "1?_1");
    const int other = open(QFile::encodeName(m_users).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    QVERIFY(other >= 0);
    QCOMPARE(flock(other, LOCK_SH), 0);
    QCOMPARE(Ask(), m_users);
    QCOMPARE(Read(m_users + "/Set"), "Intro\r\n\r\n");
    QCOMPARE(Read(m_users + "/.first-start-abcdef/QList/Num"), "1?_1");
    close(other);
    QCOMPARE(Ask(), m_users);
    QVERIFY(!QFileInfo::exists(m_users + "/.first-start-abcdef"));
}

void TestApplicationFolder::aLinkToTheProgramIsNotMadeAndAnOldOneGoes()
{
    QCOMPARE(Ask(), m_users);
    QVERIFY(!QFileInfo::exists(m_users + "/tumblewick"));
    QVERIFY(QFile::link(m_beside + "/tumblewick", m_users + "/tumblewick"));
    QCOMPARE(Ask(), m_users);
    QVERIFY(!QFileInfo(m_users + "/tumblewick").isSymLink());
    QCOMPARE(Read(m_beside + "/tumblewick"), "the program");
}

void TestApplicationFolder::theRestFollowsTheInstalledVersion()
{
    QCOMPARE(Ask(), m_users);
    QVERIFY(QDir().rename(m_beside, m_work->filePath("newer")));
    m_beside = m_work->filePath("newer");
    QVERIFY(QFile::remove(m_beside + "/fireworks.mpg"));
    Write(m_beside + "/help.chm", "help");
    Write(m_beside + "/characters/Merlin.acs", "newer Merlin");
    QCOMPARE(Ask(), m_users);
    QCOMPARE(Read(m_users + "/characters/Merlin.acs"), "newer Merlin");
    QCOMPARE(Read(m_users + "/help.chm"), "help");
    QVERIFY(!QFileInfo(m_users + "/fireworks.mpg").isSymLink());
    QVERIFY(!QFileInfo::exists(m_users + "/fireworks.mpg"));
}

void TestApplicationFolder::aFileInPlaceOfALinkStays()
{
    Write(m_users + "/fireworks.mpg", "my own");
    QCOMPARE(Ask(), m_users);
    QCOMPARE(Read(m_users + "/fireworks.mpg"), "my own");
}

void TestApplicationFolder::withoutAPlaceForTheCopyTheFolderItselfIsUsed_data()
{
    QTest::addColumn<QString>("inTheWay");
    QTest::newRow("a file where the folder of all programs should be") << "home/share";
    QTest::newRow("a file where the folder should be") << "home/share/Tumblewick";
    QTest::newRow("no home") << QString();
}

void TestApplicationFolder::withoutAPlaceForTheCopyTheFolderItselfIsUsed()
{
    QFETCH(QString, inTheWay);
    if (inTheWay.isEmpty())
        m_home.clear();
    else
        Write(m_work->filePath(inTheWay), "in the way");
    QCOMPARE(Ask(), m_beside);
}

QTEST_APPLESS_MAIN(TestApplicationFolder)
#include "TestApplicationFolder.moc"
