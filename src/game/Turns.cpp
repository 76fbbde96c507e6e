#include "game/Turns.h"

#include "shell/SharedState.h"

namespace tumblewick {

void Turns::Begin(int lines, int players)
{
    QuestionTotal = lines / players * players;
    QuestionsAsked = 0;
    CurrentPlayer = -1;
    SpeakerIndex = -1;
}

void Turns::Advance(int players)
{
    SpeakerIndex += 1;
    if (SpeakerIndex > kCharacterCount - 1)
        SpeakerIndex = 0;
    CurrentPlayer += 1;
    if (CurrentPlayer > players - 1)
        CurrentPlayer = 0;
}

} // namespace tumblewick
