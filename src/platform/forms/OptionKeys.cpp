#include "platform/forms/OptionKeys.h"

#include <QKeyEvent>
#include <QRadioButton>

namespace platform {

namespace {

class OptionKeysFilter : public QObject {
public:
    explicit OptionKeysFilter(QWidget &window) : QObject(&window)
    {
        for (QRadioButton *option : window.findChildren<QRadioButton *>())
            option->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const int key = static_cast<QKeyEvent *>(event)->key();
        const bool isForward = key == Qt::Key_Right || key == Qt::Key_Down;
        if (!isForward && key != Qt::Key_Left && key != Qt::Key_Up)
            return false;
        Choose(*static_cast<QRadioButton *>(watched), isForward);
        return true;
    }

private:
    static void Choose(const QRadioButton &from, bool isForward)
    {
        QList<QRadioButton *> usable;
        for (QRadioButton *option :
             from.parentWidget()->findChildren<QRadioButton *>(QString(), Qt::FindDirectChildrenOnly))
            if (option->isEnabled() && option->isVisible())
                usable << option;
        const qsizetype count = usable.size();
        const qsizetype here = usable.indexOf(&from);
        QRadioButton *next = usable[(here + (isForward ? 1 : count - 1)) % count];
        next->setFocus(Qt::TabFocusReason);
        next->click();
    }
};

} // namespace

void InstallOptionKeys(QWidget &window)
{
    new OptionKeysFilter(window); // owned by the window
}

} // namespace platform
