#pragma once

#include "platform/media/MediaPlayer.h"

namespace platform {

class AudioOut;
class Clock;
class Files;

// Media players on the screen, heard through `audio`, which is theirs alone: one clip sounds at a time, the
// one that began last. A clip that is heard goes by its sound, any other by `clock`. Needs the application
// object; files, audio, clock and this have to outlive the players.
class QtMedia final : public Media {
public:
    QtMedia(const Files &files, AudioOut &audio, const Clock &clock);
    ~QtMedia() override;
    [[nodiscard]] std::unique_ptr<MediaPlayer> CreatePlayer(QWidget &form, const QPoint &corner) override;

private:
    class Player;
    const Files &m_files;
    AudioOut &m_audio;
    const Clock &m_clock;
    Player *m_heard = nullptr; // the one that sounds
};

} // namespace platform
