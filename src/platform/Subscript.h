#pragma once

#include "platform/Error.h"

#include <cstddef>
#include <iterator>

namespace platform {

// The element with that index, counted from 0, of an array or any other container with subscripts. Raises 9
// when there is none. Refers into the container.
template <class Container>
auto &At(Container &container, int index)
{
    if (index < 0 || index >= static_cast<int>(std::size(container)))
        throw Error(kSubscriptOutOfRange);
    return container[static_cast<std::size_t>(index)];
}

} // namespace platform
