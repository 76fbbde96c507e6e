#include "platform/voice/QtAudioOut.h"

#include "platform/voice/HeardClock.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QIODevice>
#include <QMediaDevices>
#include <QTimer>

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

namespace platform {

namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;

// The device is fed by this thread; it may be held up for as long without a gap in the sound.
constexpr auto kBuffer = 1s;
constexpr auto kWatch = 10ms;
constexpr auto kDeviceIsLost = 3s;
constexpr microseconds kDeviceAnswerHolds = 1s;

microseconds Now()
{
    return std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

// The samples of a line and silence for ever behind them: a device that runs dry would stop its clock early.
class SampleSource final : public QIODevice {
public:
    explicit SampleSource(QByteArray samples) : m_samples(std::move(samples))
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return kAlwaysThere + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const auto sound = std::min<qint64>(size, m_samples.size() - m_at);
        std::memcpy(data, m_samples.constData() + m_at, static_cast<std::size_t>(sound));
        std::memset(data + sound, 0, static_cast<std::size_t>(size - sound));
        m_at += sound;
        return size;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    static constexpr qint64 kAlwaysThere = 1 << 20;
    QByteArray m_samples;
    qint64 m_at = 0;
};

} // namespace

class QtAudioOut::Player : public QObject {
public:
    Player()
    {
        m_watch.setInterval(kWatch);
        m_watch.setTimerType(Qt::PreciseTimer);
        connect(&m_watch, &QTimer::timeout, this, [this] { Watch(); });
        connect(&m_devices, &QMediaDevices::audioOutputsChanged, this, [this] { m_askedAt.reset(); });
    }
    ~Player() override { Stop(); }

    bool Usable()
    {
        const auto now = Now();
        if (!m_askedAt || now - *m_askedAt > kDeviceAnswerHolds) {
            m_device = QMediaDevices::defaultAudioOutput();
            m_doubtful = m_doubtful && !m_device.isNull() && !CanBeOpened();
            m_askedAt = now;
        }
        return !m_device.isNull() && !m_doubtful;
    }

    bool Play(const std::shared_ptr<const Utterance> &utterance, std::function<void(bool)> ended)
    {
        Stop();
        if (!utterance || !Usable())
            return false;
        if (!Open(*utterance)) {
            Doubt();
            Stop();
            return false;
        }
        m_length = utterance->Length();
        m_ended = std::move(ended);
        m_clock.Start(Now());
        m_watch.start();
        return true;
    }

    void Stop()
    {
        m_watch.stop();
        m_ended = nullptr;
        if (m_sink) {
            // A sink that is destroyed while it runs takes the process with it.
            m_sink->stop();
            m_sink.reset();
        }
        m_source.reset();
    }

    microseconds Heard()
    {
        if (!m_sink)
            return microseconds::zero();
        return std::min(m_clock.At(Now(), microseconds(m_sink->processedUSecs())), m_length);
    }

private:
    // False when the device refuses; the sink must be stopped even then.
    bool Open(const Utterance &utterance)
    {
        QAudioFormat format;
        format.setSampleRate(utterance.sampleRate);
        format.setChannelCount(utterance.channels);
        format.setSampleFormat(QAudioFormat::Int16);
        m_source = std::make_unique<SampleSource>(utterance.samples);
        m_sink = std::make_unique<QAudioSink>(m_device, format);
        m_sink->setBufferSize(format.bytesForDuration(microseconds(kBuffer).count()));
        m_sink->start(m_source.get());
        // A device that cannot be opened says so here and sends no signal.
        return m_sink->state() != QAudio::StoppedState && m_sink->error() != QAudio::OpenError &&
               m_sink->error() != QAudio::FatalError;
    }

    bool CanBeOpened()
    {
        if (m_sink)
            return true; // it plays
        const bool opened = Open(Utterance{});
        Stop();
        return opened;
    }

    // The list of devices does not forget a sound server that has gone. After a failure a device is believed
    // again only when it opens.
    void Doubt()
    {
        m_doubtful = true;
        m_askedAt.reset();
    }

    void Watch()
    {
        const bool lost = m_sink->state() == QAudio::StoppedState;
        const auto heard = lost ? microseconds::zero() : Heard();
        if (!lost && heard < m_length && m_clock.StandsStillFor(Now()) < kDeviceIsLost)
            return;
        const bool whole = !lost && heard >= m_length;
        const auto ended = std::exchange(m_ended, nullptr);
        if (!whole)
            Doubt();
        Stop();
        if (ended)
            ended(whole); // the last thing done here, since it may destroy this player
    }

    QMediaDevices m_devices;
    QAudioDevice m_device;
    bool m_doubtful = false;               // m_device failed when it was last used
    std::optional<microseconds> m_askedAt; // when m_device was asked for; none: ask again
    std::unique_ptr<SampleSource> m_source;
    std::unique_ptr<QAudioSink> m_sink;
    microseconds m_length{ 0 };
    std::function<void(bool)> m_ended;
    HeardClock m_clock;
    QTimer m_watch;
};

QtAudioOut::QtAudioOut() : m_player(std::make_unique<Player>()) {}

QtAudioOut::~QtAudioOut() = default;

bool QtAudioOut::Usable() const
{
    return m_player->Usable();
}

bool QtAudioOut::Play(std::shared_ptr<const Utterance> utterance, std::function<void(bool)> ended)
{
    return m_player->Play(utterance, std::move(ended));
}

void QtAudioOut::Stop()
{
    m_player->Stop();
}

microseconds QtAudioOut::Heard() const
{
    return m_player->Heard();
}

} // namespace platform
