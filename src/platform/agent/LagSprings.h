#pragma once

#include "platform/agent/Pose.h"

namespace platform {

// The springs of a body: hat, beard, mist, tail and the like, which trail behind whatever carries them. Each
// one is a pendulum in the frame of its carrier, thrown by the carrier's turning and by the acceleration of
// its pivot.
class LagSprings {
public:
    explicit LagSprings(const CharacterData &character);

    // At rest, and without memory of where the body was.
    void Reset();
    // Forgets where the body was, so that a jump throws nothing.
    void ForgetPlace();

    // `frames` are those of the pose with the present Turns(); `carried` is where the figure's square itself
    // has been moved to, in drawing units. Stable for steps of any length.
    void Advance(double seconds, const std::vector<PartFrame> &frames, QPointF carried);

    // Degrees to add to the turns of the pose, for every part.
    const std::vector<double> &Turns() const { return m_turns; }
    // Whether something still swings so that it is worth a full frame rate.
    bool AreLively() const;

private:
    struct Spring {
        int part = 0;
        double angle = 0; // degrees
        double speed = 0; // degrees per second
        bool placed = false;
        QPointF pivot; // in the figure's square
        double carrierAngle = 0;
        bool moved = false;
        QPointF pivotSpeed;
        double carrierSpeed = 0;
    };
    double Thrown(Spring &spring, double seconds, const std::vector<PartFrame> &frames,
                  QPointF carried) const;

    const CharacterData &m_character;
    std::vector<Spring> m_springs;
    std::vector<double> m_turns;
};

} // namespace platform
