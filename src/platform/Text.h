#pragma once

#include "platform/Integer16.h"

#include <QString>

namespace platform {

// Text helpers that count positions from 1 and refuse what cannot be, instead of clamping it.

// Position of the first `what` in `text` at or after `start`, 0 when there is none and when `start` lies
// behind the text. An empty `what` is found at `start`. Raises 5 when `start` is less than 1.
int InStr(int start, const QString &text, const QString &what);

// The first `length` characters, all of them when there are fewer. Raises 5 when `length` is negative.
QString Left(const QString &text, int length);

// `length` characters from position `start`, fewer at the end of the text.
// Raises 5 when `start` is less than 1 or `length` is negative.
QString Mid(const QString &text, int start, int length);
QString Mid(const QString &text, int start);

// The decimal number that the whole text stands for, blanks around it allowed. Raises 13 when the text is
// no number.
double ToReal(const QString &text);

// The same with a fraction rounded half to even. Raises 13 when the text is no number, 6 when it does not
// fit.
Integer16 ToInteger16(const QString &text);

} // namespace platform
