#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <vector>

class QObject;
class QWidget;

namespace platform {

class Error;
class Screen;

// All loaded screens with their order on the display, the door that every handler passes, and the windows
// that were dropped while a handler ran. One for the program; used by Screen and the boxes alone.
class ScreenStack {
public:
    static ScreenStack &Instance();

    // The door. Runs `work` with `self`, which may be null, kept alive; no Error leaves it. When `work` has
    // let go and no screen is loaded any more, the program ends.
    void Run(std::shared_ptr<Screen> self, const std::function<void()> &work);

    // A loaded screen is kept alive until it is dropped.
    void Add(std::shared_ptr<Screen> screen);
    // Takes the screen out and its window off the display, and lets go of the window's pictures. The window
    // is deleted when no handler runs any more.
    void Drop(Screen &screen);
    void Show(Screen &screen);
    // The desktop made the window of `screen` the active one.
    void WindowBecameActive(Screen &screen);

    Screen *Front() const { return m_shown.empty() ? nullptr : m_shown.back(); }
    int Loaded() const { return static_cast<int>(m_loaded.size()); }

    // Around a box: while one is open the desktop brings no screen forward.
    void BoxOpened() { ++m_boxes; }
    void BoxClosed() { --m_boxes; }
    // Whether `window` is the native window of a loaded screen.
    bool IsScreenWindow(const QObject *window) const;

    void AtForget(void (*release)()) { m_releases.insert(release); }
    void Forget();

private:
    void Report(const Error &error);
    void EndIfNothingIsLeft();
    void PutInFront(Screen &screen); // in the order alone
    void BringToFront(Screen &screen);
    void RequestActivation(Screen &screen);
    void OpenWindow(Screen &screen);
    void PostSettle();
    void Settle();

    std::vector<std::shared_ptr<Screen>> m_loaded;
    std::vector<Screen *> m_shown; // loaded ones that were shown, the one in front last
    std::vector<std::unique_ptr<QWidget>> m_dropped;
    std::set<void (*)()> m_releases;
    std::chrono::milliseconds m_frontSince{ 0 };
    bool m_frontWasActive = false; // the desktop has followed the last change of the front
    int m_depth = 0;               // handlers on the stack
    int m_boxes = 0;
    bool m_settlePosted = false;
    bool m_everLoaded = false;
    bool m_ended = false; // only where a program cannot really end
};

} // namespace platform
