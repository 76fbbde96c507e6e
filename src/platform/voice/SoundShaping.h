#pragma once

#include <QByteArray>

#include <vector>

namespace platform {

// What happens to the samples of a voice before they are heard. Samples are one channel from -1 to 1. Pure;
// any thread may call.

// Lifts what lies above about 2 kHz by `decibels`, softly.
void LiftTreble(std::vector<float> &samples, int sampleRate, double decibels);

// The root mean square of those parts in which somebody speaks, in decibels below full scale; -100 for
// silence.
double ActiveLevel(const std::vector<float> &samples, int sampleRate);

// Brings the active level to `decibels` and bends what would be too loud softly below full scale.
void SetLevel(std::vector<float> &samples, int sampleRate, double decibels);

// 16-bit samples at `toRate`, in time with the input. Empty when the input is empty or cannot be converted.
QByteArray Resampled(const std::vector<float> &samples, int fromRate, int toRate);

} // namespace platform
