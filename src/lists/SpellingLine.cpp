#include "lists/SpellingLine.h"

#include "platform/Text.h"

namespace tumblewick {

namespace {

const QString kSeparator = QStringLiteral("_");

} // namespace

SpellingLine SpellingLine::ForPlay(const QString &line)
{
    if (platform::InStr(1, line, kSeparator) == 0)
        return { line, line };
    return ForEdit(line);
}

SpellingLine SpellingLine::ForEdit(const QString &line)
{
    const int underscore = platform::InStr(1, line, kSeparator);
    if (underscore == 0)
        return { line, QString() };
    return { platform::Left(line, underscore - 1), platform::Mid(line, underscore + 1) };
}

QString SpellingLine::Line() const
{
    return pronunciation.isEmpty() ? word : LineWithUnderscore();
}

QString SpellingLine::LineWithUnderscore() const
{
    return word + kSeparator + pronunciation;
}

} // namespace tumblewick
