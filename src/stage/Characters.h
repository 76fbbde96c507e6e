#pragma once

namespace tumblewick {

// Loads Merlin, Genie and Peedy on the control in AgentControl, puts them into Characters and doubles their
// size. Passes on whatever the control raises; raises 91 without a control and 6 when a size outgrows 16
// bits.
void LoadCharacters();

// Puts the three loaded characters into Characters without loading anything.
void RebindCharacters();

} // namespace tumblewick
