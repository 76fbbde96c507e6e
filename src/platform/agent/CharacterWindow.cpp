#include "platform/agent/CharacterWindow.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>

namespace platform {

namespace {

// A trembling hand is no drag.
constexpr int kDragBegins = 3;

} // namespace

CharacterWindow::CharacterWindow(const QString &name, const QImage &image) : m_image(image)
{
    setWindowTitle(name);
    setAccessibleName(name);
}

void CharacterWindow::PictureChanged(const QRect &changed)
{
    if (changed.isEmpty())
        return;
    const double ratio = devicePixelRatioF();
    update(QRectF(QPointF(changed.topLeft()) / ratio, QSizeF(changed.size()) / ratio).toAlignedRect());
    PictureHasChanged();
}

void CharacterWindow::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(QRectF(rect()), m_image, QRectF(m_image.rect()));
}

void CharacterWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    m_isPressed = true;
    m_isDragged = false;
    m_grab = event->globalPosition().toPoint();
    if (pressed)
        pressed();
}

void CharacterWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_isPressed || !(event->buttons() & Qt::LeftButton))
        return;
    const QPoint way = event->globalPosition().toPoint() - m_grab;
    if (!m_isDragged && way.manhattanLength() < kDragBegins)
        return;
    if (!m_isDragged) {
        m_isDragged = true;
        if (dragBegins)
            dragBegins();
    }
    if (dragged)
        dragged(way);
}

void CharacterWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        EndDrag();
}

// A figure that goes while it is held is let go.
void CharacterWindow::hideEvent(QHideEvent *event)
{
    EndDrag();
    StageWindow::hideEvent(event);
}

void CharacterWindow::EndDrag()
{
    m_isPressed = false;
    if (!m_isDragged)
        return;
    m_isDragged = false;
    if (dragEnds)
        dragEnds();
}

void CharacterWindow::contextMenuEvent(QContextMenuEvent *event)
{
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    QAction *hide = menu->addAction(tr("&Hide"));
    connect(hide, &QAction::triggered, this, [this] {
        if (hideChosen)
            hideChosen();
    });
    const std::vector<MenuGroup> groups = menuAsked ? menuAsked() : std::vector<MenuGroup>{};
    for (const MenuGroup &group : groups) {
        if (!group.empty())
            menu->addSeparator();
        for (const MenuEntry &entry : group) {
            QAction *action = menu->addAction(entry.caption);
            action->setEnabled(entry.enabled);
            connect(action, &QAction::triggered, this, entry.chosen);
        }
    }
    // Not run here: the game goes on while the menu is open.
    menu->popup(event->globalPos());
}

} // namespace platform
