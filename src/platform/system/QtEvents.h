#pragma once

#include "platform/system/Events.h"

#include <QObject>

namespace platform {

// Qt's event loop. Needs the application object.
class QtEvents : public Events {
public:
    void Pump() override;
    void PumpPending() override;
    void Post(std::function<void()> work) override;
    [[nodiscard]] std::unique_ptr<PendingCall> After(std::chrono::milliseconds delay,
                                                     std::function<void()> work) override;

private:
    QObject m_receiver; // posted work goes with it
};

} // namespace platform
