#pragma once

#include <QLabel>

namespace platform {

// A label of plain text that shows as much of it as there is room for: it breaks lines within a word that is
// too long for one, and leaves out the middle, with dots there, of a text that is too long for all of them. A
// tool tip tells such a text whole.
class FittingLabel : public QLabel {
    Q_OBJECT

public:
    explicit FittingLabel(QWidget *parent = nullptr);

    // The lines that are seen of text() at the present size.
    QStringList ShownLines() const;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QStringList Broken(const QString &text) const;
};

} // namespace platform
