#pragma once

#include "platform/agent/BalloonPlace.h"
#include "platform/agent/BalloonText.h"
#include "platform/agent/StageWindow.h"

namespace platform {

// The word balloon of a figure: a cream bubble with a tail to the mouth, which grows downwards or upwards,
// away from its figure, as the words come. Its accessible name is its text.
class BalloonWindow : public StageWindow {
    Q_OBJECT

public:
    BalloonWindow();
    ~BalloonWindow() override;

    // Makes room for `whole`, the text that is going to come. A hidden balloon stays hidden, and one that is
    // seen keeps its old words, until the first words come.
    void Begin(const QString &whole);
    // Shows the balloon with these words more.
    void Append(const QString &piece, bool joined);
    // The figure is there now. A balloon that is seen keeps to its side of the figure as long as it can.
    void Follow(const BalloonOwner &owner);
    void Empty();
    // All has been said: from now on the balloon goes as soon as another one needs its place.
    void GiveWay() { m_givesWay = true; }

    // The height of the type, in units. A balloon that is seen is laid out anew.
    void SetTypeSize(int size);
    static constexpr int kUsualTypeSize = 20;

    // The bubble on the screen.
    QRect Bubble() const { return m_bubble; }
    QString ShownText() const { return m_text.ShownLines().join(QLatin1Char('\n')); }

protected:
    const QImage &Picture() const override { return m_image; }
    QRect SeenPart() const override { return m_bubble.translated(-pos()); }

private:
    void Place();
    QSize BubbleSize(qsizetype lines) const;
    void Render();

    void BeginLine();
    void LayOut();
    void TakePlaceOfOthers();

    QString m_coming; // the whole text of the line that is shown
    QString m_next;   // and of the one that begins with the next words
    bool m_begins = false;
    BalloonText m_text;
    double m_textWidth = 0;
    qsizetype m_mostLines = 1;
    BalloonOwner m_owner;
    std::vector<QRect> m_controls;
    bool m_givesWay = false;
    QRect m_bubble;
    BalloonPlace::Side m_side = BalloonPlace::Side::Above;
    bool m_hasSide = false;
    QPointF m_tip;
    QImage m_image;
};

} // namespace platform
