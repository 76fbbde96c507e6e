#pragma once

#include "platform/Integer16.h"
#include "shell/SharedState.h"

#include <QString>
#include <QStringList>

#include <array>

namespace platform {
class Chance;
}

namespace tumblewick {

enum class GameKind { Spelling, Quiz };

// The phrases of praise, counted from 1 by the draws. Each ends in a blank.
QStringList PraisePhrases();
inline constexpr int kPraiseCount = 18;

// Who cheers how, in the order in which they are asked.
struct Cheer {
    CharacterIndex who;
    QString animation;
};
using CheeringSet = std::array<Cheer, kCharacterCount>;

// `number` is 1 to 4. The first set differs between the two kinds of game, and the second and fourth are the
// same; both are wanted.
const CheeringSet &CheeringSetFor(GameKind kind, int number);
int DrawCheeringSet(platform::Chance &chance);

// The number of a phrase, 1 to 18. A spelling game never says the same one twice running and keeps it in
// `lastPraise`. A quiz compares with it but does not write it, so that a phrase may come twice: wanted.
int DrawSpellingPraise(platform::Chance &chance, platform::Integer16 &lastPraise);
int DrawQuizPraise(platform::Chance &chance, platform::Integer16 lastPraise);

} // namespace tumblewick
