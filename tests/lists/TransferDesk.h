#pragma once

#include "authoring/frmList.h"
#include "platform/forms/DriveList.h"
#include "platform/forms/FolderList.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/CoverAndUncover.h"
#include "support/ListDesk.h"

#include <QDir>
#include <QLineEdit>

namespace support {

inline const QString kNoName = QStringLiteral("Please enter a name for the list to be saved as. ");
inline const QString kRefused =
    QStringLiteral("A file name cannot contain any of the following characters: / \\ : * ? \" <> | ");
inline const QString kDriveGone = QStringLiteral("This drive is not accessable");

// The desk with what exporting and importing have in common: a home with a folder in it, and a stick.
class TransferDesk : public ListDesk {
public:
    TransferDesk() : ListDesk(QStringLiteral("FileList"))
    {
        WriteQuiz(QStringLiteral("Capitals"), { QStringLiteral("q_1_2_3_4_1_") });
        QDir(Home()).mkdir(QStringLiteral("Documents"));
        QDir(folder.path()).mkdir(QStringLiteral("stick"));
        drives.all.push_back({ Stick(), QStringLiteral("STICK"), platform::Drive::Kind::Removable });
    }

    template <class Screen>
    void Open(const QString &kind)
    {
        Screen::Shared().ListType = kind;
        Screen::Shared().Show();
        Settle();
    }

    QString Home(const QString &path = QString()) const
    {
        return folder.filePath(QStringLiteral("Home")) + path;
    }
    QString Stick() const { return folder.filePath(QStringLiteral("stick")); }

    platform::FolderList *Folder() { return Find<platform::FolderList>(QStringLiteral("Dir1")); }
    platform::DriveList *Drive() { return Find<platform::DriveList>(QStringLiteral("Drive1")); }
    QLineEdit *Name() { return Find<QLineEdit>(QStringLiteral("txtName")); }
    void Go(const QString &to) { ClickOn(*Folder(), to); }
    // As a user does.
    void Choose(const QString &drive)
    {
        const int place = Drive()->findText(drive);
        QVERIFY(place >= 0);
        Drive()->setCurrentIndex(place);
        emit Drive()->activated(place);
        Settle();
    }

    // Columns and rows for what is missing when the button is pressed; `noList` is the sentence for the list.
    static void MissingRows(const QString &noList)
    {
        QTest::addColumn<bool>("isSelected");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        QTest::newRow("both") << false << "" << noList + kNoName;
        QTest::newRow("list") << false << "mine" << noList;
        QTest::newRow("name") << true << "" << kNoName;
    }
    // Column and rows for names that no file may have.
    static void RefusedRows()
    {
        QTest::addColumn<QString>("name");
        for (const char *name : { "what?", "a*", "a:b", "\"a\"", "<a>", "a|b", "con", "NUL.txt", "a\tb" })
            QTest::newRow(name) << QString::fromLatin1(name);
        QTest::newRow("too long") << QString(300, QLatin1Char('a'));
    }
    // Columns and rows for faults of the disk other than such a name.
    static void FaultRows()
    {
        QTest::addColumn<FaultyFiles::Operation>("operation");
        QTest::addColumn<qint32>("number");
        for (const qint32 number : { 53, 57, 61, 68, 70, 75, 76 })
            QTest::addRow("copy %d", number) << FaultyFiles::Operation::FileCopy << number;
        for (const qint32 number : { 53, 70, 75 })
            QTest::addRow("kill %d", number) << FaultyFiles::Operation::Kill << number;
    }

    // Whenever the screen comes to the front it goes back to the home; the rest stays.
    template <class Screen>
    void ComesBackToTheHome()
    {
        Open<Screen>(tumblewick::kSpellList);
        Type(QStringLiteral("txtName"), QStringLiteral("mine"));
        Choose(QStringLiteral("STICK"));
        QCOMPARE(Folder()->Path(), Stick());
        CoverAndUncover(*this);
        QVERIFY(Screen::Shared().IsActive());
        QCOMPARE(Drive()->Drive(), Home());
        QCOMPARE(Folder()->Path(), Home());
        QCOMPARE(Name()->text(), QStringLiteral("mine"));
    }

    // From a screen of either kind to where its buttons lead; it lets go of itself, of the characters and of
    // the help that was opened.
    template <class Screen>
    void LeadsBackAndHome()
    {
        tumblewick::frmMenu1::Shared().Load();
        Open<Screen>(tumblewick::kSpellList);
        Press(QStringLiteral("cmdHelp"));
        QCOMPARE(help.Open().size(), 1U);
        QCOMPARE(help.Open().at(0).topic, "Exporting and Importing Lists.htm");
        tumblewick::State().AgentControl = agent.CreateControl();
        Press(QStringLiteral("cmdback"));
        QVERIFY(tumblewick::frmList::Shared().IsActive());
        QVERIFY(!Screen::Exists());
        QVERIFY(tumblewick::State().AgentControl == nullptr);
        QVERIFY(help.Open().empty());
        Open<Screen>(tumblewick::kQuizList);
        Press(QStringLiteral("cmdExit"));
        QVERIFY(tumblewick::frmMenu1::Shared().IsActive());
        QVERIFY(!Screen::Exists());
    }
};

} // namespace support
