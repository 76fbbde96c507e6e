#include "Painter.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace fireworks {

namespace {

constexpr int kFrame = 12; // of wood and gilt, in pixels
constexpr int kSmokeScale = 4;

struct Stop {
    double at;
    Colour colour;
};

constexpr Colour Of(int red, int green, int blue)
{
    return { float(red) / 255, float(green) / 255, float(blue) / 255 };
}

// The dusk as it is seen from the tower.
constexpr std::array<Stop, 5> kDusk{ { { 0, Of(0x10, 0x12, 0x38) },
                                       { 0.45, Of(0x2a, 0x28, 0x6c) },
                                       { 0.74, Of(0x5d, 0x3f, 0x86) },
                                       { 0.9, Of(0xa8, 0x5f, 0x80) },
                                       { 1, Of(0xd8, 0x92, 0x70) } } };
constexpr Colour kFarHills = Of(0x4a, 0x37, 0x78);
constexpr Colour kNearHills = Of(0x2a, 0x23, 0x57);
constexpr Colour kWindow = Of(0xff, 0xcf, 0x6a);

Colour Mixed(const Colour &one, const Colour &other, float share)
{
    return { one.red + (other.red - one.red) * share, one.green + (other.green - one.green) * share,
             one.blue + (other.blue - one.blue) * share };
}

void Put(float *pixel, const Colour &colour, float share)
{
    pixel[0] += (colour.red - pixel[0]) * share;
    pixel[1] += (colour.green - pixel[1]) * share;
    pixel[2] += (colour.blue - pixel[2]) * share;
}

Colour Dusk(double height)
{
    for (std::size_t index = 1; index < kDusk.size(); ++index) {
        if (height <= kDusk[index].at) {
            const double way = (height - kDusk[index - 1].at) / (kDusk[index].at - kDusk[index - 1].at);
            return Mixed(kDusk[index - 1].colour, kDusk[index].colour, float(way));
        }
    }
    return kDusk.back().colour;
}

double FarRidge(double x)
{
    return kShore - 42 - 26 * std::sin(x / 96 + 0.6) - 14 * std::sin(x / 41 + 2.0);
}

double NearRidge(double x)
{
    return kShore - 12 - 13 * std::sin(x / 120 + 3.6) - 6 * std::sin(x / 37 + 1.0);
}

// A value without pattern, from 0 to 1, the same for the same numbers.
float Scatter(unsigned one, unsigned other)
{
    unsigned value = one * 0x9E3779B1u ^ other * 0x85EBCA77u;
    value ^= value >> 15;
    value *= 0x2C1B3C6Du;
    value ^= value >> 13;
    value *= 0x297A2D39u;
    value ^= value >> 16;
    return float(value) / 4294967296.0f;
}

// How much of the pixel lies below a line.
float Below(double y, double line)
{
    return float(std::clamp(y - line + 0.5, 0.0, 1.0));
}

} // namespace

void Light::Dot(double x, double y, float radius, const Colour &colour, float brightness)
{
    const int reach = int(std::ceil(radius * 2.6f));
    const int fromX = std::max(0, int(x) - reach), toX = std::min(m_width - 1, int(x) + reach);
    const int fromY = std::max(0, int(y) - reach), toY = std::min(m_height - 1, int(y) + reach);
    const float narrow = 1 / (radius * radius);
    for (int row = fromY; row <= toY; ++row) {
        const float down = float(row - y);
        for (int column = fromX; column <= toX; ++column) {
            const float across = float(column - x);
            const float share = brightness * std::exp(-(across * across + down * down) * narrow);
            float *pixel = At(column, row);
            pixel[0] += colour.red * share;
            pixel[1] += colour.green * share;
            pixel[2] += colour.blue * share;
        }
    }
}

Light Light::Quarter() const
{
    Light quarter(m_width / 4, m_height / 4);
    for (int y = 0; y < quarter.m_height; ++y) {
        for (int x = 0; x < quarter.m_width; ++x) {
            float *into = quarter.At(x, y);
            for (int row = 0; row < 4; ++row) {
                const float *from = At(x * 4, y * 4 + row);
                for (int part = 0; part < 12; ++part)
                    into[part % 3] += from[part] / 16;
            }
        }
    }
    return quarter;
}

void Light::Blur(int radius)
{
    std::vector<float> line(std::size_t(std::max(m_width, m_height)) * 3);
    // Along one line of pixels, `step` floats apart.
    const auto along = [&](float *first, std::size_t step, int count) {
        float sums[3] = { 0, 0, 0 };
        const auto value = [&](int index, int part) {
            return first[std::size_t(index) * step + std::size_t(part)];
        };
        for (int part = 0; part < 3; ++part) {
            for (int index = 0; index < std::min(radius, count); ++index)
                sums[part] += value(index, part);
            for (int index = 0; index < count; ++index) {
                if (index + radius < count)
                    sums[part] += value(index + radius, part);
                if (index - radius - 1 >= 0)
                    sums[part] -= value(index - radius - 1, part);
                line[std::size_t(index) * 3 + std::size_t(part)] =
                    std::max(0.0f, sums[part]) / float(2 * radius + 1);
            }
        }
        for (int index = 0; index < count; ++index)
            std::copy_n(&line[std::size_t(index) * 3], 3, first + std::size_t(index) * step);
    };
    for (int pass = 0; pass < 3; ++pass) {
        for (int row = 0; row < m_height; ++row)
            along(At(0, row), 3, m_width);
        for (int column = 0; column < m_width; ++column)
            along(At(column, 0), std::size_t(m_width) * 3, m_height);
    }
}

void Light::AddStretched(const Light &other, float brightness)
{
    const float scaleX = float(other.m_width) / float(m_width),
                scaleY = float(other.m_height) / float(m_height);
    for (int y = 0; y < m_height; ++y) {
        const float fromY =
            std::clamp((float(y) + 0.5f) * scaleY - 0.5f, 0.0f, float(other.m_height) - 1.001f);
        const int row = int(fromY);
        const float down = fromY - float(row);
        for (int x = 0; x < m_width; ++x) {
            const float fromX =
                std::clamp((float(x) + 0.5f) * scaleX - 0.5f, 0.0f, float(other.m_width) - 1.001f);
            const int column = int(fromX);
            const float across = fromX - float(column);
            const float *upper = other.At(column, row), *lower = other.At(column, row + 1);
            float *pixel = At(x, y);
            for (int part = 0; part < 3; ++part) {
                const float above = upper[part] + (upper[part + 3] - upper[part]) * across;
                const float below = lower[part] + (lower[part + 3] - lower[part]) * across;
                pixel[part] += (above + (below - above) * down) * brightness;
            }
        }
    }
}

Painter::Painter()
    : m_sky(kWidth, kHeight), m_land(std::size_t(kWidth) * kHeight, 0.0f), m_moon(m_land),
      m_light(kWidth, kHeight), m_smoke(kWidth / kSmokeScale, kHeight / kSmokeScale)
{
    unsigned number = 0;
    for (const Shell &shell : Evening())
        m_bursts.push_back({ shell, StarsOf(shell, number++) });
    PaintGround();
}

void Painter::PaintGround()
{
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            float *pixel = m_sky.At(x, y);
            Put(pixel, Dusk(y / kShore), 1);
            float &land = m_land[std::size_t(y) * kWidth + std::size_t(x)];
            const float far = Below(y, FarRidge(x));
            Put(pixel, kFarHills, far);
            land = std::max(land, far * 0.6f);
            const float near = Below(y, NearRidge(x));
            Put(pixel, kNearHills, near);
            land = std::max(land, near);
        }
    }
    // The little town: towers with pointed roofs and a lit window each.
    const auto tower = [this](double x, double width, double height) {
        const double base = NearRidge(x) + 6, top = base - height, tip = top - width * 0.95;
        for (int row = int(tip); row < int(base); ++row) {
            const double half = row < top ? (row - tip) / (top - tip) * width * 0.68 : width / 2;
            for (int column = int(x - width); column <= int(x + width); ++column) {
                const float share = float(std::clamp(half - std::abs(column - x) + 0.5, 0.0, 1.0));
                Put(m_sky.At(column, row), kNearHills, share);
                float &land = m_land[std::size_t(row) * kWidth + std::size_t(column)];
                land = std::max(land, share);
            }
        }
        for (int row = int(top) + 8; row < int(top) + 14; ++row) {
            for (int column = int(x) - 2; column < int(x) + 2; ++column)
                Put(m_sky.At(column, row), kWindow, 0.95f);
        }
        m_sky.Dot(x, top + 11, 9, kWindow, 0.16f);
    };
    for (const auto &[x, width, height] :
         { std::array{ 92.0, 17.0, 34.0 }, std::array{ 122.0, 20.0, 48.0 }, std::array{ 150.0, 16.0, 30.0 },
           std::array{ 478.0, 16.0, 32.0 }, std::array{ 506.0, 21.0, 52.0 }, std::array{ 538.0, 17.0, 36.0 },
           std::array{ 560.0, 14.0, 24.0 } })
        tower(x, width, height);
    // The moon, behind everything that bursts.
    const double moonX = 560, moonY = 74;
    for (int y = 0; y < 250; ++y) {
        for (int x = 320; x < kWidth; ++x) {
            const double distance = std::hypot(x - moonX, y - moonY);
            Put(m_sky.At(x, y), Of(0xff, 0xf3, 0xcf), float(0.22 * std::exp(-distance / 34)));
            const float moon = Below(-distance, -25);
            Put(m_sky.At(x, y), Of(0xff, 0xf3, 0xd4), moon);
            m_moon[std::size_t(y) * kWidth + std::size_t(x)] = moon;
            for (const auto &[craterX, craterY, radius] :
                 { std::array{ -8.0, -6.0, 5.5 }, std::array{ 7.0, 7.0, 6.5 }, std::array{ 8.0, -9.0, 3.5 } })
                Put(m_sky.At(x, y), Of(0xec, 0xd8, 0xa6),
                    0.8f * Below(-std::hypot(x - moonX - craterX, y - moonY - craterY), -radius));
        }
    }
}

void Painter::AddStars(const Burst &burst, double age, unsigned salt)
{
    constexpr double kTrailStep = 0.022;
    unsigned index = 0;
    for (const Star &star : burst.stars) {
        ++index;
        const double own = age - star.born;
        if (own < 0 || own - star.trail > star.life)
            continue;
        const auto glow = [&](double when) {
            const double spent = when / star.life;
            return spent >= 1 ? 0.0 : std::pow(1 - spent, 0.8) * (1 + 1.6 * std::exp(-when * 9));
        };
        const Colour colour =
            Mixed(star.first, star.last, float(std::clamp(own / star.life * 1.6 - 0.35, 0.0, 1.0)));
        double brightness = glow(own);
        Colour head = colour;
        if (star.snaps && own > star.life * 0.55) {
            const bool lit = Scatter(index + salt, unsigned(own * 22)) > 0.62f;
            head = lit ? Colour{ 1, 1, 1 } : colour;
            brightness *= lit ? 2.4 : 0.35;
        }
        if (brightness > 0) {
            const Star::Place place = star.At(own);
            m_light.Dot(place.x, place.y, star.size * 1.15f, head, float(brightness) * 2.1f);
            m_light.Dot(place.x, place.y, star.size * 0.6f, { 1, 1, 1 }, float(brightness) * 0.55f);
        }
        const int steps = int(star.trail / kTrailStep);
        for (int step = 1; step <= steps; ++step) {
            const double when = own - step * kTrailStep;
            if (when < 0)
                break;
            const double faded = std::pow(1 - double(step) / (steps + 1), 1.6);
            float share = float(glow(when) * faded) * (star.glitters ? 0.95f : 0.62f);
            if (star.glitters)
                share *= Scatter(index * 131 + unsigned(when / kTrailStep), salt + unsigned(own * 25)) * 1.9f;
            if (share < 0.01f)
                continue;
            const Star::Place place = star.At(when);
            m_light.Dot(place.x, place.y + 5 * double(step) / (steps + 1), star.size * 0.85f, colour, share);
        }
    }
    // The flash of the burst itself.
    if (age < 0.25 && burst.shell.kind != Kind::Mine) {
        const float flash = float(std::exp(-age * 16));
        m_light.Dot(burst.shell.x, burst.shell.y, 7, { 1, 1, 1 }, 3 * flash);
        m_light.Dot(burst.shell.x, burst.shell.y, 26, burst.shell.first, 0.7f * flash);
    }
}

void Painter::AddRocket(const Shell &shell, double age, unsigned salt)
{
    constexpr double kSpark = 0.5; // seconds that a spark of the tail glows
    const double startX = shell.x + (320 - shell.x) * 0.16;
    const auto place = [&](double when) {
        const double left = 1 - std::clamp(when / shell.rise, 0.0, 1.0);
        return Star::Place{ shell.x + (startX - shell.x) * left + std::sin(when * 9 + salt) * 1.6 * left,
                            shell.y + (kShore - shell.y) * left * left };
    };
    if (age < shell.rise) {
        const Star::Place head = place(age);
        m_light.Dot(head.x, head.y, 1.5f, { 1, 0.9f, 0.7f }, 1.8f);
    }
    for (int spark = 0; spark < 90; ++spark) {
        const double born = shell.rise * (spark + Scatter(unsigned(spark), salt)) / 90;
        const double own = age - born;
        if (own < 0 || own > kSpark)
            continue;
        Star::Place at = place(born);
        at.x += (Scatter(unsigned(spark) + 7, salt + 1) - 0.5f) * 26 * own;
        at.y += 34 * own * own + Scatter(unsigned(spark) + 9, salt + 2) * 14 * own;
        const float left = float(1 - own / kSpark);
        m_light.Dot(at.x, at.y, 0.8f, { 1, 0.62f, 0.22f }, left * left * 0.8f);
    }
}

void Painter::AddSmoke(const Burst &burst, double age)
{
    if (burst.shell.kind == Kind::Mine || age > 5)
        return;
    const float share = float(0.05 * std::min(1.0, age * 3) * (1 - age / 5));
    for (unsigned puff = 0; puff < 7; ++puff) {
        const double angle = puff * 0.9 + burst.shell.at;
        const double radius = burst.shell.size * 0.42 * (0.3 + 0.7 * (1 - std::exp(-age * 2)));
        m_smoke.Dot((burst.shell.x + std::cos(angle) * radius + age * 9) / kSmokeScale,
                    (burst.shell.y + std::sin(angle) * radius + age * 4) / kSmokeScale, float(7 + age * 2.4),
                    { 0.62f, 0.6f, 0.72f }, share * (0.5f + Scatter(puff, unsigned(burst.shell.at * 100))));
    }
}

// The stars of heaven, which pale while something glows.
void Painter::AddSparkle(double second)
{
    for (unsigned index = 0; index < 70; ++index) {
        const double x = Scatter(index, 11) * kWidth, y = Scatter(index, 12) * 270;
        const double twinkle = 0.65 + 0.35 * std::sin(second * (1.5 + 3 * Scatter(index, 13)) + index);
        const float size = 0.6f + 0.55f * Scatter(index, 14) * Scatter(index, 15);
        m_light.Dot(x, y, size, { 1, 0.97f, 0.88f }, float(twinkle) * (0.25f + 0.5f * Scatter(index, 16)));
    }
}

Colour Painter::Glow(double second) const
{
    Colour glow{ 0, 0, 0 };
    for (const Burst &burst : m_bursts) {
        const double age = second - burst.shell.at;
        if (age < 0 || age > 2.5)
            continue;
        const float share =
            float((0.55 * std::exp(-age * 7) + 0.45 * std::exp(-age * 1.6)) * burst.shell.size / 110);
        glow.red += burst.shell.first.red * share;
        glow.green += burst.shell.first.green * share;
        glow.blue += burst.shell.first.blue * share;
    }
    // However much bursts at once, the night stays a night.
    for (float *part : { &glow.red, &glow.green, &glow.blue })
        *part = *part / (1 + 0.85f * *part);
    return glow;
}

// Round everything bright: near and narrow, far and wide.
void Painter::AddHaze()
{
    Light near = m_light.Quarter();
    Light wide = near.Quarter();
    near.Blur(1);
    wide.Blur(3);
    m_light.AddStretched(near, 0.65f);
    m_light.AddStretched(wide, 0.95f);
}

// Smoke is seen by what burns behind it.
void Painter::LightSmoke(const Colour &glow)
{
    const Colour lit{ 0.25f + glow.red, 0.25f + glow.green, 0.25f + glow.blue };
    for (int y = 0; y < m_smoke.Height(); ++y) {
        for (int x = 0; x < m_smoke.Width(); ++x) {
            float *pixel = m_smoke.At(x, y);
            pixel[0] *= lit.red;
            pixel[1] *= lit.green;
            pixel[2] *= lit.blue;
        }
    }
    m_light.AddStretched(m_smoke, 1.0f);
}

float Painter::Seen(const Moment &moment, int x, int y, int part) const
{
    const float land = m_land[std::size_t(y) * kWidth + std::size_t(x)];
    const float ground = m_sky.At(x, y)[part];
    const float around = part == 0 ? moment.glow.red : part == 1 ? moment.glow.green : moment.glow.blue;
    const float moon = m_moon[std::size_t(y) * kWidth + std::size_t(x)];
    const float night = ground * moment.day * (1 + around * 0.5f) + around * 0.05f * (1 - land) +
                        around * 0.07f * land * float(y) / float(kShore);
    const float lifted = night + (ground - night) * moon;
    const float light = m_light.At(x, y)[part];
    return lifted + (1 - std::exp(-light * 1.25f)) * (1 - std::min(1.0f, lifted) * 0.9f);
}

// The same turned over, drawn together and broken by small waves.
void Painter::PaintLake(Bytes &picture, const Moment &moment) const
{
    const double second = moment.second;
    for (int y = int(kShore); y < kHeight; ++y) {
        const double depth = y - kShore;
        const double wave = std::sin(depth * 1.15 - second * 3.2) * (0.6 + depth * 0.05) +
                            std::sin(depth * 0.41 + second * 2.1) * (0.8 + depth * 0.07);
        const double from =
            kShore - 2 - depth * 3.9 + std::sin(depth * 0.9 + second * 4) * (1 + depth * 0.05);
        for (int x = 0; x < kWidth; ++x) {
            const double shift =
                wave + std::sin(x * 0.05 + depth * 0.7 + second * 2.6) * (0.5 + depth * 0.05);
            const int column = std::clamp(int(x + shift), 0, kWidth - 1);
            float sums[3] = { 0, 0, 0 };
            for (int step = -3; step <= 3; ++step) {
                const int row = std::clamp(int(from) + step * 2, 0, int(kShore) - 1);
                for (int part = 0; part < 3; ++part)
                    sums[part] += Seen(moment, column, row, part) / 7;
            }
            const float ripple =
                float(0.5 + 0.5 * std::sin(depth * 1.9 + std::sin(x * 0.045 + second) * 2 - second * 2.4));
            const float share = 0.66f + 0.3f * ripple - float(depth) * 0.0016f;
            const float line = y == int(kShore) ? 0.06f : 0.0f;
            PutPixel(picture, x, y,
                     { sums[0] * share + line + 0.012f, sums[1] * share + line + 0.014f,
                       sums[2] * share + line + 0.04f },
                     moment);
        }
    }
}

// A grain too fine to be seen keeps the smooth sky from falling into steps.
void Painter::PutPixel(Bytes &picture, int x, int y, const Colour &colour, const Moment &moment)
{
    std::uint8_t *pixel = &picture[(std::size_t(y) * kWidth + std::size_t(x)) * 3];
    const float parts[3] = { colour.red, colour.green, colour.blue };
    const float grain =
        Scatter(unsigned(y * kWidth + x), unsigned(moment.second * kPicturesPerSecond + 0.5)) - 0.5f;
    for (int part = 0; part < 3; ++part)
        pixel[part] =
            std::uint8_t(std::clamp(parts[part] * 255 * moment.shown + grain * 1.4f + 0.5f, 0.0f, 255.0f));
}

// It throws a soft shadow into the picture, and does not go dark with it.
void Painter::PaintFrame(Bytes &picture)
{
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const int edge = std::min(std::min(x, y), std::min(kWidth - 1 - x, kHeight - 1 - y));
            std::uint8_t *pixel = &picture[(std::size_t(y) * kWidth + std::size_t(x)) * 3];
            if (edge >= kFrame) {
                const double shadow = 1 - 0.4 * std::exp(-(edge - kFrame) / 5.0);
                for (int part = 0; part < 3; ++part)
                    pixel[part] = std::uint8_t(pixel[part] * shadow);
                continue;
            }
            const bool upper = edge == std::min(x, y);
            Colour colour = edge < 8 ? Of(0x8a, 0x56, 0x36) : Of(0xe8, 0xa9, 0x3f);
            if (edge < 1)
                colour = Of(0x40, 0x23, 0x1a);
            else if (edge == 11)
                colour = Of(0x5a, 0x33, 0x24);
            else if (edge == 8 || edge == 1)
                colour = Mixed(colour, upper ? Of(0xff, 0xe3, 0x9a) : Of(0x5a, 0x33, 0x24), 0.55f);
            const float shade = upper ? 1.06f : 0.86f;
            pixel[0] = std::uint8_t(std::min(255.0f, colour.red * 255 * shade));
            pixel[1] = std::uint8_t(std::min(255.0f, colour.green * 255 * shade));
            pixel[2] = std::uint8_t(std::min(255.0f, colour.blue * 255 * shade));
        }
    }
}

Painter::Bytes Painter::Picture(double second)
{
    m_light.Clear();
    m_smoke.Clear();
    AddSparkle(second);
    unsigned salt = 0;
    for (const Burst &burst : m_bursts) {
        ++salt;
        const double age = second - burst.shell.at;
        if (burst.shell.kind != Kind::Mine && age > -burst.shell.rise && age < 0.6)
            AddRocket(burst.shell, age + burst.shell.rise, salt);
        if (age < 0 || age > 6)
            continue;
        AddStars(burst, age, salt * 977);
        AddSmoke(burst, age);
    }
    Moment moment;
    moment.second = second;
    moment.glow = Glow(second);
    // Night falls while the show goes on; at the end the picture goes dark.
    moment.day = float(1 - 0.38 * std::clamp(second / 6, 0.0, 1.0));
    moment.shown = float(std::clamp((kSeconds - second) / 1.1, 0.0, 1.0));
    AddHaze();
    LightSmoke(moment.glow);

    Bytes picture(std::size_t(kWidth) * kHeight * 3);
    for (int y = 0; y < int(kShore); ++y) {
        for (int x = 0; x < kWidth; ++x)
            PutPixel(picture, x, y, { Seen(moment, x, y, 0), Seen(moment, x, y, 1), Seen(moment, x, y, 2) },
                     moment);
    }
    PaintLake(picture, moment);
    PaintFrame(picture);
    return picture;
}

} // namespace fireworks
