#include "platform/agent/MotionPlayer.h"

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr double kSettleTime = 0.35;
constexpr double kMouthBlend = 0.05;
constexpr std::size_t kMostAccents = 2;
// How long a movement that is cut off runs on, and the most that it may bring.
constexpr double kDriftTime = 0.04;
constexpr double kFastestDrift = 700; // degrees or units per second
constexpr double kLatestCue = 0.25;
// What is left of its width when a part turns over to its other side.
constexpr double kTurningOver = 0.45;

// Scales of a part that faces the other way afterwards. It narrows, turns over in the middle, where drawings
// are changed as well, and widens; a way through nothing would show it as a line.
double TurnedOver(double from, double to, double weight)
{
    const double width = std::abs(1 + from) * (1 - weight) + std::abs(1 + to) * weight;
    const double narrowing = kTurningOver + (1 - kTurningOver) * std::abs(2 * weight - 1);
    return std::copysign(width * narrowing, weight < 0.5 ? 1 + from : 1 + to) - 1;
}

} // namespace

MotionPlayer::MotionPlayer(std::shared_ptr<const CharacterData> character)
    : m_character(std::move(character)), m_from(m_character->parts.size()),
      m_drift(m_character->parts.size() * kChanges, 0.0), m_target(m_character->parts.size()),
      m_body(m_character->parts.size()), m_speed(m_drift), m_mouthFrom(m_drift), m_mouthNow(m_drift),
      m_springs(*m_character), m_shown(m_character->parts.size())
{
    Advance(0);
}

void MotionPlayer::Reset()
{
    Begin(nullptr, 0);
    m_accents.clear();
    m_blinkTime.reset();
    m_mouth.reset();
    m_mouthStill = true;
    std::fill(m_mouthNow.begin(), m_mouthNow.end(), 0.0);
    m_springs.Reset();
    Advance(0);
}

void MotionPlayer::Play(const Motion &motion)
{
    Begin(&motion, motion.blend);
}

void MotionPlayer::PlayAtOnce(const Motion &motion)
{
    Begin(&motion, 0);
    m_springs.Reset();
    Advance(0);
}

void MotionPlayer::Settle()
{
    Begin(nullptr, kSettleTime);
}

void MotionPlayer::Begin(const Motion *motion, double blend)
{
    m_motion = motion;
    m_time = 0;
    m_played = 0;
    m_told = 0;
    m_since = 0;
    m_blend = blend;
    m_flying = false;
    m_held = false;
    m_from = m_body;
    for (std::size_t index = 0; index < m_drift.size(); ++index) {
        const auto change = static_cast<Change>(index % kChanges);
        const bool runsOn = change == Change::Turn || change == Change::X || change == Change::Y;
        m_drift[index] = runsOn ? std::clamp(m_speed[index], -kFastestDrift, kFastestDrift) : 0;
    }
}

bool MotionPlayer::HasEnded() const
{
    if (m_since < m_blend)
        return false;
    if (!m_motion)
        return true;
    if (m_motion->aloft)
        return m_flying;
    return !m_motion->loop && m_time >= m_motion->length;
}

std::vector<MotionPlayer::DueCue> MotionPlayer::TakeCues(double ahead)
{
    std::vector<DueCue> due;
    if (!m_motion || m_held)
        return due;
    const double from = std::max(m_told, m_played - kLatestCue);
    const double to = m_played + ahead;
    const std::optional<Stretch> repeated = m_motion->aloft ? m_motion->aloft : m_motion->loop;
    for (const SoundCue &cue : m_motion->sounds) {
        if (!repeated || cue.at < repeated->from) {
            if (cue.at >= from && cue.at < to)
                due.push_back({ &cue, cue.at - m_played });
        } else if (cue.at < repeated->to) {
            const double pass = repeated->to - repeated->from;
            const double passed = std::max(0.0, std::ceil((from - cue.at) / pass));
            for (double at = cue.at + passed * pass; at < to; at += pass)
                due.push_back({ &cue, at - m_played });
        }
    }
    std::stable_sort(due.begin(), due.end(),
                     [](const DueCue &left, const DueCue &right) { return left.delay < right.delay; });
    m_told = std::max(m_told, to);
    return due;
}

void MotionPlayer::Blink()
{
    if (EyesAreAtRest())
        m_blinkTime = 0;
}

bool MotionPlayer::EyesAreAtRest() const
{
    return std::all_of(
        m_character->blink.swaps.begin(), m_character->blink.swaps.end(),
        [this](const SwapCurve &curve) { return m_body.swaps[std::size_t(curve.part)] == Pose::kAtRest; });
}

void MotionPlayer::Accent(std::size_t which)
{
    if (m_accents.size() < kMostAccents && which < m_character->accents.size())
        m_accents.push_back({ &m_character->accents[which], 0, m_motion ? &m_motion->still : nullptr });
}

void MotionPlayer::ShowMouth(std::optional<Mouth> mouth)
{
    if (mouth == m_mouth)
        return;
    m_mouth = mouth;
    m_mouthSince = 0;
    m_mouthStill = false;
    m_mouthFrom = m_mouthNow;
}

void MotionPlayer::Advance(double seconds, QPointF carried)
{
    AdvanceTime(seconds);
    ComputeBody(seconds);

    m_shown = m_body;
    Lay({ &m_character->breath, m_breathTime, nullptr });
    for (const Overlay &accent : m_accents)
        Lay(accent);
    if (m_blinkTime)
        Lay({ &m_character->blink, *m_blinkTime, nullptr });
    LayMouth();

    ComputeFrames(*m_character, m_shown, m_springs.Turns(), m_frames);
    if (seconds > 0) {
        m_springs.Advance(seconds, m_frames, carried);
        ComputeFrames(*m_character, m_shown, m_springs.Turns(), m_frames);
    }
}

void MotionPlayer::AdvanceTime(double seconds)
{
    m_since += seconds;
    m_breathTime = std::fmod(m_breathTime + seconds, m_character->breath.length);
    m_mouthSince += seconds;
    if (m_blinkTime && (*m_blinkTime += seconds) >= m_character->blink.length)
        m_blinkTime.reset();
    for (Overlay &accent : m_accents)
        accent.time += seconds;
    std::erase_if(m_accents, [](const Overlay &accent) { return accent.time >= accent.motion->length; });
    if (!m_motion || m_held)
        return;
    m_time += seconds;
    m_played += seconds;
    const std::optional<Stretch> repeated = m_motion->aloft ? m_motion->aloft : m_motion->loop;
    if (!repeated) {
        m_time = std::min(m_time, m_motion->length);
        return;
    }
    m_flying = m_flying || (m_motion->aloft && m_time >= repeated->from);
    if (m_time >= repeated->to)
        m_time = repeated->from + std::fmod(m_time - repeated->from, repeated->to - repeated->from);
}

void MotionPlayer::ComputeBody(double seconds)
{
    const std::vector<double> before = m_body.numbers;
    if (m_motion) {
        PoseAt(*m_motion, m_time, m_target);
    } else {
        std::fill(m_target.numbers.begin(), m_target.numbers.end(), 0.0);
        std::fill(m_target.swaps.begin(), m_target.swaps.end(), Pose::kAtRest);
    }
    m_body = m_target;
    if (m_since < m_blend) {
        const double weight = Eased(Ease::InOut, m_since / m_blend);
        const double runOn = kDriftTime * (1 - std::exp(-m_since / kDriftTime));
        for (std::size_t index = 0; index < m_body.numbers.size(); ++index) {
            const double left = m_from.numbers[index] + m_drift[index] * runOn;
            const double to = m_target.numbers[index];
            const auto change = static_cast<Change>(index % kChanges);
            const bool scales = change == Change::ScaleX || change == Change::ScaleY;
            const bool turnsOver = scales && (1 + left) * (1 + to) < 0;
            m_body.numbers[index] = turnsOver ? TurnedOver(left, to, weight) : left + (to - left) * weight;
        }
        if (m_since < m_blend / 2) {
            // A hand keeps its shape through the first half, unless the motion has changed it already.
            m_body.swaps = m_from.swaps;
            if (m_motion) {
                for (const SwapCurve &curve : m_motion->swaps) {
                    const std::size_t part = std::size_t(curve.part);
                    if (m_target.swaps[part] != VariantAt(curve, 0))
                        m_body.swaps[part] = m_target.swaps[part];
                }
            }
        }
    }
    if (seconds > 0) {
        for (std::size_t index = 0; index < before.size(); ++index)
            m_speed[index] = (m_body.numbers[index] - before[index]) / seconds;
    }
}

void MotionPlayer::Lay(const Overlay &overlay)
{
    for (const Curve &curve : overlay.motion->curves) {
        const bool still = overlay.still && std::find(overlay.still->begin(), overlay.still->end(),
                                                      curve.part) != overlay.still->end();
        if (!still)
            m_shown.At(curve.part, curve.change) += ValueAt(curve, overlay.time);
    }
    for (const SwapCurve &curve : overlay.motion->swaps) {
        // What the motion itself shows goes first: shut eyes stay shut.
        std::int16_t &shown = m_shown.swaps[std::size_t(curve.part)];
        if (shown == Pose::kAtRest)
            shown = VariantAt(curve, overlay.time);
    }
}

void MotionPlayer::LayMouth()
{
    if (!m_mouthStill) {
        const double weight = Eased(Ease::InOut, std::clamp(m_mouthSince / kMouthBlend, 0.0, 1.0));
        for (std::size_t index = 0; index < m_mouthNow.size(); ++index)
            m_mouthNow[index] = m_mouthFrom[index] * (1 - weight);
        if (m_mouth) {
            for (const auto &number : m_character->mouths[std::size_t(*m_mouth)].numbers)
                m_mouthNow[Pose::Index(number.part, number.change)] += number.value * weight;
        }
        m_mouthStill = weight >= 1;
    }
    if (m_mouth || !m_mouthStill) {
        for (std::size_t index = 0; index < m_mouthNow.size(); ++index)
            m_shown.numbers[index] += m_mouthNow[index];
    }
    if (m_mouth) {
        for (const auto &swap : m_character->mouths[std::size_t(*m_mouth)].swaps)
            m_shown.swaps[std::size_t(swap.part)] = std::int16_t(swap.variant);
    }
}

bool MotionPlayer::IsMoving() const
{
    const bool repeats = m_motion && !m_held && (m_motion->loop || m_motion->aloft);
    return repeats || (!HasEnded() && !m_held) || m_since < m_blend || m_blinkTime || !m_accents.empty() ||
           m_mouth || !m_mouthStill || m_springs.AreLively();
}

} // namespace platform
