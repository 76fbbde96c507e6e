#include "platform/Text.h"

#include <cmath>

namespace platform {

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
