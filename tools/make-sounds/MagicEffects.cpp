#include "Effects.h"

#include <cmath>

// Stars, mist, springs and the noise of air.
namespace sounds {

namespace {

// Small bells of one scale, thrown into the air; `rise` is where they lead, in octaves.
Samples Stars(Random &random, double seconds, int count, double low, double rise, double crowd)
{
    constexpr double kScale[] = { 1, 1.125, 1.25, 1.5, 1.667 };
    Samples stars = Silence(seconds);
    for (int star = 0; star < count; ++star) {
        const double way = std::pow(double(star) / count, crowd);
        const int step = int(random.Between(0, 4.999));
        const double octave = std::floor(rise * way + random.Between(0, 0.9));
        const double pitch = low * kScale[step] * std::pow(2, octave);
        const double at = way * (seconds - 0.3) + random.Between(0, 0.03);
        Mix(stars,
            Struck(0.28,
                   { { pitch, 0.8, 0.075 }, { pitch * 2.76, 0.35, 0.035 }, { pitch * 5.4, 0.12, 0.012 } }),
            at, random.Between(0.4, 1));
    }
    return stars;
}

// He is drawn out of a whirl of stars and stands there with a last bright stroke.
Samples StarWhirl(Random &random)
{
    Samples whirl = Stars(random, 0.95, 26, 1047, 1.6, 0.85);
    Mix(whirl, Air(0.95, { { 0, 500 }, { 0.5, 1700 }, { 0.85, 3200 }, { 0.95, 1500 } },
                   { { 0, 0 }, { 0.3, 0.3 }, { 0.8, 0.8 }, { 0.95, 0 } }, 2, random));
    Mix(whirl,
        Struck(0.45, { { 1047, 0.8, 0.13 },
                       { 1319, 0.7, 0.12 },
                       { 1568, 0.7, 0.12 },
                       { 2093, 0.7, 0.1 },
                       { 4186, 0.3, 0.06 } }),
        0.84, 0.9);
    return InRoom(whirl, 0.16, 0.06);
}

// The same backwards and smaller: cloth that folds, and a wink of light.
Samples FoldAway(Random &random)
{
    Samples fold = Air(0.75, { { 0, 2400 }, { 0.3, 1500 }, { 0.7, 420 } },
                       { { 0, 0 }, { 0.12, 0.9 }, { 0.3, 0.35 }, { 0.45, 0.8 }, { 0.75, 0 } }, 1.1, random);
    Mix(fold, Stars(random, 0.7, 9, 1568, -0.8, 1), 0.02, 0.35);
    Mix(fold, Struck(0.22, { { 2093, 0.8, 0.06 }, { 3136, 0.6, 0.05 }, { 6272, 0.2, 0.02 } }), 0.78, 0.7);
    return InRoom(fold, 0.1, 0.06);
}

Samples Sparkle(Random &random)
{
    Samples sparkle = Stars(random, 1.05, 30, 1319, 1.4, 1.6);
    Mix(sparkle,
        Air(0.5, { { 0, 2600 }, { 0.5, 6500 } }, { { 0, 0 }, { 0.02, 0.7 }, { 0.5, 0 } }, 1.2, random));
    Mix(sparkle, Tone(0.16, { { 0, 240 }, { 0.16, 90 } }, { { 0, 0 }, { 0.006, 0.9 }, { 0.16, 0 } }));
    return InRoom(sparkle, 0.18, 0.12);
}

Samples Twinkle(Random &random)
{
    return InRoom(Stars(random, 0.55, 10, 1568, 1.2, 1.2), 0.16, 0.1);
}

Samples Wand(Random &random)
{
    Samples wand = Stars(random, 0.9, 12, 2093, 0.9, 0.9);
    for (const double pitch : { 1046.5, 1049.9, 1568.0 })
        Mix(wand,
            Tone(0.9, { { 0, pitch * 0.9 }, { 0.5, pitch } }, { { 0, 0 }, { 0.45, 0.16 }, { 0.9, 0 } }));
    return InRoom(wand, 0.16, 0.08);
}

Samples Poof(Random &random)
{
    Samples poof = Air(0.8, { { 0, 300 }, { 0.05, 1500 }, { 0.25, 800 }, { 0.8, 350 } },
                       { { 0, 0 }, { 0.035, 1 }, { 0.16, 0.5 }, { 0.8, 0 } }, 0.6, random);
    Mix(poof,
        Tone(0.28, { { 0, 150 }, { 0.06, 110 }, { 0.28, 62 } }, { { 0, 0 }, { 0.02, 1.1 }, { 0.28, 0 } }), 0,
        0.6);
    Mix(poof, Stars(random, 0.6, 6, 1568, 0.8, 1), 0.12, 0.16);
    return InRoom(poof, 0.12, 0.14);
}

// Mist that is pressed out of a narrow spout, turns, and becomes somebody large.
Samples Lamp(Random &random)
{
    Samples lamp = Silence(1.28);
    // The swirl goes round: its colour and its strength with it.
    Samples mist = Noise(1.28, random);
    Filter round;
    for (std::size_t index = 0; index < mist.size(); ++index) {
        const double time = double(index) / kRate;
        const double turn = std::sin(2 * kPi * (2.2 * time + 2.6 * time * time));
        const double colour =
            Curve{ { 0, 2600 }, { 0.35, 1300 }, { 0.9, 700 }, { 1.28, 400 } }(time) * (1 + 0.4 * turn);
        const double gain = Curve{ { 0, 0 }, { 0.12, 0.55 }, { 0.7, 0.9 }, { 0.95, 1 }, { 1.28, 0 } }(time);
        mist[index] = round.Step(Pass::Band, mist[index], colour, 2.4) * gain * (0.75 + 0.25 * turn);
    }
    Mix(lamp, mist);
    // The spout sings as it gets wider.
    Mix(lamp, Tone(0.75, { { 0, 900 }, { 0.3, 620 }, { 0.75, 250 } },
                   { { 0, 0 }, { 0.1, 0.13 }, { 0.6, 0.1 }, { 0.75, 0 } }));
    Mix(lamp, Tone(0.4, { { 0, 70 }, { 0.2, 105 }, { 0.4, 80 } }, { { 0, 0 }, { 0.12, 0.22 }, { 0.4, 0 } }),
        0.82);
    Mix(lamp, Struck(0.4, { { 784, 0.5, 0.1 }, { 988, 0.4, 0.1 }, { 1175, 0.4, 0.1 } }), 0.9, 0.3);
    return InRoom(lamp, 0.13, 0.08);
}

Samples ThinOut(Random &random)
{
    Samples thin = Air(0.9, { { 0, 500 }, { 0.35, 1000 }, { 0.9, 4200 } },
                       { { 0, 0 }, { 0.2, 1 }, { 0.5, 0.55 }, { 0.9, 0 } }, 1.6, random);
    Mix(thin,
        Tone(0.8, { { 0, 220 }, { 0.5, 520 }, { 0.8, 1150 } }, { { 0, 0 }, { 0.2, 0.12 }, { 0.8, 0 } }));
    return InRoom(thin, 0.14, 0.1);
}

Samples RobeWhoosh(Random &random)
{
    Samples robe = Air(1.0, { { 0, 280 }, { 0.35, 950 }, { 0.7, 600 }, { 1.0, 260 } },
                       { { 0, 0 }, { 0.3, 1 }, { 0.6, 0.55 }, { 1.0, 0 } }, 0.8, random);
    // Cloth beats in the wind.
    for (int beat = 0; beat < 6; ++beat)
        Mix(robe, Air(0.09, 700 + 120 * (beat % 3), { { 0, 0 }, { 0.03, 1 }, { 0.09, 0 } }, 1.4, random),
            0.18 + 0.11 * beat, 0.45 - 0.05 * beat);
    return robe;
}

Samples MistWhoosh(Random &random)
{
    Samples mist = Air(0.95, { { 0, 450 }, { 0.3, 2000 }, { 0.95, 600 } },
                       { { 0, 0 }, { 0.24, 1 }, { 0.5, 0.45 }, { 0.95, 0 } }, 1.8, random);
    Mix(mist,
        Air(0.95, { { 0, 180 }, { 0.3, 420 }, { 0.95, 150 } }, { { 0, 0 }, { 0.26, 0.9 }, { 0.95, 0 } }, 1.2,
            random),
        0.02, 0.8);
    return mist;
}

// A hat through the air.
Samples Swish(Random &random)
{
    return Air(0.42, { { 0, 500 }, { 0.2, 2000 }, { 0.42, 700 } }, { { 0, 0 }, { 0.18, 1 }, { 0.42, 0 } },
               1.5, random);
}

// Bubbles rise through something thick and break.
Samples Pot(Random &random)
{
    Samples pot = Silence(1.9);
    for (double at = 0.03; at < 1.72; at += random.Between(0.05, 0.14)) {
        const double pitch = random.Between(230, 620);
        const double seconds = random.Between(0.06, 0.12);
        Mix(pot,
            Tone(seconds, { { 0, pitch }, { seconds * 0.7, pitch * 1.5 }, { seconds, pitch * 2.3 } },
                 { { 0, 0 }, { seconds * 0.25, 1 }, { seconds * 0.8, 0.6 }, { seconds, 0 } }),
            at, random.Between(0.25, 1));
        Mix(pot, Air(0.012, 1800, { { 0, 1 }, { 0.012, 0 } }, 1, random), at + seconds * 0.95, 0.25);
    }
    Mix(pot, Air(1.9, 300, { { 0, 0 }, { 0.3, 0.3 }, { 1.6, 0.3 }, { 1.9, 0 } }, 0.9, random), 0, 0.3);
    // The ladle goes along the wall.
    for (double at = 0.2; at < 1.6; at += 0.52)
        Mix(pot,
            Air(0.2, { { 0, 900 }, { 0.1, 1250 }, { 0.2, 950 } }, { { 0, 0 }, { 0.1, 0.35 }, { 0.2, 0 } }, 6,
                random),
            at);
    return InRoom(pot, 0.1, 0.08, 2500);
}

// Glass that is rubbed until it sings; two tones that beat.
Samples Crystal(Random &random)
{
    Samples hum = Silence(2.05);
    const Curve swell{ { 0, 0 }, { 0.5, 0.8 }, { 1.1, 1 }, { 1.6, 0.7 }, { 2.05, 0 } };
    double detune = 0;
    for (const double pitch : { 440.0, 442.6, 659.3, 661.9, 880.0, 1318.5, 1980.0 }) {
        detune += 0.7;
        Samples tone = Tone(2.05, { { 0, pitch * 0.985 }, { 0.8, pitch }, { 2.05, pitch * 0.995 } }, swell);
        for (std::size_t index = 0; index < tone.size(); ++index)
            tone[index] *= 0.75 + 0.25 * std::sin(2 * kPi * (2.4 + detune / 4) * double(index) / kRate);
        Mix(hum, tone, 0, 160 / pitch);
    }
    Mix(hum, Stars(random, 1.7, 5, 2637, 0.3, 1), 0.2, 0.05);
    return InRoom(hum, 0.2, 0.12);
}

// A spring that was pressed down and let go.
Samples Spring(Random &random, double pitch, double seconds)
{
    Samples spring = Silence(seconds);
    double phase = 0;
    for (std::size_t index = 0; index < spring.size(); ++index) {
        const double time = double(index) / kRate;
        const double swing = std::exp(-time * 2.6 / seconds);
        const double wobble = std::exp(-time * 1.2 / seconds);
        const double rate = 17 - 5 * time / seconds;
        const double frequency = pitch * (1 + 0.75 * (1 - std::exp(-time * 9)) * 0.8 +
                                          0.42 * wobble * std::sin(2 * kPi * rate * time));
        phase += 2 * kPi * frequency / kRate;
        spring[index] = swing *
                        (std::sin(phase) + 0.5 * std::sin(2 * phase) + 0.35 * std::sin(3 * phase) +
                         0.2 * std::sin(5 * phase)) *
                        std::min(1.0, time / 0.004) * std::min(1.0, (seconds - time) / 0.15);
    }
    Mix(spring, Air(0.03, 2500, { { 0, 0.8 }, { 0.03, 0 } }, 1, random));
    return spring;
}

Samples Boing(Random &random)
{
    return InRoom(Spring(random, 170, 0.85), 0.1, 0.1);
}

Samples SmallBoing(Random &random)
{
    return InRoom(Spring(random, 330, 0.6), 0.1, 0.1);
}

// Confetti: a cork, and what comes down afterwards.
Samples Confetti(Random &random)
{
    Samples pop =
        Tone(0.09, { { 0, 420 }, { 0.02, 900 }, { 0.09, 240 } }, { { 0, 0 }, { 0.004, 1.2 }, { 0.09, 0 } });
    Mix(pop,
        Air(0.14, { { 0, 3000 }, { 0.14, 900 } }, { { 0, 0 }, { 0.003, 1.5 }, { 0.14, 0 } }, 0.6, random));
    for (int piece = 0; piece < 38; ++piece) {
        const double at = 0.08 + 0.8 * std::pow(random.Between(0, 1), 0.8);
        Mix(pop, Air(0.02, random.Between(3000, 8000), { { 0, 1 }, { 0.02, 0 } }, 2, random), at,
            random.Between(0.1, 0.4) * (1.1 - at));
    }
    Mix(pop, Stars(random, 0.7, 7, 2093, 0.6, 1), 0.1, 0.2);
    return InRoom(pop, 0.1, 0.08);
}

// Something does not fit: three plucked notes that end as a question.
Samples Puzzle(Random &)
{
    Samples puzzle;
    double at = 0;
    for (const double pitch : { 311.1, 261.6, 370.0 }) {
        Mix(puzzle,
            Struck(0.3, { { pitch, 1, 0.09 },
                          { pitch * 2, 0.5, 0.06 },
                          { pitch * 3, 0.3, 0.04 },
                          { pitch * 4.02, 0.2, 0.02 } }),
            at);
        at += at > 0.1 ? 0.3 : 0.2;
    }
    return InRoom(puzzle, 0.12, 0.1);
}

// Round and round.
Samples Dizzy(Random &)
{
    Samples dizzy = Silence(1.2);
    double phase = 0;
    for (std::size_t index = 0; index < dizzy.size(); ++index) {
        const double time = double(index) / kRate;
        const double frequency = (700 - 180 * time) * (1 + 0.13 * std::sin(2 * kPi * 5 * time));
        phase += 2 * kPi * frequency / kRate;
        const double gain = Curve{ { 0, 0 }, { 0.08, 0.8 }, { 0.9, 0.6 }, { 1.2, 0 } }(time);
        dizzy[index] = gain * (std::sin(phase) + 0.2 * std::sin(2 * phase) + 0.1 * std::sin(3 * phase));
    }
    return InRoom(dizzy, 0.15, 0.1);
}

constexpr Effect kEffects[] = {
    { "star-whirl", -26, StarWhirl },
    { "fold-away", -28, FoldAway },
    { "sparkle", -26, Sparkle },
    { "twinkle", -29, Twinkle },
    { "wand", -29, Wand },
    { "poof", -26, Poof },
    { "lamp", -26, Lamp },
    { "thin-out", -28, ThinOut },
    { "robe-whoosh", -29, RobeWhoosh },
    { "mist-whoosh", -29, MistWhoosh },
    { "swish", -31, Swish },
    { "pot", -29, Pot },
    { "crystal", -29, Crystal },
    { "boing", -27, Boing },
    { "small-boing", -28, SmallBoing },
    { "confetti", -26, Confetti },
    { "puzzle", -29, Puzzle },
    { "dizzy", -31, Dizzy },
};

} // namespace

std::span<const Effect> MagicEffects()
{
    return kEffects;
}

} // namespace sounds
