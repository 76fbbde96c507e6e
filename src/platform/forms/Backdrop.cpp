#include "platform/forms/Backdrop.h"

#include <QPaintEvent>
#include <QPainter>
#include <QSvgRenderer>
#include <QWidget>

#include <algorithm>

namespace platform {

namespace {

// Displays of one name differ a little: 1366 by 768 is 16 by 9 as well.
const qreal kNearlyAsWide = 0.97;

} // namespace

void Backdrop::Install(QWidget &widget, const QString &fileName)
{
    delete widget.findChild<Backdrop *>(QString(), Qt::FindDirectChildrenOnly);
    new Backdrop(widget, fileName);
    widget.update();
}

Backdrop::Backdrop(QWidget &widget, const QString &fileName)
    : QObject(&widget), m_drawing(std::make_unique<QSvgRenderer>(fileName))
{
    widget.installEventFilter(this);
}

Backdrop::~Backdrop() = default;

bool Backdrop::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Paint) {
        QWidget &widget = *static_cast<QWidget *>(parent());
        const QPixmap picture = Painted(widget.size(), widget.devicePixelRatioF());
        QPainter painter(&widget);
        painter.setClipRegion(static_cast<QPaintEvent *>(event)->region());
        painter.drawPixmap(0, 0, picture);
    }
    return false;
}

QPixmap Backdrop::Painted(QSize size, qreal pixelRatio)
{
    const QSize pixels = size * pixelRatio;
    if (m_painted.size() != pixels) {
        m_painted = QPixmap(pixels);
        m_painted.fill(Qt::transparent);
        QPainter painter(&m_painted);
        painter.setRenderHint(QPainter::Antialiasing);
        for (const char *part : { "back", "wide", "middle", "left", "right", "spare" })
            PaintPart(painter, QString::fromLatin1(part), pixels);
    }
    m_painted.setDevicePixelRatio(pixelRatio);
    return m_painted;
}

void Backdrop::PaintPart(QPainter &painter, const QString &part, QSizeF size)
{
    const QRectF whole = m_drawing->viewBoxF();
    if (!m_drawing->elementExists(part) || whole.isEmpty())
        return;
    const qreal down = size.height() / whole.height();
    const qreal stretched = size.width() / whole.width();
    if (part == QLatin1String("spare") && stretched < down * kNearlyAsWide)
        return;
    qreal across = down;
    if (part == QLatin1String("wide"))
        across = stretched;
    else if (part == QLatin1String("back"))
        across = std::max(down, stretched);

    const qreal room = size.width() - whole.width() * across;
    qreal edge = 0;
    if (part == QLatin1String("right") || part == QLatin1String("spare"))
        edge = room;
    else if (part == QLatin1String("back") || part == QLatin1String("middle"))
        edge = room / 2;

    const QRectF drawn = m_drawing->boundsOnElement(part);
    m_drawing->render(&painter, part,
                      QRectF(edge + (drawn.x() - whole.x()) * across, (drawn.y() - whole.y()) * down,
                             drawn.width() * across, drawn.height() * down));
}

} // namespace platform
