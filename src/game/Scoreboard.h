#pragma once

#include "platform/Integer16.h"

#include <QString>

#include <vector>

namespace tumblewick {

class Players;

// The players by rank, the best first.
struct RankedPlayer {
    platform::Integer16 player;
    platform::Integer16 percentage;
};
using RankOrder = std::vector<RankedPlayer>;

// Ranks by the rate of right answers, never by points; equal rates stand in the players' own order.
RankOrder Ranked(const Players &players);

// The board: a line for each player, ended by a line feed. A lone player's has no percentage.
QString ScoreTextFor(const Players &players, const RankOrder &order);
QString ScoreTextForOne(const Players &players);

// The board's type size for that many players, in points.
int ScoreFontSize(int players);

} // namespace tumblewick
