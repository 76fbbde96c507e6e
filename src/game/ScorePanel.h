#pragma once

#include <QString>

class QTextEdit;

namespace tumblewick {

// The size in which a word stands in the panel while it is typed.
inline constexpr int kTypedWordSize = 40;

// Writes `text` into the score panel as plain text, all of it white and in `pointSize`, with nothing
// selected.
void ShowInPanel(QTextEdit &panel, const QString &text, int pointSize);

} // namespace tumblewick
