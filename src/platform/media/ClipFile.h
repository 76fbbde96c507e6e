#pragma once

#include "platform/voice/Voice.h"

#include <QImage>
#include <QSize>
#include <QString>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace platform {

// A film file as libav reads it, one use each: either its pictures one by one, or all of its sound. For one
// thread. `stop` is looked at while files are read; once it is true everything ends soon.
class ClipFile {
public:
    // Null when it is no file with pictures.
    static std::unique_ptr<ClipFile> Open(const QString &path, const std::atomic<bool> &stop);
    ~ClipFile();

    struct Frame {
        QImage image;
        std::chrono::microseconds at; // from the first one, growing from frame to frame
    };
    // The next picture, as large as `fit` makes of its own size; none at the end.
    std::optional<Frame> NextFrame(const std::function<QSize(QSize)> &fit);
    std::chrono::microseconds FrameLength() const;

    // The sound as it goes with the pictures, at 48,000 samples a second in two channels; null when there is
    // none.
    std::shared_ptr<const Utterance> AllSound();

private:
    class Parts;
    explicit ClipFile(std::unique_ptr<Parts> parts);
    std::unique_ptr<Parts> m_parts;
};

} // namespace platform
