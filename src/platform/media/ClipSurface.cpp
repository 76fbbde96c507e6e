#include "platform/media/ClipSurface.h"

#include <QPainter>

#include <algorithm>

namespace platform {

namespace {

constexpr int kMargin = 16; // to the form's edges
constexpr int kLeast = 16;

} // namespace

ClipSurface::ClipSurface(QWidget &form, const QPoint &corner) : QWidget(&form), m_corner(corner)
{
    setObjectName(QStringLiteral("clip"));
    setAccessibleName(QStringLiteral("Video"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

QSize ClipSurface::Room() const
{
    const QSize form = parentWidget()->size();
    return { form.width() - m_corner.x() - kMargin, form.height() - m_corner.y() - kMargin };
}

QSize ClipSurface::Fitting(const QSize &own, const QSize &room)
{
    return own.scaled(room, Qt::KeepAspectRatio).expandedTo({ kLeast, kLeast });
}

void ClipSurface::Place()
{
    if (!m_picture.isNull())
        setGeometry(QRect(m_corner, Fitting(m_picture.size(), Room())));
}

void ClipSurface::Show(const QImage &picture)
{
    const bool first = m_picture.isNull() || m_picture.size() != picture.size();
    m_picture = picture;
    if (first)
        Place();
    if (isHidden())
        show();
    update();
}

void ClipSurface::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect(), m_picture);
}

} // namespace platform
