#include "platform/forms/FittingLabel.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QTextLayout>
#include <QToolTip>

#include <algorithm>

namespace platform {

namespace {

// `kept` letters of the text, half of them from its beginning, half from its end.
QString WithoutMiddle(const QString &text, qsizetype kept)
{
    qsizetype before = (kept + 1) / 2;
    qsizetype behind = text.size() - kept / 2;
    // No letter is cut in two.
    if (before > 0 && text[before - 1].isHighSurrogate())
        --before;
    if (behind < text.size() && text[behind].isLowSurrogate())
        ++behind;
    return text.left(before) + QChar(0x2026) + text.mid(behind);
}

} // namespace

FittingLabel::FittingLabel(QWidget *parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QStringList FittingLabel::Broken(const QString &text) const
{
    QTextLayout layout(text, font(), this);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(contentsRect().width());
        lines << text.mid(line.textStart(), line.textLength());
        while (lines.last().endsWith(QLatin1Char(' '))) // it ends the line, and would shift a centred one
            lines.last().chop(1);
    }
    layout.endLayout();
    return lines;
}

QStringList FittingLabel::ShownLines() const
{
    const int room = std::max(1, contentsRect().height() / QFontMetrics(font()).lineSpacing());
    QStringList lines = Broken(text());
    if (lines.size() <= room)
        return lines;
    qsizetype fits = 0;
    qsizetype tooLong = text().size();
    while (tooLong - fits > 1) {
        const qsizetype middle = (fits + tooLong) / 2;
        (Broken(WithoutMiddle(text(), middle)).size() <= room ? fits : tooLong) = middle;
    }
    return Broken(WithoutMiddle(text(), fits));
}

bool FittingLabel::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || Broken(text()) == ShownLines())
        return QLabel::event(event);
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(),
                       Qt::convertFromPlainText(text(), Qt::WhiteSpaceNormal), this);
    return true;
}

void FittingLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawFrame(&painter);
    const auto where = QStyle::visualAlignment(layoutDirection(), alignment());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(where), palette(), isEnabled(),
                          ShownLines().join(QLatin1Char('\n')), foregroundRole());
}

} // namespace platform
