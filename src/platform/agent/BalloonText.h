#pragma once

#include <QFontMetricsF>
#include <QString>
#include <QStringList>

namespace platform {

// The lines of a balloon, grown piece by piece. Text is plain: every character is shown as it is, but blanks
// and line ends only part words. Appending takes time for the piece, not for the whole text.
class BalloonText {
public:
    // About that many characters make a line.
    static constexpr int kCharactersInALine = 32;
    // Older lines go when there are more.
    static constexpr int kLinesShown = 6;

    explicit BalloonText(const QFont &font);

    void Clear();
    // `joined` to what stands there without a blank between.
    void Append(const QString &piece, bool joined);

    // What is seen: the last lines.
    QStringList ShownLines() const { return m_lines.mid(qMax<qsizetype>(0, m_lines.size() - kLinesShown)); }
    const QStringList &Lines() const { return m_lines; }
    // Everything, as one text.
    const QString &Whole() const { return m_whole; }

    // In units: the height of a line, the width of the widest of all lines, and where a line is full.
    double LineHeight() const { return m_metrics.height(); }
    double Widest() const { return m_widest; }
    double LineLimit() const { return m_limit; }

private:
    void AppendWord(const QString &word, bool joined);
    void AppendLongWord(const QString &word);
    double WidthOf(const QString &text) const { return m_metrics.horizontalAdvance(text); }

    QFontMetricsF m_metrics;
    double m_limit = 0;
    QStringList m_lines;
    double m_lastWidth = 0;
    double m_widest = 0;
    QString m_whole;
};

} // namespace platform
