#pragma once

#include "platform/voice/Voice.h"

#include <atomic>
#include <functional>
#include <memory>

namespace platform {

// A thread on which lines are made one after the other, in the order in which they were asked for. To be made
// and used by the program's one thread; its destruction cancels everything that is still to come and waits
// for the work in hand, which should look at `cancelled` often.
class SpeechWorkshop {
public:
    // Makes a line; called on the thread of the workshop. May give null, always does when it was cancelled.
    using Make = std::function<std::shared_ptr<const Utterance>(const std::atomic<bool> &cancelled)>;

    SpeechWorkshop();
    ~SpeechWorkshop();

    // `ready` is called as SpeechEngine::Synthesise tells.
    [[nodiscard]] std::unique_ptr<SpeechEngine::Order> Add(Make make, SpeechEngine::Ready ready);

private:
    class Thread;
    std::unique_ptr<Thread> m_thread;
};

} // namespace platform
