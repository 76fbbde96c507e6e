#include "platform/voice/QtMicrophone.h"

#include <QAudioDevice>
#include <QAudioSource>
#include <QIODevice>
#include <QMediaDevices>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

constexpr int kLevelEvery = 60;  // milliseconds
constexpr int kLookEvery = 1000; // likewise
// What is as soft as an empty room, and what is a shout, in decibels below full scale.
constexpr double kSoftest = -55;
constexpr double kLoudest = -6;

// Echoes of what is played are devices too; they are named so by the sound server.
bool IsEcho(const QAudioDevice &device)
{
    return device.id().endsWith(".monitor");
}

std::vector<Microphone::Device> DevicesNow()
{
    std::vector<Microphone::Device> devices;
    for (const QAudioDevice &device : QMediaDevices::audioInputs()) {
        if (!IsEcho(device))
            devices.push_back({ QString::fromUtf8(device.id()), device.description() });
    }
    return devices;
}

} // namespace

double LoudnessOf(double rootMeanSquare)
{
    if (!(rootMeanSquare > 0))
        return 0;
    return std::clamp((20 * std::log10(rootMeanSquare) - kSoftest) / (kLoudest - kSoftest), 0.0, 1.0);
}

class QtMicrophone::Ear : public QObject {
public:
    explicit Ear(QtMicrophone &owner)
    {
        m_watch.setInterval(kLookEvery);
        connect(&m_watch, &QTimer::timeout, this, [this, &owner] { Look(owner.devicesChanged); });
        m_timer.setInterval(kLevelEvery);
        connect(&m_timer, &QTimer::timeout, this, [this] { Tell(); });
    }
    ~Ear() override { End(); }

    bool Listen(const QAudioDevice &device, std::function<void(const QByteArray &)> heard)
    {
        Stop();
        End(); // whoever was told the rest may have begun to listen
        if (device.isNull())
            return false;
        QAudioFormat format;
        format.setSampleRate(kSpeechRate);
        format.setChannelCount(1);
        format.setSampleFormat(QAudioFormat::Int16);
        m_source = std::make_unique<QAudioSource>(device, format);
        m_stream = m_source->start();
        if (!m_stream || m_source->error() == QAudio::OpenError || m_source->error() == QAudio::FatalError) {
            End();
            return false;
        }
        m_heard = std::move(heard);
        m_timer.start();
        return true;
    }

    void Stop()
    {
        const auto heard = m_heard;
        const QByteArray rest = End();
        if (heard && !rest.isEmpty())
            heard(rest);
    }

    // Whoever asks for the devices may want to hear of others. The library does not always tell.
    void Watch(std::vector<Device> devices)
    {
        m_known = std::move(devices);
        m_watch.start();
    }

private:
    void Look(const std::function<void()> &changed)
    {
        if (!changed) {
            m_watch.stop();
            return;
        }
        std::vector<Device> devices = DevicesNow();
        if (devices == m_known)
            return;
        m_known = std::move(devices);
        changed();
    }

    // Gives what has been heard and not been told.
    QByteArray End()
    {
        m_timer.stop();
        m_heard = nullptr;
        const QByteArray rest = m_stream ? m_stream->readAll() : QByteArray();
        m_stream = nullptr;
        if (m_source)
            m_source->stop();
        m_source.reset();
        return rest;
    }

    void Tell()
    {
        const auto heard = m_heard; // may be replaced by what it calls
        heard(m_stream->readAll());
    }

    std::vector<Device> m_known;
    QTimer m_watch;
    std::unique_ptr<QAudioSource> m_source;
    QIODevice *m_stream = nullptr; // the source's own
    QTimer m_timer;
    std::function<void(const QByteArray &)> m_heard;
};

QtMicrophone::QtMicrophone() : m_ear(std::make_unique<Ear>(*this)) {}

QtMicrophone::~QtMicrophone() = default;

std::vector<Microphone::Device> QtMicrophone::Devices() const
{
    std::vector<Device> devices = DevicesNow();
    m_ear->Watch(devices);
    return devices;
}

bool QtMicrophone::Listen(const QString &id, std::function<void(double)> level)
{
    return Record(id, [level = std::move(level)](const QByteArray &heard) {
        const auto *samples = reinterpret_cast<const qint16 *>(heard.constData());
        const auto count = heard.size() / static_cast<qsizetype>(sizeof(qint16));
        double sum = 0;
        for (qsizetype index = 0; index < count; ++index)
            sum += std::pow(samples[index] / 32768.0, 2);
        level(LoudnessOf(count > 0 ? std::sqrt(sum / double(count)) : 0));
    });
}

bool QtMicrophone::Record(const QString &id, std::function<void(const QByteArray &)> heard)
{
    QAudioDevice wanted = QMediaDevices::defaultAudioInput();
    if (IsEcho(wanted))
        wanted = QAudioDevice();
    for (const QAudioDevice &device : QMediaDevices::audioInputs()) {
        if (!IsEcho(device) && (wanted.isNull() || QString::fromUtf8(device.id()) == id))
            wanted = device;
    }
    return m_ear->Listen(wanted, std::move(heard));
}

void QtMicrophone::Stop()
{
    m_ear->Stop();
}

} // namespace platform
