#pragma once

#include <QPlainTextEdit>

namespace platform {

// A text box of several lines: long text wraps, Enter begins a new line, Tab goes on to the next control.
class MultiLineBox : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit MultiLineBox(QWidget *parent = nullptr);

    // What stands in the box, letter by letter, line breaks as CR LF. The invisible mark that may open a file
    // is left out.
    QString Text() const;
    void SetText(const QString &text);

protected:
    void insertFromMimeData(const QMimeData *source) override;
};

} // namespace platform
