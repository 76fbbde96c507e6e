#include "platform/voice/QtSoundEffects.h"

#include "platform/voice/HeardClock.h"
#include "platform/voice/SoundMixer.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QIODevice>
#include <QMediaDevices>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <limits>
#include <optional>

namespace platform {

namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;
using Link = SoundMixer::Link;

// What lies ready in the device; a shorter one makes gaps.
constexpr auto kBuffer = 100ms;
constexpr auto kWatch = 20ms;
constexpr microseconds kSilenceBeforeClosing = 3s;
constexpr microseconds kDeviceIsLost = 2s;
constexpr microseconds kDeviceAnswerHolds = 1s;
constexpr microseconds kFailedDeviceRests = 5s;

microseconds Now()
{
    return std::chrono::duration_cast<microseconds>(std::chrono::steady_clock::now().time_since_epoch());
}

qint64 Frames(microseconds time)
{
    return time.count() * kSoundRate / 1'000'000;
}

// The mixed effects, and silence for ever between and behind them.
class MixedSource final : public QIODevice {
public:
    explicit MixedSource(SoundMixer &mixer) : m_mixer(mixer)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return kAlwaysThere + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        m_mixer.Mix(reinterpret_cast<qint16 *>(data), size / 2);
        return size / 2 * 2;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    static constexpr qint64 kAlwaysThere = 1 << 20;
    SoundMixer &m_mixer;
};

// Lives in the thread that feeds the device.
class Feeder final : public QObject {
public:
    Feeder() : m_watch(this)
    {
        m_watch.setInterval(kWatch);
        connect(&m_watch, &QTimer::timeout, this, [this] { Watch(); });
    }

    void Begin(const QAudioDevice &device, std::shared_ptr<const Sound> sound, std::shared_ptr<Link> link,
               microseconds at)
    {
        if (!m_sink && !Open(device)) {
            link->over = true;
            return Fail();
        }
        const microseconds heard = Heard();
        m_mixer.Add(std::move(sound), std::move(link), Frames(heard + (at - Now())));
        m_usedAt = Now();
    }

    void Close()
    {
        m_watch.stop();
        if (m_sink) {
            // A sink that is destroyed while it runs takes the process with it.
            m_sink->stop();
            m_sink.reset();
        }
        m_source.reset();
        m_mixer.Drop();
    }

    // When a device failed last; read by the other thread.
    std::atomic<std::int64_t> failedAt{ std::numeric_limits<std::int64_t>::min() / 2 };

private:
    bool Open(const QAudioDevice &device)
    {
        QAudioFormat format;
        format.setSampleRate(kSoundRate);
        format.setChannelCount(1);
        format.setSampleFormat(QAudioFormat::Int16);
        m_source = std::make_unique<MixedSource>(m_mixer);
        m_sink = std::make_unique<QAudioSink>(device, format);
        m_sink->setBufferSize(format.bytesForDuration(microseconds(kBuffer).count()));
        m_clock.Start(Now());
        m_sink->start(m_source.get());
        m_watch.start();
        // A device that cannot be opened says so here and sends no signal.
        return m_sink->state() != QAudio::StoppedState && m_sink->error() != QAudio::OpenError &&
               m_sink->error() != QAudio::FatalError;
    }

    microseconds Heard() { return m_clock.At(Now(), microseconds(m_sink->processedUSecs())); }

    void Fail()
    {
        failedAt = Now().count();
        Close();
    }

    void Watch()
    {
        if (m_sink->state() == QAudio::StoppedState)
            return Fail();
        m_mixer.Heard(Frames(Heard()));
        const auto now = Now();
        if (m_clock.StandsStillFor(now) > kDeviceIsLost)
            return Fail();
        if (!m_mixer.IsEmpty())
            m_usedAt = now;
        else if (now - m_usedAt > kSilenceBeforeClosing)
            Close();
    }

    SoundMixer m_mixer;
    std::unique_ptr<MixedSource> m_source;
    std::unique_ptr<QAudioSink> m_sink;
    HeardClock m_clock;
    microseconds m_usedAt{ 0 };
    QTimer m_watch;
};

class LinkedEffect final : public SoundEffects::Playing {
public:
    explicit LinkedEffect(std::shared_ptr<Link> link) : m_link(std::move(link)) {}
    ~LinkedEffect() override { m_link->fade = true; }
    bool IsOver() const override { return m_link->over; }
    void FadeOut() override { m_link->fade = true; }

private:
    const std::shared_ptr<Link> m_link;
};

} // namespace

class QtSoundEffects::Player : public QObject {
public:
    Player()
    {
        m_thread.setObjectName(QStringLiteral("effects"));
        connect(&m_devices, &QMediaDevices::audioOutputsChanged, this, [this] { m_askedAt.reset(); });
    }
    ~Player() override
    {
        if (!m_feeder)
            return;
        QMetaObject::invokeMethod(
            m_feeder, [feeder = m_feeder] { feeder->Close(); }, Qt::BlockingQueuedConnection);
        m_feeder->deleteLater(); // by its own thread as it ends
        m_thread.quit();
        m_thread.wait();
    }

    std::unique_ptr<Playing> Play(std::shared_ptr<const Sound> sound, microseconds delay)
    {
        if (!isOn || !sound || !Usable())
            return nullptr;
        if (!m_feeder) {
            m_feeder = new Feeder;
            m_feeder->moveToThread(&m_thread);
            m_thread.start();
        }
        auto link = std::make_shared<Link>();
        std::erase_if(m_links, [](const std::weak_ptr<Link> &other) { return other.expired(); });
        m_links.push_back(link);
        QMetaObject::invokeMethod(m_feeder,
                                  [feeder = m_feeder, device = m_device, sound = std::move(sound), link,
                                   at = Now() + delay] { feeder->Begin(device, sound, link, at); });
        return std::make_unique<LinkedEffect>(std::move(link));
    }

    void FadeOutAll()
    {
        for (const std::weak_ptr<Link> &weak : m_links) {
            if (const auto link = weak.lock())
                link->fade = true;
        }
    }

    bool isOn = true;

private:
    bool Usable()
    {
        const auto now = Now();
        if (m_feeder && now - microseconds(m_feeder->failedAt) < kFailedDeviceRests)
            return false;
        if (!m_askedAt || now - *m_askedAt > kDeviceAnswerHolds) {
            m_device = QMediaDevices::defaultAudioOutput();
            m_askedAt = now;
        }
        return !m_device.isNull();
    }

    QMediaDevices m_devices;
    QAudioDevice m_device;
    std::optional<microseconds> m_askedAt; // when m_device was asked for; none: ask again
    std::vector<std::weak_ptr<Link>> m_links;
    QThread m_thread;
    Feeder *m_feeder = nullptr; // belongs to m_thread
};

QtSoundEffects::QtSoundEffects() : m_player(std::make_unique<Player>()) {}

QtSoundEffects::~QtSoundEffects() = default;

std::unique_ptr<SoundEffects::Playing> QtSoundEffects::Play(std::shared_ptr<const Sound> sound,
                                                            microseconds delay)
{
    return m_player->Play(std::move(sound), delay);
}

void QtSoundEffects::SetOn(bool on)
{
    m_player->isOn = on;
    if (!on)
        m_player->FadeOutAll();
}

bool QtSoundEffects::IsOn() const
{
    return m_player->isOn;
}

} // namespace platform
