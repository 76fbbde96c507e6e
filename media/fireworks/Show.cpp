#include "Show.h"

#include "Synthesis.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fireworks {

namespace {

using sounds::kPi;

constexpr Colour kLamp{ 1.0f, 0.72f, 0.28f };
constexpr Colour kGold{ 1.0f, 0.58f, 0.16f };
constexpr Colour kTeal{ 0.22f, 0.95f, 0.82f };
constexpr Colour kRose{ 1.0f, 0.26f, 0.46f };
constexpr Colour kRed{ 1.0f, 0.20f, 0.14f };
constexpr Colour kViolet{ 0.62f, 0.32f, 1.0f };
constexpr Colour kBlue{ 0.24f, 0.46f, 1.0f };
constexpr Colour kGreen{ 0.36f, 1.0f, 0.30f };
constexpr Colour kSilver{ 0.86f, 0.90f, 1.0f };
constexpr Colour kPink{ 1.0f, 0.55f, 0.85f };

struct Direction {
    double x, y, z;
};

// Evenly spread over a ball, with a little disorder.
std::vector<Direction> Ball(int count, sounds::Random &random)
{
    std::vector<Direction> ball;
    const double turn = random.Between(0, 2 * kPi);
    for (int index = 0; index < count; ++index) {
        const double height = 1 - 2 * (index + 0.5) / count + random.Between(-0.03, 0.03);
        const double radius = std::sqrt(std::max(0.0, 1 - height * height));
        const double angle = turn + index * 2.39996323 + random.Between(-0.08, 0.08);
        ball.push_back({ radius * std::cos(angle), height, radius * std::sin(angle) });
    }
    return ball;
}

Star Sent(const Shell &shell, double x, double y, double drag)
{
    Star star;
    star.x = shell.x;
    star.y = shell.y;
    star.drag = drag;
    star.speedX = x * shell.size * drag;
    star.speedY = y * shell.size * drag;
    star.first = shell.first;
    star.last = shell.last;
    return star;
}

using Stroke = std::vector<std::pair<double, double>>;

// Points along the strokes of a drawing that reaches from -1 to 1, y downwards.
std::vector<std::pair<double, double>> Along(const std::vector<Stroke> &strokes, double step)
{
    std::vector<std::pair<double, double>> points;
    for (const Stroke &stroke : strokes) {
        double left = 0;
        for (std::size_t index = 1; index < stroke.size(); ++index) {
            const auto [fromX, fromY] = stroke[index - 1];
            const auto [toX, toY] = stroke[index];
            const double length = std::hypot(toX - fromX, toY - fromY);
            double at = left;
            for (; at < length; at += step)
                points.push_back(
                    { fromX + (toX - fromX) * at / length, fromY + (toY - fromY) * at / length });
            left = at - length;
        }
    }
    return points;
}

Stroke Arc(double x, double y, double radiusX, double radiusY, double from, double to)
{
    Stroke stroke;
    for (int step = 0; step <= 24; ++step) {
        const double angle = (from + (to - from) * step / 24) * kPi / 180;
        stroke.push_back({ x + radiusX * std::cos(angle), y + radiusY * std::sin(angle) });
    }
    return stroke;
}

std::vector<Stroke> DrawingOf(Kind kind)
{
    switch (kind) {
    case Kind::Star: {
        Stroke stroke;
        for (int corner = 0; corner <= 10; ++corner) {
            const double radius = corner % 2 == 0 ? 1 : 0.42;
            const double angle = corner * kPi / 5;
            stroke.push_back({ radius * std::sin(angle), -radius * std::cos(angle) });
        }
        return { stroke };
    }
    case Kind::Heart: {
        Stroke stroke;
        for (int step = 0; step <= 60; ++step) {
            const double angle = step * 2 * kPi / 60;
            const double sine = std::sin(angle);
            stroke.push_back({ sine * sine * sine, -(13 * std::cos(angle) - 5 * std::cos(2 * angle) -
                                                     2 * std::cos(3 * angle) - std::cos(4 * angle)) /
                                                       15 });
        }
        return { stroke };
    }
    case Kind::LetterA:
        return { { { -0.8, 1 }, { 0, -1 }, { 0.8, 1 } }, { { -0.46, 0.25 }, { 0.46, 0.25 } } };
    case Kind::LetterB:
        return { { { -0.6, 1 }, { -0.6, -1 } },       { { -0.6, -1 }, { 0.1, -1 } },
                 Arc(0.1, -0.52, 0.5, 0.48, -90, 90), { { 0.1, -0.04 }, { -0.6, -0.04 } },
                 Arc(0.1, 0.48, 0.6, 0.52, -90, 90),  { { 0.1, 1 }, { -0.6, 1 } } };
    case Kind::LetterC:
        return { Arc(0.1, 0, 0.8, 1, 318, 42) };
    default:
        return {};
    }
}

void AddDrawing(std::vector<Star> &stars, const Shell &shell)
{
    for (const auto &[x, y] : Along(DrawingOf(shell.kind), 0.07)) {
        Star star = Sent(shell, x, y, 3.2);
        star.fall = 9;
        star.life = 2.7;
        star.trail = 0.05;
        star.size = 1.7f;
        star.snaps = true;
        stars.push_back(star);
    }
}

void AddBall(std::vector<Star> &stars, const Shell &shell, sounds::Random &random)
{
    const bool trails = shell.kind == Kind::Chrysanthemum;
    const int count = static_cast<int>(shell.size * (trails ? 1.35 : 1.7));
    for (const Direction &direction : Ball(count, random)) {
        const double force = random.Between(0.92, 1.04);
        Star star = Sent(shell, direction.x * force, direction.y * force, trails ? 1.7 : 2.1);
        star.life = random.Between(1.7, 2.1) + (trails ? 0.4 : 0);
        star.trail = trails ? 0.6 : 0.16;
        star.size = trails ? 1.1f : 1.4f;
        star.snaps = shell.kind == Kind::Crackle;
        stars.push_back(star);
    }
    if (shell.kind != Kind::Peony)
        return;
    Shell heart = shell; // a pistil of the other colour
    heart.size *= 0.42;
    for (const Direction &direction : Ball(count / 4, random)) {
        Star star = Sent(heart, direction.x, direction.y, 2.1);
        std::swap(star.first, star.last);
        star.life = 1.5;
        star.trail = 0.06;
        stars.push_back(star);
    }
}

void AddWillow(std::vector<Star> &stars, const Shell &shell, sounds::Random &random)
{
    for (const Direction &direction : Ball(static_cast<int>(shell.size * 0.95), random)) {
        const double force = random.Between(0.75, 1.05);
        Star star = Sent(shell, direction.x * force, direction.y * force * 0.92, 1.25);
        star.fall = 46;
        star.life = random.Between(2.9, 3.9);
        star.trail = 1.5;
        star.size = 1.0f;
        star.glitters = true;
        stars.push_back(star);
    }
}

void AddPalm(std::vector<Star> &stars, const Shell &shell, sounds::Random &random)
{
    constexpr int kArms = 13;
    for (int arm = 0; arm < kArms; ++arm) {
        const double angle = (arm + random.Between(-0.25, 0.25)) * 2 * kPi / kArms;
        for (int strand = 0; strand < 7; ++strand) {
            const double turned = angle + random.Between(-0.05, 0.05);
            const double force = random.Between(0.86, 1.06);
            Star star = Sent(shell, std::cos(turned) * force, std::sin(turned) * force * 0.85 - 0.12, 1.5);
            star.fall = 62;
            star.life = random.Between(1.9, 2.5);
            star.trail = 0.75;
            star.size = 1.25f;
            star.glitters = strand > 2;
            stars.push_back(star);
        }
    }
}

void AddRing(std::vector<Star> &stars, const Shell &shell, sounds::Random &random)
{
    const double tilt = random.Between(-0.5, 0.5);
    const int count = static_cast<int>(shell.size * 0.7);
    for (int index = 0; index < count; ++index) {
        const double angle = index * 2 * kPi / count;
        const double x = std::cos(angle);
        const double y = std::sin(angle) * 0.36;
        Star star = Sent(shell, x * std::cos(tilt) - y * std::sin(tilt),
                         x * std::sin(tilt) + y * std::cos(tilt), 2.3);
        star.life = 2.0;
        star.trail = 0.16;
        star.size = 1.35f;
        star.first = shell.last;
        stars.push_back(star);
    }
    Shell ball = shell;
    ball.size *= 0.58;
    ball.last = shell.first;
    for (const Direction &direction : Ball(static_cast<int>(shell.size * 0.7), random)) {
        Star star = Sent(ball, direction.x, direction.y, 2.2);
        star.life = random.Between(1.6, 1.9);
        star.trail = 0.08;
        star.size = 1.2f;
        stars.push_back(star);
    }
}

void AddCrossette(std::vector<Star> &stars, const Shell &shell, sounds::Random &random)
{
    constexpr double kBreak = 0.75;
    for (const Direction &direction : Ball(34, random)) {
        Star parent = Sent(shell, direction.x, direction.y, 1.5);
        parent.life = kBreak;
        parent.trail = 0.35;
        parent.size = 1.3f;
        stars.push_back(parent);
        const Star::Place place = parent.At(kBreak);
        const double turn = random.Between(0, kPi / 2);
        for (int branch = 0; branch < 4; ++branch) {
            Star star = parent;
            star.born = kBreak;
            star.x = place.x;
            star.y = place.y;
            star.speedX = std::cos(turn + branch * kPi / 2) * shell.size * 0.95;
            star.speedY = std::sin(turn + branch * kPi / 2) * shell.size * 0.95;
            star.drag = 2.6;
            star.life = random.Between(1.0, 1.3);
            star.trail = 0.4;
            star.size = 1.0f;
            star.first = shell.last;
            stars.push_back(star);
        }
    }
}

void AddMine(std::vector<Star> &stars, const Shell &shell, sounds::Random &random)
{
    constexpr int kComets = 21;
    for (int comet = 0; comet < kComets; ++comet) {
        const double lean = (comet - kComets / 2) * 0.065;
        const double force = random.Between(0.85, 1.1);
        Star star = Sent(shell, std::sin(lean) * force, -std::cos(lean) * force, 1.2);
        star.fall = 90;
        star.life = random.Between(1.4, 1.8);
        star.trail = 0.5;
        star.size = 1.3f;
        star.glitters = comet % 2 == 1;
        if (comet % 2 == 1)
            star.first = star.last = kLamp;
        stars.push_back(star);
    }
}

void AddFinale(std::vector<Shell> &shells)
{
    constexpr std::array<std::pair<Colour, Colour>, 6> kPairs{ { { kRose, kLamp },
                                                                 { kTeal, kSilver },
                                                                 { kViolet, kPink },
                                                                 { kGreen, kLamp },
                                                                 { kBlue, kTeal },
                                                                 { kRed, kGold } } };
    constexpr std::array<Kind, 5> kKinds{ Kind::Peony, Kind::Chrysanthemum, Kind::Ring, Kind::Crackle,
                                          Kind::Chrysanthemum };
    // Places that follow one another across the sky.
    constexpr std::array<std::pair<double, double>, 8> kPlaces{ { { 130, 190 },
                                                                  { 500, 150 },
                                                                  { 270, 120 },
                                                                  { 410, 210 },
                                                                  { 180, 110 },
                                                                  { 540, 230 },
                                                                  { 330, 180 },
                                                                  { 90, 250 } } };
    double at = 14.3;
    for (std::size_t index = 0; index < 15; ++index) {
        const auto &[first, last] = kPairs[index % kPairs.size()];
        const auto &[x, y] = kPlaces[index % kPlaces.size()];
        shells.push_back({ kKinds[index % kKinds.size()], at, x, y, 84.0 + double(index % 3) * 12, first,
                           last, 0.9, index % 4 == 0 });
        at += 0.19;
    }
    shells.push_back({ Kind::Mine, 16, 120, kShore, 250, kRose, kRose, 0 });
    shells.push_back({ Kind::Mine, 16.12, 520, kShore, 250, kTeal, kTeal, 0 });
    shells.push_back({ Kind::Mine, 16.51, 320, kShore, 290, kViolet, kViolet, 0 });
    shells.push_back({ Kind::Willow, 17.33, 150, 150, 120, kLamp, kGold, 1.3 });
    shells.push_back({ Kind::Willow, 17.46, 490, 150, 120, kLamp, kGold, 1.3 });
    shells.push_back({ Kind::Crackle, 17.59, 320, 205, 120, kRose, kSilver, 1.2 });
    shells.push_back({ Kind::Willow, 17.72, 320, 120, 170, kSilver, kLamp, 1.5, true });
}

} // namespace

Star::Place Star::At(double age) const
{
    const double slowed = (1 - std::exp(-drag * age)) / drag;
    const double terminal = fall / drag;
    return { x + speedX * slowed, y + (speedY - terminal) * slowed + terminal * age };
}

std::vector<Shell> Evening()
{
    std::vector<Shell> shells{
        { Kind::Chrysanthemum, 1.15, 320, 150, 125, kLamp, kGold, 1.1, true },
        { Kind::Peony, 2.15, 175, 175, 92, kTeal, kSilver },
        { Kind::Peony, 2.45, 465, 160, 96, kRose, kLamp },
        { Kind::Ring, 3.48, 320, 140, 112, kViolet, kLamp, 1.2, true },
        { Kind::Crackle, 4.47, 170, 150, 96, kLamp, kSilver },
        { Kind::Crackle, 4.82, 475, 185, 96, kPink, kSilver },
        { Kind::Palm, 5.68, 320, 165, 150, kGold, kRed, 1.3, true },
        { Kind::Star, 6.84, 185, 155, 84, kLamp, kLamp },
        { Kind::Heart, 7.48, 455, 160, 80, kRose, kPink },
        { Kind::Crossette, 8.64, 320, 150, 118, kGreen, kTeal, 1.2, true },
        { Kind::LetterA, 9.68, 140, 165, 66, kRed, kGold },
        { Kind::LetterB, 10.15, 320, 140, 66, kGreen, kLamp },
        { Kind::LetterC, 10.62, 500, 165, 66, kBlue, kTeal },
        { Kind::Willow, 11.95, 215, 135, 125, kLamp, kGold, 1.3, true },
        { Kind::Willow, 12.47, 435, 150, 125, kSilver, kTeal, 1.3 },
        { Kind::Mine, 13.33, 160, kShore, 230, kPink, kPink, 0 },
        { Kind::Mine, 13.59, 480, kShore, 230, kBlue, kBlue, 0 },
        { Kind::Mine, 13.85, 320, kShore, 260, kGreen, kGreen, 0 },
    };
    AddFinale(shells);
    std::stable_sort(shells.begin(), shells.end(),
                     [](const Shell &one, const Shell &other) { return one.at < other.at; });
    return shells;
}

std::vector<Star> StarsOf(const Shell &shell, unsigned number)
{
    sounds::Random random(1000 + number);
    std::vector<Star> stars;
    switch (shell.kind) {
    case Kind::Peony:
    case Kind::Chrysanthemum:
    case Kind::Crackle:
        AddBall(stars, shell, random);
        break;
    case Kind::Willow:
        AddWillow(stars, shell, random);
        break;
    case Kind::Palm:
        AddPalm(stars, shell, random);
        break;
    case Kind::Ring:
        AddRing(stars, shell, random);
        break;
    case Kind::Crossette:
        AddCrossette(stars, shell, random);
        break;
    case Kind::Mine:
        AddMine(stars, shell, random);
        break;
    default:
        AddDrawing(stars, shell);
        break;
    }
    return stars;
}

} // namespace fireworks
