#include "Effects.h"

#include <cmath>

// Things that are held, struck, turned over and written with.
namespace sounds {

namespace {

// Three notes of a horn without valves. The third is aimed well and then slips to its neighbour and back, and
// is not held to its end without going flat.
Samples Fanfare(Random &random)
{
    const auto note = [&random](double seconds, double pitch) {
        return Brass(
            seconds,
            { { 0, pitch * 0.955 }, { 0.045, pitch * 1.006 }, { 0.09, pitch }, { seconds, pitch * 0.995 } },
            { { 0, 0.05 }, { 0.03, 0.95 }, { 0.07, 0.72 }, { seconds - 0.07, 0.78 }, { seconds, 0 } },
            random);
    };
    const auto spit = [&random] {
        return Shaped(Filtered(Noise(0.05, random), Pass::Band, 1900, 0.8),
                      { { 0, 0 }, { 0.008, 1 }, { 0.05, 0 } });
    };
    Samples blown = Silence(1.5);
    Mix(blown, note(0.20, 392));
    Mix(blown, spit(), 0, 0.9);
    Mix(blown, note(0.19, 392), 0.29);
    Mix(blown, spit(), 0.29, 0.9);

    const double held = 0.74;
    Curve crack{ { 0, 496 },     { 0.05, 527 }, { 0.1, 523 },  { 0.235, 523 }, { 0.247, 655 }, { 0.305, 662 },
                 { 0.319, 515 }, { 0.38, 521 }, { 0.52, 519 }, { 0.64, 500 },  { held, 462 } };
    Curve force{ { 0, 0.05 },   { 0.035, 1 },    { 0.09, 0.8 },  { 0.22, 0.9 }, { 0.247, 0.5 },
                 { 0.3, 0.62 }, { 0.325, 0.95 }, { 0.56, 0.85 }, { 0.66, 0.6 }, { held, 0 } };
    Samples last = Brass(held, crack, force, random);
    // He strains: it shakes ever faster.
    for (std::size_t index = 0; index < last.size(); ++index) {
        const double time = double(index) / kRate;
        const double shake = Curve{ { 0.33, 0 }, { 0.5, 0.28 }, { 0.7, 0.4 } }(time);
        last[index] *= 1 - shake * (0.5 + 0.5 * std::sin(2 * kPi * (6 + 6 * time) * time));
    }
    Mix(blown, last, 0.61);
    Mix(blown, spit(), 0.61, 1.1);
    // The last breath finds no note any more.
    Mix(blown,
        Brass(0.16, { { 0, 240 }, { 0.16, 190 } }, { { 0, 0 }, { 0.03, 0.35 }, { 0.09, 0.25 }, { 0.16, 0 } },
              random),
        1.33, 0.5);
    return InRoom(blown, 0.16, 0.26);
}

Samples Knock(Random &random)
{
    Samples knock = Struck(0.2, { { 1180, 0.7, 0.018 },
                                  { 1730, 0.9, 0.028 },
                                  { 2610, 0.8, 0.024 },
                                  { 3890, 0.6, 0.016 },
                                  { 5480, 0.4, 0.010 },
                                  { 310, 0.8, 0.012 } });
    Mix(knock, Shaped(Filtered(Noise(0.02, random), Pass::Band, 2400, 0.8), { { 0, 1 }, { 0.02, 0 } }), 0,
        0.8);
    return InRoom(knock, 0.10, 0.08);
}

Samples Clink(Random &)
{
    Samples clink = Struck(0.75, { { 2093, 0.55, 0.22 },
                                   { 2811, 0.5, 0.18 },
                                   { 4410, 0.45, 0.14 },
                                   { 6003, 0.35, 0.09 },
                                   { 8120, 0.25, 0.05 },
                                   { 1046, 0.3, 0.10 } });
    Mix(clink, Struck(0.5, { { 2217, 0.3, 0.16 }, { 3020, 0.25, 0.12 }, { 5230, 0.2, 0.07 } }), 0.055, 0.7);
    return InRoom(clink, 0.12, 0.1);
}

// A roll that grows and the stroke for which it was.
Samples Drum(Random &random)
{
    const auto stroke = [&random](double pitch, double seconds) {
        Samples skin = Tone(seconds, { { 0, pitch * 1.7 }, { 0.035, pitch * 1.08 }, { seconds, pitch } },
                            { { 0, 0 }, { 0.003, 1 }, { seconds * 0.35, 0.3 }, { seconds, 0 } });
        Mix(skin, Shaped(Filtered(Noise(0.05, random), Pass::Band, 900, 0.7), { { 0, 0.8 }, { 0.05, 0 } }));
        Mix(skin, Shaped(Filtered(Noise(seconds * 0.6, random), Pass::High, 3000),
                         { { 0, 0.22 }, { seconds * 0.6, 0 } }));
        return skin;
    };
    Samples drum;
    for (int beat = 0; beat < 11; ++beat)
        Mix(drum, stroke(190 + random.Between(-6, 6), 0.1), beat * 0.047 + random.Between(0, 0.005),
            0.26 + beat * 0.05);
    Mix(drum, stroke(118, 0.36), 0.55, 1.25);
    return InRoom(drum, 0.14, 0.15, 2500);
}

Samples Rustle(Random &random, double seconds, const Curve &gain, const Curve &colour, double crackles)
{
    Samples paper = Shaped(Filtered(Noise(seconds, random), Pass::Band, colour, 0.9), gain);
    // Paper speaks in many small cracks.
    for (int crack = 0; crack < int(seconds * crackles); ++crack) {
        const double at = random.Between(0, seconds * 0.95);
        const Samples snap =
            Shaped(Filtered(Noise(0.012, random), Pass::Band, random.Between(1800, 6500), 2.5),
                   { { 0, 1 }, { 0.012, 0 } });
        Mix(paper, snap, at, random.Between(0.3, 2.2) * gain(at));
    }
    return paper;
}

Samples Page(Random &random)
{
    Samples page = Rustle(random, 0.46,
                          { { 0, 0 }, { 0.05, 0.35 }, { 0.2, 0.6 }, { 0.34, 1 }, { 0.38, 0.3 }, { 0.46, 0 } },
                          { { 0, 2200 }, { 0.3, 4200 }, { 0.46, 1800 } }, 90);
    Mix(page, Shaped(Filtered(Noise(0.06, random), Pass::Low, 500), { { 0, 0 }, { 0.01, 1 }, { 0.06, 0 } }),
        0.36, 1.4);
    return InRoom(page, 0.05, 0.06);
}

Samples BookOpen(Random &random)
{
    Samples book = Rustle(random, 0.34, { { 0, 0 }, { 0.08, 0.5 }, { 0.22, 0.25 }, { 0.34, 0 } },
                          { { 0, 1500 }, { 0.3, 2800 } }, 40);
    Mix(book, Struck(0.16, { { 128, 1, 0.03 }, { 205, 0.7, 0.022 }, { 410, 0.3, 0.012 } }), 0.14, 0.9);
    return InRoom(book, 0.08, 0.08);
}

Samples Comic(Random &random)
{
    return Rustle(random, 0.26, { { 0, 0 }, { 0.03, 0.8 }, { 0.1, 0.4 }, { 0.17, 1 }, { 0.26, 0 } },
                  { { 0, 3600 }, { 0.2, 5200 } }, 170);
}

Samples Unroll(Random &random)
{
    Samples roll = Rustle(random, 0.62, { { 0, 0 }, { 0.06, 0.6 }, { 0.4, 0.8 }, { 0.5, 1 }, { 0.62, 0 } },
                          { { 0, 900 }, { 0.5, 2600 } }, 150);
    for (int turn = 0; turn < 9; ++turn)
        Mix(roll, Struck(0.05, { { 520 + 30.0 * turn, 0.5, 0.008 }, { 1400, 0.25, 0.004 } }),
            0.05 + 0.055 * turn, 0.5);
    return InRoom(roll, 0.06, 0.06);
}

// A narrow strip that runs off its roll and flutters at its end.
Samples Strip(Random &random)
{
    Samples strip = Rustle(random, 0.5, { { 0, 0 }, { 0.03, 0.5 }, { 0.24, 1 }, { 0.32, 0.3 }, { 0.5, 0 } },
                           { { 0, 2200 }, { 0.25, 6000 }, { 0.5, 3800 } }, 120);
    for (int turn = 0; turn < 14; ++turn)
        Mix(strip,
            Shaped(Filtered(Noise(0.012, random), Pass::Band, 2500 + 220 * turn, 3),
                   { { 0, 1.6 }, { 0.012, 0 } }),
            0.01 + 0.26 * std::pow(turn / 14.0, 0.8));
    for (int flap = 0; flap < 4; ++flap)
        Mix(strip,
            Shaped(Filtered(Noise(0.03, random), Pass::Band, 1500, 1),
                   { { 0, 0 }, { 0.01, 1.2 }, { 0.03, 0 } }),
            0.29 + 0.05 * flap, 1 - 0.2 * flap);
    return InRoom(strip, 0.05, 0.05);
}

// Two strokes of a pen, there and back. A quill grates, a pencil hisses.
Samples Strokes(Random &random, double colour, double grain)
{
    Samples strokes = Silence(0.3);
    for (int stroke = 0; stroke < 2; ++stroke) {
        const double seconds = stroke == 0 ? 0.13 : 0.12;
        Samples scratch = Filtered(Noise(seconds, random), Pass::Band,
                                   { { 0, colour }, { seconds, colour * (stroke ? 0.75 : 1.3) } }, 1.6);
        double grate = 0;
        for (std::size_t index = 0; index < scratch.size(); ++index) {
            grate += (grain * (1 + 0.3 * random.Next())) / kRate;
            scratch[index] *= 0.35 + 0.65 * std::pow(std::abs(std::sin(kPi * grate)), 3);
        }
        scratch = Shaped(scratch, { { 0, 0 }, { 0.02, 1 }, { seconds * 0.8, 0.7 }, { seconds, 0 } });
        Mix(strokes, scratch, 0.005 + 0.152 * stroke, stroke ? 0.8 : 1);
    }
    return strokes;
}

Samples Quill(Random &random)
{
    return Strokes(random, 3300, 130);
}

Samples Pencil(Random &random)
{
    Samples pencil;
    for (int stroke = 0; stroke < 7; ++stroke) {
        Samples line = Filtered(Noise(0.062, random), Pass::Band,
                                { { 0, stroke % 2 ? 4200.0 : 5400.0 }, { 0.062, 4700 } }, 1.1);
        Mix(pencil, Shaped(line, { { 0, 0 }, { 0.012, 1 }, { 0.045, 0.8 }, { 0.062, 0 } }), 0.066 * stroke,
            1 - 0.05 * stroke);
    }
    return pencil;
}

Samples Bead(Random &random)
{
    Samples bead = Struck(
        0.09, { { 1900, 0.8, 0.009 }, { 3150, 0.6, 0.007 }, { 5300, 0.3, 0.004 }, { 640, 0.5, 0.012 } });
    Mix(bead, Struck(0.06, { { 2150, 0.5, 0.007 }, { 3600, 0.4, 0.005 } }), 0.021, 0.6);
    Mix(bead, Shaped(Filtered(Noise(0.006, random), Pass::High, 3000), { { 0, 0.4 }, { 0.006, 0 } }));
    return InRoom(bead, 0.06, 0.04);
}

// Brass tubes that slide out of each other, one stop after the other.
Samples Spyglass(Random &random)
{
    Samples glass;
    for (int tube = 0; tube < 3; ++tube) {
        const double at = 0.1 * tube;
        Samples slide = Shaped(Filtered(Noise(0.09, random), Pass::Band,
                                        { { 0, 1500.0 + 500 * tube }, { 0.09, 2600.0 + 700 * tube } }, 3),
                               { { 0, 0 }, { 0.03, 0.7 }, { 0.08, 0.9 }, { 0.09, 0 } });
        Mix(glass, slide, at);
        Mix(glass,
            Struck(0.12, { { 1240.0 + 260 * tube, 0.7, 0.02 },
                           { 2900.0 + 500 * tube, 0.6, 0.014 },
                           { 4700, 0.3, 0.008 } }),
            at + 0.085, 0.9);
    }
    return InRoom(glass, 0.1, 0.08);
}

// A dry hinge: the spyglass turns.
Samples Squeak(Random &random)
{
    Samples squeak = Tone(0.28, { { 0, 1150 }, { 0.12, 1420 }, { 0.28, 1260 } },
                          { { 0, 0 }, { 0.05, 0.6 }, { 0.2, 0.5 }, { 0.28, 0 } });
    Mix(squeak, Tone(0.28, { { 0, 2310 }, { 0.12, 2845 }, { 0.28, 2525 } },
                     { { 0, 0 }, { 0.06, 0.35 }, { 0.28, 0 } }));
    double grate = 0;
    for (double &sample : squeak) {
        grate += 55 * (1 + 0.5 * random.Next()) / kRate;
        sample *= 0.55 + 0.45 * std::sin(2 * kPi * grate);
    }
    return InRoom(squeak, 0.08, 0.06);
}

// A thought that lights up.
Samples Bulb(Random &random)
{
    Samples bulb = Struck(0.7, { { 1568, 0.9, 0.22 }, { 3136, 0.35, 0.12 }, { 6300, 0.15, 0.05 } });
    Mix(bulb, Struck(0.7, { { 2093, 0.9, 0.24 }, { 4186, 0.3, 0.12 }, { 8372, 0.1, 0.04 } }), 0.075);
    Mix(bulb, Shaped(Filtered(Noise(0.012, random), Pass::Band, 3200, 1), { { 0, 0.9 }, { 0.012, 0 } }));
    return InRoom(bulb, 0.12, 0.14);
}

// A switch on a cord, and the light.
Samples Cord(Random &random)
{
    Samples cord = Struck(0.05, { { 900, 0.8, 0.008 }, { 2400, 0.9, 0.005 }, { 4100, 0.5, 0.003 } });
    Mix(cord, Struck(0.05, { { 1150, 0.6, 0.006 }, { 2900, 0.7, 0.004 } }), 0.045);
    Samples light = Bulb(random);
    light.resize(Count(0.85), 0);
    Mix(cord, light, 0.07, 0.8);
    return cord;
}

// Beak on seed.
Samples Nibble(Random &random)
{
    Samples nibble;
    for (int bite = 0; bite < 3; ++bite) {
        Mix(nibble,
            Struck(0.05, { { 1500 + random.Between(0, 500), 0.6, 0.005 },
                           { 3400 + random.Between(0, 900), 0.7, 0.004 } }),
            0.055 * bite);
        Mix(nibble, Shaped(Filtered(Noise(0.03, random), Pass::Band, 4200, 1.2), { { 0, 0.7 }, { 0.03, 0 } }),
            0.055 * bite + 0.006);
    }
    return nibble;
}

// The rosette: two small horns that are proud of each other.
Samples Tada(Random &random)
{
    const auto chord = [&random](double seconds, double force) {
        Samples both;
        for (const double pitch : { 523.3, 659.3, 784.0 })
            Mix(both,
                Brass(seconds, { { 0, pitch * 0.97 }, { 0.04, pitch } },
                      { { 0, 0.02 },
                        { 0.03, force },
                        { 0.08, force * 0.8 },
                        { seconds * 0.7, force * 0.75 },
                        { seconds, 0 } },
                      random),
                random.Between(0, 0.008), 0.5);
        return both;
    };
    Samples tada;
    Mix(tada, chord(0.12, 0.6));
    Mix(tada, chord(0.62, 0.75), 0.17);
    Mix(tada, Struck(0.5, { { 3136, 0.5, 0.12 }, { 4186, 0.4, 0.1 }, { 6272, 0.2, 0.05 } }), 0.2, 0.5);
    return InRoom(tada, 0.14, 0.2);
}

constexpr Effect kEffects[] = {
    { "fanfare", -20.5, Fanfare }, { "knock", -26, Knock },   { "clink", -27, Clink },
    { "drum", -26, Drum },         { "page", -30, Page },     { "book", -30, BookOpen },
    { "comic", -31, Comic },       { "unroll", -29, Unroll }, { "strip", -28, Strip },
    { "quill", -33, Quill },       { "pencil", -34, Pencil }, { "bead", -29, Bead },
    { "spyglass", -29, Spyglass }, { "squeak", -35, Squeak }, { "bulb", -27, Bulb },
    { "cord", -27, Cord },         { "nibble", -32, Nibble }, { "tada", -25, Tada },
};

} // namespace

std::span<const Effect> PropEffects()
{
    return kEffects;
}

} // namespace sounds
