#pragma once

#include "platform/voice/PhraseVoice.h"
#include "platform/voice/Voice.h"

#include <span>
#include <vector>

namespace platform {

// The mouth for a row of sounds without gaps, in seconds: Rest first, at 0, and Rest last. A diphthong has
// two shapes. Lips close a little before the sound that needs them closed, and no shape is too short to be
// seen, except those without which the word would look wrong. Pure; any thread may call.
std::vector<MouthCue> MouthShapes(std::span<const SpokenSound> sounds,
                                  Alphabet alphabet = Alphabet::Recorded);

} // namespace platform
