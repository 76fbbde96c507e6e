#pragma once

#include <string>

namespace fireworks {

// Writes what is heard of the evening: rising rockets, bangs with their echo from the hills, crackle and the
// hiss of long rain, and a soft bell for each burst. 48,000 times a second, two channels. Throws
// std::runtime_error when the file cannot be written.
void WriteSound(const std::string &file);

} // namespace fireworks
