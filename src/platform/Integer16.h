#pragma once

#include "platform/Error.h"

#include <cmath>
#include <limits>

namespace platform {

// A 16-bit signed whole number. Arithmetic is done in int and checked when it is stored, so
// that Integer16 x = x * 2 raises kOverflow (6) instead of wrapping round.
class Integer16 {
public:
    constexpr Integer16() = default;
    constexpr Integer16(int value) : m_value(Checked(value)) {} // NOLINT: meant to convert
    constexpr operator int() const { return m_value; }

    constexpr Integer16 &operator+=(int other) { return *this = Integer16(m_value + other); }
    constexpr Integer16 &operator-=(int other) { return *this = Integer16(m_value - other); }

    // Rounds half to even, as every conversion to a whole number does. Raises 6 outside the range.
    static Integer16 FromReal(double value)
    {
        const double rounded = std::nearbyint(value);
        if (!(rounded >= std::numeric_limits<qint16>::min() && rounded <= std::numeric_limits<qint16>::max()))
            throw Error(kOverflow);
        return Integer16(static_cast<int>(rounded));
    }

private:
    static constexpr qint16 Checked(int value)
    {
        if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
            throw Error(kOverflow);
        return static_cast<qint16>(value);
    }

    qint16 m_value = 0;
};

} // namespace platform
