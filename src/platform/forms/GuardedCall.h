#pragma once

#include <QPointer>

#include <functional>
#include <memory>

namespace platform {

class Screen;

// A handler of a screen that dies with the screen's window: what Screen::Guarded gives.
class GuardedCall {
public:
    GuardedCall(std::weak_ptr<Screen> screen, QObject *window, std::function<void()> handler);

    // Whether the window that it was made for is still loaded.
    bool IsAlive() const { return m_window != nullptr; }
    // Calls the handler by way of the door, or does nothing when it is no longer alive.
    void operator()() const;

private:
    std::weak_ptr<Screen> m_screen;
    QPointer<QObject> m_window; // the screen's connections
    std::shared_ptr<const std::function<void()>> m_handler;
};

} // namespace platform
