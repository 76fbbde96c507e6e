#pragma once

#include "platform/system/Events.h"

#include <QObject>

namespace platform {

// Qt's event loop. Needs the application object.
class QtEvents : public Events {
public:
    QtEvents();
    void Pump() override;
    void PumpPending() override;
    void Post(std::function<void()> work) override;
    [[nodiscard]] std::unique_ptr<PendingCall> After(std::chrono::milliseconds delay,
                                                     std::function<void()> work) override;

private:
    QObject m_receiver; // posted work goes with it
    // Nothing that was posted before the running handler began is left over.
    bool m_isDrained = false;

    // The innermost pump that may block.
    struct Blocking {
        quint64 firstPass = 0;
        int loopLevel = -1; // none
    };
    Blocking m_pump;
    quint64 m_passes = 0; // of any loop
};

} // namespace platform
