#pragma once

#include "stage/Praise.h"

#include <span>

namespace tumblewick {

// One step of what is said and done when a list has been finished.
struct EndingStep {
    enum Act {
        Speak,
        Play,
        FinishList,   // reads the scores out, with all that follows from them
        TakePerch,    // brings Peedy to Genie's head and waits until he is there
        HandleEvents, // lets the buttons work once
    };
    Act act;
    const char *text = nullptr; // what is spoken or played
    bool bySpeaker = false;     // by whoever was to speak next when the list ran out, else by `who`
    CharacterIndex who = kMerlin;
    bool waits = false;
    const char *textForSeveral = nullptr; // spoken instead of `text` unless exactly one plays
};

// The closing lines, of which one is drawn at the end of each list.
struct Ending {
    int number; // by which FinishList will know it; 0 leaves the number at what it was
    std::span<const EndingStep> steps;
};
inline constexpr int kEndingCount = 6;

// `pick` is 1 to 6; raises 9 for any other. The endings of the two kinds of game differ here and there:
// wanted.
const Ending &EndingFor(GameKind kind, int pick);

// What Peedy and his friends have to say before the fireworks behind the ending of that number; nothing for
// any number but 1 to 6.
std::span<const EndingStep> PerfectScoreChatter(int number);

} // namespace tumblewick
