#pragma once

#include "platform/voice/Microphone.h"

namespace support {

// A microphone that hears what the test says.
class FakeMicrophone : public platform::Microphone {
public:
    std::vector<Device> devices{ { "built-in", "Built-in microphone" }, { "headset", "Headset" } };
    bool usable = true;

    // Whether somebody listens, and to what.
    bool Listening() const { return m_level != nullptr; }
    const QString &ListeningTo() const { return m_id; }
    void Hear(double level)
    {
        if (const auto call = m_level)
            call(level);
    }

    std::vector<Device> Devices() const override { return devices; }
    [[nodiscard]] bool Listen(const QString &id, std::function<void(double)> level) override
    {
        Stop();
        if (!usable || devices.empty())
            return false;
        m_id = id;
        m_level = std::move(level);
        return true;
    }
    void Stop() override { m_level = nullptr; }

private:
    QString m_id;
    std::function<void(double)> m_level;
};

} // namespace support
