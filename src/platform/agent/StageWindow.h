#pragma once

#include "platform/forms/OnTop.h"

#include <QElapsedTimer>
#include <QImage>
#include <QTimer>
#include <QWidget>

namespace platform {

// A window of the stage, for a character or a balloon: without frame, translucent, over all other windows,
// placed where its owner says and never by the desktop. Clicks go through where its picture is transparent;
// without a compositor the window is cut out along the picture, since transparency would be black there.
//
// The windows keep above the program's forms: all of them are raised when a form is shown or comes forward,
// those brought to the front last on top.
class StageWindow : public QWidget, public OnTop {
    Q_OBJECT

public:
    StageWindow();
    ~StageWindow() override;

    // Above all other windows of the stage, now and when forms come forward.
    void BringToFront();

    // Whether the picture can be clicked on. What is on its way out lets clicks through to what lies below.
    void SetTouchable(bool touchable);
    bool IsTouchable() const { return m_isTouchable; }

    // The desktop shows windows in another way from now on: finds the outline anew.
    void CompositorHasChanged() { PictureHasChanged(); }

    void setVisible(bool visible) override;

protected:
    // What is seen now, in pixels; asked whenever the window is cut out.
    virtual const QImage &Picture() const = 0;
    // Tells that the picture is another one. Costs little when called for every frame.
    void PictureHasChanged();
    // A transparent picture to draw on, as large as the window now and as fine as its screen.
    QImage BlankPicture() const;
    // Shows the picture, pixel for pixel.
    void paintEvent(QPaintEvent *event) override;
    // The part of the window in which its picture mostly is, in units of the window.
    virtual QRect SeenPart() const { return rect(); }

private:
    QRect Hidden() const override { return isVisible() ? SeenPart().translated(pos()) : QRect(); }
    void Shape();

    quint32 m_shapedWindow = 0;
    bool m_shapedWithCompositor = false;
    bool m_shaped = false;
    bool m_isTouchable = true;
    QElapsedTimer m_sinceShape;
    QTimer m_shapeLater; // for a picture that came too soon behind another
};

} // namespace platform
