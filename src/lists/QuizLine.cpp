#include "lists/QuizLine.h"

#include "platform/Subscript.h"
#include "platform/Text.h"

namespace tumblewick {

using namespace platform;

QuizLine QuizLine::ForPlay(const QString &line)
{
    const QString separator = QStringLiteral("_");
    QuizLine result;
    int underscore = InStr(1, line, separator);
    // Without an underscore the length would be -1, which Left refuses; so do the middles below.
    result.question = Left(line, underscore - 1);
    for (QString &answer : result.answers) {
        const int next = InStr(underscore + 1, line, separator);
        answer = Mid(line, underscore + 1, next - underscore - 1);
        underscore = next;
    }
    const QString digit = Mid(line, underscore + 1, 1);
    if (digit.isEmpty() || digit[0] < QLatin1Char('0') || digit[0] > QLatin1Char('9'))
        throw Error(kTypeMismatch);
    result.correct = digit[0].digitValue();
    return result;
}

const QString &QuizLine::Answer(int number) const
{
    return At(answers, number - 1);
}

} // namespace tumblewick
