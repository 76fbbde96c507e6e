#include "platform/forms/MousePress.h"

#include <QEvent>
#include <QWidget>

namespace platform {

namespace {

class PressWatch : public QObject {
public:
    PressWatch(QWidget &control, std::function<void()> handler)
        : QObject(&control), m_handler(std::move(handler))
    {
        control.installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
            m_handler();
        return false;
    }

private:
    const std::function<void()> m_handler;
};

} // namespace

void OnMousePress(QWidget &control, std::function<void()> handler)
{
    new PressWatch(control, std::move(handler)); // owned by the control
}

} // namespace platform
