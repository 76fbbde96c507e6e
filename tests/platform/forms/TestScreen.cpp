#include "TestScreens.h"
#include "support/PlainDesk.h"

#include "platform/Error.h"
#include "platform/forms/Backdrop.h"

#include <QBackingStore>
#include <QPointer>
#include <QTest>

#include <optional>

using platform::ShowScreen;
using support::PlainDesk;
using namespace std::chrono_literals;

namespace {

const QStringList &Log()
{
    return g_log;
}

} // namespace

// The life of screens: instance and window, the door, the end of the program.
class TestScreen : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_desk.emplace();
        g_log.clear();
    }
    void cleanup() { m_desk.reset(); }

    void firstUseMakesTheInstanceAndLoadingMakesTheWindow();
    void unloadDropsTheWindowAndKeepsTheInstance();
    void showingTheNextScreenComesBeforeUnloadingThePresentOne();
    void releasedInstanceGoesWithTheUnload();
    void releasedInstanceOutlivesItsRunningHandler();
    void releaseWhileLoadedKeepsTheScreen();
    void suspendedHandlerSurvivesUnloadAndReleaseOfItsScreen();
    void windowsAreDeletedOnlyWhenNoHandlerRuns();
    void windowDroppedJustBeforeAWaitLivesUntilItEnds();
    void windowKeptForAScriptKeepsNoPictures();
    void nestedWaitsEndInnermostFirst();
    void errorWhileUnloadingLeavesTheScreenLoaded();
    void errorWhileLoadingLeavesNoWindow();
    void unloadWithinUnloadDoesNothing();

    void closingFromTheFrameIsAPlainUnload();
    void closingTheLastWindowEndsTheProgram();
    void closingOneOfTwoWindowsDoesNot();
    void lastScreenGoneEndsTheProgramWhenTheHandlerLetsGo();
    void lastScreenGoneEndsTheProgramUnderASuspendedScript();
    void unloadThenShowDoesNotEndTheProgram();
    void unloadOutsideAnyHandlerEndsTheProgramLater();
    void endingUnwindsEveryWaitAndRunsNoStep();
    void nothingRunsAfterTheEnd();

    void errorWithoutTrapIsReportedAndEndsTheProgram();
    void errorWithoutTrapInANestedHandlerEndsTheProgram();
    void errorOfWhatBelongsToNoScreenIsReported();

    void unloadCutsTheHandlers();
    void unloadCutsTheHandlerThatIsStillToComeInTheSameSignal();

private:
    std::optional<PlainDesk> m_desk;
};

void TestScreen::firstUseMakesTheInstanceAndLoadingMakesTheWindow()
{
    QVERIFY(!One::Exists());
    One &one = One::Shared();
    QCOMPARE(&One::Shared(), &one);
    QVERIFY(!one.IsLoaded());
    QCOMPARE(one.Window(), nullptr);
    one.Load();
    QVERIFY(one.IsLoaded());
    QVERIFY(!one.Window()->isVisible());
    QVERIFY(!one.IsActive());
    QCOMPARE(one.Window()->windowTitle(), "One title");
    one.Load();
    one.Show();
    QVERIFY(one.Window()->isVisible());
    QVERIFY(one.IsActive());
    QCOMPARE(Log(), QStringList({ "One made", "One load", "One resize" }));
    m_desk->Settle();
    QCOMPARE(Log(), QStringList({ "One made", "One load", "One resize", "One activate" }));
}

void TestScreen::unloadDropsTheWindowAndKeepsTheInstance()
{
    One &one = One::Shared();
    Two::Shared().Show();
    one.Show();
    one.note = 7;
    QPointer<QWidget> first(one.Window());
    one.Unload();
    QVERIFY(!one.IsLoaded());
    QVERIFY(!one.IsActive());
    QVERIFY(first && !first->isVisible());
    m_desk->Settle();
    QVERIFY(!first);
    QCOMPARE(&One::Shared(), &one);
    QCOMPARE(One::Shared().note, 7);
    one.Unload();
    QCOMPARE(Log().count("One unload"), 1);
    one.Show();
    QCOMPARE(Log().count("One load"), 2);
    QVERIFY(one.Window()->isVisible());
}

void TestScreen::showingTheNextScreenComesBeforeUnloadingThePresentOne()
{
    One &one = One::Shared();
    one.cmdGo_Click = [&] {
        ShowScreen(Two::Shared(), one);
        g_log << "handler ends";
    };
    one.Show();
    m_desk->Settle();
    g_log.clear();
    one.cmdGo->click();
    m_desk->Settle();
    QCOMPARE(Log(), QStringList({ "Two made", "Two load", "Two resize", "One unload", "handler ends",
                                  "Two activate" }));
    QVERIFY(!m_desk->process.Ended());
}

void TestScreen::releasedInstanceGoesWithTheUnload()
{
    Two::Shared().Show();
    One::Shared().onUnload = [] { One::Release(); };
    One::Shared().note = 7;
    One::Shared().Show();
    m_desk->Settle();
    g_log.clear();
    One::Shared().Unload();
    QCOMPARE(Log(), QStringList({ "One unload", "One destroyed" }));
    QVERIFY(!One::Exists());
    QCOMPARE(One::Shared().note, 0);
}

void TestScreen::releasedInstanceOutlivesItsRunningHandler()
{
    One &one = One::Shared();
    one.onUnload = [] { One::Release(); };
    one.cmdGo_Click = [&] {
        ShowScreen(Two::Shared(), one);
        one.note = 8; // the members are still there
        g_log << QString::number(one.note);
    };
    one.Show();
    m_desk->Settle();
    g_log.clear();
    one.cmdGo->click();
    QCOMPARE(Log(),
             QStringList({ "Two made", "Two load", "Two resize", "One unload", "8", "One destroyed" }));
}

void TestScreen::releaseWhileLoadedKeepsTheScreen()
{
    Two::Shared().Show();
    One &old = One::Shared();
    old.Show();
    One::Release();
    QVERIFY(!Log().contains("One destroyed"));
    old.cmdGo_Click = [] { g_log << "still works"; };
    old.cmdGo->click();
    QVERIFY(Log().contains("still works"));
    QVERIFY(&One::Shared() != &old);
    old.Unload();
    QVERIFY(Log().contains("One destroyed"));
}

void TestScreen::suspendedHandlerSurvivesUnloadAndReleaseOfItsScreen()
{
    One &one = One::Shared();
    bool done = false;
    one.onUnload = [] { One::Release(); };
    one.cmdGo_Click = [&] {
        auto *const button = one.cmdGo;
        WaitUntil(done);
        // Window and members are still there, though both have been given up long since.
        button->setText("touched");
        one.note = 9;
        g_log << QStringLiteral("script ran on, %1 %2").arg(one.note).arg(button->text());
    };
    one.cmdOther_Click = [&] { ShowScreen(Two::Shared(), one); };
    one.Show();
    m_desk->Settle();
    QPointer<QWidget> window(one.Window());
    const auto press = m_desk->time.After(1s, [&] { one.cmdOther->click(); });
    const auto finish = m_desk->time.After(5s, [&] {
        g_log << "wait is over";
        QVERIFY(window);
        QVERIFY(!One::Exists());
        done = true;
    });
    g_log.clear();
    one.cmdGo->click();
    QCOMPARE(Log(), QStringList({ "Two made", "Two load", "Two resize", "One unload", "Two activate",
                                  "wait is over", "script ran on, 9 touched", "One destroyed" }));
    m_desk->Settle();
    QVERIFY(!window);
    QVERIFY(!m_desk->process.Ended());
}

void TestScreen::windowsAreDeletedOnlyWhenNoHandlerRuns()
{
    One::Shared().Show();
    Two::Shared().Show();
    QPointer<QWidget> window(Two::Shared().Window());
    bool done = false;
    Two::Shared().cmdOther_Click = [] { Two::Shared().Unload(); };
    One::Shared().cmdGo_Click = [&] {
        WaitUntil(done);
        QVERIFY(window);
        done = false;
        const auto later = m_desk->time.After(1s, [&] { done = true; });
        WaitUntil(done);
        QVERIFY(window);
    };
    const auto press = m_desk->time.After(1s, [&] { Two::Shared().cmdOther->click(); });
    const auto finish = m_desk->time.After(2s, [&] { done = true; });
    One::Shared().cmdGo->click();
    QVERIFY(window); // the click's own event may still need it
    m_desk->Settle();
    QVERIFY(!window);
}

void TestScreen::windowDroppedJustBeforeAWaitLivesUntilItEnds()
{
    One::Shared().Show();
    Two::Shared().Show();
    QPointer<QWidget> window(Two::Shared().Window());
    bool done = false;
    Two::Shared().cmdGo_Click = [] { Two::Shared().Unload(); };
    One::Shared().cmdGo_Click = [&] {
        WaitUntil(done);
        QVERIFY(window);
    };
    const auto finish = m_desk->time.After(1s, [&] { done = true; });
    // Two handlers of one event, as when a click both presses a button and moves the focus.
    Two::Shared().cmdGo->click();
    One::Shared().cmdGo->click();
    QVERIFY(window);
    m_desk->Settle();
    QVERIFY(!window);
}

// A script may wait for the rest of the run, and all windows that are dropped meanwhile wait with it.
void TestScreen::windowKeptForAScriptKeepsNoPictures()
{
    One::Shared().Show();
    Two::Shared().Show();
    const QPointer<QWidget> window(Two::Shared().Window());
    platform::Backdrop::Install(*window, ":/none.svg");
    platform::Backdrop::Install(*Two::Shared().cmdOther, ":/none.svg");
    QCoreApplication::processEvents(); // the desktop has it painted
    QCOMPARE(window->backingStore()->size(), window->size());
    bool done = false;
    Two::Shared().cmdOther_Click = [&] {
        Two::Shared().Unload();
        done = true;
    };
    One::Shared().cmdGo_Click = [&] {
        WaitUntil(done);
        QVERIFY(window);
        QVERIFY(window->findChildren<platform::Backdrop *>().isEmpty());
        QCOMPARE(window->backingStore()->size(), QSize(1, 1));
        QVERIFY(window->findChild<QPushButton *>());
    };
    const auto press = m_desk->time.After(1s, [&] { Two::Shared().cmdOther->click(); });
    One::Shared().cmdGo->click();
    QVERIFY(done);
}

void TestScreen::nestedWaitsEndInnermostFirst()
{
    One &one = One::Shared();
    bool outerDone = false;
    bool innerDone = false;
    one.cmdGo_Click = [&] {
        WaitUntil(outerDone);
        g_log << "outer ends";
    };
    one.cmdOther_Click = [&] {
        WaitUntil(innerDone);
        g_log << "inner ends";
    };
    one.Show();
    const auto first = m_desk->time.After(1s, [&] { one.cmdOther->click(); });
    const auto second = m_desk->time.After(2s, [&] {
        outerDone = true;
        g_log << "outer may go on";
    });
    const auto third = m_desk->time.After(3s, [&] { innerDone = true; });
    m_desk->Settle();
    g_log.clear();
    one.cmdGo->click();
    QCOMPARE(Log(), QStringList({ "outer may go on", "inner ends", "outer ends" }));
}

void TestScreen::errorWhileUnloadingLeavesTheScreenLoaded()
{
    One &one = One::Shared();
    one.Show();
    one.onUnload = [] { throw platform::Error(platform::kPathNotFound); };
    QVERIFY_EXCEPTION_THROWN(one.Unload(), platform::Error);
    QVERIFY(one.IsLoaded());
    QVERIFY(one.Window()->isVisible());
    one.onUnload = {};
    one.Unload();
    QVERIFY(!one.IsLoaded());
}

void TestScreen::errorWhileLoadingLeavesNoWindow()
{
    Two::Shared().Show();
    One &one = One::Shared();
    one.onLoad = [] { throw platform::Error(platform::kInvalidPicture); };
    QVERIFY_EXCEPTION_THROWN(one.Show(), platform::Error);
    QVERIFY(!one.IsLoaded());
    QVERIFY(Two::Shared().IsActive());
    QCOMPARE(platform::LoadedScreens(), 1);
    one.onLoad = {};
    one.Show();
    QVERIFY(one.IsActive());
}

void TestScreen::unloadWithinUnloadDoesNothing()
{
    Two::Shared().Show();
    One &one = One::Shared();
    one.onUnload = [&] { one.Unload(); };
    one.Show();
    one.Unload();
    QCOMPARE(Log().count("One unload"), 1);
    QVERIFY(!one.IsLoaded());
}

void TestScreen::closingFromTheFrameIsAPlainUnload()
{
    Two::Shared().Show();
    One::Shared().Show();
    m_desk->Settle();
    QPointer<QWidget> window(One::Shared().Window());
    g_log.clear();
    QVERIFY(!window->close());
    QCOMPARE(Log(), QStringList({ "One unload" }));
    QVERIFY(!One::Shared().IsLoaded());
    QVERIFY(One::Exists());
    QVERIFY(!window->isVisible());
    m_desk->Settle();
    QVERIFY(!window);
    QVERIFY(!m_desk->process.Ended());
}

void TestScreen::closingTheLastWindowEndsTheProgram()
{
    One::Shared().Show();
    m_desk->Settle();
    QVERIFY(!m_desk->process.Ended());
    One::Shared().Window()->close();
    QCOMPARE(m_desk->process.ExitCode(), std::optional(0));
    QVERIFY(Log().contains("One unload"));
}

void TestScreen::closingOneOfTwoWindowsDoesNot()
{
    One::Shared().Show();
    Two::Shared().Load(); // a screen that is loaded and was never shown counts
    m_desk->Settle();
    One::Shared().Window()->close();
    m_desk->Settle();
    QVERIFY(!m_desk->process.Ended());
    QCOMPARE(platform::LoadedScreens(), 1);
}

void TestScreen::lastScreenGoneEndsTheProgramWhenTheHandlerLetsGo()
{
    One &one = One::Shared();
    one.cmdGo_Click = [&] {
        one.Unload();
        QVERIFY(!m_desk->process.Ended());
        g_log << "handler ends";
    };
    one.Show();
    m_desk->Settle();
    one.cmdGo->click();
    QCOMPARE(Log().last(), "handler ends");
    QCOMPARE(m_desk->process.ExitCode(), std::optional(0));
}

void TestScreen::lastScreenGoneEndsTheProgramUnderASuspendedScript()
{
    One &one = One::Shared();
    bool never = false;
    one.cmdGo_Click = [&] {
        WaitUntil(never);
        g_log << "script ran on";
    };
    one.Show();
    const auto close = m_desk->time.After(1s, [&] { one.Window()->close(); });
    m_desk->Settle();
    one.cmdGo->click();
    QCOMPARE(m_desk->process.ExitCode(), std::optional(0));
    QVERIFY(!m_desk->time.Hung());
    QVERIFY(!Log().contains("script ran on"));
}

void TestScreen::unloadThenShowDoesNotEndTheProgram()
{
    One &one = One::Shared();
    one.cmdGo_Click = [&] {
        one.Unload();
        QCOMPARE(platform::LoadedScreens(), 0);
        Two::Shared().Show();
    };
    one.Show();
    m_desk->Settle();
    g_log.clear();
    one.cmdGo->click();
    m_desk->Settle();
    QCOMPARE(Log(), QStringList({ "One unload", "Two made", "Two load", "Two resize", "Two activate" }));
    QVERIFY(!m_desk->process.Ended());
}

void TestScreen::unloadOutsideAnyHandlerEndsTheProgramLater()
{
    One::Shared().Show();
    One::Shared().Unload();
    QVERIFY(!m_desk->process.Ended());
    m_desk->Settle();
    QCOMPARE(m_desk->process.ExitCode(), std::optional(0));
}

void TestScreen::endingUnwindsEveryWaitAndRunsNoStep()
{
    One &one = One::Shared();
    bool never = false;
    struct Note {
        QString text;
        ~Note() { g_log << text; }
    };
    one.cmdGo_Click = [&] {
        const Note note{ "outer unwound" };
        WaitUntil(never);
        g_log << "outer ran on";
    };
    one.cmdOther_Click = [&] {
        const Note note{ "inner unwound" };
        WaitUntil(never);
        g_log << "inner ran on";
    };
    one.timer_Timer = [&] { m_desk->process.End(3); };
    one.Show();
    m_desk->Settle();
    one.timer->SetInterval(2000);
    const auto press = m_desk->time.After(1s, [&] { one.cmdOther->click(); });
    g_log.clear();
    one.cmdGo->click();
    QCOMPARE(Log(), QStringList({ "inner unwound", "outer unwound" }));
    QCOMPARE(m_desk->process.ExitCode(), std::optional(3));
    QVERIFY(one.IsLoaded());
}

void TestScreen::nothingRunsAfterTheEnd()
{
    One &one = One::Shared();
    one.cmdGo_Click = [&] { m_desk->process.End(); };
    one.cmdOther_Click = [] { g_log << "other"; };
    one.Show();
    one.cmdOther->click();
    one.cmdGo->click();
    one.cmdOther->click();
    QCOMPARE(Log().count("other"), 1);
    platform::ForgetScreens();
    One::Shared().cmdOther_Click = [] { g_log << "other"; };
    One::Shared().Show();
    One::Shared().cmdOther->click();
    QCOMPARE(Log().count("other"), 2);
}

void TestScreen::errorWithoutTrapIsReportedAndEndsTheProgram()
{
    One &one = One::Shared();
    one.cmdGo_Click = [] { throw platform::Error(platform::kFileNotFound); };
    one.Show();
    m_desk->boxes.Expect("Run-time error '53':\r\n\r\nFile not found");
    one.cmdGo->click();
    QVERIFY(m_desk->boxes.AllAnswered());
    QCOMPARE(m_desk->process.ExitCode(), std::optional(1));
    QVERIFY(!Log().contains("One unload"));
}

void TestScreen::errorWithoutTrapInANestedHandlerEndsTheProgram()
{
    One &one = One::Shared();
    bool never = false;
    one.cmdGo_Click = [&] {
        try {
            WaitUntil(never);
        } catch (const platform::Error &) {
            g_log << "trapped"; // the trap of another handler is no trap for it
        }
    };
    one.cmdOther_Click = [] { throw platform::Error(platform::kAgentRefuses); };
    one.Show();
    const auto press = m_desk->time.After(1s, [&] { one.cmdOther->click(); });
    m_desk->boxes.Expect("Run-time error '-2147213310':\r\n\r\n"
                         "The character is not known to the speaking-character service");
    one.cmdGo->click();
    QVERIFY(m_desk->boxes.AllAnswered());
    QCOMPARE(m_desk->process.ExitCode(), std::optional(1));
    QVERIFY(!Log().contains("trapped"));
}

void TestScreen::errorOfWhatBelongsToNoScreenIsReported()
{
    m_desk->boxes.Expect("Run-time error '76':\r\n\r\nPath not found");
    platform::ThroughTheDoor([] { throw platform::Error(platform::kPathNotFound); });
    QVERIFY(m_desk->boxes.AllAnswered());
    QCOMPARE(m_desk->process.ExitCode(), std::optional(1));
}

void TestScreen::unloadCutsTheHandlers()
{
    One &one = One::Shared();
    one.cmdGo_Click = [] { g_log << "go"; };
    Two::Shared().Show();
    one.Show();
    auto *const button = one.cmdGo;
    one.cmdOther_Click = [&] {
        one.Unload();
        button->click();
    };
    button->click();
    one.cmdOther->click();
    QCOMPARE(Log().count("go"), 1);
}

void TestScreen::unloadCutsTheHandlerThatIsStillToComeInTheSameSignal()
{
    One &one = One::Shared();
    int calls = 0;
    const auto handler = [&] {
        ++calls;
        one.Unload();
    };
    one.cmdGo_Click = handler;
    Two::Shared().Show();
    one.Show();
    // A second handler of the same signal, made like the first one.
    const auto second = one.Guarded(handler);
    QObject::connect(one.cmdGo, &QPushButton::clicked, one.cmdGo, second);
    one.cmdGo->click();
    QCOMPARE(calls, 1);
}

QTEST_MAIN(TestScreen)
#include "TestScreen.moc"
