#include "platform/forms/EnterKey.h"

#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>

namespace platform {

namespace {

// Key presses reach the window when no control below has taken them.
class EnterKeyFilter : public QObject {
public:
    EnterKeyFilter(QWidget &window, QPushButton *defaultButton)
        : QObject(&window), m_window(window), m_defaultButton(defaultButton)
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter)
            return false;
        auto *button = qobject_cast<QPushButton *>(m_window.focusWidget());
        if (!button)
            button = m_defaultButton;
        if (!button || !button->isEnabled() || !button->isVisible())
            return false;
        button->click();
        return true;
    }

private:
    QWidget &m_window;
    QPointer<QPushButton> m_defaultButton;
};

} // namespace

void InstallEnterKey(QWidget &window, QPushButton *defaultButton)
{
    new EnterKeyFilter(window, defaultButton); // owned by the window
}

} // namespace platform
