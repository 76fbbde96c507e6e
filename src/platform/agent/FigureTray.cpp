#include "platform/agent/FigureTray.h"

#include "platform/agent/ScreenArea.h"
#include "platform/agent/StageColours.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace platform {

namespace {

constexpr double kRing = 3;
const QColor kLampLight(0xff, 0xc8, 0x57);

// At the feet of the figure, wholly on a screen.
QPoint BadgePlace(const QRect &frame)
{
    const QSize size(FaceBadge::kSide, FaceBadge::kSide);
    const QPoint wanted(frame.center().x() - size.width() / 2, frame.bottom() + 1 - size.height());
    return MovedInto(ScreenAreaAt(frame.center()), wanted, size);
}

} // namespace

FaceBadge::FaceBadge(const QString &name, const QIcon &face, std::function<void()> wanted)
    : m_wanted(std::move(wanted))
{
    setWindowTitle(name);
    setAccessibleName(tr("Show %1").arg(name));
    setToolTip(tr("Show %1").arg(name));
    setCursor(Qt::PointingHandCursor);
    setFixedSize(kSide, kSide);
    m_image = BlankPicture();
    QPainter painter(&m_image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF round = QRectF(rect()).adjusted(kRing, kRing, -kRing, -kRing);
    painter.setPen(QPen(kWood, 2 * kRing));
    painter.setBrush(kPaper);
    painter.drawEllipse(round);
    painter.setPen(QPen(kLampLight, kRing));
    painter.drawEllipse(round);
    QPainterPath inside;
    inside.addEllipse(round.adjusted(kRing, kRing, -kRing, -kRing));
    painter.setClipPath(inside);
    face.paint(&painter, round.toAlignedRect());
    painter.end();
}

void FaceBadge::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        m_wanted();
}

FigureTray::FigureTray(const QString &name, const QIcon &face, const QRect &frame,
                       std::function<void()> wanted)
    : m_wanted(std::move(wanted))
{
    if (!QSystemTrayIcon::isSystemTrayAvailable()) {
        m_badge = std::make_unique<FaceBadge>(name, face, m_wanted);
        m_badge->move(BadgePlace(frame));
        m_badge->show();
        return;
    }
    m_icon = std::make_unique<QSystemTrayIcon>(face);
    m_icon->setToolTip(name);
    QAction *show = m_menu.addAction(QObject::tr("&Show %1").arg(name));
    QObject::connect(show, &QAction::triggered, m_icon.get(), m_wanted);
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, m_icon.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                             m_wanted();
                     });
    m_icon->setContextMenu(&m_menu);
    m_icon->show();
}

} // namespace platform
