#pragma once

#include "platform/agent/CharacterData.h"

#include <cstdint>
#include <vector>

namespace platform {

// A flat map of the plane: (x, y) goes to (a x + c y + e, b x + d y + f).
struct Affine {
    double a = 1, b = 0, c = 0, d = 1, e = 0, f = 0;

    QPointF Map(QPointF point) const
    {
        return QPointF(a * point.x() + c * point.y() + e, b * point.x() + d * point.y() + f);
    }
    // First `inner`, then this.
    Affine Over(const Affine &inner) const
    {
        return { a * inner.a + c * inner.b, b * inner.a + d * inner.b,     a * inner.c + c * inner.d,
                 b * inner.c + d * inner.d, a * inner.e + c * inner.f + e, b * inner.e + d * inner.f + f };
    }
    friend bool operator==(const Affine &, const Affine &) = default;
};

// Where every part of a body stands at one moment. At rest all numbers are 0 and all swaps kAtRest.
struct Pose {
    static constexpr std::int16_t kAtRest = 0;

    explicit Pose(std::size_t parts = 0) : numbers(parts * kChanges, 0.0), swaps(parts, kAtRest) {}

    double &At(int part, Change change) { return numbers[Index(part, change)]; }
    double At(int part, Change change) const { return numbers[Index(part, change)]; }
    static std::size_t Index(int part, Change change)
    {
        return std::size_t(part) * kChanges + std::size_t(change);
    }

    std::vector<double> numbers;     // by part and change
    std::vector<std::int16_t> swaps; // index of the variant seen, by part
};

// How a part is drawn.
struct PartFrame {
    Affine place;       // from the drawing to the figure's square
    double opacity = 1; // 0 is unseen
};

// The frames of all parts; `turns` are degrees added to the turns of the pose, one for each part.
void ComputeFrames(const CharacterData &character, const Pose &pose, const std::vector<double> &turns,
                   std::vector<PartFrame> &frames);

// What a curve says at a time; before the first key and behind the last its value stands still.
double ValueAt(const Curve &curve, double at);
// The variant at a time; the resting one before the first key.
std::int16_t VariantAt(const SwapCurve &curve, double at);
// How far on its way a value is, from 0 to 1, when the part `passed` of the time, 0 to 1, has passed. Some
// eases go beyond 1 on the way.
double Eased(Ease ease, double passed);

// The pose of a motion at a time; channels without a curve are at rest.
void PoseAt(const Motion &motion, double at, Pose &pose);

} // namespace platform
