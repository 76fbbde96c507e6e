#include "game/ScorePanel.h"

#include <QTextCursor>
#include <QTextEdit>

namespace tumblewick {

void ShowInPanel(QTextEdit &panel, const QString &text, int pointSize)
{
    // Points at 96 units to the inch.
    constexpr double kPixelsPerPoint = 96.0 / 72.0;
    panel.setPlainText(text);
    QTextCursor all(panel.document());
    all.select(QTextCursor::Document);
    QTextCharFormat format;
    format.setForeground(Qt::white);
    format.setProperty(QTextFormat::FontPixelSize, qRound(pointSize * kPixelsPerPoint));
    all.mergeCharFormat(format);
    all.clearSelection();
    all.movePosition(QTextCursor::Start);
    panel.setTextCursor(all);
}

} // namespace tumblewick
