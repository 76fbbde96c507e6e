#include "platform/media/QtMedia.h"

#include "platform/files/Files.h"
#include "platform/media/ClipReader.h"
#include "platform/media/ClipSurface.h"
#include "platform/media/FormWatch.h"
#include "platform/media/MediaTrace.h"
#include "platform/system/Clock.h"

#include <QTimer>

namespace platform {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using namespace std::chrono_literals;

constexpr auto kTick = 10ms;
// Pictures wider than this are stretched when they are painted.
constexpr QSize kLargestPicture(1920, 1440);

} // namespace

class QtMedia::Player final : public MediaPlayer {
public:
    Player(QtMedia &media, QWidget &form, const QPoint &corner)
        : m_media(media), m_corner(corner), m_watch(
                                                form, [this] { Stop(); },
                                                [this] {
                                                    if (m_surface)
                                                        m_surface->Place();
                                                })
    {
        m_tick.setTimerType(Qt::PreciseTimer);
        m_tick.setInterval(kTick);
        m_tick.callOnTimeout([this] { Tick(); });
    }
    ~Player() override { Stop(); }

    void SetFileName(const QString &path) override
    {
        TraceMediaCall(QStringLiteral("FileName ") + TracedName(path));
        m_fileName = path;
        Stop();
    }
    QString FileName() const override { return m_fileName; }
    void SetVisible(bool visible) override
    {
        TraceMediaCall(visible ? QStringLiteral("Visible True") : QStringLiteral("Visible False"));
        m_visible = visible;
    }
    bool Visible() const override { return m_visible; }
    void ZOrder(int position) override
    {
        TraceMediaCall(QStringLiteral("ZOrder %1").arg(position));
        m_inFront = position == 0;
        Arrange();
    }

    void Play() override
    {
        TraceMediaCall(QStringLiteral("Play"));
        Stop();
        if (!m_watch.IsSeen() || m_fileName.isEmpty())
            return;
        m_surface = new ClipSurface(*m_watch.Form(), m_corner);
        Arrange();
        // In pixels of the display, as far as that is worth while.
        const QSize room = m_surface->Room() * m_surface->devicePixelRatioF();
        m_reader = std::make_unique<ClipReader>(m_media.m_files.Resolve(m_fileName), [room](QSize own) {
            return ClipSurface::Fitting(own, room).boundedTo(ClipSurface::Fitting(own, kLargestPicture));
        });
        m_shown = m_dropped = 0;
        m_isRunning = false;
        m_asked = m_media.m_clock.Elapsed();
        m_tick.start();
    }
    bool Playing() const override { return m_reader != nullptr; }

private:
    // The first picture stands until the sound is there, then both run together.
    void Tick()
    {
        if (!m_isRunning && m_reader->SoundIsKnown())
            StartClock();
        const auto time = Time();
        std::optional<ClipFile::Frame> latest;
        while (auto picture = m_reader->TakeDue(time)) {
            m_dropped += latest.has_value();
            latest = std::move(picture);
        }
        if (latest) {
            if (m_shown++ == 0) {
                qCDebug(MediaTrace).noquote() << QStringLiteral("media: first picture after %1 ms")
                                                     .arg((m_media.m_clock.Elapsed() - m_asked).count());
            }
            m_surface->Show(latest->image);
        }
        if (const auto end = m_reader->End(); end && time >= *end)
            Stop();
    }

    void StartClock()
    {
        m_isRunning = true;
        m_base = microseconds::zero();
        m_since = m_media.m_clock.Elapsed();
        const auto sound = m_reader->Sound();
        if (!sound)
            return;
        // Its sound is cut off even when the device refuses this one.
        if (m_media.m_heard)
            m_media.m_heard->GoOnSilently();
        // `this` outlives the call: Stop takes it back.
        if (m_media.m_audio.Play(sound, [this](bool) { GoOnSilently(); }))
            m_media.m_heard = this;
    }

    // From here on by the clock, from where the sound has come to.
    void GoOnSilently()
    {
        m_media.m_heard = nullptr;
        m_base = m_reached;
        m_since = m_media.m_clock.Elapsed();
    }

    microseconds Time()
    {
        if (!m_isRunning)
            return microseconds::zero();
        const auto now = m_media.m_heard == this ? m_media.m_audio.Heard()
                                                 : m_base + (m_media.m_clock.Elapsed() - m_since);
        m_reached = std::max(m_reached, now);
        return now;
    }

    void Stop()
    {
        m_tick.stop();
        if (m_media.m_heard == this) {
            m_media.m_audio.Stop();
            m_media.m_heard = nullptr;
        }
        if (m_reader) {
            qCDebug(MediaTrace).noquote()
                << QStringLiteral("media: ended, %1 pictures shown, %2 dropped").arg(m_shown).arg(m_dropped);
            m_reader.reset();
        }
        m_reached = microseconds::zero();
        delete m_surface;
    }

    void Arrange()
    {
        if (!m_surface)
            return;
        if (m_inFront)
            m_surface->raise();
        else
            m_surface->lower();
    }

    QtMedia &m_media;
    const QPoint m_corner;
    FormWatch m_watch;
    QString m_fileName;
    bool m_visible = true;
    bool m_inFront = true;
    QPointer<ClipSurface> m_surface;      // goes with the form
    std::unique_ptr<ClipReader> m_reader; // while a clip plays
    QTimer m_tick;
    milliseconds m_asked{ 0 };
    bool m_isRunning = false; // the clip's time has begun
    // Unheard, it had come to m_base when the clock showed m_since.
    microseconds m_base{ 0 };
    milliseconds m_since{ 0 };
    microseconds m_reached{ 0 };
    int m_shown = 0;
    int m_dropped = 0;
};

QtMedia::QtMedia(const Files &files, AudioOut &audio, const Clock &clock)
    : m_files(files), m_audio(audio), m_clock(clock)
{
}

QtMedia::~QtMedia() = default;

std::unique_ptr<MediaPlayer> QtMedia::CreatePlayer(QWidget &form, const QPoint &corner)
{
    return std::make_unique<Player>(*this, form, corner);
}

} // namespace platform
