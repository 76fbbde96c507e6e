#pragma once

#include <QObject>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>

class QWidget;

namespace platform {

// One screen: an instance that can outlive its window. Load makes the window, Unload drops it; the members of
// the derived class stay. Every event enters by one door, which keeps the instance and its dropped windows
// alive until the outermost handler has returned.
//
// A derived class `T` has one shared instance, T::Shared(), made at first use (see SharedScreen below).
class Screen : public std::enable_shared_from_this<Screen> {
public:
    virtual ~Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    // Makes the window if need be, without showing it.
    void Load();
    // Loads if need be, puts the window in front; the screen becomes active by the event loop, after the
    // handler that runs now has let go or pumped. One that is in front already does not become active again.
    void Show();
    // Runs OnUnload and drops the window. When the last loaded screen has gone the program ends, once the
    // handler that runs now has let go. Nothing when not loaded.
    void Unload();

    bool IsLoaded() const { return m_window != nullptr; }
    // Whether it is the screen that is in front of the others.
    bool IsActive() const;
    QWidget *Window() const { return m_window; } // null while not loaded

protected:
    // `name` is the class name; `title` the window's caption.
    Screen(QString name, QString title);

    virtual void OnLoad(QWidget &window) = 0; // setupUi and Connect, nothing else
    virtual void OnActivate() {}              // has to stand being repeated
    virtual void OnUnload() {}
    virtual void OnResize() {} // the window has a new size, also at the first show

    // How the window stands on the display: screens that scale fill all of it, so that their pixels are the
    // display's own and the characters find their places; the others stand centred at their own size.
    virtual bool FillsDisplay() const { return false; }
    // Whether the desktop puts its frame and title bar around the window.
    virtual bool IsFramed() const { return true; }

    // Connects a control's signal to a handler by way of the door, until the unload.
    template <class Sender, class Signal>
    void Connect(Sender *sender, Signal signal, std::function<void()> handler)
    {
        QObject::connect(sender, signal, m_connections.get(),
                         [this, handler = std::move(handler)] { Enter(handler); });
    }

    // The same for what is not a signal: the result calls `handler` by way of the door, and nothing any more
    // after the unload. For a loaded screen, so from OnLoad on; made earlier it never calls.
    std::function<void()> Guarded(std::function<void()> handler);

    // Has `release` called by ForgetScreens.
    static void AtForget(void (*release)());

private:
    friend class ScreenStack;
    class WindowWatch;

    // The one door for events. Lets no Error into the event loop: one that no trap took gives the default
    // report and ends the program.
    void Enter(const std::function<void()> &handler);

    const QString m_name;
    const QString m_title;
    std::unique_ptr<QObject> m_connections; // cut by Unload, so that a dropped window is silent
    QWidget *m_window = nullptr;            // owned here until dropped, then by the door
    QSize m_size;                           // that OnResize was last told
    bool m_activationPending = false;
    bool m_unloading = false;
};

// Gives a screen class its lazily made shared instance.
template <class T>
class SharedScreen : public Screen {
public:
    static T &Shared()
    {
        if (!Slot()) {
            Slot() = std::make_shared<T>();
            AtForget(&SharedScreen::Release);
        }
        return *Slot();
    }
    // Whether there is an instance now.
    static bool Exists() { return Slot() != nullptr; }
    // Lets go of the shared instance: the next use makes a new one. The old one is destroyed when the last
    // handler has left it.
    static void Release() { Slot().reset(); }

protected:
    using Screen::Screen;

private:
    static std::shared_ptr<T> &Slot()
    {
        static std::shared_ptr<T> instance;
        return instance;
    }
};

// The one way of moving on: shows `target`, then unloads `current`.
void ShowScreen(Screen &target, Screen &current);

// Forgets all windows and instances, between two tests. Unloads nothing and runs no step.
void ForgetScreens();

// How many screens are loaded.
int LoadedScreens();

// The window of the screen in front, null when none is shown.
QWidget *WindowInFront();

// Runs `work` by way of the door for what belongs to no screen, such as the first Show of the program: an
// Error gives the default report and ends the program.
void ThroughTheDoor(const std::function<void()> &work);

} // namespace platform
