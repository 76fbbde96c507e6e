// Makes all sound effects and writes them as waves into a folder.

#include "Effects.h"

#include <cstdio>
#include <fstream>
#include <string>

namespace {

constexpr double kHighestPeak = -7; // dB
constexpr std::uint32_t kPackedRate = std::uint32_t(sounds::kRate) / 2;

void Put(std::string &bytes, std::uint32_t number, int size)
{
    for (int byte = 0; byte < size; ++byte)
        bytes += char(number >> (8 * byte) & 0xff);
}

std::string Wave(const std::vector<std::int16_t> &samples)
{
    const auto size = std::uint32_t(samples.size() * 2);
    std::string wave = "RIFF";
    Put(wave, 36 + size, 4);
    wave += "WAVEfmt ";
    Put(wave, 16, 4);
    Put(wave, 1, 2); // plain samples
    Put(wave, 1, 2); // one channel
    Put(wave, kPackedRate, 4);
    Put(wave, kPackedRate * 2, 4);
    Put(wave, 2, 2);
    Put(wave, 16, 2);
    wave += "data";
    Put(wave, size, 4);
    for (const std::int16_t sample : samples)
        Put(wave, std::uint16_t(sample), 2);
    return wave;
}

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
            file << Wave(samples);
            if (!file.flush()) {
                std::fprintf(stderr, "make-sounds: %s cannot be written\n", path.c_str());
                return 1;
            }
        }
    }
    return 0;
}
