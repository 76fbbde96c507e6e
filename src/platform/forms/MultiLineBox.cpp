#include "platform/forms/MultiLineBox.h"

#include <QMimeData>
#include <QScrollBar>
#include <QTextDocument>

namespace platform {

MultiLineBox::MultiLineBox(QWidget *parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
    // A scroll bar that is always there is dead while there is nothing to scroll.
    QScrollBar &bar = *verticalScrollBar();
    bar.setEnabled(false);
    connect(&bar, &QScrollBar::rangeChanged, &bar, [&bar](int, int last) { bar.setEnabled(last > 0); });
}

void MultiLineBox::SetText(const QString &text)
{
    // By way of nothing, or the scroll bar of a longer text would stay beside a short one.
    clear();
    setPlainText(text);
}

QString MultiLineBox::Text() const
{
    // Not the plain text, which turns blanks that hold words together into others.
    QString text = document()->toRawText();
    const QString lineBreak = QStringLiteral("\r\n");
    text.replace(QChar(QChar::ParagraphSeparator), lineBreak);
    text.replace(QChar(QChar::LineSeparator), lineBreak);
    text.remove(QChar(QChar::ByteOrderMark));
    return text;
}

void MultiLineBox::insertFromMimeData(const QMimeData *source)
{
    // The library looks at the first kind of what is pasted, and an empty clipboard has none.
    if (!source->formats().isEmpty())
        QPlainTextEdit::insertFromMimeData(source);
}

} // namespace platform
