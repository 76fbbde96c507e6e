#pragma once

#include "platform/voice/SoundEffects.h"

#include <atomic>
#include <memory>
#include <vector>

namespace platform {

// Adds up effects into one stream of samples. Frames are counted from the first one that was mixed. Knows no
// device and no clock.
class SoundMixer {
public:
    // What one effect and whoever asked for it share, from thread to thread.
    struct Link {
        std::atomic<bool> fade{ false }; // set by the asker
        std::atomic<bool> over{ false }; // set when it has been heard
    };

    // Lets `sound` begin at `frame`, or with the next one mixed when that has gone by.
    void Add(std::shared_ptr<const Sound> sound, std::shared_ptr<Link> link, qint64 frame);
    // Writes the next `frames` samples. What is too loud together is held at the largest sample.
    void Mix(qint16 *samples, qint64 frames);
    // Marks as over what ends before `frame`, up to which the device has played.
    void Heard(qint64 frame);
    // Marks everything as over and counts from 0 again.
    void Drop();
    bool IsEmpty() const { return m_voices.empty(); }

private:
    struct Voice {
        std::shared_ptr<const Sound> sound;
        std::shared_ptr<Link> link;
        qint64 begins;
        qint64 ends;
        qint64 fadesAt; // no frame until it fades
    };
    void MixVoice(Voice &voice, qint64 frames);

    std::vector<Voice> m_voices;
    std::vector<int> m_sum;
    qint64 m_mixed = 0;
};

} // namespace platform
