#pragma once

#include <QString>

namespace tumblewick {

// One line of a spelling list: the word and, behind the first underscore, how it is said. There is no way to
// write an underscore that separates nothing, so neither may hold one.
struct SpellingLine {
    QString word;
    QString pronunciation;

    // As the game reads it: a line without an underscore is said as it is written. Every text is a line.
    static SpellingLine ForPlay(const QString &line);
    // As the authoring screens read it: without an underscore there is no pronunciation.
    static SpellingLine ForEdit(const QString &line);

    // The word alone when there is no pronunciation.
    QString Line() const;
    // With the underscore even then. The game says nothing for such a word.
    QString LineWithUnderscore() const;
};

} // namespace tumblewick
