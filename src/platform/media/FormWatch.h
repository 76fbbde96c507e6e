#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <utility>

namespace platform {

// Calls `left` when a form is taken from the display by the program, or goes, and `resized` when it has
// another size.
class FormWatch : public QObject {
public:
    FormWatch(
        QWidget &form, std::function<void()> left, std::function<void()> resized = [] {})
        : m_form(&form), m_left(std::move(left)), m_resized(std::move(resized))
    {
        form.installEventFilter(this);
        connect(&form, &QObject::destroyed, this, [this] { m_left(); });
    }

    // Null when it has gone.
    QWidget *Form() const { return m_form.data(); }
    bool IsSeen() const { return m_form && m_form->isVisible(); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        // A window that the user puts aside for a while stays.
        if (event->type() == QEvent::Hide && !event->spontaneous())
            m_left();
        else if (event->type() == QEvent::Resize)
            m_resized();
        return false;
    }

private:
    QPointer<QWidget> m_form;
    std::function<void()> m_left;
    std::function<void()> m_resized;
};

} // namespace platform
