#include "platform/forms/Screen.h"

#include "platform/forms/GuardedCall.h"
#include "platform/forms/ScreenStack.h"
#include "platform/forms/ScreenTrace.h"

#include <QEvent>
#include <QWidget>

namespace platform {

// Tells the stack what the desktop does with the window of a screen.
class Screen::WindowWatch : public QObject {
public:
    WindowWatch(Screen &screen, QObject *parent) : QObject(parent), m_screen(screen) {}

    // The screen's handlers may unload it, which destroys this watch; nothing of it is touched after them.
    bool eventFilter(QObject *, QEvent *event) override
    {
        Screen &screen = m_screen;
        switch (event->type()) {
        case QEvent::Close:
            event->ignore(); // the door takes the window away, not Qt
            qCDebug(ScreenTrace).noquote().nospace() << "screen: " << screen.m_name << " close";
            screen.Enter([&screen] { screen.Unload(); });
            return true;
        case QEvent::Resize:
            // Before the first show the size is nobody's business yet.
            if (screen.m_size.isValid() && screen.m_window->size() != screen.m_size) {
                screen.m_size = screen.m_window->size();
                screen.Enter([&screen] { screen.OnResize(); });
            }
            return false;
        case QEvent::WindowActivate:
            ScreenStack::Instance().WindowBecameActive(screen);
            return false;
        default:
            return false;
        }
    }

private:
    Screen &m_screen;
};

Screen::Screen(QString name, QString title) : m_name(std::move(name)), m_title(std::move(title)) {}

Screen::~Screen()
{
    Q_ASSERT_X(!m_window, "Screen::~Screen", "a loaded screen is kept alive by the stack");
}

void Screen::Load()
{
    if (m_window)
        return;
    qCDebug(ScreenTrace).noquote().nospace() << "screen: " << m_name << " load";
    m_connections = std::make_unique<QObject>();
    m_window = new QWidget(nullptr, IsFramed() ? Qt::Window : Qt::Window | Qt::FramelessWindowHint);
    m_window->setAttribute(Qt::WA_QuitOnClose, false);
    m_size = QSize();
    ScreenStack::Instance().Add(shared_from_this());
    try {
        OnLoad(*m_window);
    } catch (...) {
        m_connections.reset();
        ScreenStack::Instance().Drop(*this);
        throw;
    }
    m_window->setWindowTitle(m_title);
    m_window->installEventFilter(new WindowWatch(*this, m_connections.get()));
}

void Screen::Show()
{
    Load();
    ScreenStack::Instance().Show(*this);
}

void Screen::Unload()
{
    if (!m_window || m_unloading)
        return;
    const auto self = shared_from_this();
    m_unloading = true;
    try {
        OnUnload();
    } catch (...) {
        m_unloading = false;
        throw;
    }
    m_unloading = false;
    m_connections.reset();
    ScreenStack::Instance().Drop(*this);
    qCDebug(ScreenTrace).noquote().nospace() << "screen: " << m_name << " unload";
}

bool Screen::IsActive() const
{
    return ScreenStack::Instance().Front() == this;
}

std::function<void()> Screen::Guarded(std::function<void()> handler)
{
    return GuardedCall(weak_from_this(), m_connections.get(), std::move(handler));
}

void Screen::AtForget(void (*release)())
{
    ScreenStack::Instance().AtForget(release);
}

void Screen::Enter(const std::function<void()> &handler)
{
    ScreenStack::Instance().Run(shared_from_this(), handler);
}

void ShowScreen(Screen &target, Screen &current)
{
    target.Show();
    current.Unload();
}

void ForgetScreens()
{
    ScreenStack::Instance().Forget();
}

int LoadedScreens()
{
    return ScreenStack::Instance().Loaded();
}

QWidget *WindowInFront()
{
    const Screen *front = ScreenStack::Instance().Front();
    return front ? front->Window() : nullptr;
}

void ThroughTheDoor(const std::function<void()> &work)
{
    ScreenStack::Instance().Run(nullptr, work);
}

} // namespace platform
