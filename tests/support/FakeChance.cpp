#include "support/FakeChance.h"

#include <stdexcept>

namespace support {

void FakeChance::Randomize()
{
    m_randomized.push_back(m_given);
    if (onRandomize)
        onRandomize();
}

float FakeChance::Next()
{
    ++m_given;
    if (!m_queue.empty()) {
        const float number = m_queue.front();
        m_queue.pop_front();
        return number;
    }
    const float number = static_cast<float>(m_tenths) / 10.0F;
    m_tenths = (m_tenths + 1) % 10;
    return number;
}

void FakeChance::Queue(float number)
{
    if (!(number >= 0.0F && number < 1.0F))
        throw std::invalid_argument("a random number is at least 0 and below 1");
    m_queue.push_back(number);
}

void FakeChance::QueueDraw(int drawn, int count, int base)
{
    // The middle of the stretch that gives this draw.
    Queue(static_cast<float>((static_cast<double>(drawn - base) + 0.5) / count));
}

} // namespace support
