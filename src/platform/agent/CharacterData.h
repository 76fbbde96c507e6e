#pragma once

#include "platform/voice/SoundEffects.h"
#include "platform/voice/Voice.h"

#include <QByteArray>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QString>

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <vector>

// A character as its file describes it: the parts of the body, and how they move. All of it is checked when
// it is read, so that whoever plays a motion need not ask whether an index is good.
namespace platform {

// The side of the square that every character is drawn in.
constexpr double kDrawingSize = 256.0;

// What can be changed of a part, besides the variant of it that is seen.
enum class Change { Turn, X, Y, ScaleX, ScaleY, Fade };
constexpr int kChanges = 6;

// How a value travels to a key from the one before.
enum class Ease { InOut, Linear, In, Out, Back, Bounce, Step };

// A spring that lets a part trail behind whatever carries it.
struct Lag {
    double swing = 1;
    double stiffness = 60; // 1/s²
    double damping = 7;    // 1/s
    double limit = 30;     // degrees
    QPointF reach;         // from the pivot to the middle of what swings, in drawing units, never null
};

struct Variant {
    QString name;    // empty for a part that has only one
    QString drawing; // the group in the drawing; empty when nothing is drawn
};

struct Part {
    QString name;
    int parent = -1; // index of the part that carries it; -1 for the root, which is the first part
    QPointF pivot;
    bool hidden = false;
    std::vector<Variant> variants; // at least one; the first is seen at rest
    std::optional<Lag> lag;
};

struct Key {
    double at = 0; // seconds
    double value = 0;
    Ease ease = Ease::InOut;
};

struct Curve {
    int part = 0;
    Change change = Change::Turn;
    std::vector<Key> keys; // at least one, in order of time
};

struct SwapKey {
    double at = 0; // seconds
    int variant = 0;
};

struct SwapCurve {
    int part = 0;
    std::vector<SwapKey> keys; // at least one, in order of time
};

struct Stretch {
    double from = 0; // seconds
    double to = 0;
};

// What is to be heard when a motion has come to this second.
struct SoundCue {
    double at = 0; // seconds
    QString name;
    std::shared_ptr<const Sound> sound; // null when the character was read without its sounds
};

struct Motion {
    enum class Return { None, Blend, Motion };

    QString name;
    double length = 1;   // seconds
    double blend = 0.2;  // seconds from whatever pose came before
    bool speaks = false; // whether the last pose may be spoken from
    Return comesBack = Return::Blend;
    QString returnMotion;         // for Return::Motion, a motion of the same character
    std::optional<Stretch> loop;  // repeated until the motion is left
    std::optional<Stretch> aloft; // of a flight: repeated while the figure slides
    std::vector<int> still;       // parts that no accent moves while this is held, such as a hand on a book
    std::vector<Curve> curves;
    std::vector<SwapCurve> swaps;
    std::vector<SoundCue> sounds; // in order of time
};

struct MouthPose {
    struct Number {
        int part;
        Change change;
        double value;
    };
    struct Swap {
        int part;
        int variant;
    };
    std::vector<Number> numbers;
    std::vector<Swap> swaps;
};

constexpr std::size_t kMouths = 10;
constexpr std::size_t kIdleLevels = 3;

struct CharacterData {
    QString name;
    QSize size;         // the designed size, in screen units
    QPointF mouthPoint; // in drawing units
    QRectF face;        // likewise
    VoiceSettings voice;
    QByteArray drawing;                    // the SVG
    std::vector<Part> parts;               // in drawing order, back to front
    std::vector<int> carriersFirst;        // the indexes of the parts, every part behind its parent
    std::array<MouthPose, kMouths> mouths; // by Mouth
    Motion blink;
    Motion breath;
    std::vector<Motion> accents;
    std::array<std::vector<QString>, kIdleLevels> idle;
    std::map<QString, Motion> motions; // by name in lower case

    // In any letter case; null when there is none.
    const Motion *FindMotion(const QString &motion) const
    {
        const auto found = motions.find(motion.toLower());
        return found == motions.end() ? nullptr : &found->second;
    }
};

} // namespace platform
