#pragma once

#include "platform/media/ClipFile.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>

namespace platform {

// Reads a clip on a thread of its own, a few pictures ahead of what is taken. Whatever stands in the file, it
// ends sooner or later; what cannot be read is left out. Destroying it stops the reading.
//
// The members are for the thread that made it, and none of them waits.
class ClipReader {
public:
    // `fit` says how many pixels the pictures of a clip shall have, by the size that the clip has itself; it
    // is called on the reading thread.
    ClipReader(QString path, std::function<QSize(QSize)> fit);
    ~ClipReader();
    ClipReader(const ClipReader &) = delete;
    ClipReader &operator=(const ClipReader &) = delete;

    // The next picture if it is to be seen by `time`; none when it is not read yet or not due.
    std::optional<ClipFile::Frame> TakeDue(std::chrono::microseconds time);
    // Whether the sound has been read, which comes after the first picture. It is null when there is none.
    bool SoundIsKnown() const;
    std::shared_ptr<const Utterance> Sound() const;
    // When the last picture has been seen for its time; known once no picture is left to be taken.
    std::optional<std::chrono::microseconds> End() const;

private:
    void Read();
    bool Put(ClipFile::Frame picture); // waits for a free place; false when it shall stop

    const QString m_path;
    const std::function<QSize(QSize)> m_fit;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<ClipFile::Frame> m_pictures;
    std::shared_ptr<const Utterance> m_sound;
    bool m_soundIsKnown = false;
    std::optional<std::chrono::microseconds> m_end;
    std::atomic<bool> m_stop{ false };
    std::thread m_thread; // the last, so that it finds all the others
};

} // namespace platform
