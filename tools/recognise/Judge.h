#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

// The listener of the measurement: a recogniser that knows a few hundred words, and a noisy room round it.

// The words of a dictionary file, each once, in the order of the file; "dog(2)" is another way to say "dog".
QStringList WordsOf(const QString &dictionary);

// A grammar in which exactly one of the words is said.
QByteArray GrammarOf(const QStringList &words);

// Pink noise of a root mean square of 1, the same for the same seed.
std::vector<float> PinkNoise(std::size_t count, unsigned seed);

// `speech`, from -1 to 1, with half a second before and behind it, and noise over all of that so
// many decibels below the level of the speech. 16-bit samples.
QByteArray InNoise(const std::vector<float> &speech, int sampleRate, double below, unsigned seed);

// What the recogniser heard in each of the recordings (raw, 16-bit, 16 kHz, one channel), in lower case;
// empty where it heard nothing. It hears them one after the other and gets used to voice and room. `warp`
// adapts it to the size of the speaker; 1 leaves it as it is. Raises std::runtime_error when it cannot be
// run.
QStringList Heard(const std::vector<QByteArray> &recordings, const QString &dictionary, double warp);
