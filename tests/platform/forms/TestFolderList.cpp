#include "platform/forms/FolderList.h"

#include "platform/Error.h"
#include "platform/files/DiskFiles.h"
#include "platform/forms/DriveList.h"
#include "support/FaultyFiles.h"
#include "support/NumberRaised.h"
#include "support/PlainDesk.h"

#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using platform::Drive;
using platform::DriveList;
using platform::FolderList;
using support::NumberRaised;
using Operation = support::FaultyFiles::Operation;

// The list of the drives and the tree of folders.
class TestFolderList : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_desk.reset(); }

    void pathShowsTheWayAndWhatIsBelow_data();
    void pathShowsTheWayAndWhatIsBelow();
    void samePathIsListedAnewWithoutAnEvent();
    void missingFolderRaises76AndLeavesEverything();
    void unreadableFolderRaises75AndLeavesEverything();
    void driveThatHasGoneRaises68AndLeavesEverything();
    void clickOpens();
    void doubleClickGoesNoDeeper();
    void clickOnAFolderThatHasGoneTakesItAway();
    void clickOnAFolderThatCannotBeReadGreysIt();
    void keysWalkTheTree();
    void markReturnsToTheOpenFolder();

    void driveIsShown();
    void unknownDriveRaises68();
    void chosenDriveIsTold();
    void newDrivesAreOfferedAndTheShownOneStays();

private:
    QString At(const QString &path) const { return m_folder->path() + path; }
    static QStringList Shown(const QListWidget &list)
    {
        QStringList names;
        for (int row = 0; row < list.count(); ++row)
            names << list.item(row)->text();
        return names;
    }
    static void Click(FolderList &list, const QString &name)
    {
        const auto found = list.findItems(name, Qt::MatchExactly);
        QVERIFY(!found.isEmpty());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualItemRect(found.last()).center());
    }

    std::optional<QTemporaryDir> m_folder;
    platform::DiskFiles m_disk;
    std::optional<support::FaultyFiles> m_files;
    std::optional<support::PlainDesk> m_desk;
};

void TestFolderList::init()
{
    m_folder.emplace();
    m_files.emplace(m_disk);
    m_desk.emplace(&*m_files);
    m_desk->drives.all = { { At("/home"), "Home folder", Drive::Kind::Home },
                           { At("/stick"), "STICK", Drive::Kind::Removable },
                           { "/", "Computer", Drive::Kind::Fixed } };
    for (const char *path :
         { "/home/b", "/home/A/deep/deeper", "/home/A/other", "/home/.hidden", "/stick/x" })
        QVERIFY(QDir().mkpath(At(path)));
    QFile file(At("/home/a file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
}

void TestFolderList::pathShowsTheWayAndWhatIsBelow_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QString>("real");
    QTest::newRow("drive") << "/home" << QStringList{ "Home folder", "A", "b" } << "/home";
    QTest::newRow("folder") << "/home/A" << QStringList{ "Home folder", "A", "deep", "other" } << "/home/A";
    QTest::newRow("other letter case")
        << "\\HOME\\a\\Deep" << QStringList{ "Home folder", "A", "deep", "deeper" } << "/home/A/deep";
    QTest::newRow("empty folder") << "/home/b" << QStringList{ "Home folder", "b" } << "/home/b";
    QTest::newRow("separator at the end")
        << "/home/A\\" << QStringList{ "Home folder", "A", "deep", "other" } << "/home/A";
    QTest::newRow("another drive") << "/stick" << QStringList{ "STICK", "x" } << "/stick";
}

void TestFolderList::pathShowsTheWayAndWhatIsBelow()
{
    QFETCH(QString, path);
    QFETCH(QString, real);
    FolderList list;
    QSignalSpy changed(&list, &FolderList::Changed);
    list.SetPath(At(path));
    QTEST(Shown(list), "rows");
    QCOMPARE(list.Path(), At(real));
    QCOMPARE(changed.count(), 1);
    // The open folder is marked.
    QCOMPARE(list.currentItem()->font().bold(), true);
    QVERIFY(list.currentItem()->isSelected());
    // The computer keeps its separator.
    list.SetPath("/");
    QCOMPARE(list.Path(), "/");
    QCOMPARE(list.item(0)->text(), "Computer");
}

void TestFolderList::samePathIsListedAnewWithoutAnEvent()
{
    FolderList list;
    list.SetPath(At("/home"));
    QVERIFY(QDir().mkpath(At("/home/new")));
    QSignalSpy changed(&list, &FolderList::Changed);
    list.SetPath(At("/home"));
    QCOMPARE(Shown(list), QStringList({ "Home folder", "A", "b", "new" }));
    QCOMPARE(changed.count(), 0);
}

void TestFolderList::missingFolderRaises76AndLeavesEverything()
{
    FolderList list;
    list.SetPath(At("/home/A"));
    QSignalSpy changed(&list, &FolderList::Changed);
    QCOMPARE(NumberRaised([&] { list.SetPath(At("/nothing")); }), 76);
    QCOMPARE(NumberRaised([&] { list.SetPath(At("/home/a file")); }), 76);
    QCOMPARE(NumberRaised([&] { list.SetPath(QString()); }), 76);
    QCOMPARE(list.Path(), At("/home/A"));
    QCOMPARE(list.count(), 4);
    QCOMPARE(changed.count(), 0);
}

void TestFolderList::unreadableFolderRaises75AndLeavesEverything()
{
    FolderList list;
    list.SetPath(At("/home/A"));
    m_files->Fail(Operation::FolderNames, 75);
    QCOMPARE(NumberRaised([&] { list.SetPath(At("/home/b")); }), 75);
    QCOMPARE(list.Path(), At("/home/A"));
    QCOMPARE(list.count(), 4);
}

void TestFolderList::driveThatHasGoneRaises68AndLeavesEverything()
{
    FolderList list;
    list.SetPath(At("/home/A"));
    m_desk->drives.gone << At("/stick");
    QCOMPARE(NumberRaised([&] { list.SetPath(At("/stick")); }), 68);
    QCOMPARE(list.Path(), At("/home/A"));
    QCOMPARE(list.count(), 4);
}

void TestFolderList::clickOpens()
{
    FolderList list;
    list.resize(300, 300);
    list.SetPath(At("/home"));
    list.show();
    QSignalSpy changed(&list, &FolderList::Changed);
    Click(list, "A");
    QCOMPARE(list.Path(), At("/home/A"));
    Click(list, "deep");
    QCOMPARE(list.Path(), At("/home/A/deep"));
    Click(list, "Home folder");
    QCOMPARE(list.Path(), At("/home"));
    QCOMPARE(changed.count(), 3);
    Click(list, "Home folder");                                              // open already
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(50, 290)); // beside all
    QCOMPARE(changed.count(), 3);
    QTest::mouseClick(list.viewport(), Qt::RightButton, {}, list.visualItemRect(list.item(1)).center());
    QCOMPARE(changed.count(), 3);
}

void TestFolderList::doubleClickGoesNoDeeper()
{
    FolderList list;
    list.resize(300, 300);
    list.SetPath(At("/home/A"));
    list.show();
    // After the first click another folder may lie under the mouse.
    const QPoint place = list.visualItemRect(list.item(2)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(list.Path(), At("/home/A/deep"));
    const QPoint below = list.visualItemRect(list.item(3)).center();
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, below);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, below);
    QCOMPARE(list.Path(), At("/home/A/deep"));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, below);
    QCOMPARE(list.Path(), At("/home/A/deep/deeper"));
}

void TestFolderList::clickOnAFolderThatHasGoneTakesItAway()
{
    FolderList list;
    list.resize(300, 300);
    list.SetPath(At("/home"));
    list.show();
    QVERIFY(QDir().rmdir(At("/home/b")));
    QSignalSpy changed(&list, &FolderList::Changed);
    Click(list, "b");
    QCOMPARE(Shown(list), QStringList({ "Home folder", "A" }));
    QCOMPARE(list.Path(), At("/home"));
    QCOMPARE(list.currentItem()->text(), "Home folder");
    QCOMPARE(changed.count(), 0);
}

void TestFolderList::clickOnAFolderThatCannotBeReadGreysIt()
{
    FolderList list;
    list.resize(300, 300);
    list.SetPath(At("/home"));
    list.show();
    m_files->Fail(Operation::FolderNames, 75);
    Click(list, "b");
    QCOMPARE(list.Path(), At("/home"));
    QVERIFY(!(list.item(2)->flags() & Qt::ItemIsEnabled));
    QCOMPARE(list.item(2)->toolTip(), "This folder cannot be opened.");
    Click(list, "b");
    QCOMPARE(list.Path(), At("/home"));
}

void TestFolderList::keysWalkTheTree()
{
    FolderList list;
    list.SetPath(At("/home"));
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(list.currentItem()->text(), "A");
    QCOMPARE(list.Path(), At("/home"));
    QTest::keyClick(&list, Qt::Key_Return);
    QCOMPARE(list.Path(), At("/home/A"));
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Right);
    QCOMPARE(list.Path(), At("/home/A/deep"));
    QTest::keyClick(&list, Qt::Key_Backspace);
    QCOMPARE(list.Path(), At("/home/A"));
    QTest::keyClick(&list, Qt::Key_O);
    QTest::keyClick(&list, Qt::Key_Space);
    QCOMPARE(list.Path(), At("/home/A/other"));
    QTest::keyClick(&list, Qt::Key_Left);
    QTest::keyClick(&list, Qt::Key_Left);
    QTest::keyClick(&list, Qt::Key_Left); // no higher than the drive
    QCOMPARE(list.Path(), At("/home"));
}

void TestFolderList::markReturnsToTheOpenFolder()
{
    FolderList list;
    list.SetPath(At("/home"));
    QTest::keyClick(&list, Qt::Key_Down);
    QFocusEvent away(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&list, &away);
    QCOMPARE(list.currentItem()->text(), "Home folder");
}

void TestFolderList::driveIsShown()
{
    DriveList list;
    QSignalSpy changed(&list, &DriveList::Changed);
    QCOMPARE(list.Drive(), QString());
    list.SetDrive(At("/home"));
    QCOMPARE(list.Drive(), At("/home"));
    QCOMPARE(list.currentText(), "Home folder");
    QCOMPARE(list.count(), 3);
    QCOMPARE(changed.count(), 1);
    list.SetDrive(At("/home"));
    QCOMPARE(changed.count(), 1);
    list.SetDrive(At("/stick"));
    QCOMPARE(changed.count(), 2);
    QCOMPARE(list.currentText(), "STICK");
}

void TestFolderList::unknownDriveRaises68()
{
    DriveList list;
    QCOMPARE(NumberRaised([&] { list.SetDrive("c:\\"); }), 68);
    QCOMPARE(list.Drive(), QString());
    list.SetDrive(At("/stick"));
    QCOMPARE(NumberRaised([&] { list.SetDrive(At("/other")); }), 68);
    QCOMPARE(list.Drive(), At("/stick"));
}

void TestFolderList::chosenDriveIsTold()
{
    DriveList list;
    list.SetDrive(At("/home"));
    QSignalSpy changed(&list, &DriveList::Changed);
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(list.Drive(), At("/stick"));
    QCOMPARE(changed.count(), 1);
    QWheelEvent turn(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&list, &turn);
    QCOMPARE(list.Drive(), At("/stick"));
    QCOMPARE(changed.count(), 1);
}

void TestFolderList::newDrivesAreOfferedAndTheShownOneStays()
{
    DriveList list;
    list.SetDrive(At("/stick"));
    QSignalSpy changed(&list, &DriveList::Changed);
    m_desk->drives.all[1] = { At("/card"), "CARD", Drive::Kind::Removable };
    list.show();
    list.showPopup();
    list.hidePopup();
    QCOMPARE(list.Drive(), At("/stick"));
    QCOMPARE(list.currentText(), "STICK");
    QStringList names;
    for (int place = 0; place < list.count(); ++place)
        names << list.itemText(place);
    QCOMPARE(names, QStringList({ "Home folder", "CARD", "Computer", "STICK" }));
    QCOMPARE(changed.count(), 0);
    list.SetDrive(At("/card"));
    list.showPopup();
    QCOMPARE(list.count(), 3);
    list.hidePopup();
}

QTEST_MAIN(TestFolderList)
#include "TestFolderList.moc"
