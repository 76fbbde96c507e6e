#include "platform/forms/FileListBox.h"

#include "platform/Error.h"
#include "platform/files/DiskFiles.h"
#include "support/PlainDesk.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHelpEvent>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>
#include <QToolTip>

#include <optional>

using platform::FileListBox;

// The list of the files of a folder.
class TestFileListBox : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_desk.reset(); }

    void pathListsItsFiles();
    void namesWithAFullStopInFrontAreListedUnlessLeftOut();
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
    void otherButtonThatSelectsIsTold();
    void doubleClickIsToldOnceAndPressesTheButton();
    void doubleClickBesideTheFilesPressesNothing();
    void deleteKeyPressesTheButtonForASelectedFile();
    void menuBelongsToAFile();
    void refreshStaysWhereTheUserWas();
    void longNamesAreCutAndToldWhole();
    void manyFilesAreListedAtOnce();

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

void TestFileListBox::namesWithAFullStopInFrontAreListedUnlessLeftOut()
{
    Make("/Lists/.net");
    FileListBox own;
    own.SetPath(At("\\Lists"));
    QCOMPARE(Shown(own), QStringList({ ".net", "Ants", "bears", "cats.txt" }));
    FileListBox foreign;
    foreign.LeaveOutHidden();
    foreign.SetPath(At("\\Lists"));
    QCOMPARE(Shown(foreign), QStringList({ "Ants", "bears", "cats.txt" }));
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

void TestFileListBox::otherButtonThatSelectsIsTold()
{
    FileListBox list;
    list.SetPath(At("\\Lists"));
    list.show();
    QStringList told;
    connect(&list, &FileListBox::Clicked, this, [&] { told << list.FileName(); });
    QTest::mouseClick(list.viewport(), Qt::RightButton, {}, Centre(list, 1));
    QTest::mouseClick(list.viewport(), Qt::RightButton, {}, Centre(list, 1));
    QCOMPARE(told, QStringList{ "bears" });
}

void TestFileListBox::doubleClickIsToldOnceAndPressesTheButton()
{
    FileListBox list;
    QPushButton button("&Open");
    list.SetDoubleClickButton(button);
    list.SetPath(At("\\Lists"));
    list.show();
    QStringList told;
    connect(&list, &FileListBox::Clicked, this, [&] { told << list.FileName(); });
    connect(&button, &QPushButton::clicked, this, [&] { told << "pressed"; });
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, Centre(list, 2));
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, Centre(list, 2));
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, Centre(list, 2));
    QCOMPARE(told, QStringList({ "cats.txt", "pressed" }));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, Centre(list, 0));
    QCOMPARE(told.last(), "Ants");
}

void TestFileListBox::doubleClickBesideTheFilesPressesNothing()
{
    FileListBox list;
    QPushButton button;
    list.resize(200, 400);
    list.SetDoubleClickButton(button);
    list.SetPath(At("\\Lists"));
    list.show();
    list.setCurrentRow(1);
    QSignalSpy pressed(&button, &QPushButton::clicked);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, QPoint(50, 380));
    QTest::mouseDClick(list.viewport(), Qt::RightButton, {}, Centre(list, 1));
    QCOMPARE(pressed.count(), 0);
}

void TestFileListBox::deleteKeyPressesTheButtonForASelectedFile()
{
    FileListBox list;
    QPushButton button;
    list.SetDeleteButton(button);
    list.SetPath(At("\\Lists"));
    QSignalSpy pressed(&button, &QPushButton::clicked);
    QTest::keyClick(&list, Qt::Key_Delete);
    QCOMPARE(pressed.count(), 0);
    list.setCurrentRow(1);
    QTest::keyClick(&list, Qt::Key_Delete);
    QCOMPARE(pressed.count(), 1);
    button.setEnabled(false);
    QTest::keyClick(&list, Qt::Key_Delete);
    QCOMPARE(pressed.count(), 1);
}

void TestFileListBox::menuBelongsToAFile()
{
    FileListBox list;
    QPushButton button("&Open");
    list.resize(200, 400);
    list.SetMenuButton(button);
    list.SetPath(At("\\Lists"));
    list.show();
    const auto openMenu = [&](const QPoint &place) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, list.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list.viewport(), &event);
        return list.findChild<QMenu *>();
    };
    QVERIFY(!openMenu(Centre(list, 0))); // nothing is selected yet
    list.setCurrentRow(0);
    QVERIFY(!openMenu(QPoint(50, 380)));
    auto *menu = openMenu(Centre(list, 0));
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 1);
    QCOMPARE(menu->actions().first()->text(), "&Open");
    QSignalSpy pressed(&button, &QPushButton::clicked);
    menu->actions().first()->trigger();
    QCOMPARE(pressed.count(), 1);
}

void TestFileListBox::refreshStaysWhereTheUserWas()
{
    for (int file = 0; file < 200; ++file)
        Make(QString("/QList/quiz %1").arg(file, 3, 10, QLatin1Char('0')));
    FileListBox list;
    list.resize(200, 200);
    list.SetPath(At("\\QList"));
    list.show();
    list.setCurrentRow(101);
    const int scrolled = list.verticalScrollBar()->value();
    QVERIFY(scrolled > 0);
    QVERIFY(QFile::remove(At("/QList/quiz 100")));
    list.Refresh();
    QCOMPARE(list.FileName(), QString());
    QCOMPARE(list.verticalScrollBar()->value(), scrolled);
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(list.FileName(), "quiz 101");
}

void TestFileListBox::longNamesAreCutAndToldWhole()
{
    const QString name = QString("a very long name ").repeated(8) + "<b>.txt";
    Make("/Lists/" + name);
    FileListBox list;
    list.resize(300, 200);
    list.SetPath(At("\\Lists"));
    list.show();
    QVERIFY(!list.horizontalScrollBar()->isVisible());
    const auto tip = [&](int row) {
        const QPoint place = Centre(list, row);
        QHelpEvent event(QEvent::ToolTip, QPoint(20, place.y()),
                         list.viewport()->mapToGlobal(QPoint(20, place.y())));
        QCoreApplication::sendEvent(list.viewport(), &event);
        return QToolTip::text();
    };
    QCOMPARE(list.item(0)->text(), name);
    // A screen reader finds it where it is seen.
    QVERIFY(list.viewport()->rect().contains(list.visualItemRect(list.item(0))));
    QCOMPARE(tip(1), QString());
    QCOMPARE(tip(0), Qt::convertFromPlainText(name, Qt::WhiteSpaceNormal));
}

void TestFileListBox::manyFilesAreListedAtOnce()
{
    for (int file = 0; file < 5'000; ++file)
        Make(QString("/QList/%1").arg(file));
    FileListBox list;
    list.show();
    QElapsedTimer clock;
    clock.start();
    list.SetPath(At("\\QList"));
    list.doItemsLayout();
    const auto taken = clock.elapsed();
    QCOMPARE(list.count(), 5'001);
    QVERIFY2(taken < 1000, qPrintable(QString("%1 ms").arg(taken)));
}

QTEST_MAIN(TestFileListBox)
#include "TestFileListBox.moc"
