#pragma once

#include <QRect>

#include <vector>

namespace platform {

// A window that lies over all others of the program, boxes included. Whoever shows what has to be read asks
// here where it would be hidden. For the thread of the windows only.
class OnTop {
public:
    OnTop(const OnTop &) = delete;
    OnTop &operator=(const OnTop &) = delete;

    // What all of them hide at this moment, in screen units, as rectangles that are not empty.
    static std::vector<QRect> Areas();

protected:
    OnTop();
    virtual ~OnTop();

    // What this one hides, in screen units; empty while it is not seen.
    virtual QRect Hidden() const = 0;
};

// The place within `space` nearest to `wanted`, and as large, that touches none of `taken`; where there is
// none, the nearest of those where least is covered. What is larger than `space` begins at its upper left
// corner. Pure.
QRect FreePlace(const QRect &wanted, const std::vector<QRect> &taken, const QRect &space);

} // namespace platform
