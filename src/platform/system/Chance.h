#pragma once

namespace platform {

// The random generator.
class Chance {
public:
    virtual ~Chance() = default;

    // Seeds the generator anew from the clock.
    virtual void Randomize() = 0;

    // The next number, at least 0 and below 1, in single precision.
    virtual float Next() = 0;
};

// The whole part of a number from the generator times `count`, plus `base`: `base` to `base + count - 1`.
int Drawn(Chance &chance, int count, int base = 0);

} // namespace platform
