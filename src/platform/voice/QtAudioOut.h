#pragma once

#include "platform/voice/Voice.h"

#include <memory>

namespace platform {

// Plays through the device that the desktop has chosen. A line goes to the device that is chosen when it
// begins. To be made and used by the program's one thread, once the application object is there.
class QtAudioOut final : public AudioOut {
public:
    QtAudioOut();
    ~QtAudioOut() override; // silences what plays

    // Asks the system at most once a second, or when its devices have changed.
    bool Usable() const override;
    // A device that stands still for some seconds while a line plays is taken as failed.
    [[nodiscard]] bool Play(std::shared_ptr<const Utterance> utterance,
                            std::function<void(bool)> ended) override;
    void Stop() override;
    std::chrono::microseconds Heard() const override;

private:
    class Player;
    std::unique_ptr<Player> m_player;
};

} // namespace platform
