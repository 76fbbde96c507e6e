#include "game/Scoreboard.h"

#include "shell/Players.h"

#include <algorithm>

namespace tumblewick {

namespace {

platform::Integer16 PercentageOf(const Players &players, int player)
{
    const int asked = players.Number(player, Players::kAsked);
    if (asked == 0)
        return 0;
    const double rate = static_cast<double>(players.Number(player, Players::kCorrect)) / asked;
    return platform::Integer16::FromReal(rate * 100.0);
}

QString ScoreOf(const Players &players, int player)
{
    return players.Text(player, Players::kName) + QStringLiteral("    ") +
           players.Text(player, Players::kCorrect) + QStringLiteral(" out of ") +
           players.Text(player, Players::kAsked);
}

} // namespace

RankOrder Ranked(const Players &players)
{
    RankOrder order(static_cast<std::size_t>(players.Count()));
    for (int player = players.Count() - 1; player >= 0; --player) {
        const RankedPlayer entry{ player, PercentageOf(players, player) };
        // Unused ranks hold 0, so there is always a place. Taking the last player first puts the earlier one
        // of two equal players in front.
        const auto place = std::find_if(order.begin(), order.end(), [&entry](const RankedPlayer &other) {
            return entry.percentage >= other.percentage;
        });
        std::move_backward(place, order.end() - 1, order.end());
        *place = entry;
    }
    return order;
}

QString ScoreTextFor(const Players &players, const RankOrder &order)
{
    QString text;
    for (const RankedPlayer &entry : order) {
        text += ScoreOf(players, entry.player) + QLatin1Char(' ') + QString::number(entry.percentage) +
                QStringLiteral("%\n");
    }
    return text;
}

QString ScoreTextForOne(const Players &players)
{
    return ScoreOf(players, 0) + QLatin1Char('\n');
}

int ScoreFontSize(int players)
{
    switch (players) {
    case 4:
        return 20;
    case 5:
        return 16;
    default:
        return 24;
    }
}

} // namespace tumblewick
