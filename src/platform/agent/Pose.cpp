#include "platform/agent/Pose.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform {

namespace {

double Bounced(double passed)
{
    constexpr double kHeight = 7.5625;
    constexpr double kPart = 2.75;
    if (passed < 1 / kPart)
        return kHeight * passed * passed;
    if (passed < 2 / kPart) {
        passed -= 1.5 / kPart;
        return kHeight * passed * passed + 0.75;
    }
    if (passed < 2.5 / kPart) {
        passed -= 2.25 / kPart;
        return kHeight * passed * passed + 0.9375;
    }
    passed -= 2.625 / kPart;
    return kHeight * passed * passed + 0.984375;
}

Affine LocalPlace(const Part &part, const Pose &pose, int index, double turn)
{
    const double angle = (pose.At(index, Change::Turn) + turn) * std::numbers::pi / 180;
    const double cosine = std::cos(angle);
    const double sine = std::sin(angle);
    const double scaleX = 1 + pose.At(index, Change::ScaleX);
    const double scaleY = 1 + pose.At(index, Change::ScaleY);
    Affine place{ cosine * scaleX, sine * scaleX, -sine * scaleY, cosine * scaleY, 0, 0 };
    const QPointF turned = place.Map(part.pivot);
    place.e = part.pivot.x() + pose.At(index, Change::X) - turned.x();
    place.f = part.pivot.y() + pose.At(index, Change::Y) - turned.y();
    return place;
}

} // namespace

double Eased(Ease ease, double passed)
{
    const double left = 1 - passed;
    switch (ease) {
    case Ease::InOut:
        return passed * passed * (3 - 2 * passed);
    case Ease::Linear:
        return passed;
    case Ease::In:
        return passed * passed;
    case Ease::Out:
        return 1 - left * left;
    case Ease::Back: {
        constexpr double kOvershoot = 1.70158;
        return 1 - left * left * ((kOvershoot + 1) * left - kOvershoot);
    }
    case Ease::Bounce:
        return Bounced(passed);
    case Ease::Step:
        return passed < 1 ? 0 : 1;
    }
    return passed;
}

double ValueAt(const Curve &curve, double at)
{
    const auto next = std::upper_bound(curve.keys.begin(), curve.keys.end(), at,
                                       [](double time, const Key &key) { return time < key.at; });
    if (next == curve.keys.begin())
        return next->value;
    const auto before = std::prev(next);
    if (next == curve.keys.end())
        return before->value;
    const double passed = (at - before->at) / (next->at - before->at);
    return before->value + (next->value - before->value) * Eased(next->ease, passed);
}

std::int16_t VariantAt(const SwapCurve &curve, double at)
{
    const auto next = std::upper_bound(curve.keys.begin(), curve.keys.end(), at,
                                       [](double time, const SwapKey &key) { return time < key.at; });
    return next == curve.keys.begin() ? Pose::kAtRest : std::int16_t(std::prev(next)->variant);
}

void PoseAt(const Motion &motion, double at, Pose &pose)
{
    std::fill(pose.numbers.begin(), pose.numbers.end(), 0.0);
    std::fill(pose.swaps.begin(), pose.swaps.end(), Pose::kAtRest);
    for (const Curve &curve : motion.curves)
        pose.At(curve.part, curve.change) = ValueAt(curve, at);
    for (const SwapCurve &curve : motion.swaps)
        pose.swaps[std::size_t(curve.part)] = VariantAt(curve, at);
}

void ComputeFrames(const CharacterData &character, const Pose &pose, const std::vector<double> &turns,
                   std::vector<PartFrame> &frames)
{
    frames.resize(character.parts.size());
    for (const int index : character.carriersFirst) {
        const Part &part = character.parts[std::size_t(index)];
        PartFrame &frame = frames[std::size_t(index)];
        const double seen = (part.hidden ? 0 : 1) + pose.At(index, Change::Fade);
        frame.place = LocalPlace(part, pose, index, turns[std::size_t(index)]);
        frame.opacity = std::clamp(seen, 0.0, 1.0);
        if (part.parent >= 0) {
            const PartFrame &carrier = frames[std::size_t(part.parent)];
            frame.place = carrier.place.Over(frame.place);
            frame.opacity *= carrier.opacity;
        }
    }
}

} // namespace platform
