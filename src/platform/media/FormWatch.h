#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <utility>

namespace platform {

// Calls `left` when a form is taken from the display by the program, or goes.
class FormWatch : public QObject {
public:
    FormWatch(QWidget &form, std::function<void()> left) : m_form(&form), m_left(std::move(left))
    {
        form.installEventFilter(this);
        connect(&form, &QObject::destroyed, this, [this] { m_left(); });
    }

    // Null when it has gone.
    QWidget *Form() const { return m_form; }
    bool IsSeen() const { return m_form && m_form->isVisible(); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        // A window that the user puts aside for a while stays.
        if (event->type() == QEvent::Hide && !event->spontaneous())
            m_left();
        return false;
    }

private:
    QPointer<QWidget> m_form;
    std::function<void()> m_left;
};

} // namespace platform
