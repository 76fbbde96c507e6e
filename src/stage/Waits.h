#pragma once

#include "platform/agent/Agent.h"

#include <initializer_list>

namespace platform {
class Screen;
}

namespace tumblewick {

// The waits of the scripts. Each reads the variable anew in every pass, since a handler that ran meanwhile
// may have put another request there; a variable that holds nothing raises 91. Handlers of every kind run
// inside. None has a time-out: a request that ends in any other way than well leaves a plain wait turning for
// ever.

// Until the request has ended well.
void WaitRequest(const platform::RequestReference &variable);

// Until all of them have.
void WaitRequests(std::initializer_list<const platform::RequestReference *> variables);

// The same, for the first sentences of a performance. When the request fails it tells of the sound card,
// shows the menu, unloads `current` and gives false: the script then leaves at once.
[[nodiscard]] bool WaitRequestSound(const platform::RequestReference &variable, platform::Screen &current);

// What that wait does on a failure: tells of the sound card and goes to the menu.
void LeaveWithoutSound(platform::Screen &current);

// Until all have ended well, or until `cancelled` is true, when the menu has been left: then, if one of them
// has not begun, it stops all three characters and gives up waiting. For the introductions, which go on
// behind it.
void WaitRequestsSkippable(std::initializer_list<const platform::RequestReference *> variables,
                           const bool &cancelled);

} // namespace tumblewick
