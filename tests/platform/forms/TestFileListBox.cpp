#include "platform/forms/FileListBox.h"

#include "platform/Error.h"
#include "platform/files/DiskFiles.h"
#include "support/PlainDesk.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using platform::FileListBox;

// The list of the files of a folder.
class TestFileListBox : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_desk.reset(); }

    void pathListsItsFiles();
    void samePathChangesNothing();
    void otherPathTakesTheSelectionAway();
    void missingFolderRaises76AndLeavesTheListEmpty();
    void folderThatWasLostIsListedAgain();
    void refreshKeepsTheSelection();
    void refreshDropsTheSelectionOfALostFile();
    void clickSelectsAndIsTold();
    void secondClickIsToldToo();
    void clickBesideTheFilesIsNotTold();
    void keysSelectAndAreTold();
    void dragToAnotherFileIsTold();

private:
    QString At(const QString &path) const { return m_folder->path() + path; }
    QStringList Shown(const FileListBox &list) const;
    void Make(const QString &path) const
    {
        QFile file(At(path));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    static QPoint Centre(const FileListBox &list, int row)
    {
        return list.visualItemRect(list.item(row)).center();
    }

    std::optional<QTemporaryDir> m_folder;
    platform::DiskFiles m_files;
    std::optional<support::PlainDesk> m_desk;
};

void TestFileListBox::init()
{
    m_folder.emplace();
    m_desk.emplace(&m_files);
    QVERIFY(QDir(m_folder->path()).mkpath("Lists") && QDir(m_folder->path()).mkpath("QList"));
    for (const char *name : { "/Lists/bears", "/Lists/Ants", "/Lists/cats.txt", "/QList/Capitals" })
        Make(name);
}

QStringList TestFileListBox::Shown(const FileListBox &list) const
{
    QStringList names;
    for (int row = 0; row < list.count(); ++row)
        names << list.item(row)->text();
    return names;
}

void TestFileListBox::pathListsItsFiles()
{
    FileListBox list;
    QCOMPARE(list.Path(), QString());
    QCOMPARE(list.FileName(), QString());
    list.SetPath(At("\\lists"));
    QCOMPARE(Shown(list), QStringList({ "Ants", "bears", "cats.txt" }));
    QCOMPARE(list.Path(), At("\\lists"));
    QCOMPARE(list.FileName(), QString());
}

void TestFileListBox::samePathChangesNothing()
{
    FileListBox list;
    list.SetPath(At("\\Lists"));
    list.setCurrentRow(1);
    Make("/Lists/Dogs");
    list.SetPath(At("\\Lists"));
    QCOMPARE(list.count(), 3);
    QCOMPARE(list.FileName(), "bears");
}

void TestFileListBox::otherPathTakesTheSelectionAway()
{
    FileListBox list;
    list.SetPath(At("\\Lists"));
    list.setCurrentRow(1);
    list.SetPath(At("\\QList"));
    QCOMPARE(Shown(list), QStringList{ "Capitals" });
    QCOMPARE(list.FileName(), QString());
}

void TestFileListBox::missingFolderRaises76AndLeavesTheListEmpty()
{
    FileListBox list;
    list.SetPath(At("\\Lists"));
    list.setCurrentRow(1);
    try {
        list.SetPath(At("\\Nothing"));
        QFAIL("no error was raised");
    } catch (const platform::Error &error) {
        QCOMPARE(error.Number(), 76);
    }
    QCOMPARE(list.count(), 0);
    QCOMPARE(list.FileName(), QString());
    QCOMPARE(list.Path(), At("\\Lists"));
    // The path is as before, but what it holds is no longer shown.
    list.SetPath(At("\\Lists"));
    QCOMPARE(list.count(), 3);
}

void TestFileListBox::folderThatWasLostIsListedAgain()
{
    FileListBox list;
    list.SetPath(At("\\QList"));
    QVERIFY(QDir(At("/QList")).removeRecursively());
    QVERIFY_EXCEPTION_THROWN(list.Refresh(), platform::Error);
    QCOMPARE(list.count(), 0);
    QVERIFY(QDir(m_folder->path()).mkpath("QList"));
    Make("/QList/Rivers");
    list.Refresh();
    QCOMPARE(Shown(list), QStringList{ "Rivers" });
}

void TestFileListBox::refreshKeepsTheSelection()
{
    FileListBox list;
    list.SetPath(At("\\Lists"));
    list.setCurrentRow(1);
    Make("/Lists/Bats");
    QSignalSpy clicked(&list, &FileListBox::Clicked);
    list.Refresh();
    QCOMPARE(Shown(list), QStringList({ "Ants", "Bats", "bears", "cats.txt" }));
    QCOMPARE(list.FileName(), "bears");
    QCOMPARE(clicked.count(), 0);
}

void TestFileListBox::refreshDropsTheSelectionOfALostFile()
{
    FileListBox list;
    list.SetPath(At("\\Lists"));
    list.setCurrentRow(1);
    QVERIFY(QFile::remove(At("/Lists/bears")));
    list.Refresh();
    QCOMPARE(Shown(list), QStringList({ "Ants", "cats.txt" }));
    QCOMPARE(list.FileName(), QString());
}

void TestFileListBox::clickSelectsAndIsTold()
{
    FileListBox list;
    list.SetPath(At("\\Lists"));
    list.show();
    QString told;
    connect(&list, &FileListBox::Clicked, this, [&] { told = list.FileName(); });
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, Centre(list, 2));
    QCOMPARE(told, "cats.txt");
}

void TestFileListBox::secondClickIsToldToo()
{
    FileListBox list;
    list.SetPath(At("\\Lists"));
    list.show();
    QSignalSpy clicked(&list, &FileListBox::Clicked);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, Centre(list, 2));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, Centre(list, 2));
    QCOMPARE(clicked.count(), 2);
    QTest::mouseClick(list.viewport(), Qt::RightButton, {}, Centre(list, 2));
    QCOMPARE(clicked.count(), 2);
}

void TestFileListBox::clickBesideTheFilesIsNotTold()
{
    FileListBox list;
    list.resize(200, 400);
    list.SetPath(At("\\Lists"));
    list.show();
    list.setCurrentRow(1);
    QSignalSpy clicked(&list, &FileListBox::Clicked);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(50, 380));
    QCOMPARE(clicked.count(), 0);
    QCOMPARE(list.FileName(), "bears");
}

void TestFileListBox::keysSelectAndAreTold()
{
    FileListBox list;
    list.SetPath(At("\\Lists"));
    list.show();
    QStringList told;
    connect(&list, &FileListBox::Clicked, this, [&] { told << list.FileName(); });
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_End);
    QTest::keyClick(&list, Qt::Key_Down); // nothing beyond the last one
    QTest::keyClick(&list, Qt::Key_B);
    QCOMPARE(told, QStringList({ "Ants", "cats.txt", "bears" }));
}

void TestFileListBox::dragToAnotherFileIsTold()
{
    FileListBox list;
    list.resize(200, 200);
    list.SetPath(At("\\Lists"));
    list.show();
    QStringList told;
    connect(&list, &FileListBox::Clicked, this, [&] { told << list.FileName(); });
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, Centre(list, 0));
    const QPoint below = Centre(list, 1);
    QMouseEvent move(QEvent::MouseMove, below, list.viewport()->mapToGlobal(below), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(list.viewport(), &move);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, below);
    QCOMPARE(told, QStringList{ list.FileName() });
    QVERIFY(!list.FileName().isEmpty());
}

QTEST_MAIN(TestFileListBox)
#include "TestFileListBox.moc"
