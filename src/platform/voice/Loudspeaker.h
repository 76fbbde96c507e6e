#pragma once

#include <QAudioDevice>
#include <QAudioSink>
#include <QIODevice>
#include <QMediaDevices>

#include <chrono>
#include <memory>
#include <optional>

// What the voice and the effects need alike to be heard.
namespace platform {

// The monotonic clock by which sound is followed.
std::chrono::microseconds SoundTime();

// The device that the desktop has chosen. To be made and used by the program's one thread.
class ChosenDevice {
public:
    ChosenDevice();

    // Asks the system at most once a second, or when its devices have changed or the answer was forgotten.
    // True when it was asked.
    bool Ask();
    void Forget() { m_askedAt.reset(); }
    // As it was when last asked for; null when there is none.
    const QAudioDevice &Device() const { return m_device; }

private:
    QMediaDevices m_devices;
    QAudioDevice m_device;
    std::optional<std::chrono::microseconds> m_askedAt;
};

// Samples without end: a device that runs dry would stop its clock early.
class EndlessSource : public QIODevice {
public:
    EndlessSource() { open(QIODevice::ReadOnly | QIODevice::Unbuffered); }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return kAlwaysThere + QIODevice::bytesAvailable(); }

protected:
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    static constexpr qint64 kAlwaysThere = 1 << 20;
};

// A sink that is destroyed while it runs takes the process with it.
struct SinkStopper {
    void operator()(QAudioSink *sink) const
    {
        sink->stop();
        delete sink;
    }
};
using RunningSink = std::unique_ptr<QAudioSink, SinkStopper>;

// Begins to play what `source` gives, 16-bit samples, with `buffer` of them lying ready in the device. Null
// when the device refuses. `source` has to outlive the sink, which is used by the calling thread alone.
RunningSink StartedSink(const QAudioDevice &device, int sampleRate, int channels,
                        std::chrono::microseconds buffer, EndlessSource &source);

} // namespace platform
