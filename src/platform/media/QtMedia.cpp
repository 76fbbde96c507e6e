#include "platform/media/QtMedia.h"

#include "platform/media/MediaTrace.h"

namespace platform {

namespace {

// Knows no kind of clip, so that every one of them is unplayable.
class QtMediaPlayer final : public MediaPlayer {
public:
    void SetFileName(const QString &path) override
    {
        TraceMediaCall(QStringLiteral("FileName ") + TracedName(path));
        m_fileName = path;
    }
    QString FileName() const override { return m_fileName; }
    void SetVisible(bool visible) override
    {
        TraceMediaCall(visible ? QStringLiteral("Visible True") : QStringLiteral("Visible False"));
        m_visible = visible;
    }
    bool Visible() const override { return m_visible; }
    void ZOrder(int position) override { TraceMediaCall(QStringLiteral("ZOrder %1").arg(position)); }
    void Play() override { TraceMediaCall(QStringLiteral("Play")); }
    bool Playing() const override { return false; }

private:
    QString m_fileName;
    bool m_visible = true;
};

} // namespace

std::unique_ptr<MediaPlayer> QtMedia::CreatePlayer(QWidget &, const QPoint &)
{
    return std::make_unique<QtMediaPlayer>();
}

} // namespace platform
