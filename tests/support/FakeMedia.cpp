#include "support/FakeMedia.h"

#include "platform/media/FormWatch.h"
#include "platform/media/MediaTrace.h"

#include <optional>

namespace support {

using platform::TraceMediaCall;

class FakeMedia::Player : public platform::MediaPlayer {
public:
    Player(const FakeMedia &media, QWidget &form) : m_media(media), m_watch(form, [this] { m_end.reset(); })
    {
    }

    void SetFileName(const QString &path) override
    {
        TraceMediaCall(QStringLiteral("FileName ") + platform::TracedName(path));
        m_fileName = path;
        m_end.reset();
    }
    QString FileName() const override { return m_fileName; }
    void SetVisible(bool visible) override
    {
        TraceMediaCall(visible ? QStringLiteral("Visible True") : QStringLiteral("Visible False"));
        m_visible = visible;
    }
    bool Visible() const override { return m_visible; }
    void ZOrder(int position) override { TraceMediaCall(QStringLiteral("ZOrder %1").arg(position)); }
    void Play() override
    {
        TraceMediaCall(QStringLiteral("Play"));
        m_end.reset();
        if (m_watch.IsSeen() && !m_fileName.isEmpty() && !m_media.unplayable.contains(m_fileName))
            m_end = m_media.m_time.Elapsed() + m_media.length;
    }
    bool Playing() const override { return m_end && m_media.m_time.Elapsed() < *m_end; }

private:
    const FakeMedia &m_media;
    QString m_fileName;
    bool m_visible = true;
    std::optional<std::chrono::milliseconds> m_end; // of the clip that plays
    platform::FormWatch m_watch;
};

std::unique_ptr<platform::MediaPlayer> FakeMedia::CreatePlayer(QWidget &form, const QPoint &)
{
    return std::make_unique<Player>(*this, form);
}

} // namespace support
