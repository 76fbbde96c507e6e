#pragma once

#include "platform/voice/SoundEffects.h"

#include <memory>

namespace platform {

// Plays through the device that the desktop has chosen. The device is opened by the first effect and closed
// when nothing has been heard for some seconds; a thread of its own feeds it, so that neither waits for the
// other. To be made and used by the program's one thread, once the application object is there.
class QtSoundEffects final : public SoundEffects {
public:
    QtSoundEffects();
    ~QtSoundEffects() override; // silences what plays

    // After a device has failed it is left alone for some seconds.
    [[nodiscard]] std::unique_ptr<Playing> Play(std::shared_ptr<const Sound> sound,
                                                std::chrono::microseconds delay) override;
    void SetOn(bool on) override;

private:
    class Player;
    std::unique_ptr<Player> m_player;
};

} // namespace platform
