#pragma once

#include <QObject>
#include <QPixmap>
#include <QString>

#include <memory>

class QPainter;
class QSvgRenderer;
class QWidget;

namespace platform {

// A drawing behind the controls of a window, or in place of a plain frame. It fills the widget at every size
// and is painted anew only when the size changes.
//
// The drawing is an SVG whose height is always the widget's height. What happens to its width is told by the
// names of its parts, painted in this order, each one optional:
//
//   back    keeps its shape, is centred and loses its sides in a narrow widget; only a widget that is wider
//           than the whole drawing stretches it
//   wide    is stretched to the width of the widget, so that it lies under scaled controls at every size
//   middle  keeps its shape and is centred
//   left    keeps its shape and its distance to the left edge
//   right   keeps its shape and its distance to the right edge
//   spare   like right, but left out of a widget that is narrower in proportion than the drawing: ornaments
//           for the room that controls of a fixed size leave
//
// For the thread of the windows only. A drawing without any of the parts, or none at all, paints nothing.
class Backdrop : public QObject {
    Q_OBJECT

public:
    // Puts the drawing of that file behind the controls of `widget`, in place of an earlier one. The backdrop
    // belongs to the widget.
    static void Install(QWidget &widget, const QString &fileName);

    ~Backdrop() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Backdrop(QWidget &widget, const QString &fileName);
    QPixmap Painted(QSize size, qreal pixelRatio);
    void PaintPart(QPainter &painter, const QString &part, QSizeF size);

    const std::unique_ptr<QSvgRenderer> m_drawing;
    QPixmap m_painted;
};

} // namespace platform
