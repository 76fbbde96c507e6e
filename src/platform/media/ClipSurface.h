#pragma once

#include <QImage>
#include <QWidget>

namespace platform {

// Where a clip is seen: a part of the form that takes no clicks and no focus.
class ClipSurface final : public QWidget {
public:
    ClipSurface(QWidget &form, const QPoint &corner);

    // Shows the picture, at its first call the surface too.
    void Show(const QImage &picture);
    // Takes the place that a clip of that shape has on the form as it is now.
    void Place();
    // The place that a clip of `own` size has between the corner and the form's lower right corner.
    static QSize Fitting(const QSize &own, const QSize &room);
    QSize Room() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const QPoint m_corner;
    QImage m_picture;
};

} // namespace platform
