#pragma once

#include <array>
#include <vector>

// What goes up when. Pictures and sound are made from the same list, so that every bang belongs to its light.
namespace fireworks {

constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kPicturesPerSecond = 25;
constexpr double kSeconds = 20.8;
constexpr double kShore = 396; // where the lake begins, in pixels from the top

struct Colour {
    float red, green, blue;
};

enum class Kind {
    Peony,         // a ball of plain stars
    Chrysanthemum, // the stars draw trails
    Willow,        // long golden rain
    Palm,          // few thick arms
    Ring,          // a tilted ring round a small ball
    Crackle,       // the stars end in white snaps
    Crossette,     // every star breaks into four
    Star,          // drawings in the sky
    Heart,
    LetterA,
    LetterB,
    LetterC,
    Mine, // a fan of comets from the shore
};

struct Shell {
    Kind kind;
    double at; // second of the burst
    double x, y;
    double size; // radius in pixels
    Colour first, last;
    double rise = 1.2; // seconds from the shore to the burst
    bool whistles = false;
};

// One star of a burst: it flies by the burst's time, slowed by the air and drawn down.
struct Star {
    double born = 0; // seconds after the burst
    double x = 0, y = 0;
    double speedX = 0, speedY = 0; // pixels a second, y downwards
    double drag = 2;
    double fall = 45; // pixels per second squared
    double life = 2;
    double trail = 0; // seconds of its way that still glow
    float size = 1;
    bool snaps = false;    // flickers white at its end
    bool glitters = false; // the trail is broken up
    Colour first{}, last{};

    struct Place {
        double x, y;
    };
    Place At(double age) const;
};

// The whole evening, in order of the bursts.
std::vector<Shell> Evening();

// What a shell bursts into; the same for the same number.
std::vector<Star> StarsOf(const Shell &shell, unsigned number);

} // namespace fireworks
