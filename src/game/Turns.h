#pragma once

#include "platform/Integer16.h"

namespace tumblewick {

// Whose turn it is, who asks, and how far the game has come.
struct Turns {
    platform::Integer16 CurrentPlayer = -1; // index into the players, -1 before the first question
    platform::Integer16 SpeakerIndex = -1;  // index into the characters, likewise
    platform::Integer16 QuestionTotal;      // a multiple of the number of players
    platform::Integer16 QuestionsAsked;

    // Before the first question of a game: every player is to get the same number of questions, and the lines
    // left over are not asked.
    void Begin(int lines, int players);

    // The next speaker and the next player, each in a round of its own.
    void Advance(int players);

    bool ListDone() const { return QuestionsAsked == QuestionTotal; }
};

} // namespace tumblewick
