// One line of a list, from bytes to fields and back.

#include "Fuzz.h"

#include "lists/QuizLine.h"
#include "lists/SpellingLine.h"
#include "platform/files/TextCode.h"

using namespace tumblewick;

void Try(const QByteArray &bytes)
{
    const QString line = platform::DecodedLine(bytes);
    PROMISE(platform::DecodedLine(platform::EncodedLine(line)) == line);

    const SpellingLine played = SpellingLine::ForPlay(line);
    const SpellingLine edited = SpellingLine::ForEdit(line);
    PROMISE(played.word == edited.word);
    PROMISE(!played.word.contains(QLatin1Char('_')));
    if (line.contains(QLatin1Char('_')))
        PROMISE(edited.LineWithUnderscore() == line && played.pronunciation == edited.pronunciation);
    else
        PROMISE(edited.Line() == line && played.pronunciation == line);

    const qsizetype separators = line.count(QLatin1Char('_'));
    try {
        const QuizLine quiz = QuizLine::ForPlay(line);
        PROMISE(separators >= 5);
        PROMISE(quiz.correct >= 0 && quiz.correct <= 9);
        QString again = quiz.question + QLatin1Char('_');
        for (int number = 1; number <= 4; ++number)
            again += quiz.Answer(number) + QLatin1Char('_');
        PROMISE(line.startsWith(again + QString::number(quiz.correct)));
    } catch (const platform::Error &error) {
        PROMISE(error.Number() == (separators < 5 ? 5 : 13));
    }
}
