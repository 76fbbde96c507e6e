#pragma once

#include "platform/voice/Microphone.h"

namespace support {

// A microphone that hears what the test says.
class FakeMicrophone : public platform::Microphone {
public:
    std::vector<Device> devices{ { "built-in", "Built-in microphone" }, { "headset", "Headset" } };
    bool usable = true;

    // Whether somebody listens, and to what.
    bool Listening() const { return m_level != nullptr || m_heard != nullptr; }
    const QString &ListeningTo() const { return m_id; }
    void Hear(double level)
    {
        if (const auto call = m_level)
            call(level);
    }

    // The same for who records: that many milliseconds of something.
    void HearSpeech(int milliseconds)
    {
        if (const auto call = m_heard)
            call(QByteArray(milliseconds * 32, 'x'));
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
    [[nodiscard]] bool Record(const QString &id,
                              std::function<void(const QByteArray &samples)> heard) override
    {
        Stop();
        if (!usable || devices.empty())
            return false;
        m_id = id;
        m_heard = std::move(heard);
        return true;
    }
    void Stop() override
    {
        m_level = nullptr;
        m_heard = nullptr;
    }

private:
    QString m_id;
    std::function<void(double)> m_level;
    std::function<void(const QByteArray &)> m_heard;
};

} // namespace support
