#include "platform/agent/LagSprings.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace platform {

namespace {

// The stiffest spring that a file may have is stable with steps of this length.
constexpr double kStep = 0.004;
// A longer gap is a pause of the program, not a movement.
constexpr double kLongestAdvance = 0.25;
constexpr double kFastest = 2500; // degrees per second
// Breathing alone stirs the springs below this.
constexpr double kLively = 30; // degrees per second
constexpr double kDegrees = 180 / std::numbers::pi;

double Wrapped(double degrees)
{
    return std::remainder(degrees, 360.0);
}

} // namespace

LagSprings::LagSprings(const CharacterData &character)
    : m_character(character), m_turns(character.parts.size(), 0.0)
{
    for (const int index : character.carriersFirst) {
        const Part &part = character.parts[std::size_t(index)];
        if (part.lag && part.parent >= 0) {
            Spring spring;
            spring.part = index;
            m_springs.push_back(spring);
        }
    }
}

void LagSprings::Reset()
{
    for (Spring &spring : m_springs) {
        const int part = spring.part;
        spring = Spring();
        spring.part = part;
    }
    std::fill(m_turns.begin(), m_turns.end(), 0.0);
}

void LagSprings::ForgetPlace()
{
    for (Spring &spring : m_springs) {
        spring.placed = false;
        spring.moved = false;
    }
}

// The change of speed that the carrier's movement brings, in degrees per second.
double LagSprings::Thrown(Spring &spring, double seconds, const std::vector<PartFrame> &frames,
                          QPointF carried) const
{
    const Part &part = m_character.parts[std::size_t(spring.part)];
    const Affine &carrier = frames[std::size_t(part.parent)].place;
    const bool mirrored = carrier.a * carrier.d - carrier.b * carrier.c < 0;
    const QPointF pivot = carrier.Map(part.pivot) + carried;
    const double angle = std::atan2(carrier.b, carrier.a) * kDegrees;
    const QPointF pivotSpeed = (pivot - spring.pivot) / seconds;
    const double carrierSpeed = Wrapped(angle - spring.carrierAngle) / seconds;
    double thrown = 0;
    if (spring.placed && spring.moved) {
        // The reach keeps its length, or a part that is scaled to nothing would spin.
        const QPointF tip = carrier.Map(part.pivot + part.lag->reach) - carrier.Map(part.pivot);
        const double reach = std::hypot(part.lag->reach.x(), part.lag->reach.y());
        const double seen = std::max(std::hypot(tip.x(), tip.y()), 1e-6);
        const QPointF change = pivotSpeed - spring.pivotSpeed;
        const double across = (tip.x() * change.y() - tip.y() * change.x()) / seen;
        thrown = -(carrierSpeed - spring.carrierSpeed) - across / reach * kDegrees;
        thrown *= part.lag->swing * (mirrored ? -1 : 1);
    }
    spring.moved = spring.placed;
    spring.placed = true;
    spring.pivot = pivot;
    spring.carrierAngle = angle;
    spring.pivotSpeed = spring.moved ? pivotSpeed : QPointF();
    spring.carrierSpeed = spring.moved ? carrierSpeed : 0;
    return std::clamp(thrown, -kFastest, kFastest);
}

void LagSprings::Advance(double seconds, const std::vector<PartFrame> &frames, QPointF carried)
{
    if (!(seconds > 0))
        return;
    const double span = std::min(seconds, kLongestAdvance);
    const int steps = std::max(1, int(std::ceil(span / kStep)));
    const double step = span / steps;
    for (Spring &spring : m_springs) {
        const Lag &lag = *m_character.parts[std::size_t(spring.part)].lag;
        const double thrown = Thrown(spring, seconds, frames, carried) / steps;
        for (int count = 0; count < steps; ++count) {
            // Damping is taken at the end of the step, which cannot overshoot however strong it is.
            spring.speed =
                (spring.speed + thrown - lag.stiffness * spring.angle * step) / (1 + lag.damping * step);
            spring.speed = std::clamp(spring.speed, -kFastest, kFastest);
            spring.angle = std::clamp(spring.angle + spring.speed * step, -4 * lag.limit, 4 * lag.limit);
        }
        // A soft stop: the limit is neared and never reached.
        m_turns[std::size_t(spring.part)] =
            lag.limit > 0 ? lag.limit * std::tanh(spring.angle / lag.limit) : 0;
    }
}

bool LagSprings::AreLively() const
{
    return std::any_of(m_springs.begin(), m_springs.end(),
                       [](const Spring &spring) { return std::abs(spring.speed) > kLively; });
}

} // namespace platform
