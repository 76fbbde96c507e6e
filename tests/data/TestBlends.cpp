#include "platform/agent/CharacterFile.h"
#include "platform/agent/MotionPlayer.h"
#include "platform/agent/Puppet.h"

#include <QDir>
#include <QTest>
#include <algorithm>
#include <array>
#include <cmath>

using namespace platform;

namespace {

const QDir kCharacters(QStringLiteral(CHARACTERS_FOLDER));
constexpr double kFrame = 1.0 / 60;
// The fastest flourish stays below this, in units of the drawing from one frame to the next.
constexpr double kFarthest = 55;
// By how much a way may be longer than one and a half of the ways before and after it. A sweep is fast for
// several frames; what is fast in one alone is seen as a pop.
constexpr double kLongestLoneWay = 6;
// The most that a part of the body itself may fade in or out from one frame to the next.
constexpr double kFade = 0.5;
constexpr double kFaint = 0.15;
constexpr int kOpaque = 128; // of 255

// Watches every part from frame to frame.
class Watch {
public:
    explicit Watch(const CharacterData &character) : m_character(character), m_parts(character.parts.size())
    {
    }

    // What is wrong with the last frames, or an empty text.
    QString Look(const std::vector<PartFrame> &frames)
    {
        QString fault;
        for (std::size_t index = 0; index < frames.size(); ++index) {
            const QString found = LookAt(m_character.parts[index], m_parts[index], frames[index]);
            if (fault.isEmpty())
                fault = found;
        }
        return fault;
    }

private:
    struct Seen {
        bool known = false;
        QPointF corner;
        double area = 0; // of a unit square, less than 0 when it is mirrored
        double fade = 0;
        double size = 0; // what there is of it to be seen, 0 to 1
        // The last way and the one before it; a huge one says that there is none to compare with.
        std::array<double, 2> ways{ kNone, kNone };
    };
    static constexpr double kNone = 1e9;

    static QString LookAt(const Part &part, Seen &seen, const PartFrame &frame)
    {
        const Affine &place = frame.place;
        Seen now = seen;
        now.known = true;
        // Some way off the pivot, so that turns and scales are seen as well.
        now.corner = place.Map(part.pivot + QPointF(15, 15));
        now.area = place.a * place.d - place.b * place.c;
        now.fade = frame.opacity;
        now.size = frame.opacity * std::min(1.0, std::sqrt(std::abs(now.area)));
        const bool drawn = part.variants.size() > 1 || !part.variants.front().drawing.isEmpty();
        const QPointF way = now.corner - seen.corner;
        const double length = std::hypot(way.x(), way.y());
        // A head that turns to the other side is mirrored in an instant; that is wanted.
        const bool turnsOver = now.area * seen.area <= 0;
        const bool faint = now.size < kFaint || seen.size < kFaint;
        const bool counts = seen.known && drawn && !turnsOver && !faint;
        now.ways = { seen.ways[1], counts ? length : kNone };
        QString fault;
        if (counts && length > kFarthest)
            fault = QStringLiteral("%1 goes %2 units in one frame").arg(part.name).arg(length);
        const double lone = seen.ways[1] - 1.5 * std::max(seen.ways[0], length);
        if (counts && seen.ways[1] < kNone && lone > kLongestLoneWay)
            fault = QStringLiteral("%1 pops by %2 units").arg(part.name).arg(seen.ways[1]);
        if (seen.known && drawn && !part.hidden && std::abs(frame.opacity - seen.fade) > kFade)
            fault = QStringLiteral("%1 comes or goes at once").arg(part.name);
        seen = now;
        return fault;
    }

    const CharacterData &m_character;
    std::vector<Seen> m_parts;
};

} // namespace

// Whether the shipped characters move without tears: within a motion, from every pose that is held, and out
// of every motion that is cut off in its middle.
class TestBlends : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const QString &folder : kCharacters.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            const CharacterSource source = ReadCharacterFolder(kCharacters.filePath(folder));
            const auto character = std::make_shared<const CharacterData>(
                ReadCharacter(source.drawing, source.figure, source.motions));
            m_characters[character->name] = character;
        }
        QCOMPARE(m_characters.size(), 3);
    }

    void aPopIsSeen()
    {
        // The check itself, on a body of which one hand is thrown aside.
        const CharacterData &merlin = *m_characters["Merlin"];
        MotionPlayer player(m_characters["Merlin"]);
        Watch watch(merlin);
        for (int frame = 0; frame < 10; ++frame) {
            player.Advance(kFrame);
            std::vector<PartFrame> frames = player.Frames();
            if (frame >= 5) {
                for (std::size_t index = 0; index < frames.size(); ++index)
                    frames[index].place.e += merlin.parts[index].name == "hand_l" ? 20 : 0;
            }
            const QString fault = watch.Look(frames);
            QCOMPARE(fault.isEmpty(), frame != 6);
            if (frame == 6)
                QVERIFY2(fault.startsWith("hand_l pops by 2"), qPrintable(fault));
        }
    }

    void nothingPopsWithinAMotion_data() { EachCharacter(); }
    void nothingPopsWithinAMotion()
    {
        const auto character = Chosen();
        for (const auto &[key, motion] : character->motions) {
            MotionPlayer player(character);
            player.PlayAtOnce(motion);
            Watch watch(*character);
            // Long enough for a repeated stretch to begin anew.
            for (double time = 0; time < motion.length * 1.5 + 0.3; time += kFrame) {
                player.Advance(kFrame);
                const QString fault = watch.Look(player.Frames());
                QVERIFY2(fault.isEmpty(),
                         qPrintable(QStringLiteral("%1 at %2 s: %3").arg(motion.name).arg(time).arg(fault)));
            }
        }
    }

    void nothingPopsOnTheWayToAnother_data() { EachCharacter(); }
    void nothingPopsOnTheWayToAnother()
    {
        const auto character = Chosen();
        std::vector<const Motion *> nexts{ nullptr }; // rest
        for (const char *name : { "RestPose", "Read", "GestureLeft", "MoveLeft" })
            nexts.push_back(character->FindMotion(QLatin1String(name)));
        for (const auto &[key, motion] : character->motions) {
            for (const Motion *next : nexts) {
                if (key != "hide") // after it nobody is seen
                    Follow(character, motion, motion.length + 1, next);
                if (key != "show" && key != "hide") // these two are never cut off
                    Follow(character, motion, motion.length / 2, next);
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }

    void theyStayInTheirFrames_data() { EachCharacter(); }
    // Whoever flies may lean out; stars, confetti and a lamp on its cord may come from anywhere.
    void theyStayInTheirFrames()
    {
        CharacterData data = *Chosen();
        for (Part &part : data.parts) {
            for (const char *loose : { "star_", "spark", "confetti_", "fluff_", "lamp", "cord" }) {
                if (!part.name.startsWith(QLatin1String(loose)))
                    continue;
                for (Variant &variant : part.variants)
                    variant.drawing.clear();
            }
        }
        const auto character = std::make_shared<const CharacterData>(std::move(data));
        // Drawn at half the size, so that what lies beyond the frame is seen too.
        const Affine half{ 0.5, 0, 0, 0.5, kDrawingSize / 4, kDrawingSize / 4 };
        constexpr int kPixels = 256;
        const QRect frame(kPixels / 4, kPixels / 4, kPixels / 2, kPixels / 2);
        Puppet puppet(character);
        puppet.SetSize(QSize(kPixels, kPixels));
        QStringList faults;
        for (const auto &[key, motion] : character->motions) {
            if (key == "show" || key == "hide" || key.startsWith("move"))
                continue;
            MotionPlayer player(character);
            player.PlayAtOnce(motion);
            for (double time = 0; time < motion.length + 1; time += 3 * kFrame) {
                player.Advance(3 * kFrame);
                std::vector<PartFrame> frames = player.Frames();
                for (PartFrame &part : frames)
                    part.place = half.Over(part.place);
                puppet.Draw(player.Shown(), frames);
                const QRect seen = OpaqueArea(puppet.Image());
                if (frame.contains(seen))
                    continue;
                faults += QStringLiteral("%1 at %2 s: %3 above, %4 left, %5 right, %6 below")
                              .arg(motion.name)
                              .arg(time, 0, 'f', 2)
                              .arg(2 * (frame.top() - seen.top()))
                              .arg(2 * (frame.left() - seen.left()))
                              .arg(2 * (seen.right() - frame.right()))
                              .arg(2 * (seen.bottom() - frame.bottom()));
                break;
            }
        }
        // Units beyond the edges.
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QStringLiteral("; "))));
    }

    // A motion that never opens the right hand leaves it on the staff, however the body sways.
    void merlinHoldsHisStaff()
    {
        const auto character = m_characters["Merlin"];
        const auto indexOf = [&character](const char *name) {
            const auto found =
                std::find_if(character->parts.begin(), character->parts.end(),
                             [name](const Part &part) { return part.name == QLatin1String(name); });
            return int(found - character->parts.begin());
        };
        const int hand = indexOf("hand_r"), staff = indexOf("staff");
        const QPointF grip = character->parts[std::size_t(hand)].pivot;
        int held = 0;
        for (const auto &[key, motion] : character->motions) {
            const bool opens = std::any_of(motion.swaps.begin(), motion.swaps.end(),
                                           [hand](const SwapCurve &curve) { return curve.part == hand; });
            if (opens || key == "show" || key == "hide")
                continue;
            ++held;
            MotionPlayer player(character);
            player.PlayAtOnce(motion);
            for (double time = 0; time < motion.length; time += 2 * kFrame) {
                player.Advance(2 * kFrame);
                const QPointF off = player.Frames()[std::size_t(hand)].place.Map(grip) -
                                    player.Frames()[std::size_t(staff)].place.Map(grip);
                QVERIFY2(std::hypot(off.x(), off.y()) < 3,
                         qPrintable(QStringLiteral("%1 at %2 s: off by %3, %4")
                                        .arg(motion.name)
                                        .arg(time)
                                        .arg(off.x())
                                        .arg(off.y())));
            }
        }
        QVERIFY(held > 40);
    }

private:
    static QRect OpaqueArea(const QImage &image)
    {
        int left = image.width(), right = -1, top = image.height(), bottom = -1;
        for (int y = 0; y < image.height(); ++y) {
            const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(line[x]) <= kOpaque)
                    continue;
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = y;
            }
        }
        return QRect(QPoint(left, top), QPoint(right, bottom));
    }
    void EachCharacter()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : m_characters.keys())
            QTest::newRow(qPrintable(name)) << name;
    }
    std::shared_ptr<const CharacterData> Chosen()
    {
        QFETCH(QString, name);
        return m_characters[name];
    }

    // Plays `motion` up to `at`, then comes back as the program does and goes on with `next`.
    static void Follow(const std::shared_ptr<const CharacterData> &character, const Motion &motion, double at,
                       const Motion *next)
    {
        MotionPlayer player(character);
        player.PlayAtOnce(motion);
        constexpr int kSteps = 20;
        for (int step = 0; step < kSteps; ++step)
            player.Advance(at / kSteps);
        player.Hold();
        bool comesBack = true;
        if (motion.comesBack == Motion::Return::Motion)
            player.Play(*character->FindMotion(motion.returnMotion));
        else if (motion.comesBack == Motion::Return::Blend || !next)
            player.Settle();
        else
            comesBack = false;
        if (!comesBack)
            player.Play(*next);
        Watch watch(*character);
        double left = 0.5;
        for (double time = 0; left > 0; time += kFrame) {
            player.Advance(kFrame);
            if (comesBack && player.HasEnded()) {
                comesBack = false;
                if (next)
                    player.Play(*next);
            }
            if (!comesBack)
                left -= kFrame;
            const QString fault = watch.Look(player.Frames());
            QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("%1, left at %2 s, into %3, %4 s later: %5")
                                                     .arg(motion.name)
                                                     .arg(at)
                                                     .arg(next ? next->name : QStringLiteral("rest"))
                                                     .arg(time)
                                                     .arg(fault)));
        }
    }

    QMap<QString, std::shared_ptr<const CharacterData>> m_characters;
};

QTEST_GUILESS_MAIN(TestBlends)
#include "TestBlends.moc"
