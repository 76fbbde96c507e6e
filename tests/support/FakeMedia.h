#pragma once

#include "platform/media/MediaPlayer.h"
#include "support/FakeTime.h"

#include <QStringList>

namespace support {

// Media players that show and sound nothing. What they are asked stands in the transcript, such as
// `media Play`; a clip lasts its time on the fake clock.
class FakeMedia : public platform::Media {
public:
    explicit FakeMedia(const FakeTime &time) : m_time(time) {}

    // How long each clip lasts, and the paths that are no clip.
    std::chrono::milliseconds length{ 22000 };
    QStringList unplayable;

    [[nodiscard]] std::unique_ptr<platform::MediaPlayer> CreatePlayer(QWidget &form,
                                                                      const QPoint &corner) override;

private:
    class Player;
    const FakeTime &m_time;
};

} // namespace support
