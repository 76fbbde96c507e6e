#include "platform/Text.h"

#include <cmath>

namespace platform {

namespace {

double RoundedHalfToEven(double value)
{
    const double below = std::floor(value);
    const double fraction = value - below;
    if (fraction != 0.5)
        return std::floor(value + 0.5);
    return std::fmod(below, 2.0) == 0.0 ? below : below + 1.0;
}

} // namespace

Integer16 Integer16::FromReal(double value)
{
    const double rounded = RoundedHalfToEven(value);
    if (!(rounded >= std::numeric_limits<qint16>::min() && rounded <= std::numeric_limits<qint16>::max()))
        throw Error(kOverflow);
    return Integer16(static_cast<int>(rounded));
}

int InStr(int start, const QString &text, const QString &what)
{
    if (start < 1)
        throw Error(kInvalidCall);
    if (start > text.size())
        return 0;
    return static_cast<int>(text.indexOf(what, start - 1)) + 1;
}

QString Left(const QString &text, int length)
{
    if (length < 0)
        throw Error(kInvalidCall);
    return text.left(length);
}

QString Mid(const QString &text, int start, int length)
{
    if (start < 1 || length < 0)
        throw Error(kInvalidCall);
    return text.mid(start - 1, length);
}

QString Mid(const QString &text, int start)
{
    return Mid(text, start, static_cast<int>(text.size()));
}

double ToReal(const QString &text)
{
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value))
        throw Error(kTypeMismatch);
    return value;
}

Integer16 ToInteger16(const QString &text)
{
    return Integer16::FromReal(ToReal(text));
}

} // namespace platform
