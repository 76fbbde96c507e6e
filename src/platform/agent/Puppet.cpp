#include "platform/agent/Puppet.h"

#include <QPainter>
#include <QSvgRenderer>

#include <cmath>

namespace platform {

namespace {

// Room round a drawing for its soft edge.
constexpr int kMargin = 2;
// What is fainter than this is not worth painting.
constexpr double kUnseen = 0.004;
// A drawing far outside the square is a mistake of its maker and must not cost memory.
constexpr double kFarthest = 1024;

bool IsWhole(double number)
{
    return std::abs(number - std::round(number)) < 0.001;
}

} // namespace

Puppet::Puppet(std::shared_ptr<const CharacterData> character)
    : m_character(std::move(character)), m_renderer(std::make_unique<QSvgRenderer>(m_character->drawing)),
      m_drawn(m_character->parts.size())
{
}

Puppet::~Puppet() = default;

void Puppet::SetSize(QSize pixels)
{
    if (pixels == m_size || pixels.isEmpty())
        return;
    m_size = pixels;
    m_pieces.clear();
    m_drawn.assign(m_character->parts.size(), Drawn());
    m_image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    m_image.fill(Qt::transparent);
}

const Puppet::Piece *Puppet::PieceOf(const QString &drawing)
{
    const auto found = m_pieces.find(drawing);
    if (found != m_pieces.end())
        return &found->second;
    Piece &piece = m_pieces[drawing];
    const QRectF bounds =
        m_renderer->boundsOnElement(drawing) & QRectF(-kFarthest, -kFarthest, 2 * kFarthest, 2 * kFarthest);
    const double scaleX = m_size.width() / kDrawingSize;
    const double scaleY = m_size.height() / kDrawingSize;
    // Beginning at whole pixels keeps a body at rest as sharp as its drawing.
    const QPoint corner(int(std::floor(bounds.left() * scaleX)) - kMargin,
                        int(std::floor(bounds.top() * scaleY)) - kMargin);
    const QPoint far(int(std::ceil(bounds.right() * scaleX)) + kMargin,
                     int(std::ceil(bounds.bottom() * scaleY)) + kMargin);
    piece.corner = QPointF(corner.x() / scaleX, corner.y() / scaleY);
    if (bounds.isEmpty())
        return &piece;
    piece.image =
        QImage(QSize(far.x() - corner.x(), far.y() - corner.y()), QImage::Format_ARGB32_Premultiplied);
    piece.image.fill(Qt::transparent);
    QPainter painter(&piece.image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-corner);
    painter.scale(scaleX, scaleY);
    m_renderer->render(&painter, drawing, m_renderer->boundsOnElement(drawing));
    return &piece;
}

Puppet::Drawn Puppet::DrawnPart(const Part &part, std::int16_t variant, const PartFrame &frame)
{
    Drawn drawn;
    const QString &drawing = part.variants[std::size_t(variant)].drawing;
    if (drawing.isEmpty() || frame.opacity < kUnseen)
        return drawn;
    const Piece *piece = PieceOf(drawing);
    if (piece->image.isNull())
        return drawn;
    const double scaleX = m_size.width() / kDrawingSize;
    const double scaleY = m_size.height() / kDrawingSize;
    // From the pixels of the piece to the pixels of the square.
    const Affine toDrawing{ 1 / scaleX, 0, 0, 1 / scaleY, piece->corner.x(), piece->corner.y() };
    const Affine toPixels{ scaleX, 0, 0, scaleY, 0, 0 };
    drawn.place = toPixels.Over(frame.place.Over(toDrawing));
    const QTransform transform(drawn.place.a, drawn.place.b, drawn.place.c, drawn.place.d, drawn.place.e,
                               drawn.place.f);
    const QRectF area = transform.mapRect(QRectF(QPointF(0, 0), QSizeF(piece->image.size())));
    if (!area.intersects(QRectF(QPointF(0, 0), QSizeF(m_size))) || area.width() < 0.05 ||
        area.height() < 0.05)
        return drawn;
    drawn.piece = piece;
    drawn.opacity = frame.opacity;
    drawn.rectangle = (area & QRectF(QPointF(-4, -4), QSizeF(m_size) + QSizeF(8, 8))).toAlignedRect();
    drawn.rectangle.adjust(-1, -1, 1, 1);
    return drawn;
}

QRect Puppet::Draw(const Pose &pose, const std::vector<PartFrame> &frames)
{
    QRect changed;
    for (std::size_t index = 0; index < m_character->parts.size(); ++index) {
        const Drawn drawn = DrawnPart(m_character->parts[index], pose.swaps[index], frames[index]);
        Drawn &before = m_drawn[index];
        const bool same = drawn.piece == before.piece &&
                          (!drawn.piece || (drawn.place == before.place && drawn.opacity == before.opacity));
        if (!same)
            changed |= before.rectangle | drawn.rectangle;
        before = drawn;
    }
    changed &= m_image.rect();
    if (changed.isEmpty())
        return QRect();
    QPainter painter(&m_image);
    painter.setClipRect(changed);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(changed, Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (const Drawn &drawn : m_drawn) {
        if (drawn.piece && drawn.rectangle.intersects(changed))
            PaintPart(painter, drawn);
    }
    return changed;
}

void Puppet::PaintPart(QPainter &painter, const Drawn &drawn) const
{
    Affine place = drawn.place;
    const bool shiftedOnly = std::abs(place.a - 1) < 1e-6 && std::abs(place.d - 1) < 1e-6 &&
                             std::abs(place.b) < 1e-6 && std::abs(place.c) < 1e-6;
    if (shiftedOnly && IsWhole(place.e) && IsWhole(place.f)) {
        place = { 1, 0, 0, 1, std::round(place.e), std::round(place.f) };
    } else if (shiftedOnly) {
        // A mere shift would be rounded to whole pixels, each part for itself; the least scale keeps it
        // smooth.
        place.a = place.d = 1.00001;
    }
    painter.setTransform(QTransform(place.a, place.b, place.c, place.d, place.e, place.f));
    painter.setOpacity(drawn.opacity);
    painter.drawImage(0, 0, drawn.piece->image);
}

} // namespace platform
