#include "authoring/QuizQuestion.h"

namespace tumblewick {

namespace {

const QLatin1Char kUnderscore('_');

} // namespace

QString FaultsOfQuestion(const QuizEntry &entry)
{
    QString faults;
    if (entry.question.isEmpty())
        faults += QStringLiteral("Please enter a question. ");
    else if (entry.question.contains(kUnderscore))
        faults += QStringLiteral("The question cannot contain an underscore. ");
    int number = 0;
    for (const QString &answer : entry.answers) {
        ++number;
        if (answer.isEmpty())
            faults += QStringLiteral("Please enter an answer %1. ").arg(number);
        else if (answer.contains(kUnderscore))
            faults += QStringLiteral("Answer %1 cannot contain an underscore. ").arg(number);
    }
    if (entry.correct.isEmpty())
        faults += QStringLiteral("Please enter the number of the correct answer. ");
    else if (entry.correct.size() != 1 || !QStringLiteral("1234").contains(entry.correct))
        faults += QStringLiteral("The number of the correct answer must be 1,2,3 or 4. ");
    return faults;
}

void ShowIn(const platform::ListItemReference &item, const QuizEntry &entry)
{
    item->SetText(entry.question);
    for (int number = 1; number <= QuizEntry::kSubItems; ++number)
        item->SetSubItem(number, entry.SubItem(number));
}

QuizEntry QuestionIn(const platform::ListItemReference &item)
{
    QuizEntry entry;
    entry.question = item->Text();
    for (int number = 1; number <= QuizEntry::kSubItems; ++number)
        entry.SubItem(number) = item->SubItem(number);
    return entry;
}

} // namespace tumblewick
