#include "lists/SpellingLine.h"

#include "platform/Text.h"

namespace tumblewick {

SpellingLine SpellingLine::ForPlay(const QString &line)
{
    const int underscore = platform::InStr(1, line, QStringLiteral("_"));
    if (underscore == 0)
        return { line, line };
    return { platform::Left(line, underscore - 1), platform::Mid(line, underscore + 1) };
}

} // namespace tumblewick
