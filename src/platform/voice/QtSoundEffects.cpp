#include "platform/voice/QtSoundEffects.h"

#include "platform/voice/HeardClock.h"
#include "platform/voice/Loudspeaker.h"
#include "platform/voice/SoundMixer.h"

#include <QThread>
#include <QTimer>

#include <limits>

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
constexpr microseconds kFailedDeviceRests = 5s;

qint64 Frames(microseconds time)
{
    return time.count() * kSoundRate / 1'000'000;
}

// The mixed effects, and silence for ever between and behind them.
class MixedSource final : public EndlessSource {
public:
    explicit MixedSource(SoundMixer &mixer) : m_mixer(mixer) {}

protected:
    qint64 readData(char *data, qint64 size) override
    {
        m_mixer.Mix(reinterpret_cast<qint16 *>(data), size / 2);
        return size / 2 * 2;
    }

private:
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
        m_mixer.Add(std::move(sound), std::move(link), Frames(heard + (at - SoundTime())));
        m_usedAt = SoundTime();
    }

    void Close()
    {
        m_watch.stop();
        m_sink.reset();
        m_source.reset();
        m_mixer.Drop();
    }

    // When a device failed last; read by the other thread.
    std::atomic<std::int64_t> failedAt{ std::numeric_limits<std::int64_t>::min() / 2 };

private:
    bool Open(const QAudioDevice &device)
    {
        m_source = std::make_unique<MixedSource>(m_mixer);
        m_clock.Start(SoundTime());
        m_sink = StartedSink(device, kSoundRate, 1, kBuffer, *m_source);
        m_watch.start();
        return m_sink != nullptr;
    }

    microseconds Heard() { return m_clock.At(SoundTime(), microseconds(m_sink->processedUSecs())); }

    void Fail()
    {
        failedAt = SoundTime().count();
        Close();
    }

    void Watch()
    {
        if (m_sink->state() == QAudio::StoppedState)
            return Fail();
        m_mixer.Heard(Frames(Heard()));
        const auto now = SoundTime();
        if (m_clock.StandsStillFor(now) > kDeviceIsLost)
            return Fail();
        if (!m_mixer.IsEmpty())
            m_usedAt = now;
        else if (now - m_usedAt > kSilenceBeforeClosing)
            Close();
    }

    SoundMixer m_mixer;
    std::unique_ptr<MixedSource> m_source;
    RunningSink m_sink;
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

class QtSoundEffects::Player {
public:
    Player() { m_thread.setObjectName(QStringLiteral("effects")); }
    ~Player()
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
        QMetaObject::invokeMethod(
            m_feeder, [feeder = m_feeder, device = m_chosen.Device(), sound = std::move(sound), link,
                       at = SoundTime() + delay] { feeder->Begin(device, sound, link, at); });
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
        if (m_feeder && SoundTime() - microseconds(m_feeder->failedAt) < kFailedDeviceRests)
            return false;
        m_chosen.Ask();
        return !m_chosen.Device().isNull();
    }

    ChosenDevice m_chosen;
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

} // namespace platform
