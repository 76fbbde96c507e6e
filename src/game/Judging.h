#pragma once

#include <QString>

namespace tumblewick {

class Players;
struct Turns;

// Capitals count like small letters; nothing is trimmed.
bool IsSpelledRight(const QString &answer, const QString &word);

// Whether Peedy reads the scores out after a right answer: the first player has more than three points, the
// list is not done, and the praise was number 4. So it comes by chance, and never for the sake of another
// player.
bool IsCheckpoint(const Players &players, const Turns &turns, int praise);

} // namespace tumblewick
