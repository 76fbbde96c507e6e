#include "Sheet.h"

#include <QPainter>

#include <functional>

using namespace platform;

namespace {

constexpr int kLabelHeight = 22;
constexpr int kGap = 4;
constexpr int kMouthZoom = 2;
constexpr double kStep = 1.0 / 120;
// Long enough for springs to come to rest.
constexpr double kCalm = 2.5;
const QColor kGround(0x3f, 0x5a, 0x9c);
const QColor kCell(0x4d, 0x6a, 0xae);

QString ReturnText(const Motion &motion)
{
    switch (motion.comesBack) {
    case Motion::Return::None:
        return QStringLiteral("none");
    case Motion::Return::Blend:
        return QStringLiteral("blend");
    case Motion::Return::Motion:
        return motion.returnMotion;
    }
    return QString();
}

// Lets time pass in the program's own small steps, so that springs and blends are seen too.
class Clock {
public:
    explicit Clock(MotionPlayer &player) : m_player(player) {}
    void PassTo(double at)
    {
        while (m_now + kStep / 2 < at) {
            m_player.Advance(kStep);
            m_now += kStep;
        }
    }
    void PassUntil(const std::function<bool()> &reached, double atMost)
    {
        for (const double end = m_now + atMost; m_now < end && !reached();) {
            m_player.Advance(kStep);
            m_now += kStep;
        }
    }
    double Now() const { return m_now; }

private:
    MotionPlayer &m_player;
    double m_now = 0;
};

void BringToEnd(MotionPlayer &player, const Motion &motion)
{
    player.PlayAtOnce(motion);
    Clock clock(player);
    clock.PassTo(motion.loop || motion.aloft ? motion.length - kStep : motion.length + kCalm);
}

} // namespace

Sheet::Sheet(std::shared_ptr<const CharacterData> character, SheetStyle style)
    : m_character(std::move(character)), m_puppet(m_character), m_style(style)
{
}

int Sheet::StripWidth() const
{
    return m_style.frames * (m_style.cell + kGap) + kGap;
}

int Sheet::StripHeight() const
{
    return m_style.cell + kLabelHeight + kGap;
}

std::vector<Strip> Sheet::Accents(const Motion *over) const
{
    std::vector<Strip> strips;
    for (std::size_t which = 0; which < m_character->accents.size(); ++which) {
        const QString label = QStringLiteral("accent %1 over %2")
                                  .arg(which + 1)
                                  .arg(over ? over->name : QStringLiteral("rest"));
        strips.push_back({ label, over, nullptr, int(which) });
    }
    return strips;
}

Strip Sheet::Single(const Motion &motion) const
{
    QString label =
        QStringLiteral("%1   %2 s   return: %3").arg(motion.name).arg(motion.length).arg(ReturnText(motion));
    if (motion.speaks)
        label += QStringLiteral("   speaks");
    if (motion.loop)
        label += QStringLiteral("   loop %1 to %2").arg(motion.loop->from).arg(motion.loop->to);
    if (motion.aloft)
        label += QStringLiteral("   aloft %1 to %2").arg(motion.aloft->from).arg(motion.aloft->to);
    return { label, &motion };
}

Strip Sheet::Into(const Motion &motion, const Motion &next) const
{
    return { motion.name + QStringLiteral(" into ") + next.name, &motion, &next };
}

QImage Sheet::Mouths()
{
    const int cell = m_style.cell * kMouthZoom;
    const int mouths = int(kMouths);
    const int inARow = m_style.columns * StripWidth() >= mouths * (cell + kGap) + kGap ? mouths : mouths / 2;
    const int rows = mouths / inARow;
    QImage image(inARow * (cell + kGap) + kGap, rows * (cell + kLabelHeight + kGap), QImage::Format_RGB32);
    image.fill(kGround);
    QPainter painter(&image);
    m_puppet.SetSize(QSize(cell, cell));
    for (int index = 0; index < mouths; ++index) {
        const QPoint corner(kGap + index % inARow * (cell + kGap),
                            index / inARow * (cell + kLabelHeight + kGap));
        MotionPlayer player(m_character);
        player.ShowMouth(static_cast<Mouth>(index));
        player.Advance(0.2);
        PaintLabel(painter, corner, MouthName(static_cast<Mouth>(index)));
        PaintFigure(painter, corner + QPoint(0, kLabelHeight), player);
    }
    return image;
}

QImage Sheet::Strips(const std::vector<Strip> &strips)
{
    const int rows = (int(strips.size()) + m_style.columns - 1) / m_style.columns;
    QImage image(m_style.columns * StripWidth(), rows * StripHeight() + kGap, QImage::Format_RGB32);
    image.fill(kGround);
    QPainter painter(&image);
    m_puppet.SetSize(QSize(m_style.cell, m_style.cell));
    for (int index = 0; index < int(strips.size()); ++index) {
        PaintStrip(painter, QPoint(index / rows * StripWidth(), index % rows * StripHeight()),
                   strips[std::size_t(index)]);
    }
    return image;
}

void Sheet::PaintLabel(QPainter &painter, QPoint corner, const QString &text) const
{
    painter.setPen(Qt::white);
    painter.drawText(QRect(corner + QPoint(2, 0), QSize(8 * m_style.cell, kLabelHeight)), Qt::AlignVCenter,
                     text);
}

void Sheet::PaintFigure(QPainter &painter, QPoint corner, const MotionPlayer &player)
{
    m_puppet.Draw(player.Shown(), player.Frames());
    painter.fillRect(QRect(corner, m_puppet.Size()), m_style.black ? QColor(Qt::white) : kCell);
    QImage figure = m_puppet.Image();
    if (m_style.black) {
        figure = figure.copy();
        QPainter shade(&figure);
        shade.setCompositionMode(QPainter::CompositionMode_SourceIn);
        shade.fillRect(figure.rect(), Qt::black);
    }
    painter.drawImage(corner, figure);
}

void Sheet::PaintStrip(QPainter &painter, QPoint corner, const Strip &strip)
{
    PaintLabel(painter, corner + QPoint(kGap, 0), strip.label);
    MotionPlayer player(m_character);
    Clock clock(player);
    const auto paint = [&](int frame) {
        PaintFigure(painter, corner + QPoint(kGap + frame * (m_style.cell + kGap), kLabelHeight), player);
    };
    // A motion that repeats a stretch up to its end would begin anew in the last frame.
    const auto moment = [&](int frame, double length) {
        return m_style.frames < 2 ? length - kStep
                                  : qMin(length * frame / (m_style.frames - 1), length - kStep);
    };
    if (strip.accent >= 0) {
        if (strip.motion)
            BringToEnd(player, *strip.motion);
        player.Accent(std::size_t(strip.accent));
        for (int frame = 0; frame < m_style.frames; ++frame) {
            clock.PassTo(moment(frame, m_character->accents[std::size_t(strip.accent)].length));
            paint(frame);
        }
        return;
    }
    if (!strip.next) {
        player.PlayAtOnce(*strip.motion);
        for (int frame = 0; frame < m_style.frames; ++frame) {
            clock.PassTo(moment(frame, strip.motion->length));
            paint(frame);
        }
        return;
    }
    // The end pose, then the way back and into the next one at an even pace.
    BringToEnd(player, *strip.motion);
    constexpr double kPace = 0.1;
    bool back = strip.motion->comesBack == Motion::Return::None;
    if (strip.motion->comesBack == Motion::Return::Blend)
        player.Settle();
    else if (strip.motion->comesBack == Motion::Return::Motion)
        player.Play(*m_character->FindMotion(strip.motion->returnMotion));
    if (back)
        player.Play(*strip.next);
    for (int frame = 0; frame < m_style.frames; ++frame) {
        paint(frame);
        const double until = clock.Now() + kPace;
        clock.PassUntil([&] { return !back && player.HasEnded(); }, kPace);
        if (!back && player.HasEnded()) {
            back = true;
            player.Play(*strip.next);
            clock.PassTo(until);
        }
    }
}
