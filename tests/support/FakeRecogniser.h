#pragma once

#include "platform/system/Events.h"
#include "platform/voice/LetterRecogniser.h"

#include <deque>

namespace support {

// A recogniser that understands what the test says, some time later. Of silence it makes nothing.
class FakeRecogniser : public platform::LetterRecogniser {
public:
    static constexpr std::chrono::milliseconds kWork{ 100 };

    explicit FakeRecogniser(platform::Events &events) : m_events(events) {}

    QString obstacle;
    // What the next orders give, in order; nothing when there is none left.
    std::deque<QStringList> answers;
    // The lengths of what came, in bytes.
    std::vector<qsizetype> orders;
    int prepared = 0;

    QString Obstacle() const override { return obstacle; }
    void Prepare() override { ++prepared; }
    [[nodiscard]] std::unique_ptr<Order> Recognise(QByteArray samples, Ready ready) override
    {
        orders.push_back(samples.size());
        QStringList names;
        const bool silent = samples.count('\0') == samples.size();
        if (!silent && obstacle.isEmpty() && !answers.empty()) {
            names = answers.front();
            answers.pop_front();
        }
        auto order = std::make_unique<Pending>();
        order->call = m_events.After(kWork, [names, ready = std::move(ready)] { ready(names); });
        return order;
    }

private:
    struct Pending : Order {
        std::unique_ptr<platform::PendingCall> call;
    };
    platform::Events &m_events;
};

} // namespace support
