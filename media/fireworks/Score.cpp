#include "Score.h"

#include "Show.h"
#include "Synthesis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <stdexcept>

namespace fireworks {

namespace {

using sounds::Curve;
using sounds::Pass;
using sounds::Random;
using sounds::Samples;

constexpr int kRate = int(sounds::kRate);

struct Stereo {
    Samples left, right;

    // `x` is where it is seen.
    void Add(const Samples &what, double at, double gain, double x)
    {
        const double side = 0.5 + (x - kWidth / 2.0) / kWidth * 0.8;
        sounds::Mix(left, what, at, gain * std::sqrt(1 - side));
        sounds::Mix(right, what, at, gain * std::sqrt(side));
    }
};

Samples Whistle(double seconds, double pitch, Random &random)
{
    // It climbs, quavers and goes thin with the distance.
    Samples tone =
        sounds::Tone(seconds, { { 0, pitch * 0.55 }, { seconds * 0.35, pitch }, { seconds, pitch * 1.35 } },
                     { { 0, 0 }, { 0.08, 1 }, { seconds * 0.7, 0.55 }, { seconds, 0 } });
    for (std::size_t index = 0; index < tone.size(); ++index)
        tone[index] *= 0.8 + 0.2 * std::sin(double(index) / kRate * 2 * sounds::kPi * 27);
    const Samples air = sounds::Shaped(
        sounds::Filtered(sounds::Noise(seconds, random), Pass::Band, { { 0, 900 }, { seconds, 3600 } }, 1.5),
        { { 0, 0 }, { 0.05, 0.5 }, { seconds, 0 } });
    sounds::Mix(tone, air);
    return tone;
}

Samples Whoosh(double seconds, Random &random)
{
    return sounds::Shaped(
        sounds::Filtered(sounds::Noise(seconds, random), Pass::Band, { { 0, 500 }, { seconds, 1900 } }, 0.9),
        { { 0, 0 }, { 0.04, 0.9 }, { seconds * 0.5, 0.35 }, { seconds, 0 } });
}

// `size` 1 is an ordinary shell.
Samples Bang(double size, Random &random)
{
    Samples bang = sounds::Tone(0.9, { { 0, 92 / size }, { 0.12, 52 / size }, { 0.9, 36 / size } },
                                { { 0, 0 }, { 0.006, 1.25 }, { 0.16, 0.6 }, { 0.9, 0 } });
    const Samples body =
        sounds::Shaped(sounds::Filtered(sounds::Noise(1.3, random), Pass::Low,
                                        { { 0, 3200 }, { 0.12, 900 }, { 1.3, 260 } }, 0.7),
                       { { 0, 0 }, { 0.004, 2.3 }, { 0.06, 1.0 }, { 0.35, 0.32 }, { 1.3, 0 } });
    const Samples snap = sounds::Shaped(sounds::Filtered(sounds::Noise(0.07, random), Pass::High, 1800, 0.7),
                                        { { 0, 0.7 }, { 0.07, 0 } });
    sounds::Mix(bang, body);
    sounds::Mix(bang, snap);
    return bang;
}

Samples Echo(const Samples &bang)
{
    Samples far = sounds::Filtered(bang, Pass::Low, 620, 0.6);
    Samples echo;
    sounds::Mix(echo, far, 0, 1);
    sounds::Mix(echo, far, 0.13, 0.6);
    sounds::Mix(echo, far, 0.29, 0.4);
    return echo;
}

Samples Crackle(double seconds, int count, Random &random)
{
    Samples crackle = sounds::Silence(seconds + 0.05);
    for (int snap = 0; snap < count; ++snap) {
        const double at = random.Between(0, 1) * random.Between(0.3, 1) * seconds;
        const Samples click = sounds::Shaped(
            sounds::Filtered(sounds::Noise(0.016, random), Pass::Band, random.Between(2200, 6200), 1.2),
            { { 0, 1 }, { 0.004, 0.6 }, { 0.016, 0 } });
        sounds::Mix(crackle, click, at, random.Between(0.25, 1));
    }
    return crackle;
}

Samples Hiss(double seconds, Random &random)
{
    return sounds::Shaped(sounds::Filtered(sounds::Noise(seconds, random), Pass::High, 3800, 0.7),
                          { { 0, 0 }, { 0.5, 0.5 }, { seconds * 0.6, 0.35 }, { seconds, 0 } });
}

Samples Bell(double pitch)
{
    return sounds::Struck(2.4, { { pitch, 0.6, 0.9 },
                                 { pitch * 2.0, 0.28, 0.6 },
                                 { pitch * 2.76, 0.12, 0.35 },
                                 { pitch * 5.4, 0.05, 0.15 } });
}

// How long the sound is under way over the lake, which makes the show as far away as it looks: 120 ms from
// the shore, 190 from the top of the picture.
double Late(double y)
{
    return 0.12 + 0.07 * (kShore - y) / kShore;
}

void AddShell(Stereo &sound, const Shell &seen, int number)
{
    Shell shell = seen;
    shell.at += Late(seen.y);
    Random random(500 + unsigned(number));
    const double size = std::clamp(shell.size / 100, 0.6, 1.6);
    if (shell.kind == Kind::Mine) {
        sound.Add(Bang(1.25, random), shell.at, 0.5, shell.x);
        sound.Add(Whoosh(1.1, random), shell.at, 0.5, shell.x);
        sound.Add(Crackle(1.4, 50, random), shell.at + 0.5, 0.16, shell.x);
        return;
    }
    const double from = std::max(0.0, seen.at - seen.rise) + Late(kShore);
    const double rise = shell.at - from;
    sound.Add(Bang(1.7, random), from, 0.13, 320);
    if (shell.whistles)
        sound.Add(Whistle(rise, random.Between(1500, 1900), random), from, 0.15, shell.x);
    else
        sound.Add(Whoosh(rise, random), from, 0.16, shell.x);

    const Samples bang = Bang(size, random);
    sound.Add(bang, shell.at, 0.62 * size, shell.x);
    sound.Add(Echo(bang), shell.at + 0.31, 0.22 * size, kWidth - shell.x);
    switch (shell.kind) {
    case Kind::Crackle:
        sound.Add(Crackle(1.5, 210, random), shell.at + 0.75, 0.3, shell.x);
        break;
    case Kind::Crossette: {
        for (int snap = 0; snap < 22; ++snap)
            sound.Add(Bang(0.5, random), shell.at + 0.75 + random.Between(-0.04, 0.12), 0.05,
                      shell.x + random.Between(-120, 120));
        break;
    }
    case Kind::Willow:
        sound.Add(Hiss(3.2, random), shell.at + 0.25, 0.11, shell.x);
        [[fallthrough]];
    case Kind::Palm:
        sound.Add(Crackle(2.4, 70, random), shell.at + 0.5, 0.1, shell.x);
        break;
    case Kind::Star:
    case Kind::Heart:
    case Kind::LetterA:
    case Kind::LetterB:
    case Kind::LetterC:
        sound.Add(Crackle(1.1, 80, random), shell.at + 1.5, 0.14, shell.x);
        break;
    default:
        break;
    }
    // Five notes that agree in any order; the three letters climb.
    constexpr std::array<double, 5> kNotes{ 523.25, 587.33, 659.26, 783.99, 880.0 };
    double note = kNotes[std::size_t(number * 3 % 5)];
    if (shell.kind == Kind::LetterA)
        note = 523.25;
    else if (shell.kind == Kind::LetterB)
        note = 659.26;
    else if (shell.kind == Kind::LetterC)
        note = 783.99;
    sound.Add(Bell(note), shell.at + 0.05, 0.13, shell.x);
    sound.Add(Bell(note * 1.5), shell.at + 0.18, 0.06, kWidth - shell.x);
}

} // namespace

void WriteSound(const std::string &file)
{
    const std::size_t length = sounds::Count(kSeconds);
    Stereo sound{ Samples(length, 0.0), Samples(length, 0.0) };
    int number = 0;
    for (const Shell &shell : Evening())
        AddShell(sound, shell, number++);

    std::vector<std::int16_t> samples;
    samples.reserve(length * 2);
    for (std::size_t index = 0; index < length; ++index) {
        const double left = double(length - index) / kRate; // seconds
        const double gain = std::min(1.0, left / 1.1);
        // A soft ceiling: the finale stays full and never rattles.
        for (const double sample : { sound.left[index], sound.right[index] })
            samples.push_back(std::int16_t(std::tanh(sample * gain * 0.9) * 0.5 * 32767));
    }
    std::ofstream out(file, std::ios::binary);
    out << sounds::Wave(samples, 2, kRate);
    if (!out.flush())
        throw std::runtime_error("cannot write " + file);
}

} // namespace fireworks
