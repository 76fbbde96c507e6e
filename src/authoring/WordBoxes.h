#pragma once

#include "lists/SpellingLine.h"

class QLineEdit;

namespace tumblewick {

// The two boxes that a word and its pronunciation are typed into. They belong to their screen.
struct WordBoxes {
    QLineEdit *word = nullptr;
    QLineEdit *pronunciation = nullptr;

    // Keeps both to a line of a file.
    void SetUp() const;
    SpellingLine Entry() const;
    void Show(const SpellingLine &entry) const;
    void Empty() const;
    bool IsAnyFilled() const;
};

} // namespace tumblewick
