#pragma once

#include <QString>

namespace tumblewick {

// One line of a spelling list: the word and, behind the first underscore, how it is said.
struct SpellingLine {
    QString word;
    QString pronunciation;

    // As the game reads it: a line without an underscore is said as it is written. Every text is a line.
    static SpellingLine ForPlay(const QString &line);
};

} // namespace tumblewick
