#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

// How words are said that the engine's own dictionary says badly, in the engine's phones with the stress
// behind the vowel: "p iy1 d iy0". The words are in pronunciations.txt. Pure tables; any thread may ask.

// The phones of `word`, in any letter case and with a possessive 's if need be. Empty when the engine knows
// better.
QByteArray PronunciationOf(const QString &word);

// The phones of the name of a letter, a to z in either case. Empty for any other character.
QByteArray LetterName(QChar letter);

} // namespace platform
