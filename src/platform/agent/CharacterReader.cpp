#include "platform/agent/CharacterReader.h"

#include "platform/agent/DescriptionNode.h"
#include "platform/agent/DrawingCheck.h"

#include <QHash>
#include <QSet>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr qsizetype kMostParts = 400;
constexpr qsizetype kMostVariants = 64;
constexpr qsizetype kMostMotions = 400;
constexpr qsizetype kMostChannels = 1000;
constexpr qsizetype kMostKeys = 400;
constexpr qsizetype kMostAccents = 32;
constexpr qsizetype kMostSounds = 100;
constexpr qsizetype kMostCues = 60;
// One sound, and all of a character together: many times what ours bring.
constexpr qsizetype kLongestSound = 6 * kSoundRate * 2; // bytes
constexpr qsizetype kLargestSounds = 8 * 1024 * 1024;
constexpr double kFarthest = 1024;                                 // from the square's corner
constexpr double kLargestArea = 100 * kDrawingSize * kDrawingSize; // each unit of it costs memory
constexpr double kLongestMotion = 30;
constexpr double kShortestMotion = 0.05;
constexpr double kShortestStretch = 0.05;

// A lever shorter than this would be thrown about by every tremble.
constexpr double kShortestReach = 14;

using Node = DescriptionNode;

struct EaseName {
    const char *name;
    Ease ease;
};
constexpr EaseName kEases[] = { { "inout", Ease::InOut }, { "linear", Ease::Linear },
                                { "in", Ease::In },       { "out", Ease::Out },
                                { "back", Ease::Back },   { "bounce", Ease::Bounce },
                                { "step", Ease::Step } };

struct ChangeName {
    const char *name;
    Change change;
};
constexpr ChangeName kChangeNames[] = { { "turn", Change::Turn }, { "x", Change::X },
                                        { "y", Change::Y },       { "sx", Change::ScaleX },
                                        { "sy", Change::ScaleY }, { "fade", Change::Fade } };

class Reader {
public:
    explicit Reader(const QByteArray &drawing) { m_data.drawing = drawing; }

    CharacterData Read(const QCborMap &figure, const QCborMap &motions, const QCborMap *sounds)
    {
        // A malformed drawing is refused here, before anything asks for a part of it.
        CheckDrawing(m_data.drawing);
        if (!m_renderer.load(m_data.drawing))
            throw CharacterFault{ QStringLiteral("the drawing"), QString(), QStringLiteral("is not an SVG") };
        ReadFigure(Node(QStringLiteral("figure.json"), QString(), figure));
        if (sounds)
            ReadSounds(*sounds);
        m_silent = !sounds;
        ReadMotions(motions);
        CheckReferences(Node(QStringLiteral("figure.json"), QString(), figure));
        return std::move(m_data);
    }

private:
    void ReadFigure(const Node &figure)
    {
        figure.AllowOnly({ "name", "size", "mouth_point", "face", "voice", "parts", "mouths", "blink",
                           "breath", "accents", "idle" });
        m_data.name = figure.Needed("name").String();
        const Node size = figure.Needed("size");
        size.Array(2, 2);
        m_data.size = QSize(int(size.Entry(0).Number(16, 1024)), int(size.Entry(1).Number(16, 1024)));
        m_data.mouthPoint = figure.Needed("mouth_point").Point();
        const Node face = figure.Needed("face");
        face.Array(4, 4);
        m_data.face = QRectF(face.Entry(0).Number(), face.Entry(1).Number(),
                             face.Entry(2).Number(0, kDrawingSize), face.Entry(3).Number(0, kDrawingSize));
        ReadVoice(figure.Needed("voice"));
        ReadParts(figure.Needed("parts"));
        ReadMouths(figure.Needed("mouths"));
        m_data.blink = ReadOverlay(figure.Needed("blink"));
        m_data.breath = ReadOverlay(figure.Needed("breath"));
        const Node accents = figure.Needed("accents");
        const qsizetype count = accents.Array(0, kMostAccents).size();
        for (qsizetype index = 0; index < count; ++index)
            m_data.accents.push_back(ReadOverlay(accents.Entry(index)));
        const Node idle = figure.Needed("idle");
        idle.Array(kIdleLevels, kIdleLevels);
        for (std::size_t level = 0; level < kIdleLevels; ++level) {
            const Node names = idle.Entry(qsizetype(level));
            const qsizetype motions = names.Array(0, kMostMotions).size();
            for (qsizetype index = 0; index < motions; ++index)
                m_data.idle[level].push_back(names.Entry(index).String());
        }
    }

    void ReadVoice(const Node &voice)
    {
        voice.AllowOnly({ "voice", "stretch", "pitch", "rate", "treble", "foreign" });
        VoiceSettings &settings = m_data.voice;
        settings.speaker = m_data.name;
        settings.voice = voice.Needed("voice").String();
        ReadSoundOf(voice, settings);
        const Node foreign = voice.Member("foreign");
        if (foreign.IsMissing())
            return;
        foreign.AllowOnly({ "variant", "stretch", "pitch", "rate", "treble" });
        const Node variant = foreign.Member("variant");
        if (!variant.IsMissing())
            settings.foreign.variant = variant.String();
        ReadSoundOf(foreign, settings.foreign);
    }

    // Of either kind of voice. What is left out stays as it is.
    template <class Settings>
    static void ReadSoundOf(const Node &voice, Settings &settings)
    {
        const auto read = [&voice](const char *name, double &value, double least, double most) {
            const Node member = voice.Member(QLatin1String(name));
            if (!member.IsMissing())
                value = member.Number(least, most);
        };
        read("stretch", settings.stretch, 0.25, 4);
        read("pitch", settings.pitch, 0.25, 4);
        read("rate", settings.rate, 0.25, 4);
        read("treble", settings.treble, -30, 30);
    }

    void ReadParts(const Node &parts)
    {
        const qsizetype count = parts.Array(1, kMostParts).size();
        for (qsizetype index = 0; index < count; ++index)
            ReadPart(parts.Entry(index));
        const Node first = parts.Entry(0);
        first.Require(first.Member("parent").IsMissing(), QStringLiteral("is the root and has a parent"));
        for (qsizetype index = 1; index < count; ++index) {
            const Node parent = parts.Entry(index).Needed("parent");
            m_data.parts[std::size_t(index)].parent = PartNamed(parent, parent.String());
        }
        OrderParts(parts);
        for (Part &part : m_data.parts) {
            if (part.lag)
                part.lag->reach = ReachOf(part);
        }
    }

    void ReadPart(const Node &node)
    {
        node.AllowOnly({ "name", "parent", "pivot", "drawing", "variants", "hidden", "lag" });
        Part part;
        const Node name = node.Needed("name");
        part.name = name.String();
        name.Require(!part.name.isEmpty() && !part.name.contains(QLatin1Char('.')),
                     QStringLiteral("is not a name for a part"));
        name.Require(!m_partIndexes.contains(part.name), QStringLiteral("is the name of two parts"));
        part.pivot = node.Needed("pivot").Point();
        const Node hidden = node.Member("hidden");
        part.hidden = !hidden.IsMissing() && hidden.Bool();
        const Node variants = node.Member("variants");
        const Node drawing = node.Member("drawing");
        if (!variants.IsMissing()) {
            drawing.Require(drawing.IsMissing(), QStringLiteral("stands beside variants"));
            ReadVariants(variants, part);
        } else {
            const QString group = drawing.IsMissing() ? part.name : drawing.String();
            CheckGroup(drawing.IsMissing() ? name : drawing, group);
            part.variants.push_back({ QString(), group });
        }
        const Node lag = node.Member("lag");
        if (!lag.IsMissing()) {
            lag.AllowOnly({ "swing", "stiffness", "damping", "limit" });
            part.lag = Lag{ lag.Needed("swing").Number(0, 5),
                            lag.Needed("stiffness").Number(1, 1000),
                            lag.Needed("damping").Number(0, 100),
                            lag.Needed("limit").Number(0, 90),
                            {} };
        }
        m_partIndexes.insert(part.name, int(m_data.parts.size()));
        m_data.parts.push_back(std::move(part));
    }

    // The order of the members counts: the first variant is the one seen at rest.
    void ReadVariants(const Node &variants, Part &part)
    {
        const QStringList names = variants.Names(kMostVariants);
        variants.Require(!names.isEmpty(), QStringLiteral("is empty"));
        for (const QString &name : names) {
            const Node group = variants.Member(name);
            CheckGroup(group, group.String());
            part.variants.push_back({ name, group.String() });
        }
    }

    void CheckGroup(const Node &node, const QString &group)
    {
        if (group.isEmpty() || m_groups.contains(group))
            return;
        node.Require(m_renderer.elementExists(group),
                     QStringLiteral("names the group \"%1\", which is not in the drawing").arg(group));
        m_groups.insert(group);
        const QRectF bounds = m_renderer.boundsOnElement(group);
        m_area += bounds.width() * bounds.height();
        // Written so that what is not a number fails too.
        node.Require(bounds.left() >= -kFarthest && bounds.top() >= -kFarthest &&
                         bounds.right() <= kFarthest && bounds.bottom() <= kFarthest,
                     QStringLiteral("names the group \"%1\", which lies far away").arg(group));
        node.Require(m_area <= kLargestArea, QStringLiteral("makes the drawing too large"));
    }

    // Refuses cycles on the way.
    void OrderParts(const Node &parts)
    {
        const std::size_t count = m_data.parts.size();
        std::vector<bool> placed(count, false);
        while (m_data.carriersFirst.size() < count) {
            const std::size_t before = m_data.carriersFirst.size();
            for (std::size_t index = 0; index < count; ++index) {
                const int parent = m_data.parts[index].parent;
                if (placed[index] || (parent >= 0 && !placed[std::size_t(parent)]))
                    continue;
                placed[index] = true;
                m_data.carriersFirst.push_back(int(index));
            }
            if (m_data.carriersFirst.size() == before) {
                const auto stuck = std::find(placed.begin(), placed.end(), false) - placed.begin();
                parts.Entry(stuck).Fail(QStringLiteral("is carried by itself"));
            }
        }
    }

    QPointF ReachOf(const Part &part) const
    {
        QPointF reach;
        const QString &group = part.variants.front().drawing;
        if (!group.isEmpty()) {
            reach = m_renderer.boundsOnElement(group).center() - part.pivot;
        } else {
            const auto child = std::find_if(m_data.parts.begin(), m_data.parts.end(), [&](const Part &other) {
                return other.parent >= 0 && &m_data.parts[std::size_t(other.parent)] == &part &&
                       other.pivot != part.pivot;
            });
            if (child != m_data.parts.end())
                reach = child->pivot - part.pivot;
        }
        const double length = std::hypot(reach.x(), reach.y());
        if (!(length > 0.5) || !std::isfinite(length))
            return QPointF(0, kShortestReach);
        return length < kShortestReach ? reach * (kShortestReach / length) : reach;
    }

    int PartNamed(const Node &node, const QString &name) const
    {
        const auto found = m_partIndexes.constFind(name);
        node.Require(found != m_partIndexes.constEnd(),
                     QStringLiteral("names the unknown part \"%1\"").arg(name));
        return *found;
    }

    int VariantNamed(const Node &node, int part, const QString &name) const
    {
        const std::vector<Variant> &variants = m_data.parts[std::size_t(part)].variants;
        const auto found = std::find_if(variants.begin(), variants.end(),
                                        [&name](const Variant &variant) { return variant.name == name; });
        node.Require(found != variants.end() && !name.isEmpty(),
                     QStringLiteral("names the unknown variant \"%1\"").arg(name));
        return int(found - variants.begin());
    }

    struct Channel {
        int part;
        std::optional<Change> change; // none for a swap
    };
    Channel ChannelNamed(const Node &node, const QString &name) const
    {
        const qsizetype dot = name.indexOf(QLatin1Char('.'));
        node.Require(dot > 0, QStringLiteral("is not of the form part.what"));
        const int part = PartNamed(node, name.left(dot));
        const QString what = name.mid(dot + 1);
        if (what == QLatin1String("swap"))
            return { part, std::nullopt };
        const auto *found =
            std::find_if(std::begin(kChangeNames), std::end(kChangeNames),
                         [&what](const ChangeName &entry) { return what == QLatin1String(entry.name); });
        node.Require(found != std::end(kChangeNames),
                     QStringLiteral("ends in none of turn, x, y, sx, sy, fade, swap"));
        return { part, found->change };
    }

    void ReadMouths(const Node &mouths)
    {
        QStringList names;
        for (std::size_t index = 0; index < kMouths; ++index)
            names << MouthName(static_cast<Mouth>(index));
        mouths.AllowOnly(names);
        for (std::size_t index = 0; index < kMouths; ++index) {
            const Node mouth = mouths.Needed(names[qsizetype(index)]);
            MouthPose &pose = m_data.mouths[index];
            for (const QString &name : mouth.Names(kMostChannels)) {
                const Node value = mouth.Member(name);
                const Channel channel = ChannelNamed(value, name);
                if (channel.change)
                    pose.numbers.push_back({ channel.part, *channel.change, value.Number() });
                else
                    pose.swaps.push_back({ channel.part, VariantNamed(value, channel.part, value.String()) });
            }
        }
    }

    Motion ReadOverlay(const Node &node) const
    {
        node.AllowOnly({ "length", "curves" });
        Motion motion;
        motion.comesBack = Motion::Return::None;
        ReadCourse(node, motion);
        return motion;
    }

    void ReadCourse(const Node &node, Motion &motion) const
    {
        motion.length = node.Needed("length").Number(kShortestMotion, kLongestMotion);
        const Node curves = node.Needed("curves");
        for (const QString &name : curves.Names(kMostChannels)) {
            const Node keys = curves.Member(name);
            const Channel channel = ChannelNamed(keys, name);
            if (channel.change)
                motion.curves.push_back(ReadCurve(keys, channel.part, *channel.change, motion.length));
            else
                motion.swaps.push_back(ReadSwaps(keys, channel.part, motion.length));
        }
    }

    Curve ReadCurve(const Node &keys, int part, Change change, double length) const
    {
        Curve curve{ part, change, {} };
        const qsizetype count = keys.Array(1, kMostKeys).size();
        for (qsizetype index = 0; index < count; ++index) {
            const Node entry = keys.Entry(index);
            const qsizetype fields = entry.Array(2, 3).size();
            Key key{ ReadTime(entry, length, curve.keys.empty() ? 0 : curve.keys.back().at),
                     entry.Entry(1).Number(), Ease::InOut };
            if (fields == 3) {
                const QString name = entry.Entry(2).String();
                const auto *found =
                    std::find_if(std::begin(kEases), std::end(kEases),
                                 [&name](const EaseName &ease) { return name == QLatin1String(ease.name); });
                entry.Require(found != std::end(kEases),
                              QStringLiteral("has the unknown ease \"%1\"").arg(name));
                key.ease = found->ease;
            }
            curve.keys.push_back(key);
        }
        return curve;
    }

    SwapCurve ReadSwaps(const Node &keys, int part, double length) const
    {
        SwapCurve curve{ part, {} };
        const qsizetype count = keys.Array(1, kMostKeys).size();
        for (qsizetype index = 0; index < count; ++index) {
            const Node entry = keys.Entry(index);
            entry.Array(2, 2);
            const double at = ReadTime(entry, length, curve.keys.empty() ? 0 : curve.keys.back().at);
            curve.keys.push_back({ at, VariantNamed(entry, part, entry.Entry(1).String()) });
        }
        return curve;
    }

    static double ReadTime(const Node &key, double length, double before)
    {
        const double at = key.Entry(0).Number(0, length);
        key.Require(at >= before, QStringLiteral("goes back in time"));
        return at;
    }

    void ReadSounds(const QCborMap &sounds)
    {
        const QStringList names = Node(QStringLiteral("sounds"), QString(), sounds).Names(kMostSounds);
        qsizetype all = 0;
        for (const QString &name : names) {
            const QCborValue value = sounds.value(name);
            const auto require = [&name](bool good, const char *problem) {
                if (!good)
                    throw CharacterFault{ QStringLiteral("sounds/%1.wav").arg(name), QString(),
                                          QLatin1String(problem), kBadSoundFile };
            };
            require(value.isByteArray(), "holds no samples");
            const QByteArray samples = value.toByteArray();
            require(!samples.isEmpty() && samples.size() % 2 == 0, "does not consist of 16-bit samples");
            require(samples.size() <= kLongestSound, "is too long");
            all += samples.size();
            require(all <= kLargestSounds, "is one sound too many");
            m_sounds.insert(name, std::make_shared<const Sound>(Sound{ samples }));
        }
    }

    std::vector<SoundCue> ReadCues(const Node &node, double length) const
    {
        std::vector<SoundCue> cues;
        const qsizetype count = node.Array(1, kMostCues).size();
        for (qsizetype index = 0; index < count; ++index) {
            const Node entry = node.Entry(index);
            entry.Array(2, 2);
            const double at = ReadTime(entry, length, cues.empty() ? 0 : cues.back().at);
            const Node name = entry.Entry(1);
            SoundCue cue{ at, name.String(), m_sounds.value(name.String()) };
            name.Require(m_silent || cue.sound,
                         QStringLiteral("names the unknown sound \"%1\"").arg(cue.name));
            cues.push_back(std::move(cue));
        }
        return cues;
    }

    void ReadMotions(const QCborMap &motions)
    {
        const QStringList names = Node(QStringLiteral("motions"), QString(), motions).Names(kMostMotions);
        for (const QString &name : names) {
            const Node node(QStringLiteral("motions/%1.json").arg(name), QString(), motions.value(name));
            const bool plain = std::all_of(name.begin(), name.end(), [](QChar letter) {
                return letter.unicode() < 128 && (letter.isLetterOrNumber() || letter == QLatin1Char('_'));
            });
            node.Require(!name.isEmpty() && plain, QStringLiteral("is not a name for a motion"));
            node.Require(m_data.motions.count(name.toLower()) == 0,
                         QStringLiteral("is there in two spellings"));
            m_data.motions.emplace(name.toLower(), ReadMotion(node, name));
        }
    }

    Motion ReadMotion(const Node &node, const QString &name) const
    {
        node.AllowOnly(
            { "length", "speaks", "return", "blend", "loop", "aloft", "still", "curves", "sounds" });
        Motion motion;
        motion.name = name;
        ReadCourse(node, motion);
        const Node speaks = node.Member("speaks");
        motion.speaks = !speaks.IsMissing() && speaks.Bool();
        const Node blend = node.Member("blend");
        if (!blend.IsMissing())
            motion.blend = blend.Number(0, 5);
        const QString comesBack = node.Needed("return").String();
        if (comesBack == QLatin1String("none")) {
            motion.comesBack = Motion::Return::None;
        } else if (comesBack == QLatin1String("blend")) {
            motion.comesBack = Motion::Return::Blend;
        } else {
            motion.comesBack = Motion::Return::Motion;
            motion.returnMotion = comesBack;
        }
        motion.loop = ReadStretch(node.Member("loop"), motion.length);
        motion.aloft = ReadStretch(node.Member("aloft"), motion.length);
        const Node still = node.Member("still");
        if (!still.IsMissing()) {
            const qsizetype count = still.Array(1, qsizetype(m_data.parts.size())).size();
            for (qsizetype index = 0; index < count; ++index)
                motion.still.push_back(PartNamed(still.Entry(index), still.Entry(index).String()));
        }
        const Node sounds = node.Member("sounds");
        if (!sounds.IsMissing())
            motion.sounds = ReadCues(sounds, motion.length);
        return motion;
    }

    static std::optional<Stretch> ReadStretch(const Node &node, double length)
    {
        if (node.IsMissing())
            return std::nullopt;
        node.Array(2, 2);
        const Stretch stretch{ node.Entry(0).Number(0, length), node.Entry(1).Number(0, length) };
        node.Require(stretch.to - stretch.from >= kShortestStretch, QStringLiteral("is too short a stretch"));
        return stretch;
    }

    // What can only be judged when all motions are known.
    void CheckReferences(const Node &figure) const
    {
        for (const auto &[key, motion] : m_data.motions) {
            if (motion.comesBack != Motion::Return::Motion)
                continue;
            const Motion *back = m_data.FindMotion(motion.returnMotion);
            const Node node(QStringLiteral("motions/%1.json").arg(motion.name), QStringLiteral("return"),
                            QCborValue());
            node.Require(back, QStringLiteral("names the unknown motion \"%1\"").arg(motion.returnMotion));
            node.Require(back->comesBack != Motion::Return::Motion && !back->loop,
                         QStringLiteral("names a motion that does not end at rest"));
        }
        for (std::size_t level = 0; level < kIdleLevels; ++level) {
            const Node names = figure.Needed("idle").Entry(qsizetype(level));
            for (std::size_t index = 0; index < m_data.idle[level].size(); ++index) {
                names.Entry(qsizetype(index))
                    .Require(m_data.FindMotion(m_data.idle[level][index]),
                             QStringLiteral("names an unknown motion"));
            }
        }
    }

    CharacterData m_data;
    QSvgRenderer m_renderer;
    QHash<QString, int> m_partIndexes;
    QSet<QString> m_groups; // of the drawing that parts are drawn with
    double m_area = 0;      // of all of them, in drawing units
    QHash<QString, std::shared_ptr<const Sound>> m_sounds;
    bool m_silent = true;
};

} // namespace

QString CharacterFault::Text() const
{
    QStringList words;
    if (!file.isEmpty())
        words << file + (key.isEmpty() ? QString() : QStringLiteral(":"));
    if (!key.isEmpty())
        words << key;
    words << problem;
    return words.join(QLatin1Char(' '));
}

CharacterData ReadCharacter(const QByteArray &drawing, const QCborMap &figure, const QCborMap &motions,
                            const QCborMap *sounds)
{
    return Reader(drawing).Read(figure, motions, sounds);
}

} // namespace platform
