#pragma once

#include <QString>

namespace tumblewick {

// What is wrong with a word and its pronunciation as typed: a sentence for each fault with a blank behind it,
// in the order of the boxes; empty when nothing is. `wordMissing` is the sentence for an empty word. Nothing
// is trimmed, and a word may stand in a list twice.
QString FaultsOfEntry(const QString &word, const QString &pronunciation, const QString &wordMissing);

// The sentence on the screen that makes a list, and the one on the screen that edits it, which speaks of a
// new word for an old one too.
inline const QString kWordMissing = QStringLiteral("Please enter the spelling for the word. ");
inline const QString kNewWordMissing = QStringLiteral("Please enter the spelling for the new word. ");

} // namespace tumblewick
