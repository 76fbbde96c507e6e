#include "platform/voice/SoundShaping.h"

#include <algorithm>
#include <cmath>
#include <numbers>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

namespace platform {

namespace {

constexpr double kShelfFrequency = 2000;
constexpr double kShelfSlope = 0.7;
constexpr float kKnee = 0.7F;
constexpr double kSilence = -100;
// The converter is fed in blocks; it drops samples of very long input.
constexpr std::size_t kBlock = 16384;
// A part is taken as speech when it is less than this far below the level of all speech.
constexpr double kActiveMargin = 15.9;

double Decibels(double meanSquare)
{
    return meanSquare > 1e-10 ? 10 * std::log10(meanSquare) : kSilence;
}

float Bent(float sample)
{
    const auto size = std::abs(sample);
    if (size <= kKnee)
        return sample;
    const auto room = 1.0F - kKnee;
    return std::copysign(kKnee + room * std::tanh((size - kKnee) / room), sample);
}

} // namespace

void LiftTreble(std::vector<float> &samples, int sampleRate, double decibels)
{
    if (decibels == 0)
        return;
    // The usual second-order high shelf.
    const double gain = std::pow(10, decibels / 40);
    const double omega = 2 * std::numbers::pi * kShelfFrequency / sampleRate;
    const double cosine = std::cos(omega);
    const double alpha = std::sin(omega) / 2 * std::sqrt((gain + 1 / gain) * (1 / kShelfSlope - 1) + 2);
    const double root = 2 * std::sqrt(gain) * alpha;
    const double a0 = (gain + 1) - (gain - 1) * cosine + root;
    const double b0 = gain * ((gain + 1) + (gain - 1) * cosine + root) / a0;
    const double b1 = -2 * gain * ((gain - 1) + (gain + 1) * cosine) / a0;
    const double b2 = gain * ((gain + 1) + (gain - 1) * cosine - root) / a0;
    const double a1 = 2 * ((gain - 1) - (gain + 1) * cosine) / a0;
    const double a2 = ((gain + 1) - (gain - 1) * cosine - root) / a0;
    double x1 = 0;
    double x2 = 0;
    double y1 = 0;
    double y2 = 0;
    for (auto &sample : samples) {
        const double x = static_cast<double>(sample);
        const double y = b0 * x + b1 * x1 + b2 * x2 - a1 * y1 - a2 * y2;
        x2 = x1;
        x1 = x;
        y2 = y1;
        y1 = y;
        sample = static_cast<float>(y);
    }
}

double ActiveLevel(const std::vector<float> &samples, int sampleRate)
{
    const auto part = static_cast<std::size_t>(sampleRate / 50);
    std::vector<double> squares;
    for (std::size_t start = 0; start < samples.size(); start += part) {
        const auto end = std::min(start + part, samples.size());
        double sum = 0;
        for (auto index = start; index < end; ++index)
            sum += static_cast<double>(samples[index]) * static_cast<double>(samples[index]);
        squares.push_back(sum / static_cast<double>(end - start));
    }
    // Which parts count depends on the level and the level on them; a few rounds settle it.
    double level = kSilence;
    for (int round = 0; round < 8; ++round) {
        const double threshold = round == 0 ? kSilence : level - kActiveMargin;
        double sum = 0;
        int count = 0;
        for (const double square : squares) {
            if (Decibels(square) > threshold) {
                sum += square;
                ++count;
            }
        }
        if (count == 0)
            return kSilence;
        level = Decibels(sum / count);
    }
    return level;
}

void SetLevel(std::vector<float> &samples, int sampleRate, double decibels)
{
    const double level = ActiveLevel(samples, sampleRate);
    if (level <= kSilence)
        return;
    const auto gain = static_cast<float>(std::pow(10, (decibels - level) / 20));
    for (auto &sample : samples)
        sample = Bent(sample * gain);
}

QByteArray Resampled(const std::vector<float> &samples, int fromRate, int toRate)
{
    if (samples.empty() || fromRate <= 0 || toRate <= 0)
        return {};
    SwrContext *context = nullptr;
    AVChannelLayout mono = AV_CHANNEL_LAYOUT_MONO;
    if (swr_alloc_set_opts2(&context, &mono, AV_SAMPLE_FMT_S16, toRate, &mono, AV_SAMPLE_FMT_FLT, fromRate, 0,
                            nullptr) < 0)
        return {};
    QByteArray converted;
    if (swr_init(context) >= 0) {
        const auto expected =
            samples.size() * static_cast<std::size_t>(toRate) / static_cast<std::size_t>(fromRate);
        const auto sampleSize = sizeof(qint16);
        converted.resize(static_cast<qsizetype>(expected * sampleSize));
        std::size_t taken = 0;
        std::size_t made = 0;
        // The last rounds bring no samples in, but bring out what the filter still holds.
        while (made < expected) {
            const auto now = std::min(kBlock, samples.size() - taken);
            const auto *input = reinterpret_cast<const uint8_t *>(samples.data() + taken);
            auto *output = reinterpret_cast<uint8_t *>(converted.data()) + made * sampleSize;
            const int count = swr_convert(context, &output, static_cast<int>(expected - made),
                                          now > 0 ? &input : nullptr, static_cast<int>(now));
            if (count < 0 || (count == 0 && now == 0))
                break;
            taken += now;
            made += static_cast<std::size_t>(count);
        }
        converted.resize(static_cast<qsizetype>(made * sampleSize));
    }
    swr_free(&context);
    return converted;
}

} // namespace platform
