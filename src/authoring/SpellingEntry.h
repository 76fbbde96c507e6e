#pragma once

#include "lists/SpellingLine.h"
#include "platform/forms/ListItems.h"

namespace tumblewick {

// What is wrong with a word and its pronunciation as typed: a sentence for each fault with a blank behind it,
// in the order of the boxes; empty when nothing is. `wordMissing` is the sentence for an empty word. Nothing
// is trimmed, and a word may stand in a list twice.
QString FaultsOfEntry(const SpellingLine &entry, const QString &wordMissing);

// The sentence on the screen that makes a list, and the one on the screen that edits it, which speaks of a
// new word for an old one too.
inline const QString kWordMissing = QStringLiteral("Please enter the spelling for the word. ");
inline const QString kNewWordMissing = QStringLiteral("Please enter the spelling for the new word. ");

// The word as an entry of a list: it is the text, its pronunciation the one sub-item.
void ShowIn(const platform::ListItemReference &item, const SpellingLine &entry);
SpellingLine WordIn(const platform::ListItemReference &item);

} // namespace tumblewick
