#pragma once

#include "platform/agent/MotionPlayer.h"
#include "platform/agent/Puppet.h"

#include <QImage>

#include <vector>

class QPainter;

// What a sheet shows, and how large.
struct SheetStyle {
    int cell = 160; // pixels of one frame
    int frames = 8;
    int columns = 1;
    bool black = false; // silhouettes
};

// One row of frames: a motion, or a way from the end of one into another, or an accent of speech.
struct Strip {
    QString label;
    const platform::Motion *motion = nullptr; // null is the rest pose
    const platform::Motion *next = nullptr;   // what follows the end of `motion`, by way of its return
    int accent = -1;                          // laid over the end of `motion`
};

// Draws a character in many moments.
class Sheet {
public:
    Sheet(std::shared_ptr<const platform::CharacterData> character, SheetStyle style);

    std::vector<Strip> Accents(const platform::Motion *over) const;
    Strip Single(const platform::Motion &motion) const;
    Strip Into(const platform::Motion &motion, const platform::Motion &next) const;

    QImage Mouths();
    QImage Strips(const std::vector<Strip> &strips);

private:
    int StripWidth() const;
    int StripHeight() const;
    void PaintLabel(QPainter &painter, QPoint corner, const QString &text) const;
    void PaintFigure(QPainter &painter, QPoint corner, const platform::MotionPlayer &player);
    void PaintStrip(QPainter &painter, QPoint corner, const Strip &strip);

    std::shared_ptr<const platform::CharacterData> m_character;
    platform::Puppet m_puppet;
    const SheetStyle m_style;
};

// The same picture with 256 colours chosen for it, which makes a much smaller file.
QImage InFewColours(const QImage &image);
