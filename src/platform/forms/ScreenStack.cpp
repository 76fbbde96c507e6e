#include "platform/forms/ScreenStack.h"

#include "platform/Error.h"
#include "platform/Services.h"
#include "platform/forms/Backdrop.h"
#include "platform/forms/Boxes.h"
#include "platform/forms/Screen.h"
#include "platform/forms/ScreenTrace.h"
#include "platform/system/Clock.h"
#include "platform/system/Events.h"
#include "platform/system/Process.h"

#include <QBackingStore>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace platform {

Q_LOGGING_CATEGORY(ScreenTrace, "tumblewick.screen", QtWarningMsg)

namespace {

// While one window goes and the next one comes, a window manager may make a third one active by itself.
// Within this time that does not count as brought forward by the user.
constexpr std::chrono::milliseconds kChangeOfFront{ 1000 };

// A script that waits for ever keeps every window that is dropped from then on. It may still need the
// controls, but never the pictures, which take nearly all of the memory.
void LetGoOfPictures(QWidget &window)
{
    qDeleteAll(window.findChildren<Backdrop *>());
    if (QBackingStore *picture = window.backingStore())
        picture->resize(QSize(1, 1));
}

} // namespace

ScreenStack &ScreenStack::Instance()
{
    // Never destroyed: windows must not outlive the application object.
    static auto *stack = new ScreenStack;
    return *stack;
}

void ScreenStack::Run(std::shared_ptr<Screen> self, const std::function<void()> &work)
{
    if (m_ended)
        return;
    struct Depth {
        explicit Depth(int &depth) : m_count(depth) { ++m_count; }
        ~Depth() { --m_count; }
        int &m_count;
    };
    {
        const Depth depth(m_depth);
        try {
            try {
                work();
            } catch (const Error &error) {
                Report(error);
            }
            self.reset(); // the final release may be due
            EndIfNothingIsLeft();
        } catch (const ProgramEnded &) {
            // A suspended wait further down unwinds at its next pump.
            m_ended = true;
        }
    }
    if (m_depth == 0 && !m_dropped.empty())
        PostSettle();
}

void ScreenStack::Report(const Error &error)
{
    The().boxes.MessageBox(QStringLiteral("Run-time error '%1':\r\n\r\n").arg(error.Number()) +
                           error.Description());
    The().process.End(1);
}

void ScreenStack::EndIfNothingIsLeft()
{
    if (m_everLoaded && m_loaded.empty())
        The().process.End(0);
}

void ScreenStack::Add(std::shared_ptr<Screen> screen)
{
    m_everLoaded = true;
    m_loaded.push_back(std::move(screen));
}

void ScreenStack::Drop(Screen &screen)
{
    const bool wasInFront = Front() == &screen;
    std::erase(m_shown, &screen);
    std::erase_if(m_loaded, [&](const auto &loaded) { return loaded.get() == &screen; });
    screen.m_window->hide();
    LetGoOfPictures(*screen.m_window);
    // Deleting it here would pull controls from under the handler, or the event, that is still running.
    m_dropped.emplace_back(screen.m_window);
    screen.m_window = nullptr;
    screen.m_activationPending = false;
    if (wasInFront && Front())
        BringToFront(*Front());
    if (m_depth == 0)
        PostSettle();
}

void ScreenStack::Show(Screen &screen)
{
    QWidget &window = *screen.m_window;
    const bool wasInFront = Front() == &screen;
    const bool isNew = std::find(m_shown.begin(), m_shown.end(), &screen) == m_shown.end();
    if (isNew) {
        // Before its window comes up, so that what that brings about finds it in front.
        PutInFront(screen);
        OpenWindow(screen);
        if (!screen.m_window || Front() != &screen)
            return; // its own OnResize went on to another screen
    }
    if (window.isMinimized())
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    if (!wasInFront)
        BringToFront(screen);
}

void ScreenStack::OpenWindow(Screen &screen)
{
    QWidget &window = *screen.m_window;
    const QScreen &display = *window.screen();
    if (screen.FillsDisplay()) {
        // Without a window manager nobody else would give it the size of the display.
        window.setGeometry(display.geometry());
    } else {
        const QRect space = display.availableGeometry();
        window.setFixedSize(window.size());
        window.move(std::max(space.left(), space.left() + (space.width() - window.width()) / 2),
                    std::max(space.top(), space.top() + (space.height() - window.height()) / 2));
    }
    // Controls are at their places before anything of them is seen.
    screen.m_size = window.size();
    screen.Enter([&screen] { screen.OnResize(); });
    if (screen.m_window != &window)
        return;
    if (screen.FillsDisplay())
        window.showFullScreen();
    else
        window.show();
}

void ScreenStack::PutInFront(Screen &screen)
{
    std::erase(m_shown, &screen);
    m_shown.push_back(&screen);
    m_frontSince = The().clock.Elapsed();
    m_frontWasActive = false;
}

void ScreenStack::BringToFront(Screen &screen)
{
    PutInFront(screen);
    screen.m_window->raise();
    screen.m_window->activateWindow();
    RequestActivation(screen);
}

void ScreenStack::RequestActivation(Screen &screen)
{
    if (screen.m_activationPending)
        return;
    screen.m_activationPending = true;
    The().events.Post([this, waiting = screen.weak_from_this()] {
        const auto target = waiting.lock();
        if (!target || !target->m_activationPending)
            return;
        target->m_activationPending = false;
        if (Front() != target.get())
            return;
        target->Enter([&] {
            qCDebug(ScreenTrace).noquote().nospace() << "screen: " << target->m_name << " activate";
            target->OnActivate();
        });
    });
}

void ScreenStack::WindowBecameActive(Screen &screen)
{
    if (Front() == &screen) {
        m_frontWasActive = true;
        return;
    }
    if (m_boxes > 0 || std::find(m_shown.begin(), m_shown.end(), &screen) == m_shown.end())
        return;
    if (!m_frontWasActive && The().clock.Elapsed() - m_frontSince < kChangeOfFront) {
        Front()->m_window->raise();
        Front()->m_window->activateWindow();
        return;
    }
    BringToFront(screen);
    m_frontWasActive = true;
}

bool ScreenStack::IsScreenWindow(const QObject *window) const
{
    return std::any_of(m_loaded.begin(), m_loaded.end(), [&](const auto &screen) {
        return screen->m_window && screen->m_window->windowHandle() == window;
    });
}

void ScreenStack::PostSettle()
{
    if (m_settlePosted)
        return;
    m_settlePosted = true;
    The().events.Post([this] { Settle(); });
}

void ScreenStack::Settle()
{
    m_settlePosted = false;
    if (m_depth > 0)
        return; // delivered by a pump; the door posts it again at depth zero
    m_dropped.clear();
    Run(nullptr, [] {});
}

void ScreenStack::Forget()
{
    for (const auto &screen : m_loaded) {
        screen->m_connections.reset();
        m_dropped.emplace_back(screen->m_window);
        screen->m_window = nullptr;
        screen->m_activationPending = false;
    }
    m_shown.clear();
    m_dropped.clear();
    m_loaded.clear();
    for (auto *const release : std::exchange(m_releases, {}))
        release();
    m_settlePosted = false;
    m_everLoaded = false;
    m_ended = false;
    m_frontWasActive = false;
}

} // namespace platform
