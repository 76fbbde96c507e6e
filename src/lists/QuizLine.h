#pragma once

#include "platform/Integer16.h"

#include <QString>

#include <array>

namespace tumblewick {

// One line of a quiz: six fields, each followed by an underscore.
struct QuizLine {
    QString question;
    std::array<QString, 4> answers;
    platform::Integer16 correct; // 1 to 4 in a sound list; any digit is taken

    // As the game reads it: only the one character behind the fifth underscore counts, and nothing is asked
    // of what follows it. Raises 5 for a line with fewer than five underscores, 13 when that character is no
    // digit.
    static QuizLine ForPlay(const QString &line);

    // The text of an answer, counted from 1. Raises 9 for a number that has none.
    const QString &Answer(int number) const;
};

} // namespace tumblewick
