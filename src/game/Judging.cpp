#include "game/Judging.h"

#include "game/Turns.h"
#include "shell/Players.h"

namespace tumblewick {

namespace {

constexpr int kCheckpointPraise = 4;
constexpr int kCheckpointScore = 3;

} // namespace

bool IsSpelledRight(const QString &answer, const QString &word)
{
    return answer.toLower() == word.toLower();
}

bool IsCheckpoint(const Players &players, const Turns &turns, int praise)
{
    return players.Number(0, Players::kCorrect) > kCheckpointScore && !turns.ListDone() &&
           praise == kCheckpointPraise;
}

} // namespace tumblewick
