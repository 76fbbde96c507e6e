#include "platform/agent/BalloonText.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace platform {

namespace {

// A text of that many characters is nonsense that nobody reads to its end.
constexpr qsizetype kLongestText = 100000;

} // namespace

BalloonText::BalloonText(const QFont &font) : m_metrics(font)
{
    // The letters of an ordinary line, so that 32 of them fit.
    const QString usual = QStringLiteral("the quick brown fox jumps over a dog");
    m_limit = m_metrics.horizontalAdvance(usual) / double(usual.size()) * kCharactersInALine;
}

void BalloonText::Clear()
{
    m_lines.clear();
    m_lastWidth = 0;
    m_widest = 0;
    m_whole.clear();
}

void BalloonText::Append(const QString &piece, bool joined)
{
    if (m_whole.size() > kLongestText)
        return;
    QString plain = piece.left(kLongestText);
    for (QChar &letter : plain) {
        if (letter.category() == QChar::Other_Control || letter.isSpace())
            letter = QLatin1Char(' ');
    }
    bool close = joined;
    for (const QString &word : plain.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        AppendWord(word, close);
        close = false;
    }
}

void BalloonText::AppendWord(const QString &word, bool joined)
{
    const bool close = joined || m_whole.isEmpty();
    m_whole += (close ? QString() : QStringLiteral(" ")) + word;

    const QString addition = (close || m_lines.isEmpty() ? QString() : QStringLiteral(" ")) + word;
    const double width = m_lastWidth + WidthOf(addition);
    if (!m_lines.isEmpty() && width <= m_limit) {
        m_lines.last() += addition;
        m_lastWidth = width;
    } else if (WidthOf(word) <= m_limit) {
        m_lines << word;
        m_lastWidth = WidthOf(word);
    } else {
        AppendLongWord(word);
    }
    m_widest = std::max(m_widest, m_lastWidth);
}

// Breaks the word wherever a line is full, but never within what is seen as one character.
void BalloonText::AppendLongWord(const QString &word)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, word);
    m_lines << QString();
    m_lastWidth = 0;
    qsizetype start = 0;
    while (finder.toNextBoundary() >= 0) {
        const QString letter = word.mid(start, finder.position() - start);
        start = finder.position();
        const double width = WidthOf(letter);
        if (m_lastWidth + width > m_limit && !m_lines.last().isEmpty()) {
            m_widest = std::max(m_widest, m_lastWidth);
            m_lines << QString();
            m_lastWidth = 0;
        }
        m_lines.last() += letter;
        m_lastWidth += width;
    }
}

} // namespace platform
