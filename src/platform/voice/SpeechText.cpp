#include "platform/voice/SpeechText.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

// A pause that a text may ask for; longer ones are cut, so that no line can hold up the game.
constexpr int kLongestPause = 10'000;

const QString kMapStart = QStringLiteral("\\map=\"");
const QString kMapMiddle = QStringLiteral("\"=\"");
const QString kMapEnd = QStringLiteral("\"\\");

bool IsTagLetter(QChar character)
{
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z');
}

bool IsPunctuation(QChar character)
{
    return character.unicode() < 128 && character.isPunct();
}

// A backslash is never said; it separates what stands on its two sides.
QString WithoutBackslashes(QString text)
{
    return text.replace(u'\\', u' ').trimmed();
}

class Scanner {
public:
    explicit Scanner(const QString &text) : m_text(text) {}

    std::vector<SpeechUnit> Scan()
    {
        while (m_at < m_text.size()) {
            const QChar character = m_text[m_at];
            if (character.isSpace()) {
                EndWord();
                m_joined = false;
                ++m_at;
            } else if (character == u'\\') {
                ScanBackslash();
            } else {
                AddToWord(character);
                ++m_at;
            }
        }
        EndWord();
        if (m_pause > 0)
            Append({});
        return std::move(m_units);
    }

private:
    void ScanBackslash()
    {
        if (m_at + 1 < m_text.size() && m_text[m_at + 1] == u'\\') {
            AddToWord(u'\\');
            m_at += 2;
        } else if (StartsMap(m_at)) {
            ScanMap();
        } else if (!ScanTag()) {
            AddToWord(u'\\');
            ++m_at;
        }
    }

    bool StartsMap(qsizetype at) const
    {
        return QStringView(m_text).sliced(at).startsWith(kMapStart, Qt::CaseInsensitive);
    }

    void ScanMap()
    {
        EndWord();
        const auto sayStart = m_at + kMapStart.size();
        const auto sayEnd = m_text.indexOf(kMapMiddle, sayStart);
        const auto showStart = sayEnd + kMapMiddle.size();
        auto showEnd = sayEnd < 0 ? -1 : m_text.indexOf(kMapEnd, showStart);
        auto next = showEnd + kMapEnd.size();
        if (sayEnd >= 0 && showEnd < 0) {
            showEnd = m_text.lastIndexOf(u'"');
            next = showEnd + 1;
        }
        if (sayEnd < 0 || showEnd < showStart) {
            // Without its end the tag cannot be told from the text behind it, which may be what it hides.
            m_at = m_text.size();
            return;
        }
        const auto text = [this](qsizetype from, qsizetype to) {
            return m_text.sliced(from, to - from).replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
        };
        SpeechUnit unit;
        unit.spoken = WithoutBackslashes(text(sayStart, sayEnd));
        unit.shown = text(showStart, showEnd);
        m_at = next;
        const auto behind = PunctuationAt(m_at);
        unit.spoken += behind;
        unit.shown += behind;
        unit.mapped = true;
        m_at += behind.size();
        Append(std::move(unit));
        m_joined = true;
    }

    // The punctuation from `at` to the next white space; empty when anything else stands among it.
    QString PunctuationAt(qsizetype at) const
    {
        auto end = at;
        while (end < m_text.size() && IsPunctuation(m_text[end]) && m_text[end] != u'\\')
            ++end;
        if (end < m_text.size() && !m_text[end].isSpace())
            return {};
        return m_text.sliced(at, end - at);
    }

    // Takes out the tag that begins here. False, with nothing taken, when what stands here is none.
    bool ScanTag()
    {
        auto end = m_at + 1;
        while (end < m_text.size() && IsTagLetter(m_text[end]))
            ++end;
        const auto name = m_text.sliced(m_at + 1, end - m_at - 1).toLower();
        QString value;
        const bool valued = end < m_text.size() && m_text[end] == u'=';
        if (valued) {
            const auto from = ++end;
            bool quoted = false;
            while (end < m_text.size() && m_text[end] != u'\\' && (quoted || !m_text[end].isSpace())) {
                if (m_text[end] == u'"')
                    quoted = !quoted;
                ++end;
            }
            if (quoted)
                return false;
            value = m_text.sliced(from, end - from);
        }
        // The backslash of a map tag that follows is not ours to close with: it would lay open what the map
        // hides.
        const bool closed = end < m_text.size() && m_text[end] == u'\\' && !StartsMap(end);
        if (name == u"map" && valued && !closed) {
            m_at = end;
            return true;
        }
        if (name.isEmpty() || !closed)
            return false;
        m_at = end + 1;
        if (name == u"pau") {
            EndWord();
            m_pause = std::min(m_pause + std::clamp(value.toInt(), 0, kLongestPause), kLongestPause);
        } else if (name == u"emp") {
            m_stressed = true;
        }
        return true;
    }

    void AddToWord(QChar character) { m_word += character; }

    void EndWord()
    {
        if (m_word.isEmpty())
            return;
        SpeechUnit unit;
        unit.spoken = WithoutBackslashes(m_word);
        unit.shown = m_word;
        m_word.clear();
        Append(std::move(unit));
        m_joined = true;
    }

    void Append(SpeechUnit unit)
    {
        unit.joined = m_joined && !m_units.empty();
        unit.pause = std::exchange(m_pause, 0);
        unit.stressed = std::exchange(m_stressed, false);
        m_units.push_back(std::move(unit));
    }

    const QString &m_text;
    qsizetype m_at = 0;
    std::vector<SpeechUnit> m_units;
    QString m_word;        // the plain word that is being read
    bool m_joined = false; // no white space since the last unit
    int m_pause = 0;
    bool m_stressed = false;
};

} // namespace

SpeechText SpeechText::Parse(const QString &tagged)
{
    return { Scanner(tagged).Scan() };
}

QString SpeechText::Spoken() const
{
    QString spoken;
    for (const auto &unit : units) {
        if (unit.spoken.isEmpty())
            continue;
        if (!spoken.isEmpty())
            spoken += u' ';
        spoken += unit.spoken;
    }
    return spoken;
}

QString SpeechText::Shown() const
{
    QString shown;
    bool apart = false;
    for (const auto &unit : units) {
        apart = apart || !unit.joined;
        if (unit.shown.isEmpty())
            continue;
        if (!shown.isEmpty() && apart)
            shown += u' ';
        shown += unit.shown;
        apart = false;
    }
    return shown;
}

bool IsRepeatTag(const QString &tagged)
{
    return tagged.trimmed().compare(QStringLiteral("\\lst\\"), Qt::CaseInsensitive) == 0;
}

} // namespace platform
