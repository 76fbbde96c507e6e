#pragma once

#include <QString>
#include <QStringList>

namespace platform {

// What is done to a text before an English voice can say its words. Pure; any thread may call.

// Longer numbers are read digit by digit, and no further than this.
constexpr qsizetype kLongestNumber = 12;
constexpr qsizetype kMostDigits = 24;

// Of ASCII alone.
bool IsLetter(QChar character);
bool IsDigit(QChar character);
bool IsNumber(const QString &text); // digits and nothing else

// ASCII and the signs of money; everything else is rewritten or becomes a blank.
QString PlainEnglish(const QString &text);

// Turns signs of plain English into words, where they stand for one.
QString WithSignsSaid(const QString &text);

// Digits as words in the form in which the engine reads them well.
QStringList NumberWords(const QString &digits);

} // namespace platform
