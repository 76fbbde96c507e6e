#pragma once

#include <QString>

namespace tumblewick {

// The words that go into a ListType: which kind of list a screen of the grown-ups works on. GameMode has
// words of its own.
inline const QString kSpellList = QStringLiteral("Spell");
inline const QString kQuizList = QStringLiteral("Quiz");

} // namespace tumblewick
