#pragma once

#include "platform/media/MediaPlayer.h"

namespace platform {

class AudioOut;
class Files;

// Media players on the screen, heard through `audio`, which is theirs alone: one clip sounds at a time. Needs
// the application object; files and audio have to outlive the players.
class QtMedia final : public Media {
public:
    QtMedia(const Files &files, AudioOut &audio) : m_files(files), m_audio(audio) {}
    [[nodiscard]] std::unique_ptr<MediaPlayer> CreatePlayer(QWidget &form, const QPoint &corner) override;

private:
    [[maybe_unused]] const Files &m_files;
    AudioOut &m_audio;
};

} // namespace platform
