#pragma once

#include "platform/agent/LagSprings.h"
#include "platform/agent/Pose.h"

#include <memory>
#include <optional>

namespace platform {

// Moves one body: plays a motion from whatever pose the body is in, lays breath, blinks, accents and the
// mouth over it, and lets the springs trail. Knows no window and no clock; Advance is told how much time has
// passed, in steps of any length.
class MotionPlayer {
public:
    explicit MotionPlayer(std::shared_ptr<const CharacterData> character);

    const CharacterData &Character() const { return *m_character; }

    // The rest pose at once; nothing plays.
    void Reset();
    // Begins `motion`, which belongs to the character, blending from the present pose.
    void Play(const Motion &motion);
    // Begins `motion` in its first pose, without a blend.
    void PlayAtOnce(const Motion &motion);
    // Eases back to rest.
    void Settle();

    // Stops the motion where it is; a later Play or Settle goes on from there.
    void Hold() { m_held = true; }

    // What plays or is held; null while the body settles or is at rest.
    const Motion *Current() const { return m_motion; }
    // Whether the last pose, the flying pose or, after Settle, rest has been reached. A loop never ends.
    bool HasEnded() const;

    // A cue of the motion that plays, and how far it lies ahead; less than 0 when it has just been passed.
    struct DueCue {
        const SoundCue *cue;
        double delay; // seconds
    };
    // The cues that are reached within the next `ahead` seconds, in order, each told once in each pass. What
    // was passed long ago, when the program stood still, is left out.
    std::vector<DueCue> TakeCues(double ahead);

    // Laid over whatever plays. A blink passes by while the eyes are not as they are at rest.
    void Blink();
    // One of the accents, by its index; passes by while there are two already.
    void Accent(std::size_t which);
    // The shape of the mouth, or the body's own.
    void ShowMouth(std::optional<Mouth> mouth);

    // `carried` is where the figure's square has been moved to, in drawing units; only its changes matter.
    void Advance(double seconds, QPointF carried = QPointF());
    // Lets the figure's square jump without throwing hat and beard.
    void ForgetPlace() { m_springs.ForgetPlace(); }

    // The body with everything that is laid over it, and how its parts are drawn.
    const Pose &Shown() const { return m_shown; }
    const std::vector<PartFrame> &Frames() const { return m_frames; }
    // Whether anything but the breath moves.
    bool IsMoving() const;

private:
    struct Overlay {
        const Motion *motion;
        double time;
        const std::vector<int> *still; // the parts that it leaves alone; null for none
    };
    void Begin(const Motion *motion, double blend);
    void AdvanceTime(double seconds);
    void ComputeBody(double seconds);
    void Lay(const Overlay &overlay);
    void LayMouth();
    bool EyesAreAtRest() const;

    std::shared_ptr<const CharacterData> m_character;

    const Motion *m_motion = nullptr;
    double m_time = 0;   // within the motion
    double m_played = 0; // the same without the jumps back of a loop
    double m_told = 0;   // how far cues have been told, on the same scale
    double m_since = 0;  // since the motion or the settling began
    double m_blend = 0;
    bool m_flying = false;
    bool m_held = false;
    Pose m_from;                 // where the blend began
    std::vector<double> m_drift; // and how fast it was moving
    Pose m_target;
    Pose m_body;
    std::vector<double> m_speed; // of the body's numbers, per second

    double m_breathTime = 0;
    std::optional<double> m_blinkTime;
    std::vector<Overlay> m_accents;
    std::optional<Mouth> m_mouth;
    double m_mouthSince = 0;
    bool m_mouthStill = true;
    std::vector<double> m_mouthFrom;
    std::vector<double> m_mouthNow;

    LagSprings m_springs;
    Pose m_shown;
    std::vector<PartFrame> m_frames;
};

} // namespace platform
