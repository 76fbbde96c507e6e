#include "lists/QuizList.h"

#include "platform/Subscript.h"
#include "platform/Text.h"
#include "platform/files/Files.h"

#include <utility>

namespace tumblewick {

using platform::InStr;

namespace {

const QString kSeparator = QStringLiteral("_");

} // namespace

const QString &QuizEntry::SubItem(int number) const
{
    return number == kSubItems ? correct : platform::At(answers, number - 1);
}

QString &QuizEntry::SubItem(int number)
{
    return const_cast<QString &>(std::as_const(*this).SubItem(number));
}

QString QuizEntry::Line() const
{
    QString line = question + kSeparator;
    for (int number = 1; number <= kSubItems; ++number)
        line += SubItem(number) + kSeparator;
    return line;
}

void ReadQuiz(platform::TextReader &reader, const QuizReading &reading)
{
    while (!reader.AtEnd()) {
        const QString line = reader.ReadLine();
        int underscore = InStr(1, line, kSeparator);
        // Without an underscore the length would be -1, which Left refuses; so do the middles below.
        reading.addQuestion(platform::Left(line, underscore - 1));
        for (int number = 1; number <= QuizEntry::kSubItems; ++number) {
            const int next = InStr(underscore + 1, line, kSeparator);
            reading.setSubItem(number, platform::Mid(line, underscore + 1, next - underscore - 1));
            underscore = next;
        }
    }
}

void WriteQuiz(platform::TextWriter &writer, int count, const std::function<QuizEntry(int index)> &entry)
{
    const platform::Integer16 last = count;
    for (int index = 1; index <= last; ++index)
        writer.WriteLine(entry(index).Line());
}

} // namespace tumblewick
