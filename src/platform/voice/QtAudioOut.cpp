#include "platform/voice/QtAudioOut.h"

#include "platform/voice/HeardClock.h"
#include "platform/voice/Loudspeaker.h"

#include <QTimer>

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform {

namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;

// The device is fed by this thread; it may be held up for as long without a gap in the sound.
constexpr auto kBuffer = 1s;
constexpr auto kWatch = 10ms;
constexpr auto kDeviceIsLost = 3s;

// The samples of a line and silence for ever behind them.
class SampleSource final : public EndlessSource {
public:
    explicit SampleSource(QByteArray samples) : m_samples(std::move(samples)) {}

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const auto sound = std::min<qint64>(size, m_samples.size() - m_at);
        std::memcpy(data, m_samples.constData() + m_at, static_cast<std::size_t>(sound));
        std::memset(data + sound, 0, static_cast<std::size_t>(size - sound));
        m_at += sound;
        return size;
    }

private:
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
    }
    ~Player() override { Stop(); }

    bool Usable()
    {
        if (m_chosen.Ask())
            m_doubtful = m_doubtful && !m_chosen.Device().isNull() && !CanBeOpened();
        return !m_chosen.Device().isNull() && !m_doubtful;
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
        m_clock.Start(SoundTime());
        m_watch.start();
        return true;
    }

    void Stop()
    {
        m_watch.stop();
        m_ended = nullptr;
        m_sink.reset();
        m_source.reset();
    }

    microseconds Heard()
    {
        if (!m_sink)
            return microseconds::zero();
        return std::min(m_clock.At(SoundTime(), microseconds(m_sink->processedUSecs())), m_length);
    }

private:
    // False when the device refuses.
    bool Open(const Utterance &utterance)
    {
        m_source = std::make_unique<SampleSource>(utterance.samples);
        m_sink = StartedSink(m_chosen.Device(), utterance.sampleRate, utterance.channels, kBuffer, *m_source);
        return m_sink != nullptr;
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
        m_chosen.Forget();
    }

    void Watch()
    {
        const bool lost = m_sink->state() == QAudio::StoppedState;
        const auto heard = lost ? microseconds::zero() : Heard();
        if (!lost && heard < m_length && m_clock.StandsStillFor(SoundTime()) < kDeviceIsLost)
            return;
        const bool whole = !lost && heard >= m_length;
        const auto ended = std::exchange(m_ended, nullptr);
        if (!whole)
            Doubt();
        Stop();
        if (ended)
            ended(whole); // the last thing done here, since it may destroy this player
    }

    ChosenDevice m_chosen;
    bool m_doubtful = false; // it failed when it was last used
    std::unique_ptr<SampleSource> m_source;
    RunningSink m_sink;
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
