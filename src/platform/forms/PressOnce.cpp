#include "platform/forms/PressOnce.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace platform {

namespace {

bool HasSeveralLines(const QWidget &control)
{
    return control.testAttribute(Qt::WA_InputMethodEnabled) &&
           (control.inputMethodHints() & Qt::ImhMultiLine);
}

bool Presses(const QKeyEvent &key)
{
    if (key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter)
        return key.modifiers().testFlag(Qt::AltModifier);
    const QWidget *focus = QApplication::focusWidget();
    return !focus || !HasSeveralLines(*focus);
}

} // namespace

PressOnce::PressOnce()
{
    qApp->installEventFilter(this);
}

bool PressOnce::eventFilter(QObject *watched, QEvent *event)
{
    const bool isPress = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if ((!isPress && event->type() != QEvent::KeyRelease) || !watched->isWindowType())
        return false;
    const auto &key = static_cast<const QKeyEvent &>(*event);
    if (!isPress) {
        m_releasedKey = key.key();
        m_releasedAt = key.timestamp();
        return false;
    }
    if (!IsRepetition(key) || !Presses(key))
        return false;
    // Taken as a plain key a letter presses no button, and as a plain key it then comes here once more.
    event->setAccepted(event->type() == QEvent::ShortcutOverride);
    return true;
}

// A key that is held is let go and pressed in the same moment, again and again, and whether that is told as a
// repetition depends on how soon the second half arrives.
bool PressOnce::IsRepetition(const QKeyEvent &press) const
{
    return press.isAutoRepeat() || (press.key() == m_releasedKey && press.timestamp() == m_releasedAt);
}

} // namespace platform
