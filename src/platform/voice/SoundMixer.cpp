#include "platform/voice/SoundMixer.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace platform {

namespace {

constexpr qint64 kFadeFrames = kSoundRate * 30 / 1000;
constexpr qint64 kNever = -1;

} // namespace

void SoundMixer::Add(std::shared_ptr<const Sound> sound, std::shared_ptr<Link> link, qint64 frame)
{
    const qint64 begins = std::max(frame, m_mixed);
    const qint64 ends = begins + sound->samples.size() / 2;
    m_voices.push_back({ std::move(sound), std::move(link), begins, ends, kNever });
}

void SoundMixer::Mix(qint16 *samples, qint64 frames)
{
    m_sum.assign(std::size_t(frames), 0);
    for (Voice &voice : m_voices)
        MixVoice(voice, frames);
    for (qint64 frame = 0; frame < frames; ++frame)
        samples[frame] = qint16(std::clamp<int>(m_sum[std::size_t(frame)], std::numeric_limits<qint16>::min(),
                                                std::numeric_limits<qint16>::max()));
    m_mixed += frames;
}

void SoundMixer::MixVoice(Voice &voice, qint64 frames)
{
    if (voice.fadesAt == kNever && voice.link->fade) {
        voice.fadesAt = m_mixed;
        // What has not begun is never heard.
        const qint64 faded = voice.begins >= m_mixed ? m_mixed : m_mixed + kFadeFrames;
        voice.ends = std::min(voice.ends, faded);
    }
    const qint64 first = std::max(voice.begins, m_mixed);
    const qint64 last = std::min(voice.ends, m_mixed + frames);
    for (qint64 frame = first; frame < last; ++frame) {
        int sample = qFromLittleEndian<qint16>(voice.sound->samples.constData() + (frame - voice.begins) * 2);
        if (voice.fadesAt != kNever)
            sample = int(sample * (kFadeFrames - (frame - voice.fadesAt)) / kFadeFrames);
        m_sum[std::size_t(frame - m_mixed)] += sample;
    }
}

void SoundMixer::Heard(qint64 frame)
{
    std::erase_if(m_voices, [frame](const Voice &voice) {
        if (voice.ends > frame)
            return false;
        voice.link->over = true;
        return true;
    });
}

void SoundMixer::Drop()
{
    for (const Voice &voice : m_voices)
        voice.link->over = true;
    m_voices.clear();
    m_mixed = 0;
}

} // namespace platform
