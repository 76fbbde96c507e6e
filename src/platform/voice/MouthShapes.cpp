#include "platform/voice/MouthShapes.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace platform {

namespace {

// Where the second half of a diphthong begins.
constexpr double kDiphthongTurn = 0.52;
// Lips need this long to close, so they start before the sound.
constexpr double kLipsAhead = 0.040;
// A formed sound begins with the burst; the lips are closed for this long before it.
constexpr double kClosureAhead = 0.055;
// A shape shorter than this is a flicker.
constexpr double kShortestShape = 0.060;

// No two shapes begin at once.
constexpr double kApart = 0.001;

struct Shapes {
    std::string_view phone;
    Mouth first;
    Mouth second;
};

// clang-format off
constexpr Shapes kShapes[] = {
    { "pau", Mouth::Rest, Mouth::Rest },
    { "p",  Mouth::MBP,  Mouth::MBP },  { "b",  Mouth::MBP,  Mouth::MBP },  { "m",  Mouth::MBP,  Mouth::MBP },
    { "f",  Mouth::FV,   Mouth::FV },   { "v",  Mouth::FV,   Mouth::FV },
    { "th", Mouth::ThL,  Mouth::ThL },  { "dh", Mouth::ThL,  Mouth::ThL },  { "l",  Mouth::ThL,  Mouth::ThL },
    { "aa", Mouth::AA,   Mouth::AA },   { "ae", Mouth::AA,   Mouth::AA },   { "ah", Mouth::AA,   Mouth::AA },
    { "eh", Mouth::EH,   Mouth::EH },   { "ax", Mouth::EH,   Mouth::EH },   { "er", Mouth::EH,   Mouth::EH },
    { "iy", Mouth::EE,   Mouth::EE },   { "ih", Mouth::EE,   Mouth::EE },   { "y",  Mouth::EE,   Mouth::EE },
    { "ao", Mouth::OH,   Mouth::OH },
    { "uw", Mouth::OO,   Mouth::OO },   { "uh", Mouth::OO,   Mouth::OO },   { "w",  Mouth::OO,   Mouth::OO },
    { "r",  Mouth::OO,   Mouth::OO },
    { "ay", Mouth::AA,   Mouth::EE },   { "aw", Mouth::AA,   Mouth::OO },
    { "ey", Mouth::EH,   Mouth::EE },   { "oy", Mouth::OH,   Mouth::EE },   { "ow", Mouth::OH,   Mouth::OO },
};

// The same for formed voices, whose names are those of the engine.
constexpr Shapes kFormedShapes[] = {
    { "pau", Mouth::Rest, Mouth::Rest },
    { "p",  Mouth::MBP,  Mouth::MBP },  { "b",  Mouth::MBP,  Mouth::MBP },  { "m",  Mouth::MBP,  Mouth::MBP },
    { "m-", Mouth::MBP,  Mouth::MBP },
    { "f",  Mouth::FV,   Mouth::FV },   { "v",  Mouth::FV,   Mouth::FV },
    { "T",  Mouth::ThL,  Mouth::ThL },  { "D",  Mouth::ThL,  Mouth::ThL },  { "l",  Mouth::ThL,  Mouth::ThL },
    { "a",  Mouth::AA,   Mouth::AA },   { "aa", Mouth::AA,   Mouth::AA },   { "a:", Mouth::AA,   Mouth::AA },
    { "A",  Mouth::AA,   Mouth::AA },   { "A:", Mouth::AA,   Mouth::AA },   { "A@", Mouth::AA,   Mouth::AA },
    { "A~", Mouth::AA,   Mouth::AA },   { "V",  Mouth::AA,   Mouth::AA },
    { "E",  Mouth::EH,   Mouth::EH },   { "E:", Mouth::EH,   Mouth::EH },   { "e",  Mouth::EH,   Mouth::EH },
    { "e:", Mouth::EH,   Mouth::EH },   { "e@", Mouth::EH,   Mouth::EH },   { "@",  Mouth::EH,   Mouth::EH },
    { "@2", Mouth::EH,   Mouth::EH },   { "@-", Mouth::EH,   Mouth::EH },   { "a#", Mouth::EH,   Mouth::EH },
    { "3",  Mouth::EH,   Mouth::EH },   { "3:", Mouth::EH,   Mouth::EH },   { "E~", Mouth::EH,   Mouth::EH },
    { "i",  Mouth::EE,   Mouth::EE },   { "i:", Mouth::EE,   Mouth::EE },   { "I",  Mouth::EE,   Mouth::EE },
    { "I2", Mouth::EE,   Mouth::EE },   { "I#", Mouth::EE,   Mouth::EE },   { "j",  Mouth::EE,   Mouth::EE },
    { "O",  Mouth::OH,   Mouth::OH },   { "O:", Mouth::OH,   Mouth::OH },   { "O2", Mouth::OH,   Mouth::OH },
    { "O@", Mouth::OH,   Mouth::OH },   { "O~", Mouth::OH,   Mouth::OH },   { "o",  Mouth::OH,   Mouth::OH },
    { "o:", Mouth::OH,   Mouth::OH },   { "o@", Mouth::OH,   Mouth::OH },   { "0",  Mouth::OH,   Mouth::OH },
    { "u",  Mouth::OO,   Mouth::OO },   { "u:", Mouth::OO,   Mouth::OO },   { "U",  Mouth::OO,   Mouth::OO },
    { "U@", Mouth::OO,   Mouth::OO },   { "y",  Mouth::OO,   Mouth::OO },   { "y:", Mouth::OO,   Mouth::OO },
    { "Y",  Mouth::OO,   Mouth::OO },   { "w",  Mouth::OO,   Mouth::OO },   { "r",  Mouth::OO,   Mouth::OO },
    { "r-", Mouth::OO,   Mouth::OO },
    { "aI", Mouth::AA,   Mouth::EE },   { "aU", Mouth::AA,   Mouth::OO },   { "aI@", Mouth::AA,  Mouth::EH },
    { "eI", Mouth::EH,   Mouth::EE },   { "OI", Mouth::OH,   Mouth::EE },   { "oU", Mouth::OH,   Mouth::OO },
    { "@L", Mouth::EH,   Mouth::ThL },  { "i@", Mouth::EE,   Mouth::EH },
};
// clang-format on

Shapes ShapesOf(std::string_view phone, Alphabet alphabet)
{
    const auto table = alphabet == Alphabet::Recorded ? std::span<const Shapes>(kShapes)
                                                      : std::span<const Shapes>(kFormedShapes);
    const auto found = std::find_if(table.begin(), table.end(),
                                    [phone](const Shapes &shapes) { return shapes.phone == phone; });
    // All other sounds are made behind the teeth.
    return found != table.end() ? *found : Shapes{ phone, Mouth::Cons, Mouth::Cons };
}

struct Cue {
    double at;
    Mouth mouth;
};

bool MustBeSeen(Mouth mouth)
{
    return mouth == Mouth::MBP || mouth == Mouth::FV;
}

void MergeEqual(std::vector<Cue> &cues)
{
    const auto same = [](const Cue &left, const Cue &right) { return left.mouth == right.mouth; };
    cues.erase(std::unique(cues.begin(), cues.end(), same), cues.end());
}

std::vector<Cue> WithoutFlicker(const std::vector<Cue> &cues)
{
    std::vector<Cue> seen;
    for (std::size_t index = 0; index < cues.size(); ++index) {
        auto cue = cues[index];
        const bool last = index + 1 == cues.size();
        // Between closed lips the mouth opens, however shortly.
        const bool parts = !last && index > 0 && cue.mouth != Mouth::Rest &&
                           MustBeSeen(cues[index - 1].mouth) && MustBeSeen(cues[index + 1].mouth);
        if (!last && index > 0 && !parts && !MustBeSeen(cue.mouth) &&
            cues[index + 1].at - cue.at < kShortestShape) {
            // Closed lips open in time for the shape that follows; any other shape is held a little longer.
            const bool opens =
                !seen.empty() && (MustBeSeen(seen.back().mouth) || seen.back().mouth == Mouth::Rest);
            if (opens && index + 2 < cues.size() && !MustBeSeen(cues[index + 1].mouth)) {
                auto next = cues[++index];
                next.at = cue.at;
                cue = next;
            } else {
                continue;
            }
        }
        seen.push_back(cue);
    }
    return seen;
}

} // namespace

std::vector<MouthCue> MouthShapes(std::span<const SpokenSound> sounds, Alphabet alphabet)
{
    const auto ahead = alphabet == Alphabet::Recorded ? kLipsAhead : kClosureAhead;
    std::vector<Cue> cues{ { 0, Mouth::Rest } };
    double end = 0;
    for (const auto &sound : sounds) {
        const auto shapes = ShapesOf(sound.phone, alphabet);
        auto begins = sound.begins;
        if (shapes.first == Mouth::MBP)
            // The shape before keeps half of its time.
            begins = std::max(begins - ahead, (cues.back().at + begins) / 2);
        cues.push_back({ std::max(begins, cues.back().at + kApart), shapes.first });
        // A short diphthong has time for one shape, and that is the open one.
        const auto turn = sound.begins + (sound.ends - sound.begins) * kDiphthongTurn;
        if (shapes.second != shapes.first && sound.ends - turn >= kShortestShape)
            cues.push_back({ turn, shapes.second });
        end = sound.ends;
    }
    cues.push_back({ std::max(end, cues.back().at + kApart), Mouth::Rest });
    MergeEqual(cues);
    cues = WithoutFlicker(cues);
    MergeEqual(cues);
    std::vector<MouthCue> mouths;
    mouths.reserve(cues.size());
    for (const auto &cue : cues)
        mouths.push_back({ std::chrono::microseconds(std::llround(cue.at * 1e6)), cue.mouth });
    return mouths;
}

} // namespace platform
