#pragma once

#include "platform/agent/Pose.h"

#include <QImage>
#include <QRect>

#include <memory>
#include <unordered_map>

class QPainter;
class QSvgRenderer;

namespace platform {

// Draws a body. Every drawing of a part is made into an image once for a scale and then only placed.
class Puppet {
public:
    explicit Puppet(std::shared_ptr<const CharacterData> character);
    ~Puppet();

    // The size of the figure's square in pixels. A change makes all images anew.
    void SetSize(QSize pixels);
    QSize Size() const { return m_size; }

    // Brings `Image()` up to date and gives the rectangle of it that has changed; empty when nothing has.
    QRect Draw(const Pose &pose, const std::vector<PartFrame> &frames);
    // The figure's square, premultiplied, transparent where nothing is drawn.
    const QImage &Image() const { return m_image; }

private:
    struct Piece {
        QImage image;
        QPointF corner; // in the drawing
    };
    struct Drawn {
        const Piece *piece = nullptr; // null when it is not seen
        Affine place;
        double opacity = 0;
        QRect rectangle;
    };
    const Piece *PieceOf(const QString &drawing);
    Drawn DrawnPart(const Part &part, std::int16_t variant, const PartFrame &frame);
    void PaintPart(QPainter &painter, const Drawn &drawn) const;

    std::shared_ptr<const CharacterData> m_character;
    std::unique_ptr<QSvgRenderer> m_renderer;
    QSize m_size;
    QImage m_image;
    std::unordered_map<QString, Piece> m_pieces; // by drawing
    std::vector<Drawn> m_drawn;                  // by part
};

} // namespace platform
