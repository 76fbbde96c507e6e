// Shows what a character can do: every motion as a strip of frames, and the mouths, on one picture.

#include "platform/agent/CharacterFile.h"
#include "platform/agent/MotionPlayer.h"
#include "platform/agent/Puppet.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QPainter>

#include <cstdio>

using namespace platform;

namespace {

constexpr int kFrames = 8;
constexpr int kLabelHeight = 22;
constexpr int kGap = 4;
constexpr int kMouthZoom = 2;
constexpr int kMouthsInARow = 5;
constexpr double kStep = 1.0 / 120;
const QColor kGround(0x3f, 0x5a, 0x9c);
const QColor kCell(0x4d, 0x6a, 0xae);

int Refuse(const QString &message)
{
    std::fprintf(stderr, "contact-sheet: %s\n", qPrintable(message));
    return 1;
}

class Sheet {
public:
    Sheet(std::shared_ptr<const CharacterData> character, int cell)
        : m_character(std::move(character)), m_puppet(m_character), m_cell(cell)
    {
    }

    QImage Whole()
    {
        const int motions = int(m_character->motions.size());
        const int mouthCell = m_cell * kMouthZoom;
        const int mouthRows = int(kMouths) / kMouthsInARow;
        const int width = qMax(StripWidth(), kMouthsInARow * (mouthCell + kGap) + kGap);
        QImage image(width, mouthRows * (mouthCell + kLabelHeight + kGap) + motions * StripHeight() + kGap,
                     QImage::Format_RGB32);
        image.fill(kGround);
        QPainter painter(&image);
        m_puppet.SetSize(QSize(mouthCell, mouthCell));
        for (std::size_t index = 0; index < kMouths; ++index) {
            const QPoint corner(kGap + int(index % kMouthsInARow) * (mouthCell + kGap),
                                int(index / kMouthsInARow) * (mouthCell + kLabelHeight + kGap));
            PaintMouth(painter, corner, static_cast<Mouth>(index), mouthCell);
        }
        m_puppet.SetSize(QSize(m_cell, m_cell));
        int top = mouthRows * (mouthCell + kLabelHeight + kGap);
        for (const auto &[name, motion] : m_character->motions) {
            PaintStrip(painter, top, motion);
            top += StripHeight();
        }
        return image;
    }

    QImage Strip(const Motion &motion)
    {
        QImage image(StripWidth(), StripHeight() + kGap, QImage::Format_RGB32);
        image.fill(kGround);
        QPainter painter(&image);
        m_puppet.SetSize(QSize(m_cell, m_cell));
        PaintStrip(painter, 0, motion);
        return image;
    }

private:
    int StripWidth() const { return kFrames * (m_cell + kGap) + kGap; }
    int StripHeight() const { return m_cell + kLabelHeight + kGap; }

    void PaintLabel(QPainter &painter, QPoint corner, const QString &text) const
    {
        painter.setPen(Qt::white);
        painter.drawText(QRect(corner + QPoint(2, 0), QSize(8 * m_cell, kLabelHeight)), Qt::AlignVCenter,
                         text);
    }

    void PaintFigure(QPainter &painter, QPoint corner, const MotionPlayer &player)
    {
        m_puppet.Draw(player.Shown(), player.Frames());
        painter.fillRect(QRect(corner, m_puppet.Size()), kCell);
        painter.drawImage(corner, m_puppet.Image());
    }

    void PaintMouth(QPainter &painter, QPoint corner, Mouth mouth, int size)
    {
        MotionPlayer player(m_character);
        player.ShowMouth(mouth);
        player.Advance(0.2);
        PaintLabel(painter, corner, MouthName(mouth));
        painter.setClipRect(QRect(corner + QPoint(0, kLabelHeight), QSize(size, size)));
        PaintFigure(painter, corner + QPoint(0, kLabelHeight), player);
        painter.setClipping(false);
    }

    // Runs the motion as the program would, so that springs and blends are seen too.
    void PaintStrip(QPainter &painter, int top, const Motion &motion)
    {
        QString label = QStringLiteral("%1   %2 s   return: %3")
                            .arg(motion.name)
                            .arg(motion.length)
                            .arg(ReturnText(motion));
        if (motion.speaks)
            label += QStringLiteral("   speaks");
        if (motion.loop)
            label += QStringLiteral("   loop %1 to %2").arg(motion.loop->from).arg(motion.loop->to);
        if (motion.aloft)
            label += QStringLiteral("   aloft %1 to %2").arg(motion.aloft->from).arg(motion.aloft->to);
        PaintLabel(painter, QPoint(kGap, top), label);
        MotionPlayer player(m_character);
        player.PlayAtOnce(motion);
        double now = 0;
        for (int frame = 0; frame < kFrames; ++frame) {
            // A motion that repeats a stretch up to its end would begin anew in the last frame.
            const double at = qMin(motion.length * frame / (kFrames - 1), motion.length - kStep);
            while (now + kStep / 2 < at) {
                player.Advance(kStep);
                now += kStep;
            }
            PaintFigure(painter, QPoint(kGap + frame * (m_cell + kGap), top + kLabelHeight), player);
        }
    }

    static QString ReturnText(const Motion &motion)
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

    std::shared_ptr<const CharacterData> m_character;
    Puppet m_puppet;
    const int m_cell;
};

} // namespace

int main(int argumentCount, char **arguments)
{
    // A picture needs no display.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argumentCount, arguments);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Draws the motions and the mouths of a character."));
    parser.addHelpOption();
    const QCommandLineOption motionOption(
        QStringLiteral("motion"), QStringLiteral("Only this motion, larger."), QStringLiteral("name"));
    const QCommandLineOption sizeOption(QStringLiteral("size"), QStringLiteral("Pixels of one frame."),
                                        QStringLiteral("pixels"));
    parser.addOptions({ motionOption, sizeOption });
    parser.addPositionalArgument(QStringLiteral("folder"),
                                 QStringLiteral("The character, such as characters/merlin."));
    parser.addPositionalArgument(QStringLiteral("picture"),
                                 QStringLiteral("The PNG to write; <folder name>.png if left out."),
                                 QStringLiteral("[picture]"));
    parser.process(application);
    const QStringList places = parser.positionalArguments();
    if (places.isEmpty() || places.size() > 2)
        parser.showHelp(1);

    const bool single = parser.isSet(motionOption);
    const int size = parser.isSet(sizeOption) ? parser.value(sizeOption).toInt() : (single ? 256 : 160);
    if (size < 16 || size > 1024)
        return Refuse(QStringLiteral("the size is to be 16 to 1024"));
    try {
        const CharacterSource source = ReadCharacterFolder(places.front());
        const auto character = std::make_shared<const CharacterData>(
            ReadCharacter(source.drawing, source.figure, source.motions));
        Sheet sheet(character, size);
        QImage image;
        if (single) {
            const Motion *motion = character->FindMotion(parser.value(motionOption));
            if (!motion)
                return Refuse(
                    QStringLiteral("%1 has no motion %2").arg(character->name, parser.value(motionOption)));
            image = sheet.Strip(*motion);
        } else {
            image = sheet.Whole();
        }
        const QString path =
            places.size() == 2 ? places.at(1) : character->name.toLower() + QStringLiteral(".png");
        if (!image.save(path, "PNG"))
            return Refuse(QStringLiteral("%1 cannot be written").arg(path));
    } catch (const CharacterFault &fault) {
        return Refuse(places.front() + QStringLiteral(": ") + fault.Text());
    }
    return 0;
}
