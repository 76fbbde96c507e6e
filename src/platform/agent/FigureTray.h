#pragma once

#include "platform/agent/StageWindow.h"

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

#include <functional>
#include <memory>

namespace platform {

// A small round picture on the screen that is clicked to bring a figure back.
class FaceBadge : public StageWindow {
    Q_OBJECT

public:
    static constexpr int kSide = 56;

    FaceBadge(const QString &name, const QIcon &face, std::function<void()> wanted);

protected:
    const QImage &Picture() const override { return m_image; }
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    QImage m_image;
    std::function<void()> m_wanted;
};

// The way back for a figure that the user has hidden: its face and name in the desktop's tray. A desktop
// without tray gets the face as a badge where the figure stood last.
class FigureTray {
public:
    // `frame` is the figure's, in screen units.
    FigureTray(const QString &name, const QIcon &face, const QRect &frame, std::function<void()> wanted);

    const FaceBadge *Badge() const { return m_badge.get(); } // null where there is a tray

private:
    std::function<void()> m_wanted;
    QMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    std::unique_ptr<FaceBadge> m_badge;
};

} // namespace platform
