#include "platform/agent/FigureTray.h"

namespace platform {

FigureTray::FigureTray(const QString &name, const QIcon &face, std::function<void()> wanted)
    : m_wanted(std::move(wanted)), m_icon(face)
{
    m_icon.setToolTip(name);
    QAction *show = m_menu.addAction(QObject::tr("&Show %1").arg(name));
    QObject::connect(show, &QAction::triggered, &m_icon, m_wanted);
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_icon,
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                             m_wanted();
                     });
    m_icon.setContextMenu(&m_menu);
    m_icon.show();
}

} // namespace platform
