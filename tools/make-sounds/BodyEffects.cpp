#include "Effects.h"

#include <cmath>

// Yawns, snores, hands and wings.
namespace sounds {

namespace {

// A yawn opens from a small round mouth to a wide one and closes on what is left of the breath.
Samples Yawn(Random &random, double seconds, double pitch, double size)
{
    const double t = seconds;
    return Throat(
        t,
        { { 0, pitch * 0.8 },
          { t * 0.25, pitch * 1.25 },
          { t * 0.45, pitch * 1.3 },
          { t * 0.8, pitch * 0.85 },
          { t, pitch * 0.6 } },
        { { 0, 0 }, { t * 0.12, 0.25 }, { t * 0.3, 1 }, { t * 0.6, 0.8 }, { t * 0.85, 0.3 }, { t, 0 } },
        { { 0, 0 }, { t * 0.1, 0.7 }, { t * 0.3, 0.3 }, { t * 0.7, 0.6 }, { t * 0.9, 0.5 }, { t, 0 } },
        { { { 0, 330 * size }, { t * 0.35, 740 * size }, { t * 0.6, 720 * size }, { t, 380 * size } },
          { { 0, 800 * size }, { t * 0.35, 1180 * size }, { t * 0.6, 1120 * size }, { t, 760 * size } },
          { { 0, 2300 * size }, { t * 0.4, 2600 * size }, { t, 2250 * size } } },
        random);
}

Samples MerlinYawn(Random &random)
{
    return InRoom(Yawn(random, 1.65, 132, 1.0), 0.06, 0.08);
}

Samples GenieYawn(Random &random)
{
    return InRoom(Yawn(random, 1.75, 92, 0.86), 0.09, 0.1);
}

Samples PeedyYawn(Random &random)
{
    return InRoom(Yawn(random, 1.15, 430, 1.55), 0.05, 0.06);
}

// Air drawn past something slack that beats `beats` times a second.
Samples Rattle(Random &random, double seconds, const Curve &beats, const Curve &first, const Curve &second,
               const Curve &gain)
{
    Samples rattle = Silence(seconds);
    Filter low, high;
    double phase = 0;
    double strength = 1;
    for (std::size_t index = 0; index < rattle.size(); ++index) {
        const double time = double(index) / kRate;
        phase += beats(time) / kRate;
        if (phase >= 1) {
            phase -= 1;
            strength = random.Between(0.6, 1);
        }
        const double slack = strength * std::exp(-phase * 3.5) * std::min(1.0, phase / 0.06);
        const double source = random.Next() * (0.12 + slack) + slack * 0.5;
        rattle[index] = gain(time) * (low.Step(Pass::Band, source, first(time), 2.5) +
                                      0.45 * high.Step(Pass::Band, source, second(time), 3));
    }
    return rattle;
}

// An old man on his staff: dry, and a puff through the beard.
Samples MerlinSnore(Random &random)
{
    Samples snore = Rattle(random, 1.25, { { 0, 27 }, { 0.7, 36 }, { 1.25, 30 } },
                           { { 0, 260 }, { 0.9, 380 } }, { { 0, 1000 }, { 1, 1400 } },
                           { { 0, 0 }, { 0.35, 1.5 }, { 1.0, 2.4 }, { 1.2, 1 }, { 1.25, 0 } });
    Mix(snore,
        Air(1.05, { { 0, 700 }, { 0.2, 950 }, { 1.05, 500 } },
            { { 0, 0 }, { 0.06, 0.6 }, { 0.3, 0.45 }, { 1.05, 0 } }, 1.6, random),
        1.5, 0.7);
    // The lips let go.
    for (int puff = 0; puff < 4; ++puff)
        Mix(snore, Air(0.05, 420, { { 0, 0 }, { 0.012, 0.9 }, { 0.05, 0 } }, 1.5, random), 1.5 + puff * 0.062,
            0.8 - puff * 0.15);
    return InRoom(snore, 0.05, 0.08, 2500);
}

// Far down and comfortable, with a whistle on the way out.
Samples GenieSnore(Random &random)
{
    Samples snore =
        Rattle(random, 0.62, { { 0, 19 }, { 0.4, 25 }, { 0.62, 21 } }, { { 0, 150 }, { 0.6, 230 } },
               { { 0, 620 }, { 0.6, 800 } }, { { 0, 0 }, { 0.2, 1.5 }, { 0.5, 2.2 }, { 0.62, 0 } });
    Mix(snore, Air(0.6, { { 0, 500 }, { 0.6, 350 } }, { { 0, 0 }, { 0.1, 0.7 }, { 0.6, 0 } }, 1.3, random),
        0.7, 0.5);
    Mix(snore,
        Tone(0.52, { { 0, 780 }, { 0.2, 850 }, { 0.52, 640 } }, { { 0, 0 }, { 0.12, 0.035 }, { 0.52, 0 } }),
        0.74);
    return InRoom(snore, 0.08, 0.06, 2500);
}

// Small, through the nose, and it whistles.
Samples PeedySnore(Random &random)
{
    Samples snore =
        Rattle(random, 0.55, { { 0, 44 }, { 0.55, 58 } }, { { 0, 900 }, { 0.5, 1250 } },
               { { 0, 2300 }, { 0.5, 2900 } }, { { 0, 0 }, { 0.25, 0.6 }, { 0.48, 1 }, { 0.55, 0 } });
    const Samples whistle = Tone(0.75, { { 0, 1750 }, { 0.15, 2350 }, { 0.5, 2050 }, { 0.75, 1500 } },
                                 { { 0, 0 }, { 0.12, 0.2 }, { 0.5, 0.13 }, { 0.75, 0 } });
    Mix(snore, whistle, 0.82);
    Mix(snore,
        Air(0.75, { { 0, 2200 }, { 0.75, 1500 } }, { { 0, 0 }, { 0.12, 0.3 }, { 0.75, 0 } }, 3, random), 0.82,
        0.6);
    return InRoom(snore, 0.05, 0.06);
}

Samples Palms(Random &random, double colour, double seconds)
{
    Samples clap = Shaped(Filtered(Noise(seconds, random), Pass::Band, colour, 1.1),
                          { { 0, 0 }, { 0.002, 1 }, { seconds * 0.3, 0.22 }, { seconds, 0 } });
    // Two hands never meet all at once.
    for (const double late : { 0.006, 0.011 })
        Mix(clap,
            Shaped(Filtered(Noise(0.02, random), Pass::Band, colour * 1.5, 1.3),
                   { { 0, 0 }, { 0.001, 1 }, { 0.02, 0 } }),
            late, 0.55);
    Mix(clap, Struck(0.06, { { colour * 0.3, 0.5, 0.012 } }), 0, 0.6);
    return clap;
}

Samples Clap(Random &random)
{
    return InRoom(Palms(random, 1500, 0.09), 0.14, 0.12);
}

Samples BigClap(Random &random)
{
    return InRoom(Palms(random, 820, 0.12), 0.16, 0.14);
}

// Some twenty people who are not seen.
Samples Applause(Random &random)
{
    Samples applause;
    for (int person = 0; person < 20; ++person) {
        const double colour = random.Between(900, 2300);
        const double pace = random.Between(0.13, 0.27);
        const double near = random.Between(0.25, 1);
        for (double at = random.Between(0, 0.25); at < 1.3; at += pace * random.Between(0.93, 1.07)) {
            const double swell = Curve{ { 0, 0.15 }, { 0.35, 1 }, { 0.9, 0.8 }, { 1.4, 0.1 } }(at);
            Mix(applause, Palms(random, colour * random.Between(0.9, 1.1), 0.06), at, near * swell);
        }
    }
    return InRoom(applause, 0.22, 0.12);
}

// A thumb goes up: two warm bars of wood.
Samples Bravo(Random &)
{
    Samples bravo = Struck(0.3, { { 392, 1, 0.10 }, { 1568, 0.3, 0.03 }, { 3900, 0.08, 0.008 } });
    Mix(bravo, Struck(0.6, { { 587.3, 1, 0.16 }, { 2349, 0.3, 0.04 }, { 5800, 0.06, 0.008 } }), 0.13);
    return InRoom(bravo, 0.14, 0.12);
}

// One beat of short wings: the stroke, and the feathers in it.
Samples Flap(Random &random)
{
    Samples flap =
        Shaped(Filtered(Noise(0.17, random), Pass::Band, { { 0, 500 }, { 0.06, 1150 }, { 0.17, 420 } }, 0.9),
               { { 0, 0 }, { 0.045, 1 }, { 0.09, 0.4 }, { 0.17, 0 } });
    for (int feather = 0; feather < 7; ++feather)
        Mix(flap,
            Shaped(Filtered(Noise(0.018, random), Pass::Band, random.Between(2200, 4800), 1.6),
                   { { 0, 0 }, { 0.005, 1 }, { 0.018, 0 } }),
            0.02 + 0.012 * feather, 0.3);
    Mix(flap, Tone(0.08, { { 0, 130 }, { 0.08, 75 } }, { { 0, 0 }, { 0.015, 0.2 }, { 0.08, 0 } }), 0.03);
    return flap;
}

Samples Landing(Random &random)
{
    Samples landing = Tone(0.12, { { 0, 190 }, { 0.12, 85 } }, { { 0, 0 }, { 0.005, 1 }, { 0.12, 0 } });
    Mix(landing, Shaped(Filtered(Noise(0.07, random), Pass::Low, 900), { { 0, 0.7 }, { 0.07, 0 } }));
    Mix(landing,
        Shaped(Filtered(Noise(0.12, random), Pass::Band, 2600, 1), { { 0, 0 }, { 0.03, 0.25 }, { 0.12, 0 } }),
        0.02);
    return InRoom(landing, 0.08, 0.06);
}

// Look here!
Samples Chirp(Random &random)
{
    Samples chirp;
    for (int call = 0; call < 2; ++call) {
        const double pitch = 1750 + 260 * call;
        Samples note = Tone(0.1, { { 0, pitch * 0.75 }, { 0.035, pitch * 1.3 }, { 0.1, pitch * 0.95 } },
                            { { 0, 0 }, { 0.015, 1 }, { 0.06, 0.7 }, { 0.1, 0 } });
        Mix(note, Tone(0.1, { { 0, pitch * 1.5 }, { 0.035, pitch * 2.6 }, { 0.1, pitch * 1.9 } },
                       { { 0, 0 }, { 0.02, 0.35 }, { 0.1, 0 } }));
        for (double &sample : note)
            sample *= 0.85 + 0.15 * random.Next();
        Mix(chirp, note, 0.14 * call);
    }
    return InRoom(chirp, 0.08, 0.08);
}

Samples Feathers(Random &random)
{
    Samples feathers =
        Shaped(Filtered(Noise(0.4, random), Pass::Band, { { 0, 1500 }, { 0.2, 3200 }, { 0.4, 1700 } }, 0.9),
               { { 0, 0 }, { 0.15, 0.8 }, { 0.4, 0 } });
    for (int feather = 0; feather < 16; ++feather)
        Mix(feathers,
            Shaped(Filtered(Noise(0.02, random), Pass::Band, random.Between(2500, 5500), 1.8),
                   { { 0, 0 }, { 0.006, 1 }, { 0.02, 0 } }),
            random.Between(0.02, 0.34), 0.45);
    return feathers;
}

constexpr Effect kEffects[] = {
    { "merlin-yawn", -30, MerlinYawn },
    { "genie-yawn", -30, GenieYawn },
    { "peedy-yawn", -31, PeedyYawn },
    { "merlin-snore", -33, MerlinSnore },
    { "genie-snore", -33, GenieSnore },
    { "peedy-snore", -35, PeedySnore },
    { "clap", -27, Clap },
    { "big-clap", -26, BigClap },
    { "applause", -30, Applause },
    { "bravo", -28, Bravo },
    { "flap", -29, Flap },
    { "landing", -29, Landing },
    { "chirp", -29, Chirp },
    { "feathers", -32, Feathers },
};

} // namespace

std::span<const Effect> BodyEffects()
{
    return kEffects;
}

} // namespace sounds
