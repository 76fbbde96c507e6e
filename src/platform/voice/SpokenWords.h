#pragma once

#include "platform/voice/SpeechText.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <cstddef>
#include <vector>

namespace platform {

// How a line is made ready for a voice.
enum class Reading {
    English,   // every word and sign in plain ASCII
    AsWritten, // in its own letters; signs and numbers are left to the voice, which knows its language
};

// One word as the engine gets it, in UTF-8; never empty.
struct SpokenWord {
    QByteArray text;
    QByteArray phones;                     // how it is said; empty when the engine shall find out
    QByteArray punctuation;                // the mark behind it, for the melody; empty or one of , ; : . ! ?
    std::size_t unit = 0;                  // the unit of the line that it belongs to
    std::chrono::milliseconds before{ 0 }; // silence asked for by the line
    std::chrono::milliseconds after{ 0 };  // the least silence behind it
    bool endsSentence = false;
    bool stressed = false;
    bool letter = false; // it is the name of its one letter

    friend bool operator==(const SpokenWord &, const SpokenWord &) = default;
};

// A line as a row of words that can be said.
struct SpokenWords {
    std::vector<SpokenWord> words;
    std::chrono::milliseconds behind{ 0 }; // silence asked for after the last word

    // Takes any text whatever. Accents go, signs become words ("+" is "plus"), numbers and single letters are
    // made ready, punctuation becomes pauses, and what cannot be said is left out. A word is cut where no
    // tongue would go on. Pure; any thread may call.
    static SpokenWords Of(const SpeechText &text, Reading reading = Reading::English);
};

} // namespace platform
