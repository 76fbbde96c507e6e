#include "authoring/frmList.h"

#include "authoring/frmDelete.h"
#include "authoring/frmEdit.h"
#include "authoring/frmQuiz1.h"
#include "authoring/frmSpelling1.h"
#include "lists/frmExpList.h"
#include "lists/frmImpList.h"
#include "shell/ListTypes.h"
#include "shell/frmMenu1.h"
#include "support/Desk.h"

#include <QAbstractButton>
#include <QLoggingCategory>
#include <QTest>

using namespace tumblewick;
using support::Desk;

// The hub: where each button leads, and with which word.
class TestfrmList : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void aButtonLeadsOn_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("goesTo");
        const auto row = [](const char *button, const char *caption, const char *goesTo) {
            QTest::newRow(button) << QString::fromLatin1(button) << QString::fromLatin1(caption)
                                  << QString::fromLatin1(goesTo);
        };
        row("cmdNewSpell", "Add Spelling List", "frmSpelling1");
        row("cmdEditSpell", "Edit Spelling List", "frmEdit Spell");
        row("cdmDeleteSpell", "Delete Spelling List", "frmDelete Spell");
        row("cmdImportSpell", "Import Spelling List", "frmImpList Spell");
        row("cmdExportSpell", "Export Spelling List", "frmExpList Spell");
        row("cmdAddQuiz", "Add Quiz", "frmQuiz1");
        row("cmdEditQuiz", "Edit Quiz", "frmEdit Quiz");
        row("cmdDeleteQuiz", "Delete Quiz", "frmDelete Quiz");
        row("cmdImportQuiz", "Import Quiz", "frmImpList Quiz");
        row("cmdExportQuiz", "Export Quiz", "frmExpList Quiz");
        row("cmdMenu", "Main Menu", "frmMenu1");
    }
    void aButtonLeadsOn()
    {
        QFETCH(QString, button);
        Open();
        QCOMPARE(m_desk->Focus(), "cmdNewSpell");
        QTEST(m_desk->Find<QAbstractButton>(button)->text(), "caption");
        m_desk->Press(button);
        QTEST(Front(), "goesTo");
        QVERIFY(!frmList::Exists());
        QCOMPARE(platform::LoadedScreens(), 1);
    }

    // All buttons show first, but for the two that edit.
    void editUnloadsTheHubFirst_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<QStringList>("order");
        QTest::newRow("edit a list") << "cmdEditSpell" << QStringList{ "frmList unload", "frmEdit load" };
        QTest::newRow("edit a quiz") << "cmdEditQuiz" << QStringList{ "frmList unload", "frmEdit load" };
        QTest::newRow("delete") << "cdmDeleteSpell" << QStringList{ "frmDelete load", "frmList unload" };
        QTest::newRow("import") << "cmdImportQuiz" << QStringList{ "frmImpList load", "frmList unload" };
        QTest::newRow("export") << "cmdExportQuiz" << QStringList{ "frmExpList load", "frmList unload" };
    }
    void editUnloadsTheHubFirst()
    {
        QFETCH(QString, button);
        Open();
        s_order.clear();
        QLoggingCategory::setFilterRules("tumblewick.screen.debug=true");
        const auto before = qInstallMessageHandler(Note);
        m_desk->Press(button);
        qInstallMessageHandler(before);
        QLoggingCategory::setFilterRules(QString());
        QTEST(s_order, "order");
        QVERIFY(!m_desk->process.Ended());
    }

    void aNewVisitOverwritesTheWord()
    {
        frmDelete::Shared().ListType = kQuizList;
        Open();
        m_desk->Press("cdmDeleteSpell");
        QCOMPARE(frmDelete::Shared().ListType, kSpellList);
    }

    void helpIsShown()
    {
        Open();
        QCOMPARE(m_desk->Find<QAbstractButton>("cmdHelp")->text(), "Help !");
        m_desk->Press("cmdHelp");
        QCOMPARE(m_desk->help.Open().size(), 1U);
        QCOMPARE(m_desk->help.Open().at(0).topic, "Adding, Editing and Deleting Lists.htm");
    }

private:
    void Open()
    {
        frmList::Shared().Show();
        m_desk->Settle();
    }
    template <class Type>
    static QString Told(const char *name)
    {
        if (!Type::Exists() || !Type::Shared().IsActive())
            return QString();
        if constexpr (requires { Type::Shared().ListType; })
            return QString::fromLatin1(name) + ' ' + Type::Shared().ListType;
        else
            return QString::fromLatin1(name);
    }
    static QString Front()
    {
        return Told<frmSpelling1>("frmSpelling1") + Told<frmQuiz1>("frmQuiz1") + Told<frmEdit>("frmEdit") +
               Told<frmDelete>("frmDelete") + Told<frmImpList>("frmImpList") +
               Told<frmExpList>("frmExpList") + Told<frmMenu1>("frmMenu1");
    }

    static void Note(QtMsgType, const QMessageLogContext &, const QString &message)
    {
        if (message.startsWith("screen: ") && !message.endsWith(" activate"))
            s_order << message.mid(8);
    }

    inline static QStringList s_order;
    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestfrmList)
#include "TestfrmList.moc"
