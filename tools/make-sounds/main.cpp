// Makes all sound effects and writes them as waves into a folder.

#include "Effects.h"

#include <cstdio>
#include <fstream>
#include <string>

namespace {

constexpr double kHighestPeak = -7; // dB
constexpr int kPackedRate = int(sounds::kRate) / 2;

// The name alone decides what is random about an effect, so that a new one changes no other.
std::uint64_t SeedOf(std::string_view name)
{
    std::uint64_t seed = 14695981039346656037u;
    for (const char letter : name)
        seed = (seed ^ std::uint8_t(letter)) * 1099511628211u;
    return seed;
}

} // namespace

int main(int count, char **arguments)
{
    if (count != 2) {
        std::fprintf(stderr, "usage: make-sounds FOLDER\n");
        return 1;
    }
    for (const auto effects : { sounds::PropEffects(), sounds::MagicEffects(), sounds::BodyEffects() }) {
        for (const sounds::Effect &effect : effects) {
            sounds::Random random(SeedOf(effect.name));
            const auto samples = sounds::Finished(effect.make(random), effect.loudness, kHighestPeak);
            const std::string path = std::string(arguments[1]) + "/" + std::string(effect.name) + ".wav";
            std::ofstream file(path, std::ios::binary);
            file << sounds::Wave(samples, 1, kPackedRate);
            if (!file.flush()) {
                std::fprintf(stderr, "make-sounds: %s cannot be written\n", path.c_str());
                return 1;
            }
        }
    }
    return 0;
}
