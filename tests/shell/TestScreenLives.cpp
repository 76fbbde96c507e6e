#include "authoring/frmDelete.h"
#include "authoring/frmEdit.h"
#include "authoring/frmEditQuiz.h"
#include "authoring/frmEditSpell.h"
#include "authoring/frmList.h"
#include "authoring/frmQuiz1.h"
#include "authoring/frmSpelling1.h"
#include "game/frmSpell1.h"
#include "lists/frmExpList.h"
#include "lists/frmImpList.h"
#include "setup/frmChooseList1.h"
#include "setup/frmNumPlayers1.h"
#include "setup/frmPlayerNames1.h"
#include "shell/SharedState.h"
#include "shell/frmAbout.h"
#include "shell/frmMenu1.h"
#include "shell/frmSettings.h"
#include "shell/frmSplash.h"
#include "support/Desk.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPointer>
#include <QTest>

#include <map>

using namespace tumblewick;
using support::Desk;

namespace {

// A screen class and its habits.
struct ScreenClass {
    std::function<platform::Screen &()> shared;
    std::function<bool()> exists;
    std::function<void()> release;
    QString title;             // of its window
    bool staysBehindItsWindow; // the instance, with its members
    bool letsGoOfTheControl;   // in its final release
    bool closesHelp;           // when it is unloaded
};

template <class T>
ScreenClass ClassOf(const QString &title, bool staysBehindItsWindow, bool letsGoOfTheControl, bool closesHelp)
{
    return { []() -> platform::Screen & { return T::Shared(); },
             [] { return T::Exists(); },
             [] { T::Release(); },
             title,
             staysBehindItsWindow,
             letsGoOfTheControl,
             closesHelp };
}

const std::map<QString, ScreenClass> kClasses = {
    { "frmSplash", ClassOf<frmSplash>("", true, false, false) },
    { "frmMenu1", ClassOf<frmMenu1>("Menu", true, true, true) },
    { "frmNumPlayers1", ClassOf<frmNumPlayers1>("Number of Players", true, true, true) },
    { "frmPlayerNames1", ClassOf<frmPlayerNames1>("Players", true, true, true) },
    { "frmChooseList1", ClassOf<frmChooseList1>("Choose a List", true, true, true) },
    { "frmSpell1", ClassOf<frmSpell1>("The Game", true, false, true) },
    { "frmSettings", ClassOf<frmSettings>("Settings", false, true, true) },
    { "frmAbout", ClassOf<frmAbout>("About Tumblewick", false, false, false) },
    { "frmList", ClassOf<frmList>("Maintenance", false, true, true) },
    { "frmEdit", ClassOf<frmEdit>("Select a List", true, true, true) },
    { "frmDelete", ClassOf<frmDelete>("Delete a List", true, true, true) },
    { "frmSpelling1", ClassOf<frmSpelling1>("Create a Spell List", false, false, true) },
    { "frmEditSpell", ClassOf<frmEditSpell>("Edit Spelling List", false, true, true) },
    { "frmQuiz1", ClassOf<frmQuiz1>("Create a Quiz", false, false, true) },
    { "frmEditQuiz", ClassOf<frmEditQuiz>("Edit Quiz", true, true, true) },
    { "frmExpList", ClassOf<frmExpList>("Lists", false, true, true) },
    { "frmImpList", ClassOf<frmImpList>("Import List", false, true, true) },
};

} // namespace

// All screens: what of them stays when they go, and how the program ends.
class TestScreenLives : public QObject {
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QVERIFY(m_desk->boxes.AllAnswered());
        m_desk.reset();
    }

    void theTitleStandsInTheFrame_data() { Classes(); }
    void theTitleStandsInTheFrame()
    {
        Kind().shared().Load();
        QCOMPARE(Kind().shared().Window()->windowTitle(), Kind().title);
    }

    void eachHasItsLook_data() { Classes(); }
    void eachHasItsLook()
    {
        Kind().shared().Load();
        QVERIFY(Kind().shared().Window()->property("room").isValid());
    }

    void theInstanceStaysBehindItsWindowOrGoesWithIt_data() { Classes(); }
    void theInstanceStaysBehindItsWindowOrGoesWithIt()
    {
        const ScreenClass &kind = Kind();
        KeepTheProgramGoing(kind);
        platform::Screen &screen = kind.shared();
        QVERIFY(!screen.IsLoaded()); // made, and not loaded by that
        screen.Load();
        const QPointer<QWidget> window = screen.Window();
        screen.Unload();
        m_desk->Settle();
        QVERIFY(!window);
        QCOMPARE(kind.exists(), kind.staysBehindItsWindow);
        if (kind.staysBehindItsWindow)
            QCOMPARE(&kind.shared(), &screen);
        kind.shared().Load();
        QVERIFY(kind.shared().IsLoaded());
    }

    void theFinalReleaseLetsGoOfTheControlAndTheRequest_data() { Classes(); }
    void theFinalReleaseLetsGoOfTheControlAndTheRequest()
    {
        const QString name = QTest::currentDataTag();
        const auto control = m_desk->agent.CreateControl();
        control->Load("Merlin", "Merlin.acs");
        SharedState &state = State();
        state.AgentControl = control;
        state.Characters[kMerlin] = control->Character("Merlin");
        state.CurrentRequest = state.Characters[kMerlin]->Show();
        state.SecondRequest = state.CurrentRequest;
        Kind().shared();
        Kind().release();
        QVERIFY(!Kind().exists());
        QCOMPARE(state.AgentControl.IsNothing(), Kind().letsGoOfTheControl);
        QCOMPARE(state.CurrentRequest.IsNothing(), Kind().letsGoOfTheControl);
        QCOMPARE(state.SecondRequest.IsNothing(), name == "frmMenu1");
        QVERIFY(!state.Characters[kMerlin].IsNothing());
        QVERIFY(control->Connected()); // it is only not referred to any more
    }

    void theControlIsLetGoOfByTheReleaseNotByTheUnload_data() { Classes(); }
    void theControlIsLetGoOfByTheReleaseNotByTheUnload()
    {
        const ScreenClass &kind = Kind();
        KeepTheProgramGoing(kind);
        const auto control = m_desk->agent.CreateControl();
        kind.shared().Load();
        State().AgentControl = control;
        kind.shared().Unload();
        m_desk->Settle();
        QVERIFY((State().AgentControl == control) == (kind.staysBehindItsWindow || !kind.letsGoOfTheControl));
    }

    void closingFromTheFrameUnloadsAndClosesHelp_data() { Classes(); }
    void closingFromTheFrameUnloadsAndClosesHelp()
    {
        const ScreenClass &kind = Kind();
        KeepTheProgramGoing(kind);
        kind.shared().Load();
        const int closings = int(m_desk->help.Calls().count("CloseAll"));
        kind.shared().Window()->close();
        m_desk->Settle();
        QVERIFY(!kind.exists() || !kind.shared().IsLoaded());
        QCOMPARE(int(m_desk->help.Calls().count("CloseAll")), closings + (kind.closesHelp ? 1 : 0));
        QCOMPARE(platform::LoadedScreens(), 1);
        QVERIFY(!m_desk->process.Ended());
    }

    void typedTextDoesNotSurviveAnUnload()
    {
        State().NumPlayers = 1;
        frmNumPlayers1::Shared().Load();
        frmPlayerNames1::Shared().Show();
        m_desk->Settle();
        m_desk->Type("txtPlayer_0", "Ann");
        frmPlayerNames1::Shared().Unload();
        frmPlayerNames1::Shared().Show();
        m_desk->Settle();
        QCOMPARE(m_desk->Find<QLineEdit>("txtPlayer_0")->text(), QString());
    }

    void membersOfTheMenuSurviveItsUnload()
    {
        OpenMenu();
        frmMenu1::Shared().IntroCancelled = true;
        m_desk->Press("cmdPlay");
        m_desk->Press("cmdback");
        QVERIFY(frmMenu1::Shared().IntroCancelled);
    }

    void theListLeftBehindTheNamesKeepsTheProgramGoing()
    {
        State().GameMode = kSpellingMode;
        State().NumPlayers = 1;
        frmChooseList1::Shared().Show();
        m_desk->Settle();
        m_desk->Press("cmdback");
        QVERIFY(frmPlayerNames1::Shared().IsActive());
        frmPlayerNames1::Shared().Window()->close();
        m_desk->Settle();
        QVERIFY(!m_desk->process.Ended());
        QVERIFY(frmChooseList1::Shared().IsActive());
        frmChooseList1::Shared().Window()->close();
        m_desk->Settle();
        QCOMPARE(m_desk->process.ExitCode(), std::optional(0));
    }

    void quitEndsWithWhateverElseIsLoaded()
    {
        OpenMenu();
        frmChooseList1::Shared().Load();
        const auto before = m_desk->help.Calls().size();
        m_desk->Press("Command1");
        QCOMPARE(m_desk->process.ExitCode(), std::optional(0));
        // Neither unload nor release ran.
        QCOMPARE(m_desk->help.Calls().mid(before), QStringList{ "CloseAll" });
        QVERIFY(frmMenu1::Shared().IsLoaded());
        QVERIFY(frmChooseList1::Shared().IsLoaded());
        QVERIFY(!State().AgentControl.IsNothing());
        QVERIFY(State().AgentControl->Connected());
    }

    void quitUnderTheAboutBoxEndsTheProgram()
    {
        OpenMenu();
        frmAbout::Shared().Show();
        m_desk->Settle();
        frmMenu1::Shared().Window()->findChild<QAbstractButton *>("Command1")->click();
        QCOMPARE(m_desk->process.ExitCode(), std::optional(0));
        QVERIFY(frmAbout::Shared().IsLoaded());
    }

    // A script that is suspended in a wait outlives the window of its screen, and does no harm.
    void theGameMayBeClosedUnderItsScript_data()
    {
        QTest::addColumn<int>("after"); // milliseconds
        for (const int after : { 0, 500, 1500, 3000, 4500, 6000, 8000, 11000 })
            QTest::addRow("after %d", after) << after;
    }
    void theGameMayBeClosedUnderItsScript()
    {
        QFETCH(int, after);
        frmNumPlayers1::Shared().Load();
        QPointer<QWidget> window;
        bool lived = false;
        m_desk->After(std::chrono::milliseconds(after), [&] {
            window = frmSpell1::Shared().Window();
            if (window)
                window->close();
        });
        m_desk->After(std::chrono::milliseconds(after + 1), [&] { lived = window != nullptr; });
        m_desk->BeginSpelling({ "Ann", "Bob" }, { "cat", "dog" });
        m_desk->Rest();
        QVERIFY(!frmSpell1::Shared().IsLoaded());
        QVERIFY(frmNumPlayers1::Shared().IsLoaded());
        QVERIFY(m_desk->boxes.AllAnswered());
        QVERIFY(!m_desk->process.Ended());
        QVERIFY(m_desk->time.Hung()); // its wait turns for ever
        QVERIFY(lived);               // and as long as it does the dropped window stays
    }

    void theGameMayBeBegunAnewUnderItsOldScript()
    {
        frmNumPlayers1::Shared().Load();
        m_desk->After(std::chrono::milliseconds(2500), [&] { frmSpell1::Shared().Window()->close(); });
        m_desk->After(std::chrono::milliseconds(3000), [&] { frmSpell1::Shared().Show(); });
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        // The new script has given the old one, whose waits read the same members, what it waited for.
        QVERIFY(!m_desk->time.Hung());
        QVERIFY(frmSpell1::Shared().IsActive());
        QVERIFY(State().AgentControl->Connected());
        m_desk->Rest();
        QVERIFY(m_desk->Find<QLineEdit>("txtAnswer")->isVisible());
        frmSpell1::Shared().Window()->close();
        m_desk->Settle();
        QVERIFY(!frmSpell1::Shared().IsLoaded());
        QVERIFY(!m_desk->process.Ended());
    }

    void releasedUnderItsScriptTheGameStaysUntilItEnds()
    {
        frmNumPlayers1::Shared().Load();
        bool stillThere = false;
        m_desk->After(std::chrono::milliseconds(2500), [&] {
            frmSpell1::Shared().Window()->close();
            frmSpell1::Release();
        });
        m_desk->After(std::chrono::milliseconds(2600), [&] { stillThere = !frmSpell1::Exists(); });
        m_desk->BeginSpelling({ "Ann" }, { "cat" });
        QVERIFY(stillThere);
        QVERIFY(m_desk->time.Hung());
    }

private:
    static void Classes()
    {
        QTest::addColumn<QString>("name");
        for (const auto &[name, kind] : kClasses)
            QTest::newRow(qPrintable(name)) << name;
    }
    static const ScreenClass &Kind() { return kClasses.at(QTest::currentDataTag()); }
    // Another screen that is loaded, so that the end of the one under test is not the end of all.
    static void KeepTheProgramGoing(const ScreenClass &kind)
    {
        platform::Screen &other = &kind.shared() == &frmNumPlayers1::Shared()
                                      ? static_cast<platform::Screen &>(frmPlayerNames1::Shared())
                                      : frmNumPlayers1::Shared();
        other.Load();
    }
    void OpenMenu()
    {
        frmMenu1::Shared().Show();
        m_desk->Settle();
    }

    std::optional<Desk> m_desk;
};

QTEST_MAIN(TestScreenLives)
#include "TestScreenLives.moc"
