#include "Synthesis.h"

#include <algorithm>
#include <cmath>

namespace sounds {

namespace {

constexpr double kHighest = 11000; // of what is made, in Hz

void Put(std::string &bytes, std::uint32_t number, int size)
{
    for (int byte = 0; byte < size; ++byte)
        bytes += char(number >> (8 * byte) & 0xff);
}

} // namespace

std::size_t Count(double seconds)
{
    return std::size_t(std::max(0.0, std::round(seconds * kRate)));
}

Samples Silence(double seconds)
{
    return Samples(Count(seconds), 0.0);
}

void Mix(Samples &into, const Samples &what, double at, double gain)
{
    const std::size_t from = Count(at);
    into.resize(std::max(into.size(), from + what.size()), 0.0);
    for (std::size_t index = 0; index < what.size(); ++index)
        into[from + index] += what[index] * gain;
}

double Random::Next()
{
    m_state ^= m_state << 13;
    m_state ^= m_state >> 7;
    m_state ^= m_state << 17;
    return double(m_state >> 11) / double(1ull << 52) - 1;
}

double Curve::operator()(double time) const
{
    if (time <= m_points.front().first)
        return m_points.front().second;
    for (std::size_t index = 1; index < m_points.size(); ++index) {
        const auto &[end, value] = m_points[index];
        if (time >= end)
            continue;
        const auto &[begin, before] = m_points[index - 1];
        const double way = (time - begin) / (end - begin);
        return before + (value - before) * way * way * (3 - 2 * way);
    }
    return m_points.back().second;
}

double Filter::Step(Pass pass, double sample, double frequency, double sharpness)
{
    const double g = std::tan(kPi * std::clamp(frequency, 10.0, 20000.0) / kRate);
    const double damping = 1 / sharpness;
    const double high = (sample - (damping + g) * m_first - m_second) / (1 + g * (g + damping));
    const double band = g * high + m_first;
    m_first = g * high + band;
    const double low = g * band + m_second;
    m_second = g * band + low;
    switch (pass) {
    case Pass::Low:
        return low;
    case Pass::Band:
        return band * damping;
    case Pass::High:
        break;
    }
    return high;
}

Samples Noise(double seconds, Random &random)
{
    Samples noise = Silence(seconds);
    for (double &sample : noise)
        sample = random.Next();
    return noise;
}

Samples Filtered(Samples samples, Pass pass, const Curve &frequency, double sharpness)
{
    Filter filter;
    for (std::size_t index = 0; index < samples.size(); ++index)
        samples[index] = filter.Step(pass, samples[index], frequency(double(index) / kRate), sharpness);
    return samples;
}

Samples Shaped(Samples samples, const Curve &gain)
{
    for (std::size_t index = 0; index < samples.size(); ++index)
        samples[index] *= gain(double(index) / kRate);
    return samples;
}

Samples Air(double seconds, const Curve &colour, const Curve &gain, double sharpness, Random &random)
{
    return Shaped(Filtered(Noise(seconds, random), Pass::Band, colour, sharpness), gain);
}

Samples Tone(double seconds, const Curve &frequency, const Curve &gain)
{
    Samples tone = Silence(seconds);
    double phase = 0;
    for (std::size_t index = 0; index < tone.size(); ++index) {
        const double time = double(index) / kRate;
        phase += 2 * kPi * frequency(time) / kRate;
        tone[index] = std::sin(phase) * gain(time);
    }
    return tone;
}

Samples Struck(double seconds, std::initializer_list<Partial> partials)
{
    Samples struck = Silence(seconds);
    const double damped = std::min(0.12, seconds / 3) * kRate;
    for (const Partial &partial : partials) {
        if (partial.frequency > kHighest)
            continue;
        for (std::size_t index = 0; index < struck.size(); ++index) {
            const double time = double(index) / kRate;
            const double attack = std::min(1.0, time / 0.0008);
            // What still rings at the end is damped by a hand; broken off, it would click.
            const double end = std::min(1.0, double(struck.size() - index) / damped);
            struck[index] += partial.gain * attack * end * end * std::exp(-time / partial.fade) *
                             std::sin(2 * kPi * partial.frequency * time);
        }
    }
    return struck;
}

Samples Brass(double seconds, const Curve &pitch, const Curve &force, Random &random)
{
    constexpr int kPartials = 24;
    Samples brass = Silence(seconds);
    double phase = 0;
    double waver = 0; // the lips are never quite still
    Filter breath;
    for (std::size_t index = 0; index < brass.size(); ++index) {
        const double time = double(index) / kRate;
        waver += (random.Next() * 0.02 - waver) * 0.004;
        const double frequency = pitch(time) * (1 + waver);
        phase += 2 * kPi * frequency / kRate;
        const double blown = std::clamp(force(time), 0.0, 1.0);
        double sum = 0;
        for (int partial = 1; partial <= kPartials && partial * frequency < kHighest; ++partial) {
            const double at = partial * frequency;
            // The bell favours what lies about 1.3 kHz; the upper partials need force.
            const double bell = 0.25 + 1 / (1 + std::pow((at - 1300) / 1000, 2));
            const double gain = std::pow(blown, 1 + 0.28 * (partial - 1)) * std::pow(partial, -0.55) * bell;
            sum += gain * std::sin(partial * phase);
        }
        const double air = breath.Step(Pass::Band, random.Next(), 2 * frequency, 1.2);
        brass[index] = sum + air * blown * 0.10;
    }
    return brass;
}

Samples Throat(double seconds, const Curve &pitch, const Curve &tone, const Curve &breath, const Vowel &vowel,
               Random &random)
{
    Samples throat = Silence(seconds);
    Filter first, second, third, soft;
    double phase = 0;
    for (std::size_t index = 0; index < throat.size(); ++index) {
        const double time = double(index) / kRate;
        phase += pitch(time) / kRate;
        phase -= std::floor(phase);
        // The folds open slowly and shut fast.
        const double pulse = phase < 0.6 ? std::sin(kPi * phase / 0.6) * phase / 0.6 : 0;
        const double source =
            soft.Step(Pass::Low, pulse - 0.2, 2500, 0.7) * tone(time) + random.Next() * 0.25 * breath(time);
        throat[index] = first.Step(Pass::Band, source, vowel.first(time), 6) +
                        0.6 * second.Step(Pass::Band, source, vowel.second(time), 9) +
                        0.3 * third.Step(Pass::Band, source, vowel.third(time), 10) + 0.08 * source;
    }
    return throat;
}

Samples InRoom(const Samples &dry, double wet, double tail, double brightness)
{
    // Eight paths between the walls, all mixed with each other at every turn.
    constexpr int kPaths = 8;
    constexpr int kLengths[kPaths] = { 557, 683, 827, 991, 1171, 1361, 1553, 1747 };
    std::vector<Samples> paths;
    for (const int length : kLengths)
        paths.emplace_back(std::size_t(length), 0.0);
    std::size_t at[kPaths] = {};
    double walls[kPaths] = {};
    const double softness = 1 - std::exp(-2 * kPi * brightness / kRate);
    const double turn = 0.42; // seconds to a thousandth
    Samples heard(dry.size() + Count(tail), 0.0);
    for (std::size_t index = 0; index < heard.size(); ++index) {
        const double source = index < dry.size() ? dry[index] : 0;
        double taken[kPaths];
        double sum = 0;
        double echo = 0;
        for (int path = 0; path < kPaths; ++path) {
            const double value = paths[std::size_t(path)][at[path]];
            walls[path] += (value - walls[path]) * softness;
            taken[path] = walls[path] * std::pow(10, -3 * kLengths[path] / kRate / turn);
            sum += taken[path];
            echo += path % 2 ? -value : value;
        }
        for (int path = 0; path < kPaths; ++path) {
            paths[std::size_t(path)][at[path]] = source + taken[path] - sum * 2 / kPaths;
            at[path] = (at[path] + 1) % std::size_t(kLengths[path]);
        }
        heard[index] = source + echo * wet;
    }
    return heard;
}

std::vector<std::int16_t> Finished(const Samples &samples, double loudness, double peak)
{
    // What would fold over goes, and what is too low for any loudspeaker.
    Samples clean = Filtered(samples, Pass::High, 45, 0.7);
    for (const double sharpness : { 0.54, 1.31 })
        clean = Filtered(clean, Pass::Low, 10800, sharpness);
    Samples half;
    for (std::size_t index = 0; index < clean.size(); index += 2)
        half.push_back(clean[index]);

    const std::size_t in = std::size_t(kRate / 2 * 0.0015);
    const std::size_t out = std::min(half.size(), std::size_t(kRate / 2 * 0.04));
    for (std::size_t index = 0; index < in && index < half.size(); ++index)
        half[index] *= double(index) / double(in);
    for (std::size_t index = 0; index < out; ++index)
        half[half.size() - 1 - index] *= double(index) / double(out);

    // Loud is what lies within 20 dB of the loudest fiftieth of a second.
    const std::size_t window = std::size_t(kRate / 2 / 50);
    std::vector<double> powers;
    for (std::size_t from = 0; from < half.size(); from += window) {
        double power = 0;
        const std::size_t to = std::min(half.size(), from + window);
        for (std::size_t index = from; index < to; ++index)
            power += half[index] * half[index];
        powers.push_back(power / double(window));
    }
    const double loudest = *std::max_element(powers.begin(), powers.end());
    double sum = 0;
    double count = 0;
    for (const double power : powers) {
        if (power > loudest / 100) {
            sum += power;
            ++count;
        }
    }
    double gain = std::pow(10, loudness / 20) / std::sqrt(sum / count);
    double highest = 0;
    for (const double sample : half)
        highest = std::max(highest, std::abs(sample));
    gain = std::min(gain, std::pow(10, peak / 20) / highest);

    std::vector<std::int16_t> finished;
    for (const double sample : half)
        finished.push_back(std::int16_t(std::lround(sample * gain * 32767)));
    return finished;
}

std::string Wave(const std::vector<std::int16_t> &samples, int channels, int rate)
{
    const auto size = std::uint32_t(samples.size() * 2);
    std::string wave = "RIFF";
    Put(wave, 36 + size, 4);
    wave += "WAVEfmt ";
    Put(wave, 16, 4);
    Put(wave, 1, 2); // plain samples
    Put(wave, std::uint32_t(channels), 2);
    Put(wave, std::uint32_t(rate), 4);
    Put(wave, std::uint32_t(rate * channels * 2), 4);
    Put(wave, std::uint32_t(channels * 2), 2);
    Put(wave, 16, 2);
    wave += "data";
    Put(wave, size, 4);
    for (const std::int16_t sample : samples)
        Put(wave, std::uint16_t(sample), 2);
    return wave;
}

} // namespace sounds
