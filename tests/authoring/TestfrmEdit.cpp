#include "authoring/frmEdit.h"

#include "authoring/frmEditQuiz.h"
#include "authoring/frmEditSpell.h"
#include "authoring/frmList.h"
#include "platform/forms/FittingLabel.h"
#include "shell/ListTypes.h"
#include "shell/SharedState.h"
#include "shell/frmMenu1.h"
#include "support/Captions.h"
#include "support/CoverAndUncover.h"
#include "support/ListDesk.h"
#include "support/ReportText.h"

#include <QDir>
#include <QLabel>
#include <QTest>

using namespace tumblewick;
using support::ListDesk;
using support::ReportText;

// The choice of a list to edit.
class TestfrmEdit : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        m_desk.emplace("File1");
        for (const char *name : { "bears", "Ants", "cats.txt" })
            m_desk->WriteSpelling(name, { "word" });
        for (const char *name : { "Capitals", "Rivers.doc" })
            m_desk->WriteQuiz(name, { "q_1_2_3_4_1_" });
    }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void everyFileOfTheKindIsOffered_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("spelling lists") << kSpellList << QStringList{ "Ants", "bears", "cats.txt" };
        QTest::newRow("quizzes") << kQuizList << QStringList{ "Capitals", "Rivers.doc" };
        QTest::newRow("an unknown word") << "quiz" << QStringList();
    }
    void everyFileOfTheKindIsOffered()
    {
        QFETCH(QString, kind);
        Open(kind);
        QTEST(m_desk->Names(), "names");
        QCOMPARE(frmEdit::Shared().Window()->windowTitle(), "Select a List");
        support::CheckCaptions(*m_desk, { { "lblHead", "Select a List to Edit" },
                                          { "lblmsg", "" },
                                          { "cmdOK", "&OK" },
                                          { "cmdback", "&Back" },
                                          { "cmdMenu", "&Main Menu" },
                                          { "cmdHelp", "&Help !" } });
    }

    void aClickTellsWhatIsSelected()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        QCOMPARE(Guidance(), "You have selected bears. Click OK to continue.");
        m_desk->Select("cats.txt");
        QCOMPARE(Guidance(), "You have selected cats.txt. Click OK to continue.");
    }

    void theLongestNameLeavesTheGuidanceLegible()
    {
        const QString name(255, 'm');
        m_desk->WriteSpelling(name, { "word" });
        Open(kSpellList);
        m_desk->Select(name);
        QCOMPARE(Guidance(), "You have selected " + name + ". Click OK to continue.");
        const QString seen = m_desk->Find<platform::FittingLabel>("lblmsg")->ShownLines().join(' ');
        QVERIFY2(seen.startsWith("You have selected mm"), qPrintable(seen));
        QVERIFY2(seen.endsWith("mm. Click OK to continue."), qPrintable(seen));
    }

    void withNothingSelectedTheMessageFitsTheKind_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("message");
        QTest::newRow("spelling") << kSpellList
                                  << "Select a spelling list by clicking on the name of the list.";
        QTest::newRow("quiz") << kQuizList << "Select a quiz by clicking on the name of the list.";
    }
    void withNothingSelectedTheMessageFitsTheKind()
    {
        QFETCH(QString, kind);
        QFETCH(QString, message);
        Open(kind);
        m_desk->boxes.Expect(message);
        m_desk->Press("cmdOK");
        QVERIFY(frmEdit::Shared().IsActive());
    }

    void anUnknownKindDoesNothing()
    {
        Open("Spelling");
        m_desk->Press("cmdOK");
        QVERIFY(frmEdit::Shared().IsActive());
    }

    void anEmptyFolderSaysNothingUntilOk()
    {
        QVERIFY(QDir(m_desk->folder.filePath("QList")).removeRecursively());
        QVERIFY(QDir(m_desk->folder.path()).mkdir("QList"));
        Open(kQuizList);
        QCOMPARE(m_desk->Names(), QStringList());
        m_desk->boxes.Expect("Select a quiz by clicking on the name of the list.");
        m_desk->Press("cmdOK");
    }

    void aMissingFolderIsReported()
    {
        QVERIFY(QDir(m_desk->folder.filePath("Lists")).removeRecursively());
        m_desk->boxes.Expect(ReportText(76));
        Open(kSpellList);
        QVERIFY(frmEdit::Shared().IsActive());
    }

    void aFolderThatCannotBeReadIsReported()
    {
        m_desk->files.Fail(support::FaultyFiles::Operation::FileNames, 75);
        m_desk->boxes.Expect(ReportText(75));
        Open(kSpellList);
        QCOMPARE(m_desk->Names(), QStringList());
    }

    void okEditsTheSpellingList()
    {
        Open(kSpellList);
        m_desk->Select("cats.txt");
        m_desk->Press("cmdOK");
        QVERIFY(frmEditSpell::Shared().IsActive());
        QCOMPARE(frmEditSpell::Shared().EditFileName, "cats.txt");
        QVERIFY(!frmEdit::Shared().IsLoaded());
    }

    void okEditsTheQuiz()
    {
        Open(kQuizList);
        m_desk->Select("Capitals");
        m_desk->Press("cmdOK");
        QVERIFY(frmEditQuiz::Shared().IsActive());
        QCOMPARE(frmEditQuiz::Shared().EditFileName, "Capitals");
        QVERIFY(!frmEdit::Shared().IsLoaded());
    }

    void aDoubleClickEdits()
    {
        Open(kSpellList);
        m_desk->DoubleClick("bears");
        QVERIFY(frmEditSpell::Shared().IsActive());
        QCOMPARE(frmEditSpell::Shared().EditFileName, "bears");
    }

    void keysAloneEdit()
    {
        Open(kSpellList);
        QCOMPARE(m_desk->Focus(), "File1");
        QTest::keyClick(m_desk->Files(), Qt::Key_Down);
        QCOMPARE(Guidance(), "You have selected Ants. Click OK to continue.");
        QTest::keyClick(m_desk->Files(), Qt::Key_Return);
        m_desk->Settle();
        QCOMPARE(frmEditSpell::Shared().EditFileName, "Ants");
    }

    void anotherActivationKeepsTheSelection()
    {
        Open(kSpellList);
        m_desk->Select("bears");
        support::CoverAndUncover(*m_desk);
        QVERIFY(frmEdit::Shared().IsActive());
        QCOMPARE(m_desk->Files()->FileName(), "bears");
        QCOMPARE(Guidance(), "You have selected bears. Click OK to continue.");
    }

    void itLeadsBackAndHome()
    {
        Open(kSpellList);
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().size(), 1U);
        QCOMPARE(m_desk->help.Open().at(0).topic, "Adding, Editing and Deleting Lists.htm");
        m_desk->Press("cmdback");
        QVERIFY(frmList::Shared().IsActive());
        QVERIFY(frmEdit::Exists());
        QCOMPARE(frmEdit::Shared().ListType, kSpellList);
        QVERIFY(m_desk->help.Open().empty());
        Open(kQuizList);
        m_desk->Press("cmdMenu");
        QVERIFY(frmMenu1::Shared().IsActive());
        QVERIFY(!frmEdit::Shared().IsLoaded());
    }

private:
    void Open(const QString &kind)
    {
        frmEdit::Shared().ListType = kind;
        frmEdit::Shared().Show();
        m_desk->Settle();
    }
    QString Guidance() { return m_desk->Find<QLabel>("lblmsg")->text(); }

    std::optional<ListDesk> m_desk;
};

QTEST_MAIN(TestfrmEdit)
#include "TestfrmEdit.moc"
