#pragma once

#include "platform/system/Chance.h"

#include <deque>
#include <functional>
#include <vector>

namespace support {

// Chance for tests. Gives the numbers that were queued, and when there are none the default sequence 0, 0.1,
// 0.2 up to 0.9 and again from 0. Randomize changes neither, and is recorded.
class FakeChance : public platform::Chance {
public:
    void Randomize() override;
    float Next() override;

    // The next number that Next gives, after those that are queued already; at least 0 and below 1.
    void Queue(float number);
    // The same so that Drawn(chance, count, base) gives `drawn`.
    void QueueDraw(int drawn, int count, int base = 0);

    int Randomized() const { return static_cast<int>(m_randomized.size()); }
    // For each Randomize how many numbers had been given before it.
    const std::vector<int> &RandomizedAfter() const { return m_randomized; }
    int Given() const { return m_given; }
    // Called by every Randomize.
    std::function<void()> onRandomize;
    // Numbers that were queued and not asked for.
    int Left() const { return static_cast<int>(m_queue.size()); }

private:
    std::deque<float> m_queue;
    std::vector<int> m_randomized;
    int m_given = 0;
    int m_tenths = 0;
};

} // namespace support
