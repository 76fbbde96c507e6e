#include "platform/agent/HeldKey.h"

#include <QGuiApplication>
#include <QKeyEvent>

namespace platform {

namespace {

constexpr int kCertainlyReleased = 80; // milliseconds

} // namespace

HeldKey::HeldKey(int key) : m_key(key)
{
    qApp->installEventFilter(this);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive || !m_isDown)
            return;
        m_isDown = false;
        m_released.stop();
        lost();
    });
    m_released.setSingleShot(true);
    m_released.setInterval(kCertainlyReleased);
    m_released.callOnTimeout(this, [this] {
        m_isDown = false;
        up();
    });
}

bool HeldKey::eventFilter(QObject *, QEvent *event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() != m_key)
        return false;
    // The window and its control both get the event.
    if (key->isAutoRepeat())
        return true;
    if (event->type() == QEvent::KeyRelease) {
        if (m_isDown && !m_released.isActive())
            m_released.start();
        return true;
    }
    m_released.stop();
    if (!m_isDown) {
        m_isDown = true;
        down();
    }
    return true;
}

} // namespace platform
