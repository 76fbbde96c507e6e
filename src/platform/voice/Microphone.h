#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

namespace platform {

// How many samples of speech are heard in a second.
constexpr int kSpeechRate = 16000;

// What can be listened with. To be used by the program's one thread; no member runs events.
class Microphone {
public:
    struct Device {
        QString id;   // stays the same from run to run
        QString name; // for the user

        friend bool operator==(const Device &, const Device &) = default;
    };

    virtual ~Microphone() = default;

    // The devices that are there now. A sound server's echo of what it plays is none of them.
    virtual std::vector<Device> Devices() const = 0;

    // Listens to the device, the desktop's own choice if `id` is empty or not there any more, and calls
    // `level` from the event loop some ten times a second with the loudness of what is heard, 0 to 1, until
    // Stop or the next Listen or Record. False when nothing can be listened to; `level` is not called then.
    [[nodiscard]] virtual bool Listen(const QString &id, std::function<void(double)> level) = 0;
    // The same, but calls `heard` with what is heard itself: 16-bit signed samples of one channel at
    // kSpeechRate, in order and without gaps.
    [[nodiscard]] virtual bool Record(const QString &id,
                                      std::function<void(const QByteArray &samples)> heard) = 0;
    // Ends either. What has been heard and not yet been told is told now, inside the call; whoever is told
    // may begin to listen anew.
    virtual void Stop() = 0;

    // Called by the event loop, within a second or so, when devices have come or gone since Devices.
    std::function<void()> devicesChanged;
};

// The loudness of samples from -1 to 1 as an ear has it: 0 for what is as soft as an empty room, 1 for a
// shout.
double LoudnessOf(double rootMeanSquare);

} // namespace platform
