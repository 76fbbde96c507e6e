#pragma once

#include "platform/agent/Figure.h"
#include "platform/agent/StageWindow.h"

#include <functional>

namespace platform {

// The window of a figure. Its place is kept by the owner, who is told of the user's drag and moves the window
// himself; the desktop's idea of where the window is never counts.
class CharacterWindow : public StageWindow {
    Q_OBJECT

public:
    // `image` is the picture in pixels, which the owner keeps up to date and alive.
    CharacterWindow(const QString &name, const QImage &image);

    // Where the figure is when it stands at rest, in units of the window.
    void SetBody(const QRect &body) { m_body = body; }
    // That part of the picture is new.
    void PictureChanged(const QRect &changed);

    // The user presses on the figure, takes it along and lets it go. `dragged` gives the way from where it
    // was taken.
    std::function<void()> pressed;
    std::function<void()> dragBegins;
    std::function<void(QPoint way)> dragged;
    std::function<void()> dragEnds;
    // The user chose Hide in the figure's menu.
    std::function<void()> hideChosen;
    // Asked for what stands below Hide when the user opens the menu.
    std::function<std::vector<MenuGroup>()> menuAsked;

protected:
    const QImage &Picture() const override { return m_image; }
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    QRect SeenPart() const override { return m_body; }

private:
    void EndDrag();

    const QImage &m_image;
    QRect m_body;
    bool m_isPressed = false;
    bool m_isDragged = false;
    QPoint m_grab;
};

} // namespace platform
