#include "platform/forms/MultiLineBox.h"

#include <QTextDocument>

namespace platform {

MultiLineBox::MultiLineBox(QWidget *parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
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

} // namespace platform
