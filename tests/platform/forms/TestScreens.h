#pragma once

#include "platform/Services.h"
#include "platform/forms/Screen.h"
#include "platform/forms/Timer.h"

#include <QPushButton>
#include <QStringList>
#include <QWidget>

// Two screens without rules of their own: whatever happens to them is written down, and their buttons do what
// a test says.

// What happened, in order, such as "One load".
inline QStringList g_log;

template <class T>
class Scribbled : public platform::SharedScreen<T> {
public:
    Scribbled(const QString &name, bool maximised)
        : platform::SharedScreen<T>(name, name + QStringLiteral(" title")), m_scribbledName(name),
          m_maximised(maximised)
    {
        g_log << name + " made";
    }
    ~Scribbled() override { g_log << m_scribbledName + " destroyed"; }

    // What the handlers do; empty does nothing.
    std::function<void()> onLoad, onActivate, onUnload, onResize, cmdGo_Click, cmdOther_Click, timer_Timer;

    QPushButton *cmdGo = nullptr;
    QPushButton *cmdOther = nullptr;
    std::unique_ptr<platform::Timer> timer;
    int note = 0; // a member that has to outlive the window

    using platform::Screen::Guarded;

protected:
    void OnLoad(QWidget &window) override
    {
        g_log << m_scribbledName + " load";
        window.resize(400, 300);
        cmdGo = new QPushButton(QStringLiteral("Go"), &window);
        cmdGo->setGeometry(10, 10, 80, 30);
        cmdOther = new QPushButton(QStringLiteral("Other"), &window);
        cmdOther->setGeometry(100, 10, 80, 30);
        this->Connect(cmdGo, &QPushButton::clicked, [this] { Call(cmdGo_Click); });
        this->Connect(cmdOther, &QPushButton::clicked, [this] { Call(cmdOther_Click); });
        timer = std::make_unique<platform::Timer>(this->Guarded([this] { Call(timer_Timer); }));
        Call(onLoad);
    }
    void OnActivate() override
    {
        g_log << m_scribbledName + " activate";
        Call(onActivate);
    }
    void OnUnload() override
    {
        g_log << m_scribbledName + " unload";
        Call(onUnload);
    }
    void OnResize() override
    {
        g_log << QStringLiteral("%1 resize").arg(m_scribbledName);
        Call(onResize);
    }
    bool FillsDisplay() const override { return m_maximised; }

private:
    static void Call(const std::function<void()> &handler)
    {
        const auto copy = handler; // it may be changed while it runs
        if (copy)
            copy();
    }

    const QString m_scribbledName;
    const bool m_maximised;
};

class One : public Scribbled<One> {
public:
    One() : Scribbled(QStringLiteral("One"), false) {}
};
class Two : public Scribbled<Two> {
public:
    Two() : Scribbled(QStringLiteral("Two"), false) {}
};
class Wide : public Scribbled<Wide> {
public:
    Wide() : Scribbled(QStringLiteral("Wide"), true) {}
};

// Pumps until `done`, as a script does that waits for a character.
inline void WaitUntil(const bool &done)
{
    while (!done)
        platform::The().events.Pump();
}
