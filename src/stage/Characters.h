#pragma once

#include "platform/agent/Agent.h"

namespace tumblewick {

// Loads Merlin, Genie and Peedy on the control in AgentControl, puts them into Characters and doubles their
// size. Passes on whatever the control raises; raises 91 without a control and 6 when a size outgrows 16
// bits.
void LoadCharacters();

// Puts the three loaded characters into Characters without loading anything.
void RebindCharacters();

// What a screen does that has lost its connection: makes `agent1`, its own control, the one in AgentControl,
// loads the three on it and binds them. Raises what LoadCharacters raises.
void ConnectCharacters(const platform::AgentControlReference &agent1);

} // namespace tumblewick
