#pragma once

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

#include <functional>

namespace platform {

// The way back for a figure that the user has hidden: an icon with its face and name.
class FigureTray {
public:
    FigureTray(const QString &name, const QIcon &face, std::function<void()> wanted);

    // As if the user chose it.
    void Choose() { m_wanted(); }

private:
    std::function<void()> m_wanted;
    QMenu m_menu;
    QSystemTrayIcon m_icon;
};

} // namespace platform
