#pragma once

#include "platform/system/Chance.h"

#include <random>

namespace platform {

// The real generator. Before the first Randomize it gives the same numbers in every run.
class SystemChance : public Chance {
public:
    void Randomize() override;
    float Next() override;

private:
    std::mt19937 m_generator;
};

} // namespace platform
