#include "platform/voice/Loudspeaker.h"

#include <QAudioFormat>

#include <utility>

namespace platform {

namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;

constexpr microseconds kAnswerHolds = 1s;

} // namespace

microseconds SoundTime()
{
    return std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

ChosenDevice::ChosenDevice()
{
    QObject::connect(&m_devices, &QMediaDevices::audioOutputsChanged, &m_devices, [this] { Forget(); });
}

bool ChosenDevice::Ask()
{
    const auto now = SoundTime();
    if (m_askedAt && now - *m_askedAt <= kAnswerHolds)
        return false;
    m_device = QMediaDevices::defaultAudioOutput();
    m_askedAt = now;
    return true;
}

RunningSink StartedSink(const QAudioDevice &device, int sampleRate, int channels, microseconds buffer,
                        EndlessSource &source)
{
    QAudioFormat format;
    format.setSampleRate(sampleRate);
    format.setChannelCount(channels);
    format.setSampleFormat(QAudioFormat::Int16);
    RunningSink sink(new QAudioSink(device, format));
    sink->setBufferSize(format.bytesForDuration(buffer.count()));
    sink->start(&source);
    // A device that cannot be opened says so here and sends no signal.
    const bool plays = sink->state() != QAudio::StoppedState && sink->error() != QAudio::OpenError &&
                       sink->error() != QAudio::FatalError;
    return plays ? std::move(sink) : nullptr;
}

} // namespace platform
