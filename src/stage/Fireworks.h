#pragma once

#include "platform/agent/Agent.h"

namespace tumblewick {

// The upper left corner of the clip, on the form and on the screen.
inline constexpr int kClipLeft = 272;
inline constexpr int kClipTop = 56;

// Sends Peedy up to Genie's head and waits until he is there; on a display of 800 Merlin and Genie first make
// room for the clip, and Peedy flies only when Genie is there. `stageY` is the line of the stage,
// `genieAt800` the line on which Genie then stands. `request` holds what is waited for.
void TakePerch(platform::Integer16 stageY, platform::Integer16 genieAt800,
               platform::RequestReference &request);

// Has all three point at the fireworks, look and wonder, without waiting. Their last requests are kept.
void ReactToFireworks(platform::RequestReference &merlin, platform::RequestReference &genie,
                      platform::RequestReference &peedy);

// Sends whoever has moved back to where they stood in the game and waits for the last of them.
void LeavePerch(platform::Integer16 stageY, platform::RequestReference &request);

} // namespace tumblewick
