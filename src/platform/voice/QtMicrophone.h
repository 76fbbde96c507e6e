#pragma once

#include "platform/voice/Microphone.h"

#include <memory>

namespace platform {

// Listens through the desktop's sound server. Nothing is kept of what is heard. To be made and used by the
// program's one thread, once the application object is there.
class QtMicrophone final : public Microphone {
public:
    QtMicrophone();
    ~QtMicrophone() override;

    std::vector<Device> Devices() const override;
    [[nodiscard]] bool Listen(const QString &id, std::function<void(double)> level) override;
    [[nodiscard]] bool Record(const QString &id,
                              std::function<void(const QByteArray &samples)> heard) override;
    void Stop() override;

private:
    class Ear;
    std::unique_ptr<Ear> m_ear;
};

} // namespace platform
