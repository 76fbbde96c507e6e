#pragma once

#include "Synthesis.h"

#include <span>

namespace sounds {

// One effect by its name in the motions, and how loud it is to be; a voice has -20.
struct Effect {
    std::string_view name;
    double loudness;
    Samples (*make)(Random &random);
};

std::span<const Effect> PropEffects();  // things that are held, struck, written with
std::span<const Effect> MagicEffects(); // stars, mist and the noise of air
std::span<const Effect> BodyEffects();  // yawns, snores, hands and wings

} // namespace sounds
