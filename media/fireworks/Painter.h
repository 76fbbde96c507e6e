#pragma once

#include "Show.h"

#include <cstdint>
#include <vector>

namespace fireworks {

// A picture of light: three floats to the pixel, from 0 up without end.
class Light {
public:
    Light(int width, int height) : m_width(width), m_height(height), m_values(Size()) {}

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    void Clear() { m_values.assign(Size(), 0.0f); }
    const float *At(int x, int y) const { return &m_values[Index(x, y)]; }
    float *At(int x, int y) { return &m_values[Index(x, y)]; }

    // Adds a soft dot; `radius` is where it has a third of its brightness.
    void Dot(double x, double y, float radius, const Colour &colour, float brightness);
    // This picture at a quarter of the size.
    Light Quarter() const;
    // Each pixel becomes the mean of its surroundings, three times over.
    void Blur(int radius);
    // Adds `other`, stretched to this size.
    void AddStretched(const Light &other, float brightness);

private:
    std::size_t Size() const { return std::size_t(m_width) * std::size_t(m_height) * 3; }
    std::size_t Index(int x, int y) const
    {
        return (std::size_t(y) * std::size_t(m_width) + std::size_t(x)) * 3;
    }
    int m_width;
    int m_height;
    std::vector<float> m_values;
};

// Paints the evening, picture by picture: the dusk over the hills and the lake, what glows, its haze, its
// smoke and its image in the water, all in a gilt frame.
class Painter {
public:
    Painter();
    using Bytes = std::vector<std::uint8_t>; // rows from the top, a byte each for red, green and blue
    // The picture at that second.
    Bytes Picture(double second);

private:
    struct Burst {
        Shell shell;
        std::vector<Star> stars;
    };
    void PaintGround();
    void AddStars(const Burst &burst, double age, unsigned salt);
    void AddRocket(const Shell &shell, double age, unsigned salt);
    void AddSmoke(const Burst &burst, double age);
    void AddSparkle(double second);
    Colour Glow(double second) const; // of the whole sky
    void AddHaze();
    void LightSmoke(const Colour &glow);

    struct Moment {
        double second;
        Colour glow;
        float day;   // what is left of the daylight
        float shown; // less than 1 when the picture goes dark
    };
    // A part of the colour of a place above the lake.
    float Seen(const Moment &moment, int x, int y, int part) const;
    void PaintLake(Bytes &picture, const Moment &moment) const;
    static void PutPixel(Bytes &picture, int x, int y, const Colour &colour, const Moment &moment);
    static void PaintFrame(Bytes &picture);

    std::vector<Burst> m_bursts;
    Light m_sky;               // without fireworks
    std::vector<float> m_land; // how much of a pixel is land, which the glow lights less than the air
    std::vector<float> m_moon; // how much of a pixel is the moon, which stays as it is
    Light m_light;
    Light m_smoke;
};

} // namespace fireworks
