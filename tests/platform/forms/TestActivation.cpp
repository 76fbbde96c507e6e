#include "TestScreens.h"
#include "support/PlainDesk.h"

#include "platform/forms/QtBoxes.h"

#include <QApplication>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <optional>

using platform::ShowScreen;
using support::PlainDesk;
using namespace std::chrono_literals;

namespace {

// What the desktop tells a window that it makes the active one.
void MakeActive(QWidget *window)
{
    QEvent event(QEvent::WindowActivate);
    QCoreApplication::sendEvent(window, &event);
}

QStringList g_trace;

void WriteTrace(QtMsgType, const QMessageLogContext &context, const QString &message)
{
    if (QLatin1String(context.category) == QLatin1String("tumblewick.screen"))
        g_trace << message;
}

} // namespace

// When screens become active, and how their windows stand.
class TestActivation : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_desk.emplace();
        g_log.clear();
    }
    void cleanup() { m_desk.reset(); }

    void shownScreenBecomesActiveAfterTheHandler();
    void shownScreenBecomesActiveAtTheNextPump();
    void screenInFrontDoesNotBecomeActiveAgain();
    void showingTwiceInAHandlerActivatesOnce();
    void screenBeneathBecomesActiveWhenTheOneOverItGoes();
    void screenBeneathStaysAsItIsWhenAnotherOneIsShownAtOnce();
    void screenThatWasLeftBehindBecomesActiveWhenShownAgain();
    void screenUnloadedBeforeItsActivationIsNotActivated();
    void screenReloadedBeforeItsActivationIsActivatedOnce();
    void loadedScreenThatWasNeverShownDoesNotBecomeActive();
    void waitInAnActivationDoesNotHoldUpTheNextOne();

    void userBringsAScreenForward();
    void boxOrOtherProgramDoesNotActivate();
    void windowManagersOwnChoiceDoesNotCount();
    void usersChoiceCountsWhenTheFrontNeverBecameActive();
    void nothingIsBroughtForwardWhileABoxIsOpen();

    void smallScreenIsCentredAtItsOwnSize();
    void wideScreenTakesTheDisplay();
    void newSizeIsToldOnce();
    void resizeHandlerMayUnloadTheScreen();

    void traceTellsTheLife();
    void traceIsOffByDefault();

private:
    // Both shown, Two in front and both activated.
    void ShowBoth()
    {
        One::Shared().Show();
        m_desk->Settle();
        Two::Shared().Show();
        m_desk->Settle();
        MakeActive(Two::Shared().Window());
        g_log.clear();
    }

    std::optional<PlainDesk> m_desk;
};

void TestActivation::shownScreenBecomesActiveAfterTheHandler()
{
    One &one = One::Shared();
    one.cmdGo_Click = [] {
        Two::Shared().Show();
        QVERIFY(Two::Shared().IsActive());
        g_log << "handler ends";
    };
    one.Show();
    m_desk->Settle();
    g_log.clear();
    one.cmdGo->click();
    QCOMPARE(g_log.last(), "handler ends");
    m_desk->Settle();
    QCOMPARE(g_log.last(), "Two activate");
}

void TestActivation::shownScreenBecomesActiveAtTheNextPump()
{
    One &one = One::Shared();
    one.cmdGo_Click = [] {
        Two::Shared().Show();
        g_log << "before the pump";
        platform::The().events.Pump();
        g_log << "after the pump";
    };
    one.Show();
    m_desk->Settle();
    g_log.clear();
    one.cmdGo->click();
    QCOMPARE(g_log.mid(g_log.size() - 3),
             QStringList({ "before the pump", "Two activate", "after the pump" }));
}

void TestActivation::screenInFrontDoesNotBecomeActiveAgain()
{
    One::Shared().Show();
    m_desk->Settle();
    One::Shared().Show();
    m_desk->Settle();
    QCOMPARE(g_log.count("One activate"), 1);
}

void TestActivation::showingTwiceInAHandlerActivatesOnce()
{
    ShowBoth();
    One::Shared().Show();
    Two::Shared().Show();
    One::Shared().Show();
    m_desk->Settle();
    QCOMPARE(g_log, QStringList({ "One activate" }));
}

void TestActivation::screenBeneathBecomesActiveWhenTheOneOverItGoes()
{
    ShowBoth();
    QVERIFY(!One::Shared().IsActive());
    Two::Shared().Window()->close();
    QVERIFY(One::Shared().IsActive());
    QCOMPARE(g_log, QStringList({ "Two unload" }));
    m_desk->Settle();
    QCOMPARE(g_log, QStringList({ "Two unload", "One activate" }));
}

void TestActivation::screenBeneathStaysAsItIsWhenAnotherOneIsShownAtOnce()
{
    ShowBoth();
    Wide::Shared().Load();
    g_log.clear();
    Two::Shared().cmdGo_Click = [] {
        Two::Shared().Unload();
        Wide::Shared().Show();
    };
    Two::Shared().cmdGo->click();
    m_desk->Settle();
    QCOMPARE(g_log, QStringList({ "Two unload", "Wide resize", "Wide activate" }));
}

void TestActivation::screenThatWasLeftBehindBecomesActiveWhenShownAgain()
{
    ShowBoth();
    QPointer<QWidget> window(One::Shared().Window());
    ShowScreen(One::Shared(), Two::Shared());
    m_desk->Settle();
    QCOMPARE(g_log, QStringList({ "Two unload", "One activate" }));
    QCOMPARE(window.data(), One::Shared().Window());
}

void TestActivation::screenUnloadedBeforeItsActivationIsNotActivated()
{
    Two::Shared().Show();
    m_desk->Settle();
    One::Shared().Show();
    One::Shared().Unload();
    m_desk->Settle();
    QVERIFY(!g_log.contains("One activate"));
    QCOMPARE(g_log.count("Two activate"), 2); // the other one lay over it, if only for a moment
}

void TestActivation::screenReloadedBeforeItsActivationIsActivatedOnce()
{
    Two::Shared().Load();
    One::Shared().Show();
    One::Shared().Unload();
    One::Shared().Show();
    m_desk->Settle();
    QCOMPARE(g_log.count("One activate"), 1);
}

void TestActivation::loadedScreenThatWasNeverShownDoesNotBecomeActive()
{
    One::Shared().Load();
    Two::Shared().Show();
    m_desk->Settle();
    Two::Shared().Unload();
    m_desk->Settle();
    QVERIFY(!g_log.contains("One activate"));
    QVERIFY(!One::Shared().IsActive());
    QVERIFY(!m_desk->process.Ended());
}

void TestActivation::waitInAnActivationDoesNotHoldUpTheNextOne()
{
    bool done = false;
    One::Shared().onActivate = [&] {
        WaitUntil(done);
        g_log << "script ends";
    };
    Two::Shared().onActivate = [&] { done = true; };
    One::Shared().Show();
    const auto go = m_desk->time.After(1s, [] { ShowScreen(Two::Shared(), One::Shared()); });
    m_desk->time.Run(2s);
    QCOMPARE(g_log.mid(g_log.size() - 3), QStringList({ "One unload", "Two activate", "script ends" }));
}

void TestActivation::userBringsAScreenForward()
{
    ShowBoth();
    MakeActive(One::Shared().Window());
    QVERIFY(One::Shared().IsActive());
    QCOMPARE(g_log, QStringList());
    m_desk->Settle();
    QCOMPARE(g_log, QStringList({ "One activate" }));
    MakeActive(Two::Shared().Window());
    MakeActive(One::Shared().Window());
    MakeActive(Two::Shared().Window());
    m_desk->Settle();
    QCOMPARE(g_log, QStringList({ "One activate", "Two activate" }));
}

void TestActivation::boxOrOtherProgramDoesNotActivate()
{
    ShowBoth();
    QEvent leaves(QEvent::WindowDeactivate);
    QCoreApplication::sendEvent(Two::Shared().Window(), &leaves);
    MakeActive(Two::Shared().Window());
    m_desk->Settle();
    QCOMPARE(g_log, QStringList());
}

void TestActivation::windowManagersOwnChoiceDoesNotCount()
{
    ShowBoth();
    Wide::Shared().Load();
    Two::Shared().cmdGo_Click = [] { ShowScreen(Wide::Shared(), Two::Shared()); };
    Two::Shared().cmdGo->click();
    // The window manager gives the focus to what is left, before the new window is up.
    MakeActive(One::Shared().Window());
    QVERIFY(Wide::Shared().IsActive());
    MakeActive(Wide::Shared().Window());
    m_desk->Settle();
    QVERIFY(g_log.contains("Wide activate"));
    QVERIFY(!g_log.contains("One activate"));
    // From then on it is the user.
    MakeActive(One::Shared().Window());
    QVERIFY(One::Shared().IsActive());
}

void TestActivation::usersChoiceCountsWhenTheFrontNeverBecameActive()
{
    One::Shared().Show();
    Two::Shared().Show();
    m_desk->time.Run(2s);
    g_log.clear();
    MakeActive(One::Shared().Window());
    m_desk->Settle();
    QCOMPARE(g_log, QStringList({ "One activate" }));
}

void TestActivation::nothingIsBroughtForwardWhileABoxIsOpen()
{
    ShowBoth();
    platform::QtBoxes boxes;
    QTimer::singleShot(0, this, [] {
        MakeActive(One::Shared().Window());
        QVERIFY(Two::Shared().IsActive());
        QApplication::activeModalWidget()->close();
    });
    boxes.MessageBox("Text", platform::BoxButtons::Ok, {});
    m_desk->Settle();
    QCOMPARE(g_log, QStringList());
}

void TestActivation::smallScreenIsCentredAtItsOwnSize()
{
    One::Shared().onLoad = [] { One::Shared().Window()->resize(300, 200); };
    One::Shared().Show();
    const QWidget &window = *One::Shared().Window();
    const QRect space = window.screen()->availableGeometry();
    QCOMPARE(window.size(), QSize(300, 200));
    // The frame is counted in by some desktops.
    QVERIFY((window.geometry().center() - space.center()).manhattanLength() <= 6);
    // One that is larger than the display keeps its upper left corner on it.
    Two::Shared().onLoad = [] { Two::Shared().Window()->resize(3000, 2000); };
    Two::Shared().Show();
    QCOMPARE(Two::Shared().Window()->pos(), space.topLeft());
}

void TestActivation::wideScreenTakesTheDisplay()
{
    QSize told;
    Wide::Shared().onResize = [&] { told = Wide::Shared().Window()->size(); };
    Wide::Shared().Show();
    const QWidget &window = *Wide::Shared().Window();
    QVERIFY(window.isFullScreen());
    QCOMPARE(window.size(), window.screen()->size());
    QVERIFY((window.pos() - window.screen()->geometry().topLeft()).manhattanLength() <= 6);
    QCOMPARE(told, window.size());
    QCOMPARE(g_log.count("Wide resize"), 1);
}

void TestActivation::newSizeIsToldOnce()
{
    Wide::Shared().Show();
    QWidget &window = *Wide::Shared().Window();
    window.showNormal();
    QApplication::processEvents();
    m_desk->Settle();
    g_log.clear();
    QSize told;
    Wide::Shared().onResize = [&] { told = Wide::Shared().Window()->size(); };
    window.resize(500, 400);
    m_desk->Settle();
    QCOMPARE(g_log, QStringList({ "Wide resize" }));
    QCOMPARE(told, QSize(500, 400));
    window.resize(500, 400);
    window.move(7, 7);
    m_desk->Settle();
    QCOMPARE(g_log.size(), 1);
}

void TestActivation::resizeHandlerMayUnloadTheScreen()
{
    One::Shared().Show();
    Wide::Shared().Show();
    m_desk->Settle();
    Wide::Shared().onUnload = [] { Wide::Release(); };
    Wide::Shared().onResize = [] { Wide::Shared().Unload(); };
    Wide::Shared().Window()->resize(500, 400);
    QVERIFY(g_log.contains("Wide destroyed"));
    m_desk->Settle();
    // And at the first show, too.
    Wide::Shared().onResize = [] { Wide::Shared().Unload(); };
    Wide::Shared().Show();
    QVERIFY(!Wide::Shared().IsLoaded());
    m_desk->Settle();
    QVERIFY(One::Shared().IsActive());
}

void TestActivation::traceTellsTheLife()
{
    g_trace.clear();
    QLoggingCategory::setFilterRules("tumblewick.screen.debug=true");
    const auto before = qInstallMessageHandler(WriteTrace);
    One::Shared().Show();
    m_desk->Settle();
    ShowScreen(Two::Shared(), One::Shared());
    m_desk->Settle();
    platform::QtBoxes boxes;
    QTimer::singleShot(0, this, [] { QApplication::activeModalWidget()->close(); });
    boxes.MessageBox("Sure?\r\nReally?", platform::BoxButtons::YesNo, "Question");
    QTimer::singleShot(0, this, [] {
        QApplication::activeModalWidget()->findChild<QLineEdit *>("boxField")->setText("secret");
        QApplication::activeModalWidget()->findChild<QPushButton *>("Ok")->click();
    });
    QCOMPARE(boxes.InputBox("Enter Password"), "secret");
    Two::Shared().Window()->close();
    qInstallMessageHandler(before);
    QLoggingCategory::setFilterRules(QString());
    QCOMPARE(g_trace, QStringList({ "screen: One load", "screen: One activate", "screen: Two load",
                                    "screen: One unload", "screen: Two activate",
                                    R"(box: "Question" "Sure?\nReally?" -> No)",
                                    R"(box: "Tumblewick" "Enter Password" -> Ok)", "screen: Two close",
                                    "screen: Two unload" }));
}

void TestActivation::traceIsOffByDefault()
{
    g_trace.clear();
    const auto before = qInstallMessageHandler(WriteTrace);
    One::Shared().Show();
    qInstallMessageHandler(before);
    QCOMPARE(g_trace, QStringList());
}

QTEST_MAIN(TestActivation)
#include "TestActivation.moc"
