#include "platform/system/SystemChance.h"

#include <chrono>
#include <cstdint>

namespace platform {

void SystemChance::Randomize()
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto ticks = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    std::seed_seq seed{ static_cast<std::uint32_t>(ticks), static_cast<std::uint32_t>(ticks >> 32) };
    m_generator.seed(seed);
}

float SystemChance::Next()
{
    // 24 bits are what single precision holds, so that 1 cannot come out by rounding.
    return static_cast<float>(m_generator() >> 8) * 0x1p-24F;
}

} // namespace platform
