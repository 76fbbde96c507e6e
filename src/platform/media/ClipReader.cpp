#include "platform/media/ClipReader.h"

#include <utility>

namespace platform {

namespace {

constexpr std::size_t kAhead = 6; // pictures

} // namespace

ClipReader::ClipReader(QString path, std::function<QSize(QSize)> fit)
    : m_path(std::move(path)), m_fit(std::move(fit)), m_thread([this] { Read(); })
{
}

ClipReader::~ClipReader()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_changed.notify_all();
    m_thread.join();
}

std::optional<ClipFile::Frame> ClipReader::TakeDue(std::chrono::microseconds time)
{
    std::optional<ClipFile::Frame> picture;
    {
        const std::lock_guard lock(m_mutex);
        if (m_pictures.empty() || m_pictures.front().at > time)
            return std::nullopt;
        picture = std::move(m_pictures.front());
        m_pictures.pop_front();
    }
    m_changed.notify_all();
    return picture;
}

bool ClipReader::SoundIsKnown() const
{
    const std::lock_guard lock(m_mutex);
    return m_soundIsKnown;
}

std::shared_ptr<const Utterance> ClipReader::Sound() const
{
    const std::lock_guard lock(m_mutex);
    return m_sound;
}

std::optional<std::chrono::microseconds> ClipReader::End() const
{
    const std::lock_guard lock(m_mutex);
    return m_pictures.empty() ? m_end : std::nullopt;
}

bool ClipReader::Put(ClipFile::Frame picture)
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_stop || m_pictures.size() < kAhead; });
    if (m_stop)
        return false;
    m_pictures.push_back(std::move(picture));
    return true;
}

void ClipReader::Read()
{
    std::chrono::microseconds end{ 0 };
    const auto pictures = ClipFile::Open(m_path, m_stop);
    while (pictures) {
        auto picture = pictures->NextFrame(m_fit);
        if (!picture)
            break;
        end = picture->at + pictures->FrameLength();
        if (!Put(std::move(*picture)))
            break;
        if (m_soundIsKnown)
            continue;
        // With the first picture out, there is time for all of the sound.
        const auto heard = ClipFile::Open(m_path, m_stop);
        auto sound = heard ? heard->AllSound() : nullptr;
        const std::lock_guard lock(m_mutex);
        m_sound = std::move(sound);
        m_soundIsKnown = true;
    }
    const std::lock_guard lock(m_mutex);
    m_soundIsKnown = true;
    m_end = end;
}

} // namespace platform
