#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <numbers>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What sound effects are made of: curves, noise, ringing bodies, voices, brass and a small room. Everything
// is a pure function of its numbers, so that each build makes the same sounds.
namespace sounds {

// Effects are made at twice the rate at which they are packed.
constexpr double kRate = 48000;

constexpr double kPi = std::numbers::pi;

using Samples = std::vector<double>;

std::size_t Count(double seconds);
Samples Silence(double seconds);
// Adds `what` from the second `at` on; `into` grows when it has to.
void Mix(Samples &into, const Samples &what, double at = 0, double gain = 1);

class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed * 2654435761u + 88172645463325252u) {}
    double Next(); // from -1 to 1
    double Between(double least, double most) { return least + (Next() + 1) / 2 * (most - least); }

private:
    std::uint64_t m_state;
};

// A value over time, through points of second and value, with soft corners.
class Curve {
public:
    Curve(double value) : m_points{ { 0, value } } {}
    Curve(std::initializer_list<std::pair<double, double>> points) : m_points(points) {}
    double operator()(double time) const;

private:
    std::vector<std::pair<double, double>> m_points;
};

enum class Pass { Low, Band, High };

// A filter whose frequency may move while it runs.
class Filter {
public:
    double Step(Pass pass, double sample, double frequency, double sharpness);

private:
    double m_first = 0;
    double m_second = 0;
};

Samples Noise(double seconds, Random &random);
Samples Filtered(Samples samples, Pass pass, const Curve &frequency, double sharpness = 0.7);
Samples Shaped(Samples samples, const Curve &gain);
// Noise of a moving colour.
Samples Air(double seconds, const Curve &colour, const Curve &gain, double sharpness, Random &random);
// A sine of moving frequency.
Samples Tone(double seconds, const Curve &frequency, const Curve &gain);

// A struck body: its partials die away one by one.
struct Partial {
    double frequency;
    double gain;
    double fade; // seconds to a third
};
Samples Struck(double seconds, std::initializer_list<Partial> partials);

// A horn that is blown: `force`, 0 to 1, makes it loud and bright together.
Samples Brass(double seconds, const Curve &pitch, const Curve &force, Random &random);

// The frequencies of a throat's three resonances.
struct Vowel {
    Curve first;
    Curve second;
    Curve third;
};
// A throat: pitch in Hz, how open it is, and the breath that goes with the tone.
Samples Throat(double seconds, const Curve &pitch, const Curve &tone, const Curve &breath, const Vowel &vowel,
               Random &random);

// The sound with the echo of a small room of stone behind it, `tail` seconds longer.
Samples InRoom(const Samples &dry, double wet, double tail, double brightness = 4000);

// Half the rate, without what would fold over; no offset, soft ends, as loud as wanted while it sounds, and
// no peak above the second level. Both in dB below full scale.
std::vector<std::int16_t> Finished(const Samples &samples, double loudness, double peak);

// The bytes of a wave file with these samples, those of several channels in turn.
std::string Wave(const std::vector<std::int16_t> &samples, int channels, int rate);

} // namespace sounds
