#pragma once

#include "lists/QuizLine.h"

#include <functional>

namespace platform {
class TextReader;
class TextWriter;
} // namespace platform

namespace tumblewick {

// One question as the authoring screens hold it. The number of the correct answer is text like the rest,
// since a list from elsewhere may have anything in its place.
struct QuizEntry {
    static constexpr int kSubItems = 5; // four answers and the number of the correct one

    QString question;
    std::array<QString, 4> answers;
    QString correct;

    // The answers as 1 to 4 and the number of the correct one as 5. Raise 9 for others.
    const QString &SubItem(int number) const;
    QString &SubItem(int number);

    // The six fields with an underscore behind each, the last one too.
    QString Line() const;
};

// Takes what ReadQuiz finds, piece by piece.
struct QuizReading {
    std::function<void(const QString &question)> addQuestion;
    // Of the question that was added last, in the order of the numbers.
    std::function<void(int number, const QString &text)> setSubItem;
};

// Reads a quiz for editing. Each field ends at an underscore; a line that has fewer than six raises 5 and
// ends the reading, with its fields so far given, question included: wanted. Passes on what the reader
// raises.
void ReadQuiz(platform::TextReader &reader, const QuizReading &reading);

// Writes the entries 1 to `count`, a line each. A question with a line break makes two lines, which no reader
// takes for one: wanted. Raises 6 before the first for more than 32,767, and what the writer raises.
void WriteQuiz(platform::TextWriter &writer, int count, const std::function<QuizEntry(int index)> &entry);

} // namespace tumblewick
